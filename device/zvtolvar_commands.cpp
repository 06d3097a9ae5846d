#include "device/zvtolvar.h"

// What the device can be told. A command is a line; values stand in it as they are, unquoted, blanks and all.

namespace
{
constexpr QLatin1String LineEnd("\r\n");
} // namespace

void ZVTolvar::startScan()
{
    _scanning = true;
    submitCommand(QStringLiteral("setuarttrace y\r\n"));
    submitCommand(QStringLiteral("save\r\n")); // kept: part of the sequence
    Q_EMIT scanStarted();
    submitCommand(QStringLiteral("scan\r\n"));
}

void ZVTolvar::startNetworkTest()
{
    _testing = true;
    Q_EMIT networkTestStarted();
    submitCommand(QStringLiteral("setssid ") + network() + LineEnd);
    submitCommand(QStringLiteral("setpass ") + password() + LineEnd);
    submitCommand(QStringLiteral("test\r\n"));
}

void ZVTolvar::saveNetworkConfig()
{
    commitAntennaSetting();
    submitCommand(QStringLiteral("setssid ") + network() + LineEnd);
    submitCommand(QStringLiteral("setpass ") + password() + LineEnd);
    commitStaticIPSetting();
    submitCommand(QStringLiteral("save\r\n"));
}

void ZVTolvar::commitAntennaSetting()
{
    submitCommand(QStringLiteral("ant_select ") + antenna() + LineEnd);
}

void ZVTolvar::commitStaticIPSetting()
{
    // kept: the address alone is sent. Mask, gateway, DNS and the syslog values never are.
    if (useStaticIP().toUpper() == QLatin1String("Y"))
        submitCommand(QStringLiteral("setstaticip Y ") + ipAddress() + LineEnd);
    else
        submitCommand(QStringLiteral("setstaticip N\r\n"));
}

void ZVTolvar::getLogFileTo(QFile *pFile)
{
    _logFile = pFile; // kept: a file that was still waiting is overwritten, not closed
    Q_EMIT startingToWriteLog();
    submitCommand(QStringLiteral("get_log_file\r\n"));
}

void ZVTolvar::exitSetupMode()
{
    submitCommand(QStringLiteral("exit\r\n"));
}

int ZVTolvar::firmwareVersionAsInt() const
{
    return QStringView(_firmwareVersion).mid(1).toInt(); // without its letter, whatever it is
}

QString ZVTolvar::antennaDescription() const
{
    return antenna().toInt() == 0 ? tr("Internal", "Antenna selection label")
                                  : tr("External", "Antenna selection label");
}
