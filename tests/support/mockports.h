#pragma once

// Before Qt's headers: its own use Qt's keywords as names.
#include <umockdev.h>

#include <QHash>
#include <QString>

/// The computer's serial ports, as the test wants them: a mock /sys, /dev and udev. The program has to run
/// under umockdev-wrapper. It must outlive the ports that are opened on it.
class MockPorts
{
public:
    /// A computer with a console and no port.
    MockPorts();
    ~MockPorts();
    MockPorts(const MockPorts &) = delete;
    MockPorts &operator=(const MockPorts &) = delete;

    /// Plugs a bridge in; its name is one that no other process uses, and each time another.
    QString plugUsb(const char *vendor, const char *product, const char *model = "FT232R_USB_UART");
    /// The same where udev does not run: its database is empty, and only the kernel knows the ids.
    QString plugUsbWithoutUdev(const char *vendor, const char *product, const char *model);
    /// The same on the bus \a subsystem, such as the one that the bridges' drivers make; null for a port
    /// whose bus the system doesn't name.
    QString plugOnBus(const char *subsystem, const char *vendor, const char *product);
    /// Plugs a card in that has a port.
    QString plugPci();
    enum Node { WithNode, WithoutNode }; // whether there is something in /dev to open
    /// A port that the driver offers with nothing behind it, unless TtyCalls pretends a controller.
    QString addPhantom(Node node = WithNode);
    /// The same as later kernels show it: the driver is \a driver, and the tty has an attribute that tells
    /// the \a type of the controller behind it, one of PORT_... in linux/serial.h.
    QString addPortOfDriver(const char *driver, int type);
    /// A virtual console, which is a tty and no port.
    QString addConsole();
    /// A tty called \a name with no device behind it, such as a null modem's.
    void addVirtual(const QString &name);
    /// Something on USB that is no tty.
    void plugOtherUsb();

    /// Takes the port or other tty away: the system forgets it, then udev tells.
    void unplug(const QString &name);
    /// Has udev tell of the tty, without anything happening to it.
    void announce(const QString &name, const char *action);
    /// Changes what udev knows of the tty.
    void setProperty(const QString &name, const char *property, const char *value);
    /// Has the open tty hang up, which stays listed.
    void hangUp(const QString &name) const;
    /// The device's end of the port.
    int deviceDescriptor(const QString &name) const;

private:
    enum Link { Linked, Unlinked }; // whether the tty leads to its device, whose bus tells where it is

    QString nextName(const char *driver);
    QString addTty(const QString &name, const QString &parent, const QByteArray &parentText,
                   const QByteArray &text, Link link = Linked, Node node = WithNode);
    void add(const QByteArray &text);
    QByteArray sysPath(const QString &name) const;

    UMockdevTestbed *_bed;
    QHash<QString, QString> _paths;   // by name, without "/sys"
    QHash<QString, QString> _parents; // by name
};
