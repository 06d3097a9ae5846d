#pragma once

#include <QStringList>

#include "serial/qextportinfo.h"

/// Sample ports and the log messages about them.
namespace PortInfos
{
/// A port of the device's FT232 bridge, or of a bridge with other ids.
inline QextPortInfo bridge(const QString &portName, int vendorID = 0x0403, int productID = 0x6001)
{
    QextPortInfo info;
    info.portName = portName;
    info.physName = "/dev/" + portName;
    info.friendName = "USB \"UART\"";
    info.enumName = "USB enumerator";
    info.vendorID = vendorID;
    info.productID = productID;
    return info;
}

/// The seven messages that describe bridge(\a portName), with its ids as displayed.
inline QStringList description(const QString &portName, const QString &vendor = "403",
                               const QString &product = "6001")
{
    return {"D:port name: \"" + portName + "\" ",
            "D:friendly name: \"USB \"UART\"\" ",
            "D:physical name: \"/dev/" + portName + "\" ",
            "D:enumerator name: \"USB enumerator\" ",
            "D:vendor ID: \"" + vendor + "\" ",
            "D:product ID: \"" + product + "\" ",
            "D:" + QString(35, '=') + " "};
}
} // namespace PortInfos
