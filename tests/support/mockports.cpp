#include "tests/support/mockports.h"

#include <fcntl.h>
#include <unistd.h>

MockPorts::MockPorts()
    : _bed(umockdev_testbed_new())
{
    if (!umockdev_in_mock_environment())
        qFatal("this program has to run under umockdev-wrapper");
    // Every computer has a console. Without any tty, Qt assumes that udev is broken and lists the ports of
    // the real computer.
    addConsole();
}

MockPorts::~MockPorts()
{
    g_object_unref(_bed);
}

QString MockPorts::plugUsb(const char *vendor, const char *product, const char *model)
{
    const QString name = nextName("ttyUSB");
    const QString parent = QStringLiteral("/devices/pci0000:00/0000:00:14.0/usb1/%1").arg(name);
    return addTty(name, parent, "E: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\n",
                  QByteArray("E: ID_BUS=usb\nE: ID_VENDOR_ID=") + vendor + "\nE: ID_MODEL_ID=" + product +
                      "\nE: ID_MODEL=" + model + '\n');
}

QString MockPorts::plugUsbWithoutUdev(const char *vendor, const char *product, const char *model)
{
    const QString name = nextName("ttyUSB");
    const QString device = QStringLiteral("/devices/pci0000:00/0000:00:14.0/usb1/device_%1").arg(name);
    add("P: " + device.toUtf8() + "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\nA: idVendor=" + vendor +
        "\\n\nA: idProduct=" + product + "\\n\nA: product=" + model + "\\n\n\n");
    return addTty(name, device + QLatin1Char('/') + name, "E: SUBSYSTEM=usb\nE: DEVTYPE=usb_interface\n", "");
}

QString MockPorts::plugOnBus(const char *subsystem, const char *vendor, const char *product)
{
    const QString name = nextName("ttyB");
    const QByteArray bus = subsystem ? subsystem : "unknown";
    return addTty(name, QStringLiteral("/devices/somewhere/%1").arg(name), "E: SUBSYSTEM=" + bus + '\n',
                  QByteArray("E: ID_VENDOR_ID=") + vendor + "\nE: ID_MODEL_ID=" + product + '\n',
                  subsystem ? Linked : Unlinked);
}

QString MockPorts::plugPci()
{
    const QString name = nextName("ttyX");
    return addTty(name, QStringLiteral("/devices/pci0000:00/%1").arg(name), "E: SUBSYSTEM=pci\n",
                  "E: ID_BUS=pci\nE: ID_VENDOR_ID=0x8086\nE: ID_MODEL_ID=0x1c3d\n");
}

QString MockPorts::addPhantom(Node node)
{
    const QString name = nextName("ttyS");
    return addTty(
        name, QStringLiteral("/devices/platform/serial8250_%1").arg(name),
        "E: SUBSYSTEM=platform\nE: DRIVER=serial8250\nL: driver=../../../bus/platform/drivers/serial8250\n",
        "", Linked, node);
}

QString MockPorts::addPortOfDriver(const char *driver, int type)
{
    const QString name = nextName("ttyS");
    return addTty(name, QStringLiteral("/devices/platform/serial8250_%1").arg(name),
                  QByteArray("E: SUBSYSTEM=serial-base\nE: DRIVER=") + driver +
                      "\nL: driver=../../../bus/serial-base/drivers/" + driver + '\n',
                  "A: type=" + QByteArray::number(type) + "\n\n");
}

QString MockPorts::addConsole()
{
    QString name = nextName("tty");
    addVirtual(name);
    return name;
}

void MockPorts::addVirtual(const QString &name)
{
    _paths.insert(name, QStringLiteral("/devices/virtual/tty/%1").arg(name));
    add("P: " + _paths.value(name).toUtf8() + "\nE: SUBSYSTEM=tty\nE: DEVNAME=/dev/" + name.toUtf8() +
        "\n\n");
}

void MockPorts::plugOtherUsb()
{
    const QByteArray name = nextName("stick").toUtf8();
    add("P: /devices/pci0000:00/0000:00:14.0/usb1/" + name +
        "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\nE: ID_VENDOR_ID=0403\nE: ID_MODEL_ID=6001\n\n");
}

void MockPorts::unplug(const QString &name)
{
    // udev's "remove" event contains the remaining properties of the device; the tests check that nothing
    // else is read.
    const QByteArray path = sysPath(name);
    umockdev_testbed_uevent(_bed, path.constData(), "remove");
    umockdev_testbed_remove_device(_bed, path.constData());
    if (_parents.contains(name))
        umockdev_testbed_remove_device(_bed, _parents.value(name).toUtf8().constData());
}

void MockPorts::announce(const QString &name, const char *action)
{
    umockdev_testbed_uevent(_bed, sysPath(name).constData(), action);
}

void MockPorts::setProperty(const QString &name, const char *property, const char *value)
{
    umockdev_testbed_set_property(_bed, sysPath(name).constData(), property, value);
}

void MockPorts::hangUp(const QString &name) const
{
    const int nothing = ::open("/dev/null", O_RDWR | O_CLOEXEC); // the number stays reserved for the test bed
    ::dup3(nothing, deviceDescriptor(name), O_CLOEXEC);
    ::close(nothing);
}

int MockPorts::deviceDescriptor(const QString &name) const
{
    return umockdev_testbed_get_dev_fd(_bed, QByteArray("/dev/" + name.toUtf8()).constData());
}

// Lock files of Qt's serial ports are real, outside the mock environment: two processes must not use the same
// name.
QString MockPorts::nextName(const char *driver)
{
    static int count = 0;
    return QStringLiteral("%1%2%3")
        .arg(QLatin1String(driver))
        .arg(::getpid())
        .arg(count++, 3, 10, QLatin1Char('0'));
}

QString MockPorts::addTty(const QString &name, const QString &parent, const QByteArray &parentText,
                          const QByteArray &text, Link link, Node node)
{
    _paths.insert(name, parent + QLatin1String("/tty/") + name);
    _parents.insert(name, QLatin1String("/sys") + parent);
    const QByteArray toParent = link == Linked ? "\nL: device=../../../" + name.toUtf8() : QByteArray();
    add("P: " + parent.toUtf8() + '\n' + parentText + '\n');
    const QByteArray toNode = node == WithNode ? "\nN: " + name.toUtf8() : QByteArray();
    add("P: " + _paths.value(name).toUtf8() + toNode + toParent + "\nE: SUBSYSTEM=tty\nE: DEVNAME=/dev/" +
        name.toUtf8() + '\n' + text + '\n');
    return name;
}

void MockPorts::add(const QByteArray &text)
{
    GError *error = nullptr;
    if (!umockdev_testbed_add_from_string(_bed, text.constData(), &error))
        qFatal("%s", error->message);
}

QByteArray MockPorts::sysPath(const QString &name) const
{
    return "/sys" + _paths.value(name).toUtf8();
}
