#pragma once

#include <optional>

#include "serial/qextserialport.h"

class QSerialPort;

/// The requested settings of a line. A setting that is not requested stays as it is.
struct LineSettings {
    std::optional<BaudRateType> baudRate;
    std::optional<FlowType> flowControl;
    std::optional<ParityType> parity;
    std::optional<DataBitsType> dataBits;
    std::optional<StopBitsType> stopBits;
    std::optional<bool> dtr;
    std::optional<bool> rts;

    /// Applies the settings to the open \a port. Skips what the port does not support: a pseudo-terminal has
    /// no DTR, for example.
    void applyTo(QSerialPort &port) const;
};
