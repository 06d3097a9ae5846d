#include "simulator/ptypump.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <QSocketNotifier>

namespace
{
constexpr int pollInterval = 1;      // milliseconds between two checks
constexpr int mergePause = 100;      // milliseconds in which bytes are collected, for LineFaults::Merged
constexpr int maxDrainChecks = 1000; // then the line breaks even if its last byte has not been read
} // namespace

PtyPump::PtyPump()
    : _drainPoll(this)
    , _pause(this)
{
    _pause.setSingleShot(true);
    connect(&_pause, &QTimer::timeout, this, &PtyPump::write);
    _drainPoll.setSingleShot(true);
    connect(&_drainPoll, &QTimer::timeout, this, &PtyPump::breakLine);
}

PtyPump::~PtyPump()
{
    detach();
}

void PtyPump::setFaults(const LineFaults &faults)
{
    _faults = faults;
}

void PtyPump::attach(int descriptor)
{
    detach();
    _passed = 0;
    _sent = 0;
    _descriptor = descriptor;
    fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) | O_NONBLOCK);
    // If no process has the near end of a pty open, the far end permanently reports a hang-up. The pump
    // therefore keeps the near end open as well.
    char slave[64] = "";
    if (ptsname_r(descriptor, slave, sizeof slave) == 0)
        _heldOpen = open(slave, O_RDWR | O_NOCTTY | O_CLOEXEC);

    _readable = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    connect(_readable.get(), &QSocketNotifier::activated, this, &PtyPump::pump);
}

void PtyPump::detach()
{
    _pause.stop();
    _drainPoll.stop();
    if (_readable) {
        _readable->setEnabled(false);
        _readable.release()->deleteLater(); // this may run in a slot that the notifier calls
    }
    _unsent.clear();
    _descriptor = -1;
    if (_heldOpen >= 0)
        close(_heldOpen);
    _heldOpen = -1;
}

qsizetype PtyPump::allowed(qsizetype wanted) const
{
    return _faults.pulledOutAfter < 0 ? wanted : std::min(wanted, _faults.pulledOutAfter - _passed);
}

void PtyPump::count(qsizetype bytes)
{
    _passed += bytes;
    if (_passed != _faults.pulledOutAfter)
        return;
    _readable->setEnabled(false);
    _unsent.clear();
    _drainChecksLeft = maxDrainChecks;
    breakLine();
}

void PtyPump::breakLine()
{
    // A hang-up discards unread data. The last byte must be read before it.
    if (isUnread() && --_drainChecksLeft > 0) {
        _drainPoll.start(pollInterval);
        return;
    }
    const int descriptor = _descriptor;
    _faults.pulledOutAfter = -1;
    detach();
    Q_EMIT lineBroken(descriptor);
}

void PtyPump::pump()
{
    char bytes[4096];
    while (_descriptor >= 0) {
        const qsizetype most = allowed(sizeof bytes);
        const ssize_t got = read(_descriptor, bytes, static_cast<size_t>(most));
        if (got <= 0)
            return;
        count(got);
        Q_EMIT received(QByteArray(bytes, got));
    }
}

void PtyPump::send(const QByteArray &bytes)
{
    if (_descriptor < 0 || allowed(1) == 0)
        return;
    QByteArray arriving = bytes;
    if (_faults.insertAt >= _sent && _faults.insertAt < _sent + bytes.size())
        arriving.insert(_faults.insertAt - _sent, _faults.insertion);
    _sent += bytes.size();
    _unsent += arriving;
    if (_pause.isActive())
        return; // these bytes are sent together with those that are already waiting
    if (_faults.reads == LineFaults::Merged)
        _pause.start(mergePause);
    else
        write();
}

bool PtyPump::isUnread() const
{
    // FIONREAD cannot be used: it does not count bytes that are still on their way through the tty.
    pollfd nearEnd{_heldOpen, POLLIN, 0};
    return poll(&nearEnd, 1, 0) > 0;
}

void PtyPump::write()
{
    const bool singly = _faults.reads == LineFaults::Single;
    if (!_unsent.isEmpty() && !(singly && isUnread())) {
        const qsizetype most = allowed(singly ? 1 : _unsent.size());
        const ssize_t taken = ::write(_descriptor, _unsent.constData(), static_cast<size_t>(most));
        if (taken > 0) {
            _unsent.remove(0, taken);
            count(taken);
        }
    }
    // The pump polls instead of waiting for a notification: a tty reports that it accepts more only when it
    // is nearly empty, and not reliably even then.
    if (!_unsent.isEmpty())
        _pause.start(pollInterval);
}
