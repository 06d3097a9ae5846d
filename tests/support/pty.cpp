#include "tests/support/pty.h"

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

#include <QtGlobal>

#include "tests/support/descriptors.h"

Pty::Pty()
{
    _device = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    char name[64] = "";
    if (_device < 0 || ::grantpt(_device) != 0 || ::unlockpt(_device) != 0 ||
        ::ptsname_r(_device, name, sizeof name) != 0)
        qFatal("no pseudo-terminal to be had");
    _name = QString::fromLocal8Bit(name);
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
