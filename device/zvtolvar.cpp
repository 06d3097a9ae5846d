#include "device/zvtolvar.h"

// The values that the device reports, and their change signals. The files named in the header contain the
// link, the commands and the replies.

namespace
{
using ChangeSignal = void (ZVTolvar::*)(QString);

/// Stores \a text and emits its change signal if it is new.
void change(ZVTolvar *tolvar, QString &field, const QString &text, ChangeSignal changed)
{
    if (field == text)
        return;
    field = text;
    Q_EMIT(tolvar->*changed)(field);
}
} // namespace

ZVTolvar::ZVTolvar(QObject *parent)
    : QObject(parent)
{
    connect(this, &ZVTolvar::readyForCommand, this, &ZVTolvar::onReadyForCommand);
    connect(this, &ZVTolvar::responseReceived, this, &ZVTolvar::onResponseReceived);

    // kept: started before connecting. Only findTolvar() finds a port that is already present.
    _enumerator.setUpNotifications();
    connect(&_enumerator, &QextSerialEnumerator::deviceDiscovered, this, &ZVTolvar::onDeviceDiscovered);
    connect(&_enumerator, &QextSerialEnumerator::deviceRemoved, this, &ZVTolvar::onDeviceRemoved);
}

ZVTolvar::~ZVTolvar() = default;

void ZVTolvar::setSystemID(const QString &systemID)
{
    change(this, _systemID, systemID, &ZVTolvar::systemIDChanged);
}

void ZVTolvar::setStatus(const QString &status)
{
    change(this, _status, status, &ZVTolvar::statusChanged);
}

void ZVTolvar::setFirmwareVersion(const QString &firmwareVersion)
{
    change(this, _firmwareVersion, firmwareVersion, &ZVTolvar::firmwareVersionChanged);
}

void ZVTolvar::setNetwork(const QString &network)
{
    change(this, _network, network, &ZVTolvar::networkChanged);
}

void ZVTolvar::setPassword(const QString &password)
{
    change(this, _password, password, &ZVTolvar::passwordChanged);
}

void ZVTolvar::setIPAddress(const QString &ipAddress)
{
    change(this, _ipAddress, ipAddress, &ZVTolvar::ipAddressChanged);
}

void ZVTolvar::setUseStaticIP(const QString &useStaticIP)
{
    change(this, _useStaticIP, useStaticIP, &ZVTolvar::useStaticIPChanged);
}

void ZVTolvar::setMask(const QString &mask)
{
    change(this, _mask, mask, &ZVTolvar::maskChanged);
}

void ZVTolvar::setGateway(const QString &gateway)
{
    change(this, _gateway, gateway, &ZVTolvar::gatewayChanged);
}

void ZVTolvar::setDns(const QString &dns)
{
    change(this, _dns, dns, &ZVTolvar::dnsChanged);
}

void ZVTolvar::setTestResult(const QString &testResult)
{
    change(this, _testResult, testResult, &ZVTolvar::testResultChanged);
}

void ZVTolvar::setUpgradeResult(const QString &upgradeResult)
{
    change(this, _upgradeResult, upgradeResult, &ZVTolvar::upgradeResultChanged);
}

void ZVTolvar::setMacAddress(const QString &macAddress)
{
    change(this, _macAddress, macAddress, &ZVTolvar::macAddressChanged);
}

void ZVTolvar::setAntenna(const QString &antenna)
{
    change(this, _antenna, antenna, &ZVTolvar::antennaChanged);
}

void ZVTolvar::setUartTrace(const QString &uartTrace)
{
    change(this, _uartTrace, uartTrace, &ZVTolvar::uartTraceChanged);
}

void ZVTolvar::setSysLogOn(const QString &sysLogOn)
{
    change(this, _sysLogOn, sysLogOn, &ZVTolvar::sysLogOnChanged);
}

void ZVTolvar::setSysLogServer(const QString &sysLogServer)
{
    change(this, _sysLogServer, sysLogServer, &ZVTolvar::sysLogServerChanged);
}
