#include "serial/portwatcher_udev.h"

#include <libudev.h>

void UdevPortWatcher::Release::operator()(udev *context) const
{
    udev_unref(context);
}

void UdevPortWatcher::Release::operator()(udev_monitor *monitor) const
{
    udev_monitor_unref(monitor);
}

UdevPortWatcher::UdevPortWatcher() = default;
UdevPortWatcher::~UdevPortWatcher() = default;

bool UdevPortWatcher::begin()
{
    _udev.reset(udev_new());
    if (!_udev)
        return false;
    // "udev", not "kernel": what udev knows of a port stands in its database by then.
    _monitor.reset(udev_monitor_new_from_netlink(_udev.get(), "udev"));
    if (!_monitor || udev_monitor_filter_add_match_subsystem_devtype(_monitor.get(), "tty", nullptr) < 0 ||
        udev_monitor_enable_receiving(_monitor.get()) < 0)
        return false;
    _notifier = std::make_unique<QSocketNotifier>(udev_monitor_get_fd(_monitor.get()), QSocketNotifier::Read);
    connect(_notifier.get(), &QSocketNotifier::activated, this, &UdevPortWatcher::receive);
    return true;
}

void UdevPortWatcher::receive()
{
    struct Unref {
        void operator()(udev_device *device) const { udev_device_unref(device); }
    };
    const std::unique_ptr<udev_device, Unref> device(udev_monitor_receive_device(_monitor.get()));
    if (!device)
        return;
    const QByteArray action = udev_device_get_action(device.get());
    const QString portName = QString::fromLocal8Bit(udev_device_get_sysname(device.get()));
    if (action == "add")
        lookFor(portName);
    else if (action == "remove")
        forget(portName);
}
