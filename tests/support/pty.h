#pragma once

#include <termios.h>

#include <QByteArray>
#include <QString>

/// A raw pseudo-terminal: a real tty for the program to open, and the device's end of it for the test to
/// hold.
class Pty
{
public:
    Pty();
    ~Pty();

    /// The tty's node, such as "/dev/pts/7".
    QString name() const { return _name; }
    /// The tty's name as a port, such as "pts/7".
    QString portName() const { return _name.mid(5); }
    /// The descriptor of the device's end, which never blocks.
    int device() const { return _device; }

    /// Sends to whoever holds the tty open.
    void send(const QByteArray &bytes) const;
    /// What has reached the device since it was last asked.
    QByteArray received() const;
    /// Everything that has reached the device so far, for QTRY_COMPARE to look at.
    QByteArray collected();
    /// The line's settings, as its opener made them.
    termios settings() const;
    /// The device goes away, as with an unplug: the tty hangs up.
    void hangUp();

    /// How many descriptors this process has open on the tty.
    int openDescriptors() const;

private:
    Q_DISABLE_COPY_MOVE(Pty)

    int _device = -1;
    QString _name;
    QByteArray _collected;
};
