#include <memory>

#include <QTest>

#include "tests/support/signalrecorder.h"
#include "tests/support/zvtolvartestpeer.h"

namespace
{
/// Returns a scan with \a elements between two networks.
QString amid(const QString &elements)
{
    return "<scan_results><scan SSID=\"before\"/>" + elements + "<scan SSID=\"behind\"/></scan_results>";
}

/// The bytes below 0x20 that XML does not allow, except zero.
QList<char> controlBytes()
{
    QList<char> bytes;
    for (char byte = 1; byte < 0x20; ++byte) {
        if (byte != '\t' && byte != '\n' && byte != '\r')
            bytes += byte;
    }
    return bytes;
}

QString scanned(const QString &ssidAttribute)
{
    return amid("<scan " + ssidAttribute + " RSSI=\"-1\"/>");
}
} // namespace

/// Tests replies with control bytes: a network's name may contain any byte.
class TestControlBytes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void everyByteBelowABlankInAnAttribute_data();
    void everyByteBelowABlankInAnAttribute();
    void attributesAreFoundBehindAnything_data();
    void attributesAreFoundBehindAnything();
    void everyAttributeMayHoldThem();
    void aResultMayHoldThem_data();
    void aResultMayHoldThem();
    void elsewhereTheyEndTheReading_data();
    void elsewhereTheyEndTheReading();
    void theFirstOneElsewhereEndsTheReading();
    void theOtherCharactersOfTheDocumentStayAsTheyAre_data();
    void theOtherCharactersOfTheDocumentStayAsTheyAre();
    void zeroBytesAreLeftOut_data();
    void zeroBytesAreLeftOut();
    void manyOfThemAreRead();

private:
    QStringList names() const;
    void reply(const QString &document) { _tolvar->onResponseReceived(document); }

    std::unique_ptr<ZVTolvar> _tolvar;
    std::unique_ptr<SignalRecorder> _diary;
};

void TestControlBytes::init()
{
    _tolvar = std::make_unique<ZVTolvar>();
    _diary = std::make_unique<SignalRecorder>(_tolvar.get());
}

void TestControlBytes::cleanup()
{
    _diary.reset();
    _tolvar.reset();
}

QStringList TestControlBytes::names() const
{
    QStringList names = _tolvar->scannedNetworks()->keys();
    names.sort();
    return names;
}

void TestControlBytes::everyByteBelowABlankInAnAttribute_data()
{
    QTest::addColumn<QString>("attribute");
    QTest::addColumn<QString>("ssid");
    for (const char byte : controlBytes()) {
        const QString ssid = QString("x%1y").arg(QLatin1Char(byte));
        QTest::addRow("0x%02x stays", byte) << "SSID=\"" + ssid + "\"" << ssid;
        QTest::addRow("0x%02x stays, between single quotes", byte) << "SSID='" + ssid + "'" << ssid;
        QTest::addRow("0x%02x alone", byte) << "SSID=\"" + ssid.mid(1, 1) + "\"" << ssid.mid(1, 1);
    }
    QTest::newRow("a tab is a blank") << "SSID=\"x\ty\""
                                      << "x y";
    QTest::newRow("a CR is a blank") << "SSID=\"x\ry\""
                                     << "x y";
    QTest::newRow("an LF is a blank") << "SSID=\"x\ny\""
                                      << "x y";
    QTest::newRow("CR LF is one blank") << "SSID=\"x\r\ny\""
                                        << "x y";
    QTest::newRow("several, line ends and markup among them")
        << "SSID = '\x01\x02>\x1b\"\x1b\n/>&lt;&#x41;\x1f'"
        << "\x01\x02>\x1b\"\x1b />"
           "<A\x1f";
}

void TestControlBytes::everyByteBelowABlankInAnAttribute()
{
    QFETCH(QString, attribute);
    QFETCH(QString, ssid);
    reply(scanned(attribute));
    QStringList expected = {"before", "behind", ssid};
    expected.sort();
    QCOMPARE(names(), expected);
    QCOMPARE(_tolvar->getScanResult(ssid).ssid, ssid);
    QCOMPARE(_tolvar->getScanResult(ssid).rssi, QStringLiteral("-1"));
}

