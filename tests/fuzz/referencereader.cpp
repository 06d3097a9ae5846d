#include "tests/fuzz/referencereader.h"

#include <utility>

#include "tests/fuzz/fuzzing.h"

static constexpr int maxDepth = 1000;

ReferenceReader::ReferenceReader(const QString &document)
    : _reader(document)
{
    _reader.readNext();
    while (!_reader.atEnd() && !_tooDeep) {
        const auto name = _reader.name();
        if (!_reader.isStartElement()) {
            _reader.readNext();
        } else if (!Fuzzing::isKnownRoot(name)) {
            _controllerReturns = false;
            return;
        } else if (name == QLatin1String("puckdata")) {
            children(&ReferenceReader::statusChild);
        } else if (name == QLatin1String("scan_results")) {
            _networks.clear();
            _reported += QStringLiteral("scannedNetworkListChanged:0");
            children(&ReferenceReader::scanChild);
        } else if (name == QLatin1String("networktest_results")) {
            children(&ReferenceReader::testChild);
        } else {
            log();
            _reported += QStringLiteral("finishedWriteLog");
        }
    }
}

void ReferenceReader::children(Child child)
{
    _reader.readNext();
    while (!_reader.atEnd()) {
        if (_reader.isEndElement()) {
            _reader.readNext();
            return;
        }
        if (!_reader.isStartElement())
            _reader.readNext();
        else if (!(this->*child)())
            skip(1);
    }
}

bool ReferenceReader::statusChild()
{
    // The signals of the values; none for an element that is skipped.
    static const QHash<QString, QString> statusSignals = {
        {"name", "systemIDChanged"},
        {"mode", "statusChanged"},
        {"firmware_date", QString()},
        {"firmware_version", "firmwareVersionChanged"},
        {"network_name", "networkChanged"},
        {"mac_address", "macAddressChanged"},
        {"ip_address", "ipAddressChanged"},
        {"useStaticIP", "useStaticIPChanged"},
        {"mask", "maskChanged"},
        {"gateway", "gatewayChanged"},
        {"dns", "dnsChanged"},
        {"test_result", "testResultChanged"},
        {"upgrade_result", "upgradeResultChanged"},
        {"ant", "antennaChanged"},
        {"trc", "uartTraceChanged"},
        {"sl_on", "sysLogOnChanged"},
        {"sl_ip", "sysLogServerChanged"},
    };
    const auto signal = statusSignals.constFind(_reader.name().toString());
    if (signal == statusSignals.cend())
        return false;
    const QString value = text();
    if (!signal->isEmpty() && std::exchange(_values[*signal], value) != value)
        _reported += *signal + QLatin1Char(':') + value;
    return true;
}

bool ReferenceReader::scanChild()
{
    if (_reader.name() != QLatin1String("scan"))
        return false;
    const QXmlStreamAttributes attributes = _reader.attributes();
    text();
    const QString ssid = attributes.value(QLatin1String("SSID")).toString();
    if (_networks.contains(ssid))
        return true;
    QStringList others;
    for (const char *name : {"channel", "adhoc", "sec", "suites", "WPS", "RSSI"})
        others += attributes.value(QLatin1String(name)).toString();
    _networks.insert(ssid, others);
    _reported += QStringLiteral("scannedNetworkListChanged:%1").arg(_networks.size());
    return true;
}

bool ReferenceReader::testChild()
{
    if (_reader.name() != QLatin1String("status"))
        return false;
    const QXmlStreamAttributes attributes = _reader.attributes();
    text();
    static const QStringList verdicts = {"networkTestFound", "networkTestPassphraseInvalid",
                                         "networkTestSsidNotFound", "networkTestSystemError"};
    const QString result = attributes.value(QLatin1String("result")).toString();
    const QString verdict = verdicts.value(result.toInt());
    if (!verdict.isEmpty())
        _reported += verdict;
    return true;
}

void ReferenceReader::log()
{
    while (!_reader.atEnd()) {
        if (_reader.isEndElement()) {
            _reader.readNext();
            return;
        }
        if (_reader.isStartElement())
            _logs += _reader.readElementText();
        else
            _reader.readNext();
    }
}

QString ReferenceReader::text()
{
    QString text = _reader.readElementText();
    if (_reader.isEndElement())
        _reader.readNext();
    return text;
}

void ReferenceReader::skip(int depth)
{
    _tooDeep = _tooDeep || depth > maxDepth;
    _reader.readNext();
    while (!_reader.atEnd() && !_tooDeep) {
        if (_reader.isEndElement()) {
            _reader.readNext();
            return;
        }
        if (_reader.isStartElement())
            skip(depth + 1);
        else
            _reader.readNext();
    }
}
