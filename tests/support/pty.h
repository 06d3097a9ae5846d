#pragma once

#include <termios.h>

#include <QByteArray>
#include <QString>

/// A raw pseudo-terminal: a real tty for the program to open, and its other end for the test to hold.
class Pty
{
public:
    Pty();
    ~Pty();

    /// The name to open it by, such as "/dev/pts/7".
    QString name() const { return _name; }
    /// Sends to whoever holds the tty open.
    void send(const QByteArray &bytes) const;
    /// What was written to the tty and not read here yet; empty when there is nothing.
    QByteArray received();
    /// Everything written so far is collected here, for QTRY_COMPARE to look at.
    QByteArray collected();
    /// The line's settings, as its opener made them.
    termios settings() const;
    /// Closes the other end, as an unplug does: the tty hangs up.
    void hangUp();

private:
    Q_DISABLE_COPY_MOVE(Pty)

    int _master = -1;
    int _keepOpen = -1; // without it the kernel hangs the tty up before its first opener comes
    QString _name;
    QByteArray _collected;
};
