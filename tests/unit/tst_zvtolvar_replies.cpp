#include <csignal>

#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTest>

#include "device/qcorexmlstreamreader.h"
#include "tests/support/signalrecorder.h"
#include "tests/support/zvtolvartestpeer.h"

namespace
{
QString puckdata(const QString &children)
{
    return "<puckdata>" + children + "</puckdata>";
}
} // namespace

/// Tests the documents that the device replies with: how each kind is recognised, and its status.
class TestReplies : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void eachStatusElement_data();
    void eachStatusElement();
    void theStatusIsAppliedInTheOrderOfTheDocument();
    void aRepeatedStatusIsNoChange();
    void aStatusThatChangesOnlyTheModeTellsOfTheStatusOnly();
    void withoutANetworkNameTheNetworkStaysAsItWas();
    void anEmptyElementEmptiesItsValue();
    void anUnknownChildIsSkippedWithAllThatIsInIt_data();
    void anUnknownChildIsSkippedWithAllThatIsInIt();
    void deepNestingIsSkipped();
    void namesAreMatchedExactly();

    void malformedRepliesKeepWhatCameBefore_data();
    void malformedRepliesKeepWhatCameBefore();
    void whatStandsBeforeTheRootIsSteppedOver();
    void aDocumentAfterAnotherIsNotRead();
    void eachReaderStopsPastTheEndOfItsElement_data();
    void eachReaderStopsPastTheEndOfItsElement();
    void aForeignRootHoldsTheDispatcher_data();
    void aForeignRootHoldsTheDispatcher();

private:
    void reply(const QString &document) { _tolvar->onResponseReceived(document); }

    std::unique_ptr<ZVTolvar> _tolvar;
    std::unique_ptr<SignalRecorder> _diary;
};

void TestReplies::init()
{
    _tolvar = std::make_unique<ZVTolvar>();
    _diary = std::make_unique<SignalRecorder>(_tolvar.get());
}

void TestReplies::cleanup()
{
    _diary.reset();
    _tolvar.reset();
}

void TestReplies::eachStatusElement_data()
{
    QTest::addColumn<QString>("element");
    QTest::addColumn<QString>("signal");
    const auto row = [](const char *element, const char *signal) {
        QTest::addRow("%s is told of by %s", element, signal) << QString(element) << QString(signal);
    };
    row("name", "systemIDChanged");
    row("mode", "statusChanged");
    row("firmware_version", "firmwareVersionChanged");
    row("network_name", "networkChanged");
    row("mac_address", "macAddressChanged");
    row("ip_address", "ipAddressChanged");
    row("useStaticIP", "useStaticIPChanged");
    row("mask", "maskChanged");
    row("gateway", "gatewayChanged");
    row("dns", "dnsChanged");
    row("test_result", "testResultChanged");
    row("upgrade_result", "upgradeResultChanged");
    row("ant", "antennaChanged");
    row("trc", "uartTraceChanged");
    row("sl_on", "sysLogOnChanged");
    row("sl_ip", "sysLogServerChanged");
    QTest::newRow("firmware_date is read and ignored") << "firmware_date"
                                                       << "";
    QTest::newRow("there is no passphrase element") << "password"
                                                    << "";
}

void TestReplies::eachStatusElement()
{
    QFETCH(QString, element);
    QFETCH(QString, signal);
    const QString child = "<" + element + "> a &amp; b </" + element + ">";
    reply(puckdata(child + "<mode>last</mode>"));
    QStringList expected;
    if (!signal.isEmpty())
        expected += signal + ": a & b ";
    QCOMPARE(_diary->take(), expected << "statusChanged:last");
    QCOMPARE(_tolvar->password(), QString());
}

void TestReplies::theStatusIsAppliedInTheOrderOfTheDocument()
{
    reply(puckdata("\r\n <dns>4</dns>\r\n <name>T1</name> <mode>SETUP</mode>\r\n<ant>1</ant><mask/>\r\n"));
    QCOMPARE(_diary->take(),
             QStringList({"dnsChanged:4", "systemIDChanged:T1", "statusChanged:SETUP", "antennaChanged:1"}));
}

void TestReplies::aRepeatedStatusIsNoChange()
{
    const QString status = puckdata("<name>T1</name><mode>SETUP</mode><dns>4</dns>");
    reply(status);
    _diary->take();
    reply(status);
    QCOMPARE(_diary->take(), QStringList());
}

void TestReplies::aStatusThatChangesOnlyTheModeTellsOfTheStatusOnly()
{
    const QString status = "<name>T1</name><mode>%1</mode><firmware_version>A060</firmware_version>";
    reply(puckdata(status.arg("SETUP")));
    _diary->take();
    reply(puckdata(status.arg("JOINED")));
    QCOMPARE(_diary->take(), QStringList{"statusChanged:JOINED"});
}

