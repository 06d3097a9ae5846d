#include "tests/support/signalrecorder.h"

#include <utility>

namespace
{
QString shown(const QString &text)
{
    return text;
}

QString shown(const QHash<QString, ZVScanResult> *table)
{
    return QString::number(table->size());
}
} // namespace

template <typename Signal>
void SignalRecorder::note(ZVTolvar *tolvar, const char *name, Signal signal)
{
    connect(tolvar, signal, this, [this, name](const auto &...carried) {
        QString line = QString::fromLatin1(name);
        (line.append(QLatin1Char(':')).append(shown(carried)), ...);
        _lines += line;
    });
}

SignalRecorder::SignalRecorder(ZVTolvar *tolvar)
{
    note(tolvar, "systemIDChanged", &ZVTolvar::systemIDChanged);
    note(tolvar, "statusChanged", &ZVTolvar::statusChanged);
    note(tolvar, "firmwareVersionChanged", &ZVTolvar::firmwareVersionChanged);
    note(tolvar, "networkChanged", &ZVTolvar::networkChanged);
    note(tolvar, "passwordChanged", &ZVTolvar::passwordChanged);
    note(tolvar, "ipAddressChanged", &ZVTolvar::ipAddressChanged);
    note(tolvar, "useStaticIPChanged", &ZVTolvar::useStaticIPChanged);
    note(tolvar, "maskChanged", &ZVTolvar::maskChanged);
    note(tolvar, "gatewayChanged", &ZVTolvar::gatewayChanged);
    note(tolvar, "dnsChanged", &ZVTolvar::dnsChanged);
    note(tolvar, "testResultChanged", &ZVTolvar::testResultChanged);
    note(tolvar, "upgradeResultChanged", &ZVTolvar::upgradeResultChanged);
    note(tolvar, "macAddressChanged", &ZVTolvar::macAddressChanged);
    note(tolvar, "antennaChanged", &ZVTolvar::antennaChanged);
    note(tolvar, "uartTraceChanged", &ZVTolvar::uartTraceChanged);
    note(tolvar, "sysLogOnChanged", &ZVTolvar::sysLogOnChanged);
    note(tolvar, "sysLogServerChanged", &ZVTolvar::sysLogServerChanged);
    note(tolvar, "readyForCommand", &ZVTolvar::readyForCommand);
    note(tolvar, "responseReceived", &ZVTolvar::responseReceived);
    note(tolvar, "scannedNetworkListChanged", &ZVTolvar::scannedNetworkListChanged);
    note(tolvar, "scanStarted", &ZVTolvar::scanStarted);
    note(tolvar, "scanFinished", &ZVTolvar::scanFinished);
    note(tolvar, "networkTestSsidNotFound", &ZVTolvar::networkTestSsidNotFound);
    note(tolvar, "networkTestPassphraseInvalid", &ZVTolvar::networkTestPassphraseInvalid);
    note(tolvar, "networkTestFound", &ZVTolvar::networkTestFound);
    note(tolvar, "networkTestSystemError", &ZVTolvar::networkTestSystemError);
    note(tolvar, "networkTestFinished", &ZVTolvar::networkTestFinished);
    note(tolvar, "networkTestStarted", &ZVTolvar::networkTestStarted);
    note(tolvar, "candidateDeviceFound", &ZVTolvar::candidateDeviceFound);
    note(tolvar, "startingToWriteLog", &ZVTolvar::startingToWriteLog);
    note(tolvar, "finishedWriteLog", &ZVTolvar::finishedWriteLog);
}

QStringList SignalRecorder::take()
{
    return std::exchange(_lines, {});
}
