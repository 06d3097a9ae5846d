#include "simulator/portpump.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <QSocketNotifier>

namespace
{
constexpr int lookPause = 1;    // milliseconds, until a single byte is looked for again
constexpr int mergePause = 100; // milliseconds
constexpr int mostLooks = 1000; // for the last byte to be read
} // namespace

PortPump::PortPump()
    : _lastLook(this)
    , _pause(this)
{
    _pause.setSingleShot(true);
    connect(&_pause, &QTimer::timeout, this, &PortPump::write);
    _lastLook.setSingleShot(true);
    connect(&_lastLook, &QTimer::timeout, this, &PortPump::breakOff);
}

PortPump::~PortPump()
{
    detach();
}

void PortPump::setFaults(const LineFaults &faults)
{
    _faults = faults;
}

void PortPump::attach(int descriptor)
{
    detach();
    _passed = 0;
    _sent = 0;
    _descriptor = descriptor;
    fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) | O_NONBLOCK);
    // The far end of a pty nobody has open is never silent: it reports a hang-up all the time. So the near
    // end is held open here, too.
    char slave[64] = "";
    if (ptsname_r(descriptor, slave, sizeof slave) == 0)
        _heldOpen = open(slave, O_RDWR | O_NOCTTY | O_CLOEXEC);

    _readable = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    connect(_readable.get(), &QSocketNotifier::activated, this, &PortPump::pump);
}

void PortPump::detach()
{
    _pause.stop();
    _lastLook.stop();
    if (_readable) {
        _readable->setEnabled(false);
        _readable.release()->deleteLater(); // it may be what calls
    }
    _unsent.clear();
    _descriptor = -1;
    if (_heldOpen >= 0)
        close(_heldOpen);
    _heldOpen = -1;
}

qsizetype PortPump::allowed(qsizetype wanted) const
{
    return _faults.pulledOutAfter < 0 ? wanted : std::min(wanted, _faults.pulledOutAfter - _passed);
}

void PortPump::count(qsizetype bytes)
{
    _passed += bytes;
    if (_passed != _faults.pulledOutAfter)
        return;
    _readable->setEnabled(false);
    _unsent.clear();
    _looks = mostLooks;
    breakOff();
}

void PortPump::breakOff()
{
    // A line that hangs up takes along what has not been read, and the last byte is to count.
    if (isUnread() && --_looks > 0) {
        _lastLook.start(lookPause);
        return;
    }
    const int descriptor = _descriptor;
    _faults.pulledOutAfter = -1;
    detach();
    Q_EMIT brokeOff(descriptor);
}

void PortPump::pump()
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

void PortPump::send(const QByteArray &bytes)
{
    if (_descriptor < 0 || allowed(1) == 0)
        return;
    QByteArray spoilt = bytes;
    if (_faults.insertAt >= _sent && _faults.insertAt < _sent + bytes.size())
        spoilt.insert(_faults.insertAt - _sent, _faults.insertion);
    _sent += bytes.size();
    _unsent += spoilt;
    if (_pause.isActive())
        return; // it goes with what is waiting already
    if (_faults.reads == LineFaults::Merged)
        _pause.start(mergePause);
    else
        write();
}

bool PortPump::isUnread() const
{
    // Not FIONREAD: bytes still on their way through the tty are none to it.
    pollfd nearEnd{_heldOpen, POLLIN, 0};
    return poll(&nearEnd, 1, 0) > 0;
}

void PortPump::write()
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
    // Looked at again, not waited for: a tty says that it takes more when it is nearly empty, and not always
    // then.
    if (!_unsent.isEmpty())
        _pause.start(lookPause);
}
