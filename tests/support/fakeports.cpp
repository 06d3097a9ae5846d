#include <umockdev.h>

#include "tests/support/fakeports.h"

namespace
{
/// A parent device that is on the bus or has the driver.
QByteArray parentOn(const QByteArray &bus, const QByteArray &driver = QByteArray())
{
    if (driver.isEmpty())
        return "E: SUBSYSTEM=" + bus + '\n';
    return "E: SUBSYSTEM=" + bus + "\nE: DRIVER=" + driver + "\nL: driver=../../../bus/" + bus + "/drivers/" +
           driver + '\n';
}
} // namespace

QString FakePorts::plugUsbWithoutUdev(const UsbBridge &bridge)
{
    const QByteArray name = "ttyUSB" + QByteArray::number(takeTtyNumber());
    UsbRecord record = recordOf(bridge, {1, 2, name, 0});
    QList<QByteArray> lines = record.devices.split('\n');
    lines.removeIf([](const QByteArray &line) { return line.startsWith("E: ID_"); });
    record.devices = lines.join('\n');
    add(name, record);
    return QString::fromLatin1(name);
}

QString FakePorts::plugOnBus(const char *subsystem, const char *vendor, const char *product)
{
    return addTty("ttyB", "/devices/somewhere/", parentOn(subsystem ? subsystem : "unknown"),
                  QByteArray("E: ID_VENDOR_ID=") + vendor + "\nE: ID_MODEL_ID=" + product + '\n',
                  subsystem ? Linked : Unlinked);
}

QString FakePorts::addPhantom(Node node)
{
    return addTty("ttyS", "/devices/platform/", parentOn("platform", "serial8250"), {}, Linked, node);
}

QString FakePorts::addPortOfDriver(const QByteArray &driver, int type)
{
    return addTty("ttyS", "/devices/platform/", parentOn("serial-base", driver),
                  "A: type=" + QByteArray::number(type) + "\\n\n");
}

void FakePorts::addVirtual(const QString &name)
{
    const QByteArray path = "/devices/virtual/tty/" + name.toLatin1();
    add(name.toLatin1(),
        {"P: " + path + "\nE: SUBSYSTEM=tty\nE: DEVNAME=/dev/" + name.toLatin1() + "\n\n", {"/sys" + path}});
}

void FakePorts::plugOtherUsb()
{
    const QByteArray path = "/devices/pci0000:00/0000:00:14.0/usb1/stick";
    add("stick", {"P: " + path +
                      "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\nE: ID_VENDOR_ID=0403\n"
                      "E: ID_MODEL_ID=6001\n\n",
                  {"/sys" + path}});
}

void FakePorts::announce(const QString &name, const char *action)
{
    umockdev_testbed_uevent(testbed(), sysfsPath(name.toLatin1()).constData(), action);
}

void FakePorts::setProperty(const QString &name, const char *property, const char *value)
{
    umockdev_testbed_set_property(testbed(), sysfsPath(name.toLatin1()).constData(), property, value);
}

QString FakePorts::addTty(const char *prefix, const QByteArray &parentPath, const QByteArray &parentText,
                          const QByteArray &text, Link link, Node node)
{
    const QByteArray name = prefix + QByteArray::number(takeTtyNumber());
    const QByteArray parent = parentPath + name;
    const QByteArray path = parent + "/tty/" + name;
    QByteArray tty = "P: " + path + "\nE: SUBSYSTEM=tty\nE: DEVNAME=/dev/" + name + '\n' + text;
    if (node == WithNode)
        tty += "N: " + name + '\n';
    if (link == Linked)
        tty += "L: device=../../../" + name + '\n';
    add(name, {"P: " + parent + '\n' + parentText + '\n' + tty + '\n', {"/sys" + path, "/sys" + parent}});
    return QString::fromLatin1(name);
}
