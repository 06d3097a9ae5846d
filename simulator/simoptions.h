#pragma once

#include <optional>

#include <QStringList>

#include "simulator/tolvarsetup.h"
#include "simulator/usbbridge.h"

/// What the command line of tolvarsim asks for.
struct SimOptions {
    TolvarSetup setup;
    UsbBridge bridge = UsbBridge::ftdi();
    int plugAfter = 0; ///< milliseconds; 0 plugs in before the program starts
    int firstTty = 0;  ///< the number in the first tty's name
    bool hasForeign = false;
    bool isVerbose = false;
    std::optional<QByteArray> expectedSsid; ///< what the device must hold in the end
    std::optional<QByteArray> expectedPassphrase;
    bool mustExit = false; ///< "exit" must have come
    QStringList program;   ///< and its arguments
};

/// Reads the command line, the program's own name first. Bad use leaves one sentence in \a problem and gives
/// nothing. Asked for help or version it prints that and ends the process.
std::optional<SimOptions> readOptions(const QStringList &arguments, QString &problem);
