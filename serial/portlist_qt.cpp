#include "serial/portlist.h"

#include <QSerialPortInfo>

QList<ListedPort> listedByQt()
{
    QList<ListedPort> ports;
    const QList<QSerialPortInfo> available = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &info : available) {
        ListedPort port{info.portName(), info.systemLocation(), info.description(), {}, {}};
        if (info.hasVendorIdentifier())
            port.vendorID = info.vendorIdentifier();
        if (info.hasProductIdentifier())
            port.productID = info.productIdentifier();
        ports.append(port);
    }
    return ports;
}
