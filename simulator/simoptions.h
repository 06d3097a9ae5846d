#pragma once

#include <optional>

#include <QStringList>

#include "simulator/deviceconfig.h"
#include "simulator/usbbridge.h"

/// The options on the command line of tolvarsim.
struct SimOptions {
    DeviceConfig config;
    UsbBridge bridge = UsbBridge::ftdi();
    int plugAfter = 0; ///< milliseconds; 0: plug in before the program starts
    int firstTty = 0;  ///< the number in the name of the first tty
    bool hasForeign = false;
    bool isVerbose = false;
    std::optional<QByteArray> expectedSsid; ///< the SSID that the device must have saved at the end
    std::optional<QByteArray> expectedPassphrase;
    bool mustExit = false; ///< the device must have received "exit"
    QStringList program;   ///< with its arguments
};

/// Parses the command line, which begins with the program's own name. On an error, sets \a problem to one
/// sentence and returns no value. For the help and version options, prints the text and ends the process.
std::optional<SimOptions> readOptions(const QStringList &arguments, QString &problem);
