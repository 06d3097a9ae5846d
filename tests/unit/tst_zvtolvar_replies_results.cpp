#include <QTest>

#include "tests/support/scopedconnection.h"
#include "tests/support/signalrecorder.h"

namespace
{
QStringList fields(const ZVScanResult &r)
{
    return {r.ssid, r.channel, r.adhoc, r.security, r.suites, r.wps, r.rssi};
}
} // namespace

/// Tests the replies to a scan and to a network test, and the table of scanned networks.
class TestResults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void aNetworkHasSevenFields();
    void aScanReplacesTheTableAndReportsEachNetwork();
    void theFirstRecordOfAnSsidStays();
    void aNetworkThatIsNotInTheTableIsNotFound();
    void theSignalCarriesTheControllersOwnTable();
    void eachTestResult_data();
    void eachTestResult();

private:
    void reply(const QString &document) { _tolvar->onResponseReceived(document); }

    std::unique_ptr<ZVTolvar> _tolvar;
    std::unique_ptr<SignalRecorder> _recorder;
};

void TestResults::init()
{
    _tolvar = std::make_unique<ZVTolvar>();
    _recorder = std::make_unique<SignalRecorder>(_tolvar.get());
}

void TestResults::aNetworkHasSevenFields()
{
    reply("<scan_results>\r\n<scan RSSI=\" -61\" WPS=\"Y\" rate=\"9\" suites=\"AES\" sec=\"&quot;WPA2\" "
          "adhoc=\"N\" channel=\"11\" SSID=\"A \">text</scan>\r\n<scan SSID=\"\" RSSI=\"\"/></scan_results>");
    QCOMPARE(fields(_tolvar->getScanResult("A ")),
             QStringList({"A ", "11", "N", "\"WPA2", "AES", "Y", " -61"}));
    QCOMPARE(fields(_tolvar->getScanResult("")), QStringList({"", "", "", "", "", "", ""}));
}

void TestResults::aScanReplacesTheTableAndReportsEachNetwork()
{
    reply("<scan_results><scan SSID=\"A\"/><scan SSID=\"B\"/></scan_results>");
    QCOMPARE(_recorder->take(), QStringList({"scannedNetworkListChanged:0", "scannedNetworkListChanged:1",
                                             "scannedNetworkListChanged:2"}));
    reply("<scan_results><scan SSID=\"C\"/></scan_results>");
    QCOMPARE(_tolvar->scannedNetworks()->keys(), QStringList{"C"});
    _recorder->take();
    reply("<scan_results/>");
    QCOMPARE(_recorder->take(), QStringList{"scannedNetworkListChanged:0"});
    QVERIFY(_tolvar->scannedNetworks()->isEmpty());
}

void TestResults::theFirstRecordOfAnSsidStays()
{
    reply("<scan_results><scan SSID=\"A\" RSSI=\"-80\"/><scan SSID=\"A\" RSSI=\"-20\"/></scan_results>");
    QCOMPARE(_recorder->take(), QStringList({"scannedNetworkListChanged:0", "scannedNetworkListChanged:1"}));
    QCOMPARE(_tolvar->getScanResult("A").rssi, QStringLiteral("-80"));
}

void TestResults::aNetworkThatIsNotInTheTableIsNotFound()
{
    const QStringList notFound = {"Not Found", "", "", "", "", "", ""};
    QCOMPARE(fields(_tolvar->getScanResult("")), notFound);
    reply("<scan_results><scan SSID=\"Home\"/></scan_results>");
    QCOMPARE(fields(_tolvar->getScanResult("home")), notFound);
    QCOMPARE(_tolvar->scannedNetworks()->size(), 1); // a lookup adds nothing
}

void TestResults::theSignalCarriesTheControllersOwnTable()
{
    int reported = 0;
    const ScopedConnection listener(
        _tolvar.get(), &ZVTolvar::scannedNetworkListChanged,
        [&](const QHash<QString, ZVScanResult> *table) { reported += table == _tolvar->scannedNetworks(); });
    reply("<scan_results><scan SSID=\"A\"/></scan_results>");
    QCOMPARE(reported, 2);
}

void TestResults::eachTestResult_data()
{
    QTest::addColumn<QString>("status");
    QTest::addColumn<QStringList>("reported");
    const auto row = [](const char *name, const char *status, const QStringList &reported) {
        QTest::newRow(name) << QString(status) << reported;
    };
    row("0 -> found", R"(<status SSID="A" desc="1" result="0">2</status>)", {"networkTestFound"});
    row("1 -> wrong passphrase", R"(<status result="1"/>)", {"networkTestPassphraseInvalid"});
    row("2 -> unknown SSID", R"(<status result="2"/>)", {"networkTestSsidNotFound"});
    row("3 -> system error", R"(<status result="3"/>)", {"networkTestSystemError"});
    row("4 -> ignored", R"(<status result="4"/>)", {});
    row("-1 -> ignored", R"(<status result="-1"/>)", {});
    row("0x1, not a decimal number -> found", R"(<status result="0x1"/>)", {"networkTestFound"});
    row("control byte in the result -> found", "<status result=\"2\x01\"/>", {"networkTestFound"});
    row("no result -> found", "<status/>", {"networkTestFound"});
    row("one result per status element", R"(<status result="2"/><status result="0"/>)",
        {"networkTestSsidNotFound", "networkTestFound"});
}

void TestResults::eachTestResult()
{
    QFETCH(QString, status);
    reply("<networktest_results>" + status + "</networktest_results>");
    QTEST(_recorder->take(), "reported");
}

QTEST_GUILESS_MAIN(TestResults)
#include "tst_zvtolvar_replies_results.moc"
