#pragma once

#include <QString>

#include "simulator/fakeusbbus.h"

/// A fake USB bus that can also have ttys other than those of USB bridges. Each tty gets a new name that no
/// other process uses, unless the caller gives the name.
class FakePorts : public FakeUsbBus
{
public:
    /// Plugs in a bridge.
    QString plugUsb(const UsbBridge &bridge = UsbBridge::ftdi()) { return QString::fromLatin1(plug(bridge)); }
    /// Plugs in a bridge where udev does not run: its database is empty, and only the kernel knows the ids.
    QString plugUsbWithoutUdev(const UsbBridge &bridge);
    /// Plugs in a port on the bus \a subsystem, such as "usb-serial"; null for a port whose bus the system
    /// does not name.
    QString plugOnBus(const char *subsystem, const char *vendor, const char *product);
    enum Node { WithNode, WithoutNode }; // whether there is a node in /dev to open
    /// A port that a driver offers without hardware behind it, unless LibcInterposer simulates a controller.
    QString addPhantom(Node node = WithNode);
    /// Such a port as newer kernels present it: the driver is \a driver, and an attribute of the tty contains
    /// the \a type of the controller, one of PORT_... in linux/serial.h.
    QString addPortOfDriver(const QByteArray &driver, int type);
    /// A tty named \a name without a device behind it, such as a virtual console or that of a null modem.
    void addVirtual(const QString &name);
    /// A USB device that is not a tty.
    void plugOtherUsb();

    /// Removes the port or other tty.
    void unplug(const QString &name) { FakeUsbBus::unplug(name.toLatin1()); }
    /// Makes udev report an event for the tty although nothing has happened to it.
    void announce(const QString &name, const char *action);
    /// Changes udev's properties of the tty.
    void setProperty(const QString &name, const char *property, const char *value);
    /// Makes the open tty hang up. It remains listed.
    void hangUp(const QString &name) const { FakeUsbBus::hangUp(deviceDescriptor(name)); }
    /// The device's end of the port.
    int deviceDescriptor(const QString &name) const { return descriptor(name.toLatin1()); }

private:
    enum Link { Linked, Unlinked }; // whether the tty links to its device, which has the name of the bus

    QString addTty(const char *prefix, const QByteArray &parentPath, const QByteArray &parentText,
                   const QByteArray &text, Link link = Linked, Node node = WithNode);
};
