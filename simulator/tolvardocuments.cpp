#include "simulator/tolvardocuments.h"

#include <algorithm>
#include <utility>

#include <QString>
#include <QXmlStreamWriter>

namespace
{
// QXmlStreamWriter works on strings and would encode them as UTF-8. Latin-1 maps each byte to one character
// and back, so every byte is preserved.
QString asText(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes);
}

bool isControl(char byte)
{
    return static_cast<unsigned char>(byte) < 0x20 && byte != '\t' && byte != '\n' && byte != '\r';
}

// Characters that XML does not allow. They include the bytes 0x02 and 0x03.
QByteArray withoutControls(QByteArray bytes)
{
    std::replace_if(bytes.begin(), bytes.end(), isControl, '?');
    return bytes;
}

// The device does not validate network names. It replaces only the bytes that would end its document or its
// own strings with '?'. QXmlStreamWriter rejects control characters, so they are mapped to private-use
// characters while it writes.
constexpr char16_t firstPrivate = 0xE000;

QString asAttribute(const QByteArray &bytes)
{
    QString text;
    for (const char byte : bytes) {
        if (byte == 0x00 || byte == 0x02 || byte == 0x03)
            text += QLatin1Char('?');
        else if (isControl(byte))
            text += QChar(static_cast<char16_t>(firstPrivate + byte));
        else
            text += QLatin1Char(byte);
    }
    return text;
}

// QXmlStreamWriter's formatting begins with an empty line, which is removed.
QByteArray asBytes(QString document)
{
    for (QChar &c : document) {
        if (c.unicode() >= firstPrivate)
            c = QChar(c.unicode() - firstPrivate);
    }
    return document.toLatin1().mid(document.startsWith(QLatin1Char('\n')));
}
} // namespace

QByteArray TolvarDocuments::status(const DeviceConfig &config, const TolvarConfiguration &current,
                                   const QByteArray &testResult)
{
    const std::pair<const char *, QByteArray> elements[] = {
        {"name", config.systemId},
        {"mode", config.mode},
        {"firmware_date", config.firmwareDate},
        {"firmware_version", config.firmwareVersion},
        {"network_name", current.network},
        {"mac_address", config.macAddress},
        {"ip_address", current.ipAddress},
        {"useStaticIP", current.useStaticIP},
        {"mask", config.mask},
        {"gateway", config.gateway},
        {"dns", config.dns},
        {"test_result", testResult},
        {"upgrade_result", config.upgradeResult},
        {"ant", current.antenna},
        {"trc", current.uartTrace},
        {"sl_on", config.sysLogOn},
        {"sl_ip", config.sysLogServer},
    };

    QString document;
    QXmlStreamWriter xml(&document);
    xml.setAutoFormatting(true);
    xml.writeStartElement(QStringLiteral("puckdata"));
    QByteArray extra = config.extraStatusXml;
    for (const auto &[name, value] : elements) {
        if (!config.missingFromStatus.contains(name))
            xml.writeTextElement(QString::fromLatin1(name), asText(withoutControls(value)));
        else
            xml.writeCharacters(QString()); // closes the root's start tag, if it is still open
        document += asText(std::exchange(extra, QByteArray()));
    }
    xml.writeEndElement();
    return asBytes(document);
}

QByteArray TolvarDocuments::scanResults(const QList<TolvarNetwork> &air)
{
    QString document;
    QXmlStreamWriter xml(&document);
    xml.setAutoFormatting(true);
    xml.writeStartElement(QStringLiteral("scan_results"));
    for (const TolvarNetwork &network : air) {
        if (network.hidden)
            continue;
        const std::pair<const char *, QByteArray> attributes[] = {
            {"SSID", network.ssid},    {"channel", network.channel}, {"adhoc", network.adhoc},
            {"sec", network.security}, {"suites", network.suites},   {"WPS", network.wps},
            {"RSSI", network.rssi},
        };
        xml.writeEmptyElement(QStringLiteral("scan"));
        for (const auto &[name, value] : attributes)
            xml.writeAttribute(QString::fromLatin1(name), asAttribute(value));
    }
    xml.writeEndElement();
    return asBytes(document);
}

QByteArray TolvarDocuments::testResults(const QByteArray &ssid, const QByteArray &description, int result)
{
    QString document;
    QXmlStreamWriter xml(&document);
    xml.setAutoFormatting(true);
    xml.writeStartElement(QStringLiteral("networktest_results"));
    xml.writeEmptyElement(QStringLiteral("status"));
    xml.writeAttribute(QStringLiteral("SSID"), asAttribute(ssid));
    xml.writeAttribute(QStringLiteral("desc"), asText(description));
    xml.writeAttribute(QStringLiteral("result"), QString::number(result));
    xml.writeEndElement();
    return asBytes(document);
}

QByteArray TolvarDocuments::logFile(const QByteArray &text)
{
    QString document;
    QXmlStreamWriter xml(&document);
    xml.writeTextElement(QStringLiteral("log_file"), asText(withoutControls(text)));
    return asBytes(document);
}
