#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

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
    /// A name to open the port by, a link of its own to the node. The node's number goes to the next process
    /// that asks as soon as the terminal closes, a moment before the lock file by that name is gone.
    QString portName() const { return _folder.filePath(QStringLiteral("port")); }
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
    QTemporaryDir _folder;
};
