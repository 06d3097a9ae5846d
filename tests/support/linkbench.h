#pragma once

#include <memory>

#include "serial/qextserialport.h"
#include "tests/support/messagerecorder.h"
#include "tests/support/pty.h"
#include "tests/support/zvtolvarinspector.h"

/// A controller on a test bench: connected to a tty without being found and woken first, or to none at all.
/// What it says is recorded.
class LinkBench
{
public:
    /// Gives the controller an open port, whose bytes reach it as they come.
    void connectPort()
    {
        _port = std::make_unique<QextSerialPort>(pty.name());
        if (!_port->open(QIODevice::ReadWrite))
            qFatal("the port did not open");
        QObject::connect(_port.get(), &QextSerialPort::readyRead, &tolvar, &ZVTolvar::onReadyRead);
        inside.port() = _port.get();
    }
    /// Feeds the controller as if the bytes had come from its port.
    void feed(const QByteArray &received)
    {
        for (const char c : received)
            tolvar.handleReceived(c);
    }

    Pty pty;
    ZVTolvar tolvar;
    const ZVTolvarInspector inside{tolvar};

private:
    std::unique_ptr<QextSerialPort> _port;

public:
    /// Gone before the others: what they say at their end is nobody's.
    const std::unique_ptr<MessageRecorder> log = std::make_unique<MessageRecorder>();
};
