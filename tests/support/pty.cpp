#include "tests/support/pty.h"

#include <fcntl.h>
#include <pty.h>
#include <unistd.h>

#include <QtGlobal>

Pty::Pty()
{
    char name[128] = {};
    termios raw = {};
    cfmakeraw(&raw);
    if (openpty(&_master, &_keepOpen, name, &raw, nullptr) != 0)
        qFatal("no pseudo-terminal to be had");
    fcntl(_master, F_SETFL, O_NONBLOCK);
    _name = QString::fromLocal8Bit(name);
}

Pty::~Pty()
{
    hangUp();
}

void Pty::send(const QByteArray &bytes) const
{
    if (::write(_master, bytes.constData(), static_cast<size_t>(bytes.size())) != bytes.size())
        qFatal("the pseudo-terminal takes no bytes");
}

QByteArray Pty::received()
{
    char buffer[4096];
    QByteArray bytes;
    for (;;) {
        const ssize_t count = ::read(_master, buffer, sizeof buffer);
        if (count <= 0)
            return bytes;
        bytes.append(buffer, static_cast<int>(count));
    }
}

QByteArray Pty::collected()
{
    _collected += received();
    return _collected;
}

termios Pty::settings() const
{
    termios line = {};
    tcgetattr(_master, &line);
    return line;
}

void Pty::hangUp()
{
    for (int *descriptor : {&_keepOpen, &_master}) {
        if (*descriptor >= 0)
            ::close(*descriptor);
        *descriptor = -1;
    }
}
