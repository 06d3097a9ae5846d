#include "tests/support/udevfaultinjector.h"

#include <cerrno>

#include <dlfcn.h>
#include <libudev.h>

UdevFaultInjector::State &UdevFaultInjector::state()
{
    static State theState = {None, 0, 0};
    return theState;
}

static bool fails(UdevFaultInjector::Failure failure)
{
    return UdevFaultInjector::state().wanted == failure;
}

template <typename Function>
static Function *original(const char *name)
{
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}

// These functions replace udev's own in the whole program.
extern "C" udev *udev_new(void)
{
    return fails(UdevFaultInjector::NoContext) ? nullptr : original<decltype(udev_new)>("udev_new")();
}

extern "C" udev_monitor *udev_monitor_new_from_netlink(struct udev *udev, const char *name)
{
    if (fails(UdevFaultInjector::NoMonitor))
        return nullptr;
    return original<decltype(udev_monitor_new_from_netlink)>("udev_monitor_new_from_netlink")(udev, name);
}

extern "C" int udev_monitor_filter_add_match_subsystem_devtype(udev_monitor *monitor, const char *subsystem,
                                                               const char *type)
{
    if (fails(UdevFaultInjector::NoFilter))
        return -ENOMEM;
    return original<decltype(udev_monitor_filter_add_match_subsystem_devtype)>(
        "udev_monitor_filter_add_match_subsystem_devtype")(monitor, subsystem, type);
}

extern "C" int udev_monitor_enable_receiving(udev_monitor *monitor)
{
    if (fails(UdevFaultInjector::NoReceiving))
        return -EPERM;
    return original<decltype(udev_monitor_enable_receiving)>("udev_monitor_enable_receiving")(monitor);
}

extern "C" const char *udev_device_get_action(udev_device *device)
{
    ++UdevFaultInjector::state().actionReads;
    if (fails(UdevFaultInjector::NoAction))
        return nullptr;
    return original<decltype(udev_device_get_action)>("udev_device_get_action")(device);
}

extern "C" udev_device *udev_device_new_from_subsystem_sysname(struct udev *udev, const char *subsystem,
                                                               const char *name)
{
    ++UdevFaultInjector::state().deviceLookups;
    return original<decltype(udev_device_new_from_subsystem_sysname)>(
        "udev_device_new_from_subsystem_sysname")(udev, subsystem, name);
}
