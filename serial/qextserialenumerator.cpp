#include "serial/qextserialenumerator.h"

#include <QFileInfo>

#include "serial/portlist.h"
#include "serial/portwatcher.h"

// Ports on other buses have ids as well, but these are not USB ids. Linux reports the bus; where the bus is
// not known, the ids are treated as USB ids.
static bool isOnUsb(const ListedPort &port)
{
    if (!port.vendorID || !port.productID)
        return false;
    const QFileInfo bus(QStringLiteral("/sys/class/tty/%1/device/subsystem").arg(port.name));
    return !bus.exists() || QFileInfo(bus.canonicalFilePath()).fileName().startsWith(QLatin1String("usb"));
}

static QextPortInfo describe(const ListedPort &port)
{
    QextPortInfo info;
    info.portName = port.name;
    info.physName = port.location;
    info.friendName = port.description;
    if (isOnUsb(port)) {
        info.enumName = QStringLiteral("USB");
        info.vendorID = *port.vendorID;
        info.productID = *port.productID;
    }
    return info;
}

static QList<ListedPort> listedPorts()
{
#ifdef ZV_PORTS_BY_UDEV
    if (const auto ports = listedByUdev())
        return *ports;
#endif
    return listedByQt();
}

QextSerialEnumerator::QextSerialEnumerator(QObject *parent)
    : QObject(parent)
{
}
QextSerialEnumerator::~QextSerialEnumerator() = default;

QList<QextPortInfo> QextSerialEnumerator::getPorts()
{
    QList<QextPortInfo> ports;
    const QList<ListedPort> listed = listedPorts();
    for (const ListedPort &port : listed)
        ports.append(describe(port));
    return ports;
}

void QextSerialEnumerator::setUpNotifications()
{
    if (_watcher)
        return;
    _watcher = PortWatcher::shared();
    connect(_watcher.get(), &PortWatcher::arrived, this, &QextSerialEnumerator::deviceDiscovered);
    connect(_watcher.get(), &PortWatcher::removed, this, &QextSerialEnumerator::deviceRemoved);
}
