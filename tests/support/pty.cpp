#include "tests/support/pty.h"

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

#include <utility>

#include <QList>

#include "tests/support/descriptors.h"

namespace
{
/// Opens a new pseudo-terminal and returns the device's end. Sets \a node to the path of its node.
int openTerminal(QString *node)
{
    const int device = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    char name[64] = "";
    if (device < 0 || ::grantpt(device) != 0 || ::unlockpt(device) != 0 ||
        ::ptsname_r(device, name, sizeof name) != 0)
        qFatal("no pseudo-terminal to be had");
    *node = QString::fromLocal8Bit(name);
    return device;
}

/// Returns true if a port with that node's name is locked. The name of a terminal is free again slightly
/// before the process that closes its port has removed the lock file.
bool isLocked(const QString &node)
{
    const QString lock = QStringLiteral("/var/lock/LCK..") + node.mid(5).replace('/', '_');
    return ::access(lock.toLocal8Bit().constData(), F_OK) == 0;
}
} // namespace

Pty::Pty()
{
    QList<int>
        locked; // kept open until an unlocked one is found, so that the system does not return them again
    for (_device = openTerminal(&_name); isLocked(_name); _device = openTerminal(&_name))
        locked.append(_device);
    for (const int device : std::as_const(locked))
        ::close(device);
    // A device does not echo, and its bytes are not terminal input.
    termios raw = settings();
    ::cfmakeraw(&raw);
    ::tcsetattr(_device, TCSANOW, &raw);
}

Pty::~Pty()
{
    hangUp();
}

void Pty::send(const QByteArray &bytes) const
{
    if (::write(_device, bytes.constData(), static_cast<size_t>(bytes.size())) != bytes.size())
        qFatal("the pseudo-terminal takes no bytes");
}

QByteArray Pty::received() const
{
    QByteArray all;
    char some[4096];
    for (ssize_t count; (count = ::read(_device, some, sizeof some)) > 0;)
        all.append(some, count);
    return all;
}

QByteArray Pty::collected()
{
    _collected += received();
    return _collected;
}

termios Pty::settings() const
{
    termios line = {};
    ::tcgetattr(_device, &line);
    return line;
}

void Pty::hangUp()
{
    if (_device >= 0)
        ::close(_device);
    _device = -1;
}

int Pty::openDescriptors() const
{
    return static_cast<int>(::openDescriptors().count(_name));
}
