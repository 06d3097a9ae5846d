#pragma once

#include <memory>

#include "serial/portwatcher.h"

struct udev;
struct udev_device;
struct udev_monitor;

/// Watches by what udev tells of the system's ttys.
class UdevPortWatcher : public PortWatcher
{
    Q_OBJECT

public:
    explicit UdevPortWatcher(QObject *parent = nullptr);
    ~UdevPortWatcher() override;

    bool arm() override;

private:
    struct Unref {
        void operator()(udev *context) const;
        void operator()(udev_device *device) const;
        void operator()(udev_monitor *monitor) const;
    };

    void onTold();
    void handle(udev_device &event);

    std::unique_ptr<udev, Unref> _udev;
    std::unique_ptr<udev_monitor, Unref> _monitor;
};
