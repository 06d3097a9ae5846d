#pragma once

#include <cstdlib>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <QList>
#include <QString>

#include "tests/support/descriptors.h"

/// A raw pseudo-terminal: a real tty that the program opens, and the device's end, which the test uses.
class Pty
{
public:
    Pty()
    {
        // The name of a terminal is free again slightly before the process that closes its port has removed
        // the lock file. Locked ones are kept open meanwhile, so that the system does not return them again.
        QList<int> locked;
        for (open(); isLocked(); open())
            locked.append(_device);
        for (const int device : std::as_const(locked))
            ::close(device);
        // A device does not echo, and its bytes are not terminal input.
        termios raw = settings();
        ::cfmakeraw(&raw);
        ::tcsetattr(_device, TCSANOW, &raw);
    }
    ~Pty() { hangUp(); }

    /// The path of the tty's node, such as "/dev/pts/7".
    QString name() const { return _name; }
    /// The port name of the tty, such as "pts/7".
    QString portName() const { return _name.mid(5); }
    /// The descriptor of the device's end. It is non-blocking.
    int device() const { return _device; }

    /// Sends to the process that has the tty open.
    void send(const QByteArray &bytes) const
    {
        if (::write(_device, bytes.constData(), static_cast<size_t>(bytes.size())) != bytes.size())
            qFatal("cannot write to the pseudo-terminal");
    }
    /// Returns what the device has received since the last call.
    QByteArray received() const
    {
        QByteArray all;
        char some[4096];
        for (ssize_t count; (count = ::read(_device, some, sizeof some)) > 0;)
            all.append(some, count);
        return all;
    }
    /// Everything that the device has received so far, for QTRY_COMPARE.
    QByteArray collected() { return _collected += received(); }
    /// The current settings of the line, as set by the process that opened it.
    termios settings() const
    {
        termios line = {};
        ::tcgetattr(_device, &line);
        return line;
    }
    /// Removes the device, as an unplug does: the tty hangs up.
    void hangUp()
    {
        if (_device >= 0)
            ::close(_device);
        _device = -1;
    }
    /// The number of descriptors that this process has open on the tty.
    int openDescriptors() const { return static_cast<int>(::openDescriptors().count(_name)); }

private:
    Q_DISABLE_COPY_MOVE(Pty)

    void open()
    {
        _device = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
        char name[64] = "";
        if (_device < 0 || ::grantpt(_device) != 0 || ::unlockpt(_device) != 0 ||
            ::ptsname_r(_device, name, sizeof name) != 0)
            qFatal("cannot create a pseudo-terminal");
        _name = QString::fromLocal8Bit(name);
    }
    bool isLocked() const
    {
        const QString lock = "/var/lock/LCK.." + portName().replace('/', '_');
        return ::access(lock.toLocal8Bit().constData(), F_OK) == 0;
    }

    int _device = -1;
    QString _name;
    QByteArray _collected;
};
