#include "device/zvtolvar.h"

// The commands to the device. A command is a line. Values are inserted unchanged and unquoted, even if they
// contain spaces.

namespace
{
constexpr QLatin1String LineEnd("\r\n");
} // namespace

void ZVTolvar::startScan()
{
    _scanning = true;
    submitCommand(QStringLiteral("setuarttrace y\r\n"));
    submitCommand(QStringLiteral("save\r\n")); // kept: makes the device save all its settings
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
    // kept: only the address is sent; mask, gateway, DNS server and syslog values never are.
    if (useStaticIP().toUpper() == QLatin1String("Y"))
        submitCommand(QStringLiteral("setstaticip Y ") + ipAddress() + LineEnd);
    else
        submitCommand(QStringLiteral("setstaticip N\r\n"));
}

void ZVTolvar::getLogFileTo(QFile *pFile)
{
    _logFile = pFile; // kept: does not close a file that still waits for its log
    Q_EMIT startingToWriteLog();
    submitCommand(QStringLiteral("get_log_file\r\n"));
}

void ZVTolvar::exitSetupMode()
{
    submitCommand(QStringLiteral("exit\r\n"));
}

int ZVTolvar::firmwareVersionAsInt() const
{
    return QStringView(_firmwareVersion).mid(1).toInt(); // without its first letter, whatever it is
}

QString ZVTolvar::antennaDescription() const
{
    return antenna().toInt() == 0 ? tr("Internal", "Antenna selection label")
                                  : tr("External", "Antenna selection label");
}
