#include "serial/qextserialenumerator.h"

#include <QSerialPortInfo>

#include "serial/portwatcher.h"

QextSerialEnumerator::QextSerialEnumerator(QObject *parent)
    : QObject(parent)
{
}

QextSerialEnumerator::~QextSerialEnumerator() = default;

QList<QextPortInfo> QextSerialEnumerator::getPorts()
{
    QList<QextPortInfo> ports;
    const QList<QSerialPortInfo> present = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &port : present) {
        QextPortInfo info;
        info.portName = port.portName();
        info.physName = port.systemLocation();
        info.friendName = port.description();
        if (port.hasVendorIdentifier()) {
            info.enumName = QStringLiteral("USB");
            info.vendorID = port.vendorIdentifier();
        }
        if (port.hasProductIdentifier())
            info.productID = port.productIdentifier();
        ports.append(info);
    }
    return ports;
}

void QextSerialEnumerator::setUpNotifications()
{
    _watcher = PortWatcher::create();
    if (!_watcher->start())
        qCritical("The system gives no notice of ports: a device plugged in from now on will not be seen");
    connect(_watcher.get(), &PortWatcher::arrived, this, &QextSerialEnumerator::deviceDiscovered);
    connect(_watcher.get(), &PortWatcher::gone, this, &QextSerialEnumerator::deviceRemoved);
}
