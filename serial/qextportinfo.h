#pragma once

#include <QString>

/// One serial port of the computer.
struct QextPortInfo {
    QString portName;   ///< the name that opens the port, such as "ttyUSB0" or "COM3"
    QString physName;   ///< the port's path in the system, such as "/dev/ttyUSB0"
    QString friendName; ///< the device's description, such as "FT232R USB UART"; may be empty
    QString enumName;   ///< the bus that reported the port: "USB", or empty for a port on no such bus
    int vendorID = 0;   ///< USB vendor id, 0 if the port is not on USB
    int productID = 0;  ///< USB product id, 0 if the port is not on USB
};

/// Whether all fields are equal.
inline bool operator==(const QextPortInfo &one, const QextPortInfo &other)
{
    return one.portName == other.portName && one.physName == other.physName &&
           one.friendName == other.friendName && one.enumName == other.enumName &&
           one.vendorID == other.vendorID && one.productID == other.productID;
}

/// Whether any field differs.
inline bool operator!=(const QextPortInfo &one, const QextPortInfo &other)
{
    return !(one == other);
}
