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

// Qt has udev read all about every tty before it leaves most of them out, and each Linux has 64 virtual
// consoles: that took ten milliseconds a time, longer than anything else between the program's start and its
// window. Here the consoles are left out by their names. What remains is a port by the same rules, and stands
// in the same order.

namespace
{
struct LetGo {
    void operator()(udev *context) const { udev_unref(context); }
    void operator()(udev_device *device) const { udev_device_unref(device); }
    void operator()(DIR *folder) const { ::closedir(folder); }
};

/// Whether this is one of the kernel's own terminals, none of which is a port.
bool isConsole(const std::string_view name)
{
    if (name == "console" || name == "ptmx" || name == "tty")
        return true;
    return name.size() > 3 && name.substr(0, 3) == "tty" && name[3] >= '0' && name[3] <= '9';
}

/// Whether the port is one that its driver offers with nothing behind it. Kernels since 6.5 put a device of
/// the driver "port" between the driver's own and the tty.
bool isPhantom(udev_device *port, udev_device *parent)
{
    const char *driver = udev_device_get_driver(parent);
    if (!driver || (std::strcmp(driver, "serial8250") != 0 && std::strcmp(driver, "port") != 0))
        return false;
    if (const char *type = udev_device_get_sysattr_value(port, "type"))
        return std::atoi(type) == PORT_UNKNOWN;
    // An old kernel says so on the open port only.
    const char *location = udev_device_get_devnode(port);
    const int descriptor = ::open(location, O_RDWR | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0)
        return true;
    serial_struct settings{};
    const bool isThere = ::ioctl(descriptor, TIOCGSERIAL, &settings) == 0 && settings.type != PORT_UNKNOWN;
    ::close(descriptor);
    return !isThere;
}

/// Ports that are none of a device: Bluetooth's, null modems, and this computer's own as a gadget.
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

/// What udev's database has of the port, or the kernel of the USB device that it is on: the database is empty
/// where udev does not run.
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

    udev_device *const parent = udev_device_get_parent(device); // lives as long as the device
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
    const std::unique_ptr<udev, LetGo> context(udev_new());
    if (!context)
        return std::nullopt;
    const std::unique_ptr<DIR, LetGo> folder(::opendir("/sys/class/tty"));
    if (!folder)
        return std::nullopt;

    // By their place among the devices, as udev sorts them.
    std::map<std::string, std::unique_ptr<udev_device, LetGo>> ttys;
    while (const dirent *entry = ::readdir(folder.get())) {
        if (entry->d_name[0] == '.' || isConsole(entry->d_name))
            continue;
        std::unique_ptr<udev_device, LetGo> device(
            udev_device_new_from_subsystem_sysname(context.get(), "tty", entry->d_name));
        if (device)
            ttys.emplace(udev_device_get_syspath(device.get()), std::move(device));
    }

    QList<ListedPort> ports;
    for (const auto &[place, device] : ttys) {
        if (const auto port = portOf(device.get()))
            ports.append(*port);
    }
    return ports;
}
