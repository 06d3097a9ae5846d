#pragma once

#include <memory>

#include <QSocketNotifier>

#include "serial/portwatcher.h"

struct udev;
struct udev_monitor;

/// Hears of ttys from udev, on the event loop.
class UdevPortWatcher : public PortWatcher
{
    Q_OBJECT

public:
    UdevPortWatcher();
    ~UdevPortWatcher() override;

private:
    bool begin() override;
    void receive();

    struct Release {
        void operator()(udev *context) const;
        void operator()(udev_monitor *monitor) const;
    };
    std::unique_ptr<udev, Release> _udev;
    std::unique_ptr<udev_monitor, Release> _monitor;
    std::unique_ptr<QSocketNotifier> _notifier;
};
