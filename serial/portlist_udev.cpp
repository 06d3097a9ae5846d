#include "serial/portlist.h"

#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unistd.h>

#include <libudev.h>
#include <linux/serial.h>
#include <sys/ioctl.h>

#include "serial/udevunref.h"

// Qt makes udev read all properties of every tty before it drops most ttys, and a Linux system has 64 virtual
// consoles. Reading them took ten milliseconds each time, longer than anything else between the program's
// start and its window. Here the consoles are skipped by name. The remaining ports follow the same rules as
// in Qt, in the same order, except in isPhantom() and valueOf().

namespace
{
struct CloseFolder {
    void operator()(DIR *folder) const { ::closedir(folder); }
};

/// Whether this is one of the kernel's own terminals. None of them is a port.
bool isConsole(const std::string_view name)
{
    if (name == "console" || name == "ptmx" || name == "tty")
        return true;
    return name.size() > 3 && name.substr(0, 3) == "tty" && name[3] >= '0' && name[3] <= '9';
}

/// Whether the driver offers the port without a device behind it. Since version 6.5, the kernel puts a device
/// of the driver "port" between the driver's device and the tty.
bool isPhantom(udev_device *port, udev_device *parent)
{
    const char *driver = udev_device_get_driver(parent);
    if (!driver || (std::strcmp(driver, "serial8250") != 0 && std::strcmp(driver, "port") != 0))
        return false;
    if (const char *type = udev_device_get_sysattr_value(port, "type"))
        return std::atoi(type) == PORT_UNKNOWN;
    // Old kernels do not have this attribute. They report the type only for an open port.
    const char *location = udev_device_get_devnode(port);
    const int descriptor = ::open(location, O_RDWR | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0)
        return true;
    serial_struct settings{};
    const bool isThere = ::ioctl(descriptor, TIOCGSERIAL, &settings) == 0 && settings.type != PORT_UNKNOWN;
    ::close(descriptor);
    return !isThere;
}

/// Ports that belong to no device: Bluetooth, null modems, and this computer's own as a USB gadget.
bool isPortWithoutDevice(const QString &name)
{
    if (name.startsWith(QLatin1String("tnt")) || name.startsWith(QLatin1String("ttyGS")))
        return true;
    if (!name.startsWith(QLatin1String("rfcomm")))
        return false;
    bool isNumber = false;
    const int number = QStringView(name).mid(6).toInt(&isNumber);
    return isNumber && number >= 0 && number <= 255;
}

/// A property of the port from udev's database, or an attribute of its USB device from the kernel: the
/// database is empty where udev does not run.
QByteArray valueOf(udev_device *port, const char *property, const char *usbAttribute)
{
    if (const char *value = udev_device_get_property_value(port, property))
        return value;
    udev_device *const device = udev_device_get_parent_with_subsystem_devtype(port, "usb", "usb_device");
    return device ? udev_device_get_sysattr_value(device, usbAttribute) : nullptr;
}

std::optional<int> idOf(const QByteArray &value)
{
    bool isNumber = false;
    const int id = value.toInt(&isNumber, 16);
    if (!isNumber)
        return std::nullopt;
    return id & 0xFFFF;
}

std::optional<ListedPort> portOf(udev_device *device)
{
    ListedPort port;
    port.name = QString::fromLatin1(udev_device_get_sysname(device));
    port.location = QString::fromLatin1(udev_device_get_devnode(device));

    udev_device *const parent = udev_device_get_parent(device); // valid as long as the device
    if (!parent)
        return isPortWithoutDevice(port.name) ? std::optional(port) : std::nullopt;
    if (isPhantom(device, parent))
        return std::nullopt;
    port.description = QString::fromLatin1(valueOf(device, "ID_MODEL", "product"))
                           .replace(QLatin1Char('_'), QLatin1Char(' '));
    port.vendorID = idOf(valueOf(device, "ID_VENDOR_ID", "idVendor"));
    port.productID = idOf(valueOf(device, "ID_MODEL_ID", "idProduct"));
    return port;
}
} // namespace

std::optional<QList<ListedPort>> listedByUdev()
{
    const std::unique_ptr<udev, UdevUnref> context(udev_new());
    if (!context)
        return std::nullopt;
    const std::unique_ptr<DIR, CloseFolder> folder(::opendir("/sys/class/tty"));
    if (!folder)
        return std::nullopt;

    // In the order of the device paths, as udev sorts them.
    std::map<std::string, std::unique_ptr<udev_device, UdevUnref>> ttys;
    while (const dirent *entry = ::readdir(folder.get())) {
        if (entry->d_name[0] == '.' || isConsole(entry->d_name))
            continue;
        std::unique_ptr<udev_device, UdevUnref> device(
            udev_device_new_from_subsystem_sysname(context.get(), "tty", entry->d_name));
        if (device)
            ttys.emplace(udev_device_get_syspath(device.get()), std::move(device));
    }

    QList<ListedPort> ports;
    for (const auto &[sysfsPath, device] : ttys) {
        if (const auto port = portOf(device.get()))
            ports.append(*port);
    }
    return ports;
}
