#pragma once

#include <memory>

#include "serial/qextserialport.h"
#include "tests/support/messagespy.h"
#include "tests/support/pty.h"
#include "tests/support/zvtolvartestpeer.h"

/// A controller in a test fixture. It is connected to a tty without searching and waking it first, or to no
/// tty. Its signals and messages are recorded.
class LinkFixture
{
public:
    /// Gives the controller an open port. The bytes of the port reach it as they arrive.
    void connectPort()
    {
        _port = std::make_unique<QextSerialPort>(pty.name());
        if (!_port->open(QIODevice::ReadWrite))
            qFatal("cannot open the port");
        QObject::connect(_port.get(), &QextSerialPort::readyRead, &tolvar, &ZVTolvar::onReadyRead);
        inside.port() = _port.get();
    }
    /// Passes bytes to the controller as if they had come from its port.
    void feed(const QByteArray &received)
    {
        for (const char c : received)
            tolvar.handleReceived(c);
    }

    Pty pty;
    ZVTolvar tolvar;
    const ZVTolvarTestPeer inside{tolvar};

private:
    std::unique_ptr<QextSerialPort> _port;

public:
    /// Destroyed before the other members: messages from their destructors are not recorded.
    const std::unique_ptr<MessageSpy> log = std::make_unique<MessageSpy>();
};
