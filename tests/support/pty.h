#pragma once

#include <termios.h>

#include <QByteArray>
#include <QString>

/// A raw pseudo-terminal: a real tty that the program opens, and the device's end, which the test uses.
class Pty
{
public:
    Pty();
    ~Pty();

    /// The path of the tty's node, such as "/dev/pts/7".
    QString name() const { return _name; }
    /// The port name of the tty, such as "pts/7".
    QString portName() const { return _name.mid(5); }
    /// The descriptor of the device's end. It is non-blocking.
    int device() const { return _device; }

    /// Sends to the process that has the tty open.
    void send(const QByteArray &bytes) const;
    /// Returns what the device has received since the last call.
    QByteArray received() const;
    /// Everything that the device has received so far, for QTRY_COMPARE.
    QByteArray collected();
    /// The current settings of the line, as set by the process that opened it.
    termios settings() const;
    /// Removes the device, as an unplug does: the tty hangs up.
    void hangUp();

    /// The number of descriptors that this process has open on the tty.
    int openDescriptors() const;

private:
    Q_DISABLE_COPY_MOVE(Pty)

    int _device = -1;
    QString _name;
    QByteArray _collected;
};
