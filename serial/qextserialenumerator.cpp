#include "serial/qextserialenumerator.h"

#include <QFileInfo>
#include <QSerialPortInfo>

#include "serial/portwatcher.h"

// Ports on other buses have ids as well, but those are no USB ids. Linux names the bus; where it is not
// named, the ids are taken for USB ids.
static bool isOnUsb(const QSerialPortInfo &port)
{
    if (!port.hasVendorIdentifier() || !port.hasProductIdentifier())
        return false;
    const QFileInfo bus(QStringLiteral("/sys/class/tty/%1/device/subsystem").arg(port.portName()));
    return !bus.exists() || QFileInfo(bus.canonicalFilePath()).fileName().startsWith(QLatin1String("usb"));
}

static QextPortInfo describe(const QSerialPortInfo &port)
{
    QextPortInfo info;
    info.portName = port.portName();
    info.physName = port.systemLocation();
    info.friendName = port.description();
    if (isOnUsb(port)) {
        info.enumName = QStringLiteral("USB");
        info.vendorID = port.vendorIdentifier();
        info.productID = port.productIdentifier();
    }
    return info;
}

QextSerialEnumerator::QextSerialEnumerator(QObject *parent)
    : QObject(parent)
{
}
QextSerialEnumerator::~QextSerialEnumerator() = default;

QList<QextPortInfo> QextSerialEnumerator::getPorts()
{
    QList<QextPortInfo> ports;
    const QList<QSerialPortInfo> listed = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &port : listed)
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
