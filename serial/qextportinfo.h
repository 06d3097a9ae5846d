#pragma once

#include <QString>

/// One serial port of the computer.
struct QextPortInfo {
    QString portName;   ///< the name a port is opened by, such as "ttyUSB0" or "COM3"
    QString physName;   ///< where the system keeps it, such as "/dev/ttyUSB0"
    QString friendName; ///< what it calls itself, such as "FT232R USB UART"; may be empty
    QString enumName;   ///< the bus that announced it: "USB", or empty for a port on no such bus
    int vendorID = 0;   ///< USB vendor id, 0 when the port is not on USB
    int productID = 0;  ///< USB product id, 0 when the port is not on USB
};

/// Whether both describe the same port in the same words.
inline bool operator==(const QextPortInfo &one, const QextPortInfo &other)
{
    return one.portName == other.portName && one.physName == other.physName &&
           one.friendName == other.friendName && one.enumName == other.enumName &&
           one.vendorID == other.vendorID && one.productID == other.productID;
}

/// Whether the two differ in any word.
inline bool operator!=(const QextPortInfo &one, const QextPortInfo &other)
{
    return !(one == other);
}
