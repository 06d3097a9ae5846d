#include <QTest>

#include "tests/support/linkfixture.h"
#include "tests/support/signalrecorder.h"

/// Tests the replies to a scan and to a network test.
class TestResults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void eachScanAttribute_data();
    void eachScanAttribute();
    void aWholeNetwork();
    void anEmptyAttributeLeavesItsFieldEmpty();
    void aScanEmptiesTheTableFirst();
    void aScanWithoutNetworksEmptiesTheTableAndTellsOnce();
    void theSameSsidTwiceKeepsTheFirstRecordOnly();
    void theTextOfAnElementIsIgnored();

    void eachTestResult_data();
    void eachTestResult();

    void theTableIsToldOfBeforeTheEndOfTheScan();
    void theVerdictIsToldOfBeforeTheEndOfTheTest();

private:
    void reply(const QString &document) { _tolvar->onResponseReceived(document); }

    std::unique_ptr<ZVTolvar> _tolvar;
    std::unique_ptr<SignalRecorder> _diary;
};

void TestResults::init()
{
    _tolvar = std::make_unique<ZVTolvar>();
    _diary = std::make_unique<SignalRecorder>(_tolvar.get());
}

void TestResults::cleanup()
{
    _diary.reset();
    _tolvar.reset();
}

void TestResults::eachScanAttribute_data()
{
    QTest::addColumn<QString>("attribute");
    QTest::addColumn<QStringList>("fields");
    const auto row = [](const char *name, const char *attribute, int field) {
        QStringList fields = {"", "", "", "", "", "", ""};
        if (field >= 0)
            fields[field] = " \"x\" ";
        QTest::newRow(name) << QString(attribute) << fields;
    };
    row("SSID is the network's name", "SSID", 0);
    row("channel", "channel", 1);
    row("adhoc", "adhoc", 2);
    row("sec is the security", "sec", 3);
    row("suites", "suites", 4);
    row("WPS", "WPS", 5);
    row("RSSI", "RSSI", 6);
    row("an unknown one is nothing", "rate", -1);
}

void TestResults::eachScanAttribute()
{
    QFETCH(QString, attribute);
    QFETCH(QStringList, fields);
    reply("<scan_results><scan " + attribute + "=\" &quot;x&quot; \"/></scan_results>");
    QCOMPARE(_diary->take(), QStringList({"scannedNetworkListChanged:0", "scannedNetworkListChanged:1"}));
    const ZVScanResult r = _tolvar->scannedNetworks()->constBegin().value();
    QCOMPARE(QStringList({r.ssid, r.channel, r.adhoc, r.security, r.suites, r.wps, r.rssi}), fields);
    QCOMPARE(_tolvar->scannedNetworks()->constBegin().key(), r.ssid);
}

void TestResults::aWholeNetwork()
{
    reply("<scan_results>\r\n<scan RSSI=\"-61\" WPS=\"N\" suites=\"AES\" sec=\"WPA2\" adhoc=\"N\" "
          "channel=\"11\" SSID=\"A\"/>\r\n<scan SSID=\"B\"/>\r\n</scan_results>");
    const ZVScanResult r = _tolvar->getScanResult("A");
    QCOMPARE(QStringList({r.ssid, r.channel, r.adhoc, r.security, r.suites, r.wps, r.rssi}),
             QStringList({"A", "11", "N", "WPA2", "AES", "N", "-61"}));
    QCOMPARE(_tolvar->getScanResult("B").channel, QString()); // a separate record
}

void TestResults::anEmptyAttributeLeavesItsFieldEmpty()
{
    reply("<scan_results><scan SSID=\"C\" RSSI=\"\"/></scan_results>");
    QCOMPARE(_diary->take(), QStringList({"scannedNetworkListChanged:0", "scannedNetworkListChanged:1"}));
    QVERIFY(_tolvar->getScanResult("C").rssi.isNull());
}

void TestResults::aScanEmptiesTheTableFirst()
{
    reply("<scan_results><scan SSID=\"A\"/><scan SSID=\"B\"/></scan_results>");
    QCOMPARE(_diary->take(), QStringList({"scannedNetworkListChanged:0", "scannedNetworkListChanged:1",
                                          "scannedNetworkListChanged:2"}));
    reply("<scan_results><scan SSID=\"C\"/></scan_results>");
    QCOMPARE(_diary->take(), QStringList({"scannedNetworkListChanged:0", "scannedNetworkListChanged:1"}));
    QCOMPARE(_tolvar->scannedNetworks()->keys(), QStringList{"C"});
}

void TestResults::aScanWithoutNetworksEmptiesTheTableAndTellsOnce()
{
    reply("<scan_results><scan SSID=\"A\"/></scan_results>");
    _diary->take();
    reply("<scan_results></scan_results>");
    QCOMPARE(_diary->take(), QStringList{"scannedNetworkListChanged:0"});
    QVERIFY(_tolvar->scannedNetworks()->isEmpty());
}

