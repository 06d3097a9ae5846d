#pragma once

#include <optional>

#include "serial/qextserialport.h"

class QSerialPort;

/// What somebody wishes a line to be set to; what is not wished for stays as it is.
struct LineSettings {
    std::optional<BaudRateType> baudRate;
    std::optional<FlowType> flowControl;
    std::optional<ParityType> parity;
    std::optional<DataBitsType> dataBits;
    std::optional<StopBitsType> stopBits;
    std::optional<bool> dtr;
    std::optional<bool> rts;

    /// Sets the open \a port so. What it can't do is left out: a pseudo-terminal has no DTR, for one.
    void applyTo(QSerialPort &port) const;
};
