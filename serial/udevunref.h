#pragma once

#include <libudev.h>

/// Releases a reference to a udev object: a deleter for std::unique_ptr.
struct UdevUnref {
    void operator()(udev *context) const { udev_unref(context); }
    void operator()(udev_device *device) const { udev_device_unref(device); }
    void operator()(udev_monitor *monitor) const { udev_monitor_unref(monitor); }
};
