#pragma once

#include <memory>

#include "serial/portwatcher.h"
#include "serial/udevunref.h"

/// Watches the udev events of the system's ttys.
class UdevPortWatcher : public PortWatcher
{
    Q_OBJECT

public:
    explicit UdevPortWatcher(QObject *parent = nullptr);
    ~UdevPortWatcher() override;

    bool start() override;

private:
    void onUdevEvent();
    void handle(udev_device &event);

    std::unique_ptr<udev, UdevUnref> _udev;
    std::unique_ptr<udev_monitor, UdevUnref> _monitor;
};
