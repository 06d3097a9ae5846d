#include "tests/support/pty.h"

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

#include <utility>

#include <QList>

#include "tests/support/descriptors.h"

namespace
{
/// A new terminal's device end; its node goes to \a node.
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

/// Whether a port of that node's name is locked. A terminal's name is free again a moment before another
/// process, just closing its port, has taken the lock file away.
bool isLocked(const QString &node)
{
    const QString lock = QStringLiteral("/var/lock/LCK..") + node.mid(5).replace('/', '_');
    return ::access(lock.toLocal8Bit().constData(), F_OK) == 0;
}
} // namespace

Pty::Pty()
{
    QList<int> locked; // kept until there is a free one, so that they are not handed out again
    for (_device = openTerminal(&_name); isLocked(_name); _device = openTerminal(&_name))
        locked.append(_device);
    for (const int device : std::as_const(locked))
        ::close(device);
    // A device does not echo, and its bytes are not a user's typing.
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