void TestReplies::withoutANetworkNameTheNetworkStaysAsItWas()
{
    reply(puckdata("<name>T1</name><network_name>Home</network_name>"));
    _diary->take();
    reply(puckdata("<name>T2</name>"));
    QCOMPARE(_tolvar->network(), QStringLiteral("Home"));
    QCOMPARE(_diary->take(), QStringList{"systemIDChanged:T2"});
}

void TestReplies::anEmptyElementEmptiesItsValue()
{
    reply(puckdata("<network_name>Home</network_name>"));
    _diary->take();
    reply(puckdata("<network_name/>"));
    QCOMPARE(_diary->take(), QStringList{"networkChanged:"});
}

void TestReplies::anUnknownChildIsSkippedWithAllThatIsInIt_data()
{
    QTest::addColumn<QString>("unknown");
    QTest::newRow("a text") << "<uptime>12</uptime>";
    QTest::newRow("nothing") << "<uptime/>";
    QTest::newRow("children of its own") << "<radio><a><b>1</b></a><c/>text<d>2</d></radio>";
    QTest::newRow("children with known names") << "<radio><name>no</name><mode>no</mode></radio>";
    QTest::newRow("a comment and an instruction") << "<!-- name --><?name no?>";
}

void TestReplies::anUnknownChildIsSkippedWithAllThatIsInIt()
{
    QFETCH(QString, unknown);
    reply(puckdata("<name>T1</name>" + unknown + "<mode>SETUP</mode>" + unknown));
    QCOMPARE(_diary->take(), QStringList({"systemIDChanged:T1", "statusChanged:SETUP"}));
    reply("<scan_results>" + unknown + "<scan SSID=\"A\"/>" + unknown + "<scan SSID=\"B\"/></scan_results>");
    QCOMPARE(_diary->take(), QStringList({"scannedNetworkListChanged:0", "scannedNetworkListChanged:1",
                                          "scannedNetworkListChanged:2"}));
    reply("<networktest_results>" + unknown + "<status result=\"2\"/>" + unknown + "</networktest_results>");
    QCOMPARE(_diary->take(), QStringList{"networkTestSsidNotFound"});
}

void TestReplies::deepNestingIsSkipped()
{
    constexpr int levels = 100000;
    reply(puckdata(QString("<a>").repeated(levels) + QString("</a>").repeated(levels) + "<name>T1</name>"));
    QCOMPARE(_diary->take(), QStringList{"systemIDChanged:T1"});
}

void TestReplies::namesAreMatchedExactly()
{
    reply(puckdata("<Name>no</Name><usestaticip>no</usestaticip><names>no</names><name>T1</name>"));
    QCOMPARE(_diary->take(), QStringList{"systemIDChanged:T1"});
    reply("<scan_results><Scan SSID=\"no\"/><scan ssid=\"no\" SSID=\"A\"/></scan_results>");
    QCOMPARE(_tolvar->scannedNetworks()->keys(), QStringList{"A"});
    _diary->take();
    reply("<networktest_results><Status result=\"1\"/><status Result=\"1\" "
          "result=\"2\"/></networktest_results>");
    QCOMPARE(_diary->take(), QStringList{"networkTestSsidNotFound"});
}

void TestReplies::malformedRepliesKeepWhatCameBefore_data()
{
    QTest::addColumn<QString>("document");
    QTest::addColumn<QStringList>("diary");
    QTest::newRow("nothing") << "" << QStringList();
    QTest::newRow("no markup") << "status ok" << QStringList();
    QTest::newRow("a root that never ends") << "<puckdata>" << QStringList();
    QTest::newRow("cut off between two") << "<puckdata><name>T1</name>" << QStringList{"systemIDChanged:T1"};
    QTest::newRow("cut off in a name") << "<puckdata><name>T1</name><mo" << QStringList{"systemIDChanged:T1"};
    QTest::newRow("ends crossed") << "<puckdata><name>T1</name><mode>S</name></puckdata>"
                                  << QStringList({"systemIDChanged:T1", "statusChanged:S"});
    QTest::newRow("an unknown entity")
        << "<puckdata><name>T1</name><mode>&no;</mode></puckdata>" << QStringList{"systemIDChanged:T1"};
    QTest::newRow("a child inside a value ends the reading")
        << "<puckdata><name>T1</name><mode>S<b/></mode><dns>4</dns></puckdata>"
        << QStringList({"systemIDChanged:T1", "statusChanged:S"});
    QTest::newRow("a child inside what is ignored ends the reading too")
        << "<puckdata><name>T1</name><firmware_date>S<b/></firmware_date><dns>4</dns></puckdata>"
        << QStringList{"systemIDChanged:T1"};
    QTest::newRow("cut off in an unknown child")
        << "<puckdata><name>T1</name><radio><a>1</a>" << QStringList{"systemIDChanged:T1"};
    QTest::newRow("a scan cut off in a network")
        << "<scan_results><scan SSID=\"A\"/><scan SSID=\"B/>"
        << QStringList({"scannedNetworkListChanged:0", "scannedNetworkListChanged:1"});
    QTest::newRow("a scan cut off between two")
        << "<scan_results><scan SSID=\"A\"/>"
        << QStringList({"scannedNetworkListChanged:0", "scannedNetworkListChanged:1"});
    QTest::newRow("a test cut off after its verdict")
        << "<networktest_results><status result=\"1\"/>" << QStringList{"networkTestPassphraseInvalid"};
    QTest::newRow("a test cut off before its verdict") << "<networktest_results><other>" << QStringList();
    QTest::newRow("a log cut off") << "<log_file>one" << QStringList{"finishedWriteLog"};
    QTest::newRow("a control byte") << "<puckdata><name>T1</name><mode>\x01</mode></puckdata>"
                                    << QStringList{"systemIDChanged:T1"};
}

