#pragma once

#include <QByteArray>
#include <QList>
#include <QtGlobal>

/// A USB-to-serial bridge, as it describes itself on the bus.
struct UsbBridge {
    quint16 vendor = 0;
    quint16 product = 0;
    QByteArray vendorText;  ///< its manufacturer string
    QByteArray productText; ///< its product string
    QByteArray serial;      ///< its serial number; may be empty
    QByteArray driver;      ///< the kernel module that makes a tty of it

    /// 0403:6001, one of the two the device comes with.
    static UsbBridge ftdi();
    /// 067b:2303, the other one.
    static UsbBridge prolific();
    /// 0403:6015, of the first one's maker but no device of ours.
    static UsbBridge foreignFtdi();
    /// 1a86:7523, of another maker.
    static UsbBridge foreignCh340();
};

/// Where a bridge is plugged in.
struct UsbPlace {
    int socket = 1;     ///< of the root hub, counted from 1
    int address = 1;    ///< on the bus; a new one with each plugging
    QByteArray ttyName; ///< such as "ttyUSB0"
    int ttyMinor = 0;   ///< its device number beside major 188
};

/// What the kernel and udev know of a plugged bridge.
struct UsbRecord {
    QByteArray devices;           ///< the whole chain, bus device first, in the mock test bed's language
    QList<QByteArray> sysfsPaths; ///< the same devices, in the order they go
};
UsbRecord recordOf(const UsbBridge &bridge, const UsbPlace &place);
