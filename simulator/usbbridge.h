#pragma once

#include <QByteArray>
#include <QList>
#include <QtGlobal>

/// A USB-to-serial bridge and how it identifies itself on the bus.
struct UsbBridge {
    quint16 vendor = 0;
    quint16 product = 0;
    QByteArray vendorText;  ///< its manufacturer string
    QByteArray productText; ///< its product string
    QByteArray serial;      ///< its serial number; may be empty
    QByteArray driver;      ///< the kernel module that provides its tty

    /// 0403:6001, one of the two bridges that the device is sold with.
    static UsbBridge ftdi();
    /// 067b:2303, the other one.
    static UsbBridge prolific();
    /// 0403:6015, of the same manufacturer as the first one, but not part of a supported device.
    static UsbBridge foreignFtdi();
    /// 1a86:7523, of another manufacturer.
    static UsbBridge foreignCh340();
};

/// Where a bridge is plugged in.
struct UsbPlace {
    int socket = 1;     ///< port of the root hub, counted from 1
    int address = 1;    ///< address on the bus; each plug() assigns a new one
    QByteArray ttyName; ///< such as "ttyUSB0"
    int ttyMinor = 0;   ///< minor device number; the major number is 188
};

/// What the kernel and udev report about a plugged bridge.
struct UsbRecord {
    QByteArray devices; ///< the whole chain of devices, bus device first, in umockdev's description format
    QList<QByteArray> sysfsPaths; ///< the same devices, in the order in which they are removed
};

/// Describes \a bridge, plugged in at \a place.
UsbRecord recordOf(const UsbBridge &bridge, const UsbPlace &place);
