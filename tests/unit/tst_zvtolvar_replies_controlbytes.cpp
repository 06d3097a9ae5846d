#include <memory>

#include <QTest>

#include "tests/support/signalrecorder.h"

namespace
{
/// Returns the reply to a scan, with \a elements between two networks.
QString scanReply(const QString &elements)
{
    return "<scan_results><scan SSID=\"before\"/>" + elements + "<scan SSID=\"behind\"/></scan_results>";
}

QString scanned(const QString &ssidAttribute)
{
    return scanReply("<scan " + ssidAttribute + " RSSI=\"-1\"/>");
}
} // namespace

/// Tests replies with control bytes: a network's name may contain any byte.
class TestControlBytes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void everyControlByteInAnAttributeIsAccepted_data();
    void everyControlByteInAnAttributeIsAccepted();
    void attributesAreFoundAfterAnyContent_data();
    void attributesAreFoundAfterAnyContent();
    void everyAttributeMayContainControlBytes();
    void controlBytesElsewhereEndTheDocument_data();
    void controlBytesElsewhereEndTheDocument();
    void otherCharactersAreUnchanged_data();
    void otherCharactersAreUnchanged();
    void zeroBytesAreDropped_data();
    void zeroBytesAreDropped();

private:
    QStringList names() const;
    void reply(const QString &document) { _tolvar->onResponseReceived(document); }

    std::unique_ptr<ZVTolvar> _tolvar;
    std::unique_ptr<SignalRecorder> _recorder;
};

void TestControlBytes::init()
{
    _tolvar = std::make_unique<ZVTolvar>();
    _recorder = std::make_unique<SignalRecorder>(_tolvar.get());
}

QStringList TestControlBytes::names() const
{
    QStringList names = _tolvar->scannedNetworks()->keys();
    names.sort();
    return names;
}

void TestControlBytes::everyControlByteInAnAttributeIsAccepted_data()
{
    QTest::addColumn<QString>("attribute");
    QTest::addColumn<QString>("ssid");
    for (char byte = 1; byte < 0x20; ++byte) {
        const bool isSpace = byte == '\t' || byte == '\n' || byte == '\r';
        const QString value = QString("x%1y").arg(QLatin1Char(byte));
        QTest::addRow("0x%02x", byte) << "SSID=\"" + value + "\"" << (isSpace ? "x y" : value);
    }
    QTest::newRow("control byte only") << "SSID=\"\x01\"" << QString("\x01");
    QTest::newRow("CR LF is one space") << "SSID=\"x\r\ny\"" << QString("x y");
    QTest::newRow("several in single quotes, with line ends and markup")
        << "SSID = '\x01\x02>\x1b\"\x1b\n/>&lt;&#x41;\x1f'"
        << QString("\x01\x02>\x1b\"\x1b />%1").arg("<A\x1f");
}

void TestControlBytes::everyControlByteInAnAttributeIsAccepted()
{
    QFETCH(QString, attribute);
    QFETCH(QString, ssid);
    reply(scanned(attribute));
    QCOMPARE(names().size(), 3);
    QCOMPARE(_tolvar->getScanResult(ssid).ssid, ssid);
    QCOMPARE(_tolvar->getScanResult(ssid).rssi, QStringLiteral("-1"));
}

void TestControlBytes::attributesAreFoundAfterAnyContent_data()
{
    QTest::addColumn<QString>("ahead");
    QTest::newRow("comment with a quotation mark") << "<!-- it's -->";
    QTest::newRow("comment with a tag") << "<!-- <a b=' -->";
    QTest::newRow("processing instruction") << "<?a b=' > ?>";
    QTest::newRow("DOCTYPE") << "<!DOCTYPE a SYSTEM \"'>\">";
    QTest::newRow("DOCTYPE with a comment") << "<!DOCTYPE a [<!-- ' ]> -->]>";
    QTest::newRow("DOCTYPE with a processing instruction") << "<!DOCTYPE a [ <?a ' ]> ?> ]>";
    QTest::newRow("entity with a tag") << "<!DOCTYPE a [<!ENTITY e \"><a b='\">]>";
    QTest::newRow("entity with a bracket") << "<!DOCTYPE a [<!ENTITY e \"[<!-- ' \"> ]>";
    QTest::newRow("text") << "<scan_results>it's \"";
    QTest::newRow("CDATA section") << "<scan_results><![CDATA[<a b=']]>";
    QTest::newRow("attribute with the other quotation mark") << "<scan_results b=\"it's\">";
    QTest::newRow("attribute with brackets") << "<scan_results b=\"[>' />\">";
}

void TestControlBytes::attributesAreFoundAfterAnyContent()
{
    QFETCH(QString, ahead);
    if (!ahead.contains("<scan_results"))
        ahead += "<scan_results>";
    reply(ahead + "<scan SSID='\x01'/></scan_results>");
    QCOMPARE(names(), QStringList{"\x01"});
}

void TestControlBytes::everyAttributeMayContainControlBytes()
{
    reply("<scan_results a='\x05'><other b='\x06'/>"
          "<scan SSID='1\x01' channel='2\x02' adhoc='3\x03' sec='4\x04' suites='5\x05' WPS='6\x06' "
          "RSSI='7\x07' more='8\x08'>9</scan></scan_results>");
    QCOMPARE(names(), QStringList{"1\x01"});
    const ZVScanResult network = _tolvar->getScanResult("1\x01");
    QCOMPARE(network.channel, QStringLiteral("2\x02"));
    QCOMPARE(network.adhoc, QStringLiteral("3\x03"));
    QCOMPARE(network.security, QStringLiteral("4\x04"));
    QCOMPARE(network.suites, QStringLiteral("5\x05"));
    QCOMPARE(network.wps, QStringLiteral("6\x06"));
    QCOMPARE(network.rssi, QStringLiteral("7\x07"));
}

