#include "serial/portwatcher_udev.h"

#include <cerrno>
#include <cstring>

#include <QFile>
#include <QSocketNotifier>

#include <libudev.h>
#include <sys/socket.h>
#include <unistd.h>

// Whether any process sends events to the monitor. A udev monitor can be created even where udev does not
// run, such as in a container, but no event ever reaches it.
static bool hasSender(udev_monitor *monitor)
{
    sockaddr address{};
    socklen_t size = sizeof address;
    if (::getsockname(udev_monitor_get_fd(monitor), &address, &size) != 0)
        return false;
    if (address.sa_family != AF_NETLINK)
        return true; // not the kernel's socket: a test environment replaces udev
    return ::access("/run/udev/control", F_OK) == 0;
}

UdevPortWatcher::UdevPortWatcher(QObject *parent)
    : PortWatcher(parent)
{
}
UdevPortWatcher::~UdevPortWatcher() = default;

bool UdevPortWatcher::start()
{
    _udev.reset(udev_new());
    if (!_udev)
        return false;
    _monitor.reset(udev_monitor_new_from_netlink(_udev.get(), "udev"));
    if (!_monitor || udev_monitor_filter_add_match_subsystem_devtype(_monitor.get(), "tty", nullptr) < 0 ||
        udev_monitor_enable_receiving(_monitor.get()) < 0 || !hasSender(_monitor.get()))
        return false;
    auto *notifier = new QSocketNotifier(udev_monitor_get_fd(_monitor.get()), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &UdevPortWatcher::onUdevEvent);
    // Listed after the monitor listens, so that no event in between is lost.
    rememberPresent();
    return true;
}

void UdevPortWatcher::onUdevEvent()
{
    // ENOBUFS: there were more events than the socket holds, and the later ones are lost. The events still in
    // the socket are outdated: the arrival that followed a removal may be lost. They are read and dropped,
    // and then the list of ports is compared.
    bool areEventsLost = false;
    for (;;) {
        errno = 0;
        const std::unique_ptr<udev_device, UdevUnref> device(udev_monitor_receive_device(_monitor.get()));
        if (device && !areEventsLost)
            handle(*device);
        else if (!device && errno == ENOBUFS)
            areEventsLost = true;
        else if (!device && errno != EINTR)
            break;
    }
    if (areEventsLost)
        resync();
}

void UdevPortWatcher::handle(udev_device &event)
{
    const char *action = udev_device_get_action(&event);
    const QString portName = QFile::decodeName(udev_device_get_sysname(&event));
    if (!action)
        return;
    if (std::strcmp(action, "add") == 0)
        onPortAdded(portName);
    else if (std::strcmp(action, "remove") == 0)
        onPortRemoved(portName);
}