void TestControlBytes::attributesAreFoundBehindAnything_data()
{
    QTest::addColumn<QString>("ahead");
    QTest::newRow("a comment with a quotation mark") << "<!-- it's -->";
    QTest::newRow("a comment with a tag") << "<!-- <a b=' -->";
    QTest::newRow("an instruction") << "<?a b=' > ?>";
    QTest::newRow("a document type") << "<!DOCTYPE a SYSTEM \"'>\">";
    QTest::newRow("a document type with a comment in it") << "<!DOCTYPE a [<!-- ' ]> -->]>";
    QTest::newRow("a document type with an instruction in it") << "<!DOCTYPE a [ <?a ' ]> ?> ]>";
    QTest::newRow("an entity with a tag") << "<!DOCTYPE a [<!ENTITY e \"><a b='\">]>";
    QTest::newRow("an entity with a bracket") << "<!DOCTYPE a [<!ENTITY e \"[<!-- ' \"> ]>";
    QTest::newRow("a text") << "<scan_results>it's \"";
    QTest::newRow("character data") << "<scan_results><![CDATA[<a b=']]>";
    QTest::newRow("an attribute with the other quotation mark") << "<scan_results b=\"it's\">";
    QTest::newRow("an attribute with brackets") << "<scan_results b=\"[>' />\">";
}

void TestControlBytes::attributesAreFoundBehindAnything()
{
    QFETCH(QString, ahead);
    if (!ahead.contains("<scan_results"))
        ahead += "<scan_results>";
    reply(ahead + "<scan SSID='\x01'/></scan_results>");
    QCOMPARE(names(), QStringList{"\x01"});
}

void TestControlBytes::everyAttributeMayHoldThem()
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

void TestControlBytes::aResultMayHoldThem_data()
{
    QTest::addColumn<QString>("status");
    QTest::addColumn<QString>("verdict");
    QTest::newRow("in the network's name") << "SSID=\"\x01\" result=\"1\""
                                           << "networkTestPassphraseInvalid";
    QTest::newRow("in the result, which is no number then") << "result=\"2\x01\""
                                                            << "networkTestFound";
    QTest::newRow("in the result, a form feed: white space") << "result=\"2\x0c\""
                                                             << "networkTestSsidNotFound";
}

void TestControlBytes::aResultMayHoldThem()
{
    QFETCH(QString, status);
    QFETCH(QString, verdict);
    reply("<networktest_results><status " + status + "/></networktest_results>");
    QCOMPARE(_diary->take(), QStringList{verdict});
}

void TestControlBytes::elsewhereTheyEndTheReading_data()
{
    QTest::addColumn<QString>("document"); // %1 is the position of the byte
    QTest::addColumn<QStringList>("told");
    const QStringList name = {"systemIDChanged:T1"};
    const QStringList upToTheByte = {"systemIDChanged:T1", "statusChanged:a"};
    const QStringList network = {"scannedNetworkListChanged:0", "scannedNetworkListChanged:1"};
    const auto status = [](const char *where, const char *child, const QStringList &told) {
        QTest::newRow(where) << QString("<puckdata><name>T1</name>") + child + "<dns>4</dns></puckdata>"
                             << told;
    };
    status("in a value: it ends there", "<mode>a%1b</mode>", upToTheByte);
    status("in a value, at its beginning", "<mode>%1b</mode>", name);
    status("between two values", "%1", name);
    status("in the name of a value", "<mo%1de>a</mode>", name);
    status("in the name of an end", "<mode>a</mo%1de>", upToTheByte);
    status("in a comment", "<!-- %1 -->", name);
    status("in a comment, where an attribute could be", "<!-- <a b=\"%1\"> -->", name);
    status("in an instruction", "<?a b=\"%1\"?>", name);
    status("in character data", "<mode><![CDATA[a%1]]></mode>", name);
    status("in character data, where an attribute could be", "<radio><![CDATA[<a b=\"%1\">]]></radio>", name);
    status("in what is skipped", "<radio><a>%1</a></radio>", name);
    status("behind a quotation mark in a text", "<radio>b=\"%1\"</radio>", name);
    QTest::newRow("between attributes") << amid("<scan SSID=\"A\" %1 RSSI=\"1\"/>") << network;
    QTest::newRow("ahead of the name of an attribute") << amid("<scan %1SSID=\"A\"/>") << network;
    QTest::newRow("before a quotation mark") << amid("<scan SSID=%1\"A\"/>") << network;
    QTest::newRow("behind a quotation mark") << amid("<scan SSID=\"A\"%1/>") << network;
    QTest::newRow("in an attribute without quotation marks") << amid("<scan SSID=%1/>") << network;
    QTest::newRow("in an attribute of an end")
        << amid("<scan></scan a=\"%1\">") << network + QStringList{"scannedNetworkListChanged:2"};
    QTest::newRow("before the root") << "%1<puckdata><name>T1</name></puckdata>" << QStringList();
    QTest::newRow("in the declaration")
        << "<?xml version=\"1.%1\"?><puckdata><name>T1</name></puckdata>" << QStringList();
    QTest::newRow("in a document type")
        << "<!DOCTYPE a SYSTEM \"%1\"><puckdata><name>T1</name></puckdata>" << QStringList();
    QTest::newRow("in an entity")
        << "<!DOCTYPE a [<!ENTITY e \"%1\">]><puckdata a=\"&e;\"><name>T1</name></puckdata>" << QStringList();
    QTest::newRow("in a default")
        << "<!DOCTYPE a [<!ATTLIST scan a CDATA \"%1\">]><puckdata><name>T1</name></puckdata>"
        << QStringList();
    QTest::newRow("behind the root") << "<puckdata><name>T1</name></puckdata>%1" << name;
}

