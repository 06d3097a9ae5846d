#pragma once

#include <QByteArray>
#include <QString>

/// A pseudo-terminal: the test holds the device's end, its other end is a serial port of this computer.
class PseudoTerminal
{
public:
    PseudoTerminal();
    ~PseudoTerminal();
    PseudoTerminal(const PseudoTerminal &) = delete;
    PseudoTerminal &operator=(const PseudoTerminal &) = delete;

    /// The port's node, such as "/dev/pts/7".
    QString path() const { return _path; }
    /// The port's name, such as "pts/7".
    QString portName() const { return _path.mid(5); }
    /// The descriptor of the device's end, which never blocks.
    int device() const { return _device; }

    /// The device sends \a bytes.
    void send(const QByteArray &bytes);
    /// What has reached the device since it was last asked.
    QByteArray received();
    /// The device goes away.
    void hangUp();

    /// How many descriptors this process has open on the port.
    int openDescriptors() const;

private:
    int _device = -1;
    QString _path;
};