void TestControlBytes::controlBytesElsewhereEndTheDocument_data()
{
    QTest::addColumn<QString>("document");
    QTest::addColumn<QStringList>("reported");
    const QStringList name = {"systemIDChanged:T1"};
    const QStringList upToTheByte = {"systemIDChanged:T1", "statusChanged:a"};
    const QStringList network = {"scannedNetworkListChanged:0", "scannedNetworkListChanged:1"};
    const auto row = [](const char *where, const QString &document, const QStringList &reported) {
        QTest::newRow(where) << document << reported;
    };
    const auto status = [row](const char *where, const char *child, const QStringList &reported) {
        row(where, QString("<puckdata a=\"\x01\"><name>T1</name>%1<dns>4</dns></puckdata>").arg(child),
            reported);
    };
    status("in a value, which is truncated", "<mode>a\x01z</mode>", upToTheByte);
    status("at the start of a value", "<mode>\x01z</mode>", name);
    status("in an end tag", "<mode>a</mo\001de>", upToTheByte);
    status("in a comment that resembles a tag", "<!-- <a b=\"\x01\"> -->", name);
    status("in a processing instruction", "<?a b=\"\x01\"?>", name);
    status("in a CDATA section that resembles a tag", "<radio><![CDATA[<a b=\"\x01\">]]></radio>", name);
    status("after a quotation mark in text", "<radio>b=\"\x01\"</radio>", name);
    row("between attributes", scanReply("<scan SSID=\"A\" \x01 RSSI=\"1\"/>"), network);
    row("before the opening quotation mark", scanReply("<scan SSID=\x01\"A\"/>"), network);
    row("after the closing quotation mark", scanReply("<scan SSID=\"A\"\x01/>"), network);
    row("after an attribute with a control byte", scanReply("<scan SSID='\x01'/>\x02<scan SSID='\x03'/>"),
        network + QStringList{"scannedNetworkListChanged:2"});
    row("before the root element", "\x01<puckdata><name>T1</name></puckdata>", {});
    row("in a DOCTYPE", "<!DOCTYPE a SYSTEM \"\x01\"><puckdata><name>T1</name></puckdata>", {});
    row("in an entity", "<!DOCTYPE a [<!ENTITY e \"\x01\">]><puckdata a=\"&e;\"><name>T1</name></puckdata>",
        {});
    QString everyReplacement;
    for (char16_t code = 0xE000; code < 0xF900; ++code)
        everyReplacement += QChar(code);
    row("in an attribute, with no replacement character left",
        scanReply("<scan SSID='A'/><scan SSID='\x01'/><!-- " + everyReplacement + " -->"),
        network + QStringList{"scannedNetworkListChanged:2"});
    row("after the root element", "<puckdata><name>T1</name></puckdata>\x01", name);
}

void TestControlBytes::controlBytesElsewhereEndTheDocument()
{
    QFETCH(QString, document);
    reply(document);
    QTEST(_recorder->take(), "reported");
}

void TestControlBytes::otherCharactersAreUnchanged_data()
{
    QTest::addColumn<QString>("types");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("ssid");
    QString all;
    QString references;
    for (char16_t code = 0x7F; code < 0xFFFE; ++code) {
        if (QChar::isSurrogate(code) || (code >= 0xF8E0 && code < 0xF900))
            continue;
        all += QChar(code);
        references += QString("&#x%1;").arg(code, 0, 16);
    }
    QTest::newRow("character references") << QString() << "&#xE000;&#57376;&#xFDD0;&#xFFFD;&#x1F600;"
                                          << QString::fromUtf8("\uE000\uE020\uFDD0\uFFFD\U0001F600");
    QTest::newRow("entity") << "<!DOCTYPE a [<!ENTITY e \"&#xE000;\uE001\">]>" << QString("&e;")
                            << QString("\uE000\uE001");
    QTest::newRow("nearly all characters") << QString() << all << all;
    QTest::newRow("nearly all characters, as references") << QString() << references << all;
}

void TestControlBytes::otherCharactersAreUnchanged()
{
    QFETCH(QString, types);
    QFETCH(QString, value);
    QFETCH(QString, ssid);
    reply(types + scanned("sec='\x01&#xE000;\x02' SSID='\x1f" + value + "\x01'"));
    QCOMPARE(_tolvar->scannedNetworks()->size(), 3);
    const ZVScanResult network = _tolvar->getScanResult("\x1f" + ssid + "\x01");
    QCOMPARE(network.ssid, "\x1f" + ssid + "\x01");
    QCOMPARE(network.security, QStringLiteral("\x01\uE000\x02"));
}

void TestControlBytes::zeroBytesAreDropped_data()
{
    QTest::addColumn<QString>("document"); // %1 is the position of the byte
    QTest::newRow("in an attribute") << scanReply("<scan SSID=\"%1be%1low%1\"/>");
    QTest::newRow("in an element name") << scanReply("<sc%1an SSID=\"below\"/>");
    QTest::newRow("before and after the document") << "%1%1" + scanReply("<scan SSID=\"below\"/>") + "%1";
}

void TestControlBytes::zeroBytesAreDropped()
{
    QFETCH(QString, document);
    reply(document.arg(QChar(0)));
    QCOMPARE(names(), QStringList({"before", "behind", "below"}));
}

QTEST_GUILESS_MAIN(TestControlBytes)
#include "tst_zvtolvar_replies_controlbytes.moc"