void TestControlBytes::elsewhereTheyEndTheReading()
{
    QFETCH(QString, document);
    QFETCH(QStringList, told);
    // A control byte in an attribute before it changes nothing.
    for (const char *root : {"puckdata", "scan_results"})
        document.replace(QString("<%1>").arg(root), QString("<%1 a=\"\x01\">").arg(root));
    for (const char byte : controlBytes()) {
        cleanup();
        init();
        reply(document.arg(QLatin1Char(byte)));
        QCOMPARE(_diary->take(), told);
    }
}

void TestControlBytes::theFirstOneElsewhereEndsTheReading()
{
    reply(amid("<scan SSID='\x01'/>\x02<scan SSID='\x03'/>\x04"));
    QCOMPARE(names(), QStringList({"\x01", "before"}));
}

void TestControlBytes::theOtherCharactersOfTheDocumentStayAsTheyAre_data()
{
    QTest::addColumn<QString>("types");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("ssid");
    QString all;
    QString references;
    for (char16_t code = 0xA0; code < 0xFFFE; ++code) {
        if (QChar::isSurrogate(code) || (code >= 0xF8C0 && code < 0xF900))
            continue;
        all += QChar(code);
        references += QString("&#x%1;").arg(code, 0, 16);
    }
    QTest::newRow("bytes") << "" << QString::fromLatin1("\x7f\x80\x9f\xa0\xff")
                           << QString::fromLatin1("\x7f\x80\x9f\xa0\xff");
    QTest::newRow("references") << ""
                                << "&#xE000;&#57345;&#xFDD0;&#xFFFD;&#x1F600;"
                                << QString::fromUtf8("\uE000\uE001\uFDD0\uFFFD\U0001F600");
    QTest::newRow("an entity") << "<!DOCTYPE a [<!ENTITY e \"&#xE000;\uE001\">]>"
                               << "&e;"
                               << "\uE000\uE001";
    QTest::newRow("nearly all characters") << "" << all << all;
    QTest::newRow("nearly all characters, by references") << "" << references << all;
}

void TestControlBytes::theOtherCharactersOfTheDocumentStayAsTheyAre()
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

void TestControlBytes::zeroBytesAreLeftOut_data()
{
    QTest::addColumn<QString>("document"); // %1 is the position of the byte
    QTest::newRow("in an attribute") << amid("<scan SSID=\"%1be%1low%1\"/>");
    QTest::newRow("in a name") << amid("<sc%1an SSID=\"below\"/>");
    QTest::newRow("between two elements") << amid("%1<scan SSID=\"below\"/>%1");
    QTest::newRow("in a text") << amid("<scan SSID=\"below\">%1a%1b</scan>");
    QTest::newRow("in a comment") << amid("<!-- %1 --><scan SSID=\"below\"/>");
    QTest::newRow("around the document") << "%1%1" + amid("<scan SSID=\"below\"/>") + "%1";
}

void TestControlBytes::zeroBytesAreLeftOut()
{
    QFETCH(QString, document);
    reply(document.arg(QChar(0)));
    QCOMPARE(names(), QStringList({"before", "behind", "below"}));
}

void TestControlBytes::manyOfThemAreRead()
{
    QString document = "<scan_results>";
    for (int i = 0; i < 10000; ++i)
        document += QString("<scan SSID=\"%1\x01%2\"/>").arg(i).arg(QString(50, QChar(i % 8 + 1)));
    reply(document + "</scan_results>");
    QCOMPARE(_tolvar->scannedNetworks()->size(), 10000);
    QCOMPARE(_tolvar->getScanResult("9999\x01" + QString(50, QChar(8))).ssid.size(), 55);
}

QTEST_GUILESS_MAIN(TestControlBytes)
#include "tst_zvtolvar_replies_controlbytes.moc"
