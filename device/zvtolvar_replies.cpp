#include <algorithm>
#include <iterator>

#include <QFile>

#include "device/qcorexmlstreamreader.h"
#include "device/zvtolvar.h"

// The reply documents of the device: "puckdata", "scan_results", "networktest_results" and "log_file". Names
// are matched exactly. Unknown elements are skipped. Malformed input ends the reading: values read before it
// are kept.

namespace
{
// clang-format off
/// The status document: elements and their setters.
constexpr struct {
    const char *element;
    void (ZVTolvar::*store)(const QString &);
} statusElements[] = {
    { "name",             &ZVTolvar::setSystemID        },
    { "mode",             &ZVTolvar::setStatus          },
    { "firmware_date",    nullptr                       }, // read and ignored
    { "firmware_version", &ZVTolvar::setFirmwareVersion },
    { "network_name",     &ZVTolvar::setNetwork         },
    { "mac_address",      &ZVTolvar::setMacAddress      },
    { "ip_address",       &ZVTolvar::setIPAddress       },
    { "useStaticIP",      &ZVTolvar::setUseStaticIP     },
    { "mask",             &ZVTolvar::setMask            },
    { "gateway",          &ZVTolvar::setGateway         },
    { "dns",              &ZVTolvar::setDns             },
    { "test_result",      &ZVTolvar::setTestResult      },
    { "upgrade_result",   &ZVTolvar::setUpgradeResult   },
    { "ant",              &ZVTolvar::setAntenna         },
    { "trc",              &ZVTolvar::setUartTrace       },
    { "sl_on",            &ZVTolvar::setSysLogOn        },
    { "sl_ip",            &ZVTolvar::setSysLogServer    },
};

/// A scanned network: attributes and their fields.
constexpr struct {
    const char *attribute;
    QString ZVScanResult::*field;
} scanAttributes[] = {
    { "SSID",     &ZVScanResult::ssid     },
    { "channel",  &ZVScanResult::channel  },
    { "adhoc",    &ZVScanResult::adhoc    },
    { "sec",      &ZVScanResult::security },
    { "suites",   &ZVScanResult::suites   },
    { "WPS",      &ZVScanResult::wps      },
    { "RSSI",     &ZVScanResult::rssi     },
};

/// The verdicts of a network test, by result code.
constexpr void (ZVTolvar::*verdicts[])() = {
    &ZVTolvar::networkTestFound,
    &ZVTolvar::networkTestPassphraseInvalid,
    &ZVTolvar::networkTestSsidNotFound,
    &ZVTolvar::networkTestSystemError,
};
// clang-format on

/// Reads the text of the reader's current element and moves past the end of the element.
QString readElement(QCoreXmlStreamReader &reader)
{
    QString text = reader.readElementText();
    if (reader.isEndElement())
        reader.readNext();
    return text;
}

/// Iterates over the children of the reader's current root element, and moves past its end. For each
/// child, calls \a readChild, and \a skipChild if that returned false because the child is unknown.
template <typename Read, typename Skip>
void forEachChild(QCoreXmlStreamReader &reader, Read readChild, Skip skipChild)
{
    reader.readNext();
    while (!reader.atEnd()) {
        if (reader.isEndElement()) {
            reader.readNext();
            return;
        }
        if (!reader.isStartElement())
            reader.readNext();
        else if (!readChild())
            skipChild();
    }
}
} // namespace

void ZVTolvar::onResponseReceived(const QString &aResponse)
{
    QCoreXmlStreamReader reader(aResponse);
    reader.readNext();
    while (!reader.atEnd()) {
        if (reader.isStartElement()) {
            // kept: loops forever at an unknown root element. The device sends only these four.
            if (reader.name() == QLatin1String("puckdata")) {
                parseResponsePuckData(reader);
            } else if (reader.name() == QLatin1String("scan_results")) {
                clearScannedNetworks();
                parseResponseScanResults(reader);
            } else if (reader.name() == QLatin1String("networktest_results")) {
                parseNetworkTestResults(reader);
            } else if (reader.name() == QLatin1String("log_file")) {
                parseLogFile(reader);
                Q_EMIT finishedWriteLog();
            }
        } else {
            reader.readNext();
        }
        static_cast<void>(reader.error()); // kept: the error is not used
    }
}

void ZVTolvar::parseResponsePuckData(QCoreXmlStreamReader &reader)
{
    const auto readChild = [this, &reader] {
        const auto *const known =
            std::find_if(std::begin(statusElements), std::end(statusElements),
                         [&](const auto &entry) { return reader.name() == QLatin1String(entry.element); });
        if (known == std::end(statusElements))
            return false;
        const QString text = readElement(reader);
        if (known->store)
            (this->*known->store)(text);
        return true;
    };
    forEachChild(reader, readChild, [this, &reader] { skipUnknownElement(reader); });
}

void ZVTolvar::parseResponseScanResults(QCoreXmlStreamReader &reader)
{
    const auto readChild = [this, &reader] {
        if (reader.name() != QLatin1String("scan"))
            return false;
        const QXmlStreamAttributes attributes = reader.attributes();
        readElement(reader);

        ZVScanResult network;
        for (const auto &entry : scanAttributes) {
            const auto value = attributes.value(QLatin1String(entry.attribute));
            if (!value.isEmpty())
                network.*entry.field = value.toString();
        }
        addScannedNetwork(network);
        return true;
    };
    forEachChild(reader, readChild, [this, &reader] { skipUnknownElement(reader); });
}

void ZVTolvar::parseNetworkTestResults(QCoreXmlStreamReader &reader)
{
    const auto readChild = [this, &reader] {
        if (reader.name() != QLatin1String("status"))
            return false;
        const QXmlStreamAttributes attributes = reader.attributes();
        readElement(reader);

        // kept: a result that is missing or not a number counts as 0, success.
        const int result = attributes.value(QLatin1String("result")).toInt();
        if (result >= 0 && result < static_cast<int>(std::size(verdicts)))
            Q_EMIT(this->*verdicts[result])();
        return true;
    };
    forEachChild(reader, readChild, [this, &reader] { skipUnknownElement(reader); });
}

void ZVTolvar::parseLogFile(QCoreXmlStreamReader &reader)
{
    while (!reader.atEnd()) {
        if (reader.isEndElement()) {
            reader.readNext();
            return;
        }
        if (!reader.isStartElement()) {
            reader.readNext();
            continue;
        }
        const QString text = reader.readElementText();
        if (!_logFile) // no log was requested: both controllers see the reply of a device plugged in later
            continue;
        // kept: cuts the encoded text to as many bytes as it has characters.
        _logFile->write(text.toLocal8Bit().left(text.size()));
        _logFile->close();
        delete _logFile;
        _logFile = nullptr;
    }
}

void ZVTolvar::skipUnknownElement(QCoreXmlStreamReader &reader)
{
    int depth = 1; // counted, not recursive: a deeply nested reply cannot exhaust the stack
    reader.readNext();
    while (depth > 0 && !reader.atEnd()) {
        if (reader.isStartElement())
            ++depth;
        else if (reader.isEndElement())
            --depth;
        reader.readNext();
    }
}
