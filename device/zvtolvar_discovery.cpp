#include <algorithm>
#include <iterator>

#include <QTimer>

#include "device/zvtolvar.h"
#include "messages/diagnostics.h"
#include "serial/qextserialport.h"

// Finds the device's port among the computer's ports, follows its arrivals and removals, and opens it.

namespace
{
using namespace std::chrono_literals;

constexpr auto OpenDelay = 1000ms;  // after recognizing the device, and between failed attempts
constexpr auto WakeUpDelay = 500ms; // from opening the port to the first wake-up

/// The USB ids of the serial bridges that are built into the device, from the manufacturers' data sheets.
constexpr struct {
    int vendorID;
    int productID;
} bridges[] = {
    {0x0403, 0x6001}, // FTDI FT232 USB UART
    {0x067B, 0x2303}, // Prolific PL2303
};

bool isTolvar(const QextPortInfo &info)
{
    return std::any_of(std::begin(bridges), std::end(bridges), [&info](const auto &bridge) {
        return bridge.vendorID == info.vendorID && bridge.productID == info.productID;
    });
}

void logPort(const QextPortInfo &info)
{
    zvDebug() << "port name:" << info.portName;
    zvDebug() << "friendly name:" << info.friendName;
    zvDebug() << "physical name:" << info.physName;
    zvDebug() << "enumerator name:" << info.enumName;
    zvDebug() << "vendor ID:" << QString::number(info.vendorID, 16);
    zvDebug() << "product ID:" << QString::number(info.productID, 16);
    zvDebug() << "===================================";
}
} // namespace

void ZVTolvar::findTolvar()
{
    const QList<QextPortInfo> ports = QextSerialEnumerator::getPorts();
    zvDebug() << "List of ports:";
    for (const QextPortInfo &info : ports) {
        logPort(info);
        if (isTolvar(info)) {
            zvDebug() << "Found!";
            onDeviceDiscovered(info);
            return;
        }
        zvDebug() << "Not Found";
    }
}

void ZVTolvar::onDeviceDiscovered(const QextPortInfo &info)
{
    zvDebug() << "****Device DISCOVERED:";
    logPort(info);
    if (_commState != NOT_CONNECTED)
        return;
    if (!isTolvar(info))
        return;

    // kept: the state stays NOT_CONNECTED until the port is open. A second arrival within that second
    // replaces the name and starts another open attempt.
    _portName = info.portName;
    Q_EMIT candidateDeviceFound();
    QTimer::singleShot(OpenDelay, this, &ZVTolvar::onTimerOpenConnection);
}

void ZVTolvar::onTimerOpenConnection()
{
    if (_portName.isEmpty()) // unplugged in the meantime
        return;

    // kept: does not destroy an earlier port object.
    _port = new QextSerialPort(_portName, QextSerialPort::EventDriven);
    _port->setBaudRate(BAUD115200);
    _port->setFlowControl(FLOW_OFF);
    _port->setParity(PAR_NONE);
    _port->setDataBits(DATA_8);
    _port->setStopBits(STOP_1);
    _port->setDtr(false);
    _port->setRts(false);

    if (!_port->open(QIODevice::ReadWrite)) {
        QTimer::singleShot(OpenDelay, this, &ZVTolvar::onTimerOpenConnection);
        return;
    }

    connect(_port, &QextSerialPort::readyRead, this, &ZVTolvar::onReadyRead);
    _commState = CANDIDATE_DEVICE_FOUND;
    QTimer::singleShot(WakeUpDelay, this, &ZVTolvar::onTimerKickOffTlovarConsole);
}

void ZVTolvar::onDeviceRemoved(const QextPortInfo &info)
{
    zvDebug() << "****Device REMOVED:";
    logPort(info);
    zvDebug() << _portName;
    if (info.portName != _portName)
        return;

    _port = nullptr; // kept: not closed or destroyed; SerialLine has closed it
    _commandQueue.clear();
    _portName.clear();
    _commState = NOT_CONNECTED;
    setSystemID(QString());
    setStatus(QString());
    setFirmwareVersion(QString());
    setNetwork(QString());
    setPassword(QString());
    clearScannedNetworks();
    _connected = false;
    _scanning = false;
    _testing = false;
    _isLineOpen = false;
    // kept: _response and _currentCommand are not cleared.
}

bool ZVTolvar::isGone() const
{
    return _systemID.isEmpty() || (_port && _port->isDead());
}
