#pragma once

#include <memory>

#include "serial/qextserialport.h"
#include "tests/support/pty.h"

using PortPointer = std::unique_ptr<QextSerialPort>;

/// A port object that has opened the terminal.
inline PortPointer openedPort(const Pty &terminal)
{
    auto port = std::make_unique<QextSerialPort>(terminal.portName());
    if (!port->open(QIODevice::ReadWrite))
        qFatal("cannot open the port");
    return port;
}
