#pragma once

// Must come before Qt's headers: its own headers use Qt's keywords as names.
#include <umockdev.h>

#include <QHash>
#include <QString>

/// The serial ports of the computer as the test needs them: a mocked /sys, /dev and udev. The program must
/// run under umockdev-wrapper. The object must outlive the ports that are opened on it.
class MockPorts
{
public:
    /// A computer with a console and no port.
    MockPorts();
    ~MockPorts();
    MockPorts(const MockPorts &) = delete;
    MockPorts &operator=(const MockPorts &) = delete;

    /// Plugs in a bridge. Its name is different each time, and no other process uses it.
    QString plugUsb(const char *vendor, const char *product, const char *model = "FT232R_USB_UART");
    /// Plugs in a bridge where udev does not run: its database is empty, and only the kernel knows the ids.
    QString plugUsbWithoutUdev(const char *vendor, const char *product, const char *model);
    /// Plugs in a bridge on the bus \a subsystem, such as the one that the bridges' drivers create; null for
    /// a port whose bus the system does not name.
    QString plugOnBus(const char *subsystem, const char *vendor, const char *product);
    /// Plugs in a card that has a port.
    QString plugPci();
    enum Node { WithNode, WithoutNode }; // whether there is a node in /dev to open
    /// A port that a driver offers without hardware behind it, unless LibcInterposer simulates a controller.
    QString addPhantom(Node node = WithNode);
    /// The same as newer kernels present it: the driver is \a driver, and an attribute of the tty contains
    /// the \a type of the controller, one of PORT_... in linux/serial.h.
    QString addPortOfDriver(const char *driver, int type);
    /// A virtual console: a tty that is not a port.
    QString addConsole();
    /// A tty named \a name without a device behind it, such as that of a null modem.
    void addVirtual(const QString &name);
    /// A USB device that is not a tty.
    void plugOtherUsb();

    /// Removes the port or other tty: first from the system, then udev reports it.
    void unplug(const QString &name);
    /// Makes udev report an event for the tty although nothing has happened to it.
    void announce(const QString &name, const char *action);
    /// Changes udev's properties of the tty.
    void setProperty(const QString &name, const char *property, const char *value);
    /// Makes the open tty hang up. It remains listed.
    void hangUp(const QString &name) const;
    /// The device's end of the port.
    int deviceDescriptor(const QString &name) const;

private:
    enum Link { Linked, Unlinked }; // whether the tty links to its device, which has the name of the bus

    QString nextName(const char *driver);
    QString addTty(const QString &name, const QString &parent, const QByteArray &parentText,
                   const QByteArray &text, Link link = Linked, Node node = WithNode);
    void add(const QByteArray &text);
    QByteArray sysPath(const QString &name) const;

    UMockdevTestbed *_bed;
    QHash<QString, QString> _paths;   // by name, without "/sys"
    QHash<QString, QString> _parents; // by name
};