void TestReplies::malformedRepliesKeepWhatCameBefore()
{
    QFETCH(QString, document);
    QFETCH(QStringList, diary);
    reply(document);
    QCOMPARE(_diary->take(), diary);
}

void TestReplies::whatStandsBeforeTheRootIsSteppedOver()
{
    reply("<?xml version=\"1.0\"?>\r\n<!-- status -->\r\n <puckdata><name>T1</name></puckdata>");
    QCOMPARE(_diary->take(), QStringList{"systemIDChanged:T1"});
}

void TestReplies::aDocumentAfterAnotherIsNotRead()
{
    reply(puckdata("<name>T1</name>") + puckdata("<name>T2</name>"));
    QCOMPARE(_tolvar->systemID(), QStringLiteral("T1"));
}

using Parse = void (ZVTolvarTestPeer::*)(QCoreXmlStreamReader &) const;

void TestReplies::eachReaderStopsPastTheEndOfItsElement_data()
{
    QTest::addColumn<Parse>("parse");
    QTest::addColumn<QString>("document");
    const auto row = [](const char *name, Parse parse, const char *document) {
        QTest::newRow(name) << parse << QString(document);
    };
    row("a status", &ZVTolvarTestPeer::parseStatus, "<puckdata><name>T1</name> </puckdata>");
    row("an empty status", &ZVTolvarTestPeer::parseStatus, "<puckdata/>");
    row("a scan", &ZVTolvarTestPeer::parseScan, "<scan_results><scan SSID=\"A\">x</scan></scan_results>");
    row("a test", &ZVTolvarTestPeer::parseTest, "<networktest_results><status/></networktest_results>");
    row("a log", &ZVTolvarTestPeer::parseLog, "<log_file>one</log_file>");
    row("an unknown element", &ZVTolvarTestPeer::skipUnknown, "<a>1<b><c/></b>2<d/></a>");
    row("an unknown element with nothing in it", &ZVTolvarTestPeer::skipUnknown, "<a/>");
}

void TestReplies::eachReaderStopsPastTheEndOfItsElement()
{
    QFETCH(Parse, parse);
    QFETCH(QString, document);
    QCoreXmlStreamReader reader(document + "<!-- past the end -->");
    QVERIFY(reader.readNextStartElement());
    (ZVTolvarTestPeer{*_tolvar}.*parse)(reader);
    QCOMPARE(reader.tokenString(), QStringLiteral("Comment"));
    QVERIFY(!reader.hasError());
}

void TestReplies::aForeignRootHoldsTheDispatcher_data()
{
    QTest::addColumn<QString>("document");
    QTest::addColumn<bool>("returns");
    QTest::newRow("a known root is read and left") << "<puckdata/>" << true;
    QTest::newRow("an unknown root") << "<uptime/>" << false;
    QTest::newRow("a known name in other letters") << "<PuckData/>" << false;
    QTest::newRow("an unknown root of four bytes") << "<ab>" << false;
    QTest::newRow("fewer than four bytes are no document") << "<a>" << true;
    QTest::newRow("three bytes, one of the upper half") << QString::fromLatin1("<\xe9>") << true;
}

void TestReplies::aForeignRootHoldsTheDispatcher()
{
    QFETCH(QString, document);
    QFETCH(bool, returns);
    const pid_t child = ::fork();
    QVERIFY(child >= 0);
    if (child == 0) {
        // A quarter of a second of CPU time, however long that takes, is more than any document needs.
        const itimerval patience = {{0, 0}, {0, 250000}};
        ::setitimer(ITIMER_VIRTUAL, &patience, nullptr);
        reply(document);
        ::_exit(0);
    }
    int status = 0;
    QCOMPARE(::waitpid(child, &status, 0), child);
    QCOMPARE(WIFEXITED(status), returns);
    if (!returns)
        QCOMPARE(WTERMSIG(status), SIGVTALRM);
}

QTEST_GUILESS_MAIN(TestReplies)
#include "tst_zvtolvar_replies.moc"