void TestResults::theSameSsidTwiceKeepsTheFirstRecordOnly()
{
    reply("<scan_results><scan SSID=\"A\" RSSI=\"-80\"/><scan SSID=\"A\" RSSI=\"-20\"/></scan_results>");
    QCOMPARE(_diary->take(), QStringList({"scannedNetworkListChanged:0", "scannedNetworkListChanged:1"}));
    QCOMPARE(_tolvar->getScanResult("A").rssi, QStringLiteral("-80"));
}

void TestResults::theTextOfAnElementIsIgnored()
{
    reply("<scan_results><scan SSID=\"A\">text</scan><scan SSID=\"B\">text</scan></scan_results>");
    QCOMPARE(_tolvar->scannedNetworks()->size(), 2);
    _diary->take();
    reply("<networktest_results><status result=\"1\">text</status><status result=\"2\">0</status>"
          "</networktest_results>");
    QCOMPARE(_diary->take(), QStringList({"networkTestPassphraseInvalid", "networkTestSsidNotFound"}));
}

void TestResults::eachTestResult_data()
{
    QTest::addColumn<QString>("status");
    QTest::addColumn<QStringList>("diary");
    QTest::newRow("0 is found") << "<status SSID=\"A\" desc=\"ok\" result=\"0\">x</status>"
                                << QStringList{"networkTestFound"};
    QTest::newRow("1 is a wrong passphrase")
        << "<status result=\"1\"/>" << QStringList{"networkTestPassphraseInvalid"};
    QTest::newRow("2 is an unknown SSID")
        << "<status result=\"2\"/>" << QStringList{"networkTestSsidNotFound"};
    QTest::newRow("3 is a system error") << "<status result=\"3\"/>" << QStringList{"networkTestSystemError"};
    QTest::newRow("4 is nothing") << "<status result=\"4\"/>" << QStringList();
    QTest::newRow("7 is nothing") << "<status result=\"7\"/>" << QStringList();
    QTest::newRow("-1 is nothing") << "<status result=\"-1\"/>" << QStringList();
    QTest::newRow("02 is a decimal number")
        << "<status result=\"02\"/>" << QStringList{"networkTestSsidNotFound"};
    QTest::newRow("0x1 is no decimal number and found")
        << "<status result=\"0x1\"/>" << QStringList{"networkTestFound"};
    QTest::newRow("2147483647 is nothing") << "<status result=\"2147483647\"/>" << QStringList();
    QTest::newRow("2147483648 is beyond the range and found")
        << "<status result=\"2147483648\"/>" << QStringList{"networkTestFound"};
    QTest::newRow("4294967298 is beyond the range and found")
        << "<status result=\"4294967298\"/>" << QStringList{"networkTestFound"};
    QTest::newRow("none is found") << "<status/>" << QStringList{"networkTestFound"};
    QTest::newRow("empty is found") << "<status result=\"\"/>" << QStringList{"networkTestFound"};
    QTest::newRow("a word is found") << "<status result=\"two\"/>" << QStringList{"networkTestFound"};
    QTest::newRow("one verdict a status") << "<status result=\"2\"/><status result=\"0\"/>"
                                          << QStringList({"networkTestSsidNotFound", "networkTestFound"});
    QTest::newRow("no status is no verdict") << "" << QStringList();
}

void TestResults::eachTestResult()
{
    QFETCH(QString, status);
    QFETCH(QStringList, diary);
    reply("<networktest_results>" + status + "</networktest_results>");
    QCOMPARE(_diary->take(), diary);
}

void TestResults::theTableIsToldOfBeforeTheEndOfTheScan()
{
    LinkFixture fixture;
    SignalRecorder diary(&fixture.tolvar);
    fixture.inside.scanning() = true;
    fixture.feed("\x02<scan_results><scan SSID=\"A\"/></scan_results>\x03");
    QCOMPARE(diary.take(), QStringList({"scannedNetworkListChanged:0", "scannedNetworkListChanged:1",
                                        "responseReceived:<scan_results><scan SSID=\"A\"/></scan_results>",
                                        "scanFinished"}));
}

void TestResults::theVerdictIsToldOfBeforeTheEndOfTheTest()
{
    LinkFixture fixture;
    SignalRecorder diary(&fixture.tolvar);
    fixture.inside.testing() = true;
    fixture.feed("\x02<networktest_results><status result=\"1\"/></networktest_results>\x03");
    QCOMPARE(
        diary.take(),
        QStringList({"networkTestPassphraseInvalid",
                     "responseReceived:<networktest_results><status result=\"1\"/></networktest_results>",
                     "networkTestFinished"}));
}

QTEST_GUILESS_MAIN(TestResults)
#include "tst_zvtolvar_replies_results.moc"
