#include "simulator/portpump.h"

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>

PortPump::PortPump() = default;

PortPump::~PortPump()
{
    detach();
}

void PortPump::attach(int descriptor)
{
    detach();
    _descriptor = descriptor;
    fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) | O_NONBLOCK);
    // The far end of a pty nobody has open is never silent: it reports a hang-up all the time. So the near
    // end is held open here, too.
    char slave[64] = "";
    if (ptsname_r(descriptor, slave, sizeof slave) == 0)
        _heldOpen = open(slave, O_RDWR | O_NOCTTY | O_CLOEXEC);

    _readable = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    _writable = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Write);
    _writable->setEnabled(false);
    connect(_readable.get(), &QSocketNotifier::activated, this, &PortPump::pump);
    connect(_writable.get(), &QSocketNotifier::activated, this, &PortPump::write);
}

void PortPump::detach()
{
    _readable.reset();
    _writable.reset();
    _unsent.clear();
    _descriptor = -1;
    if (_heldOpen >= 0)
        close(_heldOpen);
    _heldOpen = -1;
}

void PortPump::pump()
{
    char bytes[4096];
    while (_descriptor >= 0) {
        const ssize_t count = read(_descriptor, bytes, sizeof bytes);
        if (count <= 0)
            return;
        Q_EMIT received(QByteArray(bytes, count));
    }
}

void PortPump::send(const QByteArray &bytes)
{
    if (_descriptor < 0)
        return;
    _unsent += bytes;
    write();
}

void PortPump::write()
{
    if (!_unsent.isEmpty()) {
        const ssize_t count = ::write(_descriptor, _unsent.constData(), static_cast<size_t>(_unsent.size()));
        if (count > 0)
            _unsent.remove(0, count);
    }
    _writable->setEnabled(!_unsent.isEmpty());
}
