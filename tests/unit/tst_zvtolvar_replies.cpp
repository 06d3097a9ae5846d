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

    void eachStatusElement_data();
    void eachStatusElement();
    void theStatusIsAppliedInTheOrderOfTheDocument();
    void anUnknownElementIsSkippedWithItsContents_data();
    void anUnknownElementIsSkippedWithItsContents();
    void deepNestingIsSkipped_data();
    void deepNestingIsSkipped();
    void namesAreMatchedExactly();

    void malformedRepliesKeepEarlierValues_data();
    void malformedRepliesKeepEarlierValues();
    void contentBeforeTheRootIsSkipped();
    void eachReaderStopsPastTheEndOfItsElement_data();
    void eachReaderStopsPastTheEndOfItsElement();
    void anUnknownRootMakesTheDispatcherLoopForever_data();
    void anUnknownRootMakesTheDispatcherLoopForever();

private:
    void reply(const QString &document) { _tolvar->onResponseReceived(document); }

    std::unique_ptr<ZVTolvar> _tolvar;
    std::unique_ptr<SignalRecorder> _recorder;
};

void TestReplies::init()
{
    _tolvar = std::make_unique<ZVTolvar>();
    _recorder = std::make_unique<SignalRecorder>(_tolvar.get());
}

void TestReplies::eachStatusElement_data()
{
    QTest::addColumn<QString>("signal");
    QTest::newRow("name") << "systemIDChanged";
    QTest::newRow("mode") << "statusChanged";
    QTest::newRow("firmware_version") << "firmwareVersionChanged";
    QTest::newRow("network_name") << "networkChanged";
    QTest::newRow("mac_address") << "macAddressChanged";
    QTest::newRow("ip_address") << "ipAddressChanged";
    QTest::newRow("useStaticIP") << "useStaticIPChanged";
    QTest::newRow("mask") << "maskChanged";
    QTest::newRow("gateway") << "gatewayChanged";
    QTest::newRow("dns") << "dnsChanged";
    QTest::newRow("test_result") << "testResultChanged";
    QTest::newRow("upgrade_result") << "upgradeResultChanged";
    QTest::newRow("ant") << "antennaChanged";
    QTest::newRow("trc") << "uartTraceChanged";
    QTest::newRow("sl_on") << "sysLogOnChanged";
    QTest::newRow("sl_ip") << "sysLogServerChanged";
    QTest::newRow("firmware_date") << ""; // read and ignored
    QTest::newRow("password") << "";      // there is no passphrase element
}

void TestReplies::eachStatusElement()
{
    QFETCH(QString, signal);
    reply(puckdata(QString("<%1> a &amp; b </%1><mode>last</mode>").arg(QTest::currentDataTag())));
    const QStringList reported = signal.isEmpty() ? QStringList() : QStringList{signal + ": a & b "};
    QCOMPARE(_recorder->take(), reported + QStringList{"statusChanged:last"});
}

void TestReplies::theStatusIsAppliedInTheOrderOfTheDocument()
{
    reply(puckdata("\r\n <dns>4</dns>\r\n <name>T1</name> <mode>SETUP</mode>\r\n<ant>1</ant><dns/>\r\n"));
    QCOMPARE(_recorder->take(), QStringList({"dnsChanged:4", "systemIDChanged:T1", "statusChanged:SETUP",
                                             "antennaChanged:1", "dnsChanged:"}));
}

void TestReplies::anUnknownElementIsSkippedWithItsContents_data()
{
    QTest::addColumn<QString>("unknown");
    QTest::newRow("empty element") << "<uptime/>";
    QTest::newRow("child elements, one with a known name")
        << "<radio><a><b>1</b></a><name>no</name>text</radio>";
    QTest::newRow("comment and processing instruction") << "<!-- name --><?name no?>";
}

void TestReplies::anUnknownElementIsSkippedWithItsContents()
{
    QFETCH(QString, unknown);
    reply(puckdata("<name>T1</name>" + unknown + "<mode>SETUP</mode>" + unknown));
    QCOMPARE(_recorder->take(), QStringList({"systemIDChanged:T1", "statusChanged:SETUP"}));
    reply("<scan_results>" + unknown + "<scan SSID=\"A\"/>" + unknown + "<scan SSID=\"B\"/></scan_results>");
    QCOMPARE(_tolvar->scannedNetworks()->size(), 2);
    _recorder->take();
    reply("<networktest_results>" + unknown + "<status result=\"2\"/>" + unknown + "</networktest_results>");
    QCOMPARE(_recorder->take(), QStringList{"networkTestSsidNotFound"});
}

void TestReplies::deepNestingIsSkipped_data()
{
    QTest::addColumn<QString>("unknown");
    QTest::addColumn<QStringList>("reported");
    constexpr int levels = 100000;
    const auto times = [](const char *text, int count) { return QString(text).repeated(count); };
    const QStringList name = {"systemIDChanged:T1"};
    QTest::newRow("content on each level")
        << times("<a><name>no</name>x", levels) + times("<b/></a><!-- -->", levels) << name;
    QTest::newRow("end tag missing") << times("<a>", levels) + times("</a>", levels - 1) << QStringList();
    QTest::newRow("end tag with a different name") << times("<a>", levels) + "</a></b>" << QStringList();
}

void TestReplies::deepNestingIsSkipped()
{
    QFETCH(QString, unknown);
    reply(puckdata(unknown + "<name>T1</name>"));
    QTEST(_recorder->take(), "reported");
}

void TestReplies::namesAreMatchedExactly()
{
    reply(puckdata("<Name>no</Name><usestaticip>no</usestaticip><names>no</names><name>T1</name>"));
    QCOMPARE(_recorder->take(), QStringList{"systemIDChanged:T1"});
    reply("<scan_results><Scan SSID=\"no\"/><scan ssid=\"no\" SSID=\"A\"/></scan_results>");
    QCOMPARE(_tolvar->scannedNetworks()->keys(), QStringList{"A"});
    _recorder->take();
    reply("<networktest_results><Status result=\"1\"/><status Result=\"1\" "
          "result=\"2\"/></networktest_results>");
    QCOMPARE(_recorder->take(), QStringList{"networkTestSsidNotFound"});
}

void TestReplies::malformedRepliesKeepEarlierValues_data()
{
    QTest::addColumn<QString>("document");
    QTest::addColumn<QStringList>("reported");
    const QStringList name = {"systemIDChanged:T1"};
    const QStringList nameAndMode = {"systemIDChanged:T1", "statusChanged:S"};
    const QStringList network = {"scannedNetworkListChanged:0", "scannedNetworkListChanged:1"};
    const auto row = [](const char *what, const QString &document, const QStringList &reported) {
        QTest::newRow(what) << document << reported;
    };
    row("empty reply", "", {});
    row("no markup", "status ok", {});
    row("truncated between two elements", "<puckdata><name>T1</name>", name);
    row("truncated in a tag name", "<puckdata><name>T1</name><mo", name);
    row("mismatched end tag", "<puckdata><name>T1</name><mode>S</name></puckdata>", nameAndMode);
    row("child element in a value", "<puckdata><name>T1</name><mode>S<b/></mode><dns>4</dns></puckdata>",
        nameAndMode);
    row("child element in an ignored element",
        "<puckdata><name>T1</name><firmware_date>S<b/></firmware_date><dns>4</dns></puckdata>", name);
    row("truncated in an unknown element", "<puckdata><name>T1</name><radio><a>1</a>", name);
    row("scan truncated in a network", "<scan_results><scan SSID=\"A\"/><scan SSID=\"B/>", network);
    row("test truncated after its result", "<networktest_results><status result=\"1\"/>",
        {"networkTestPassphraseInvalid"});

    // Each entity is ten times the one before: the last would be ten thousand million characters long.
    QString bomb = "<!DOCTYPE x [<!ENTITY a0 \"0123456789\">";
    for (int i = 1; i < 10; ++i)
        bomb += QString("<!ENTITY a%1 \"%2\">").arg(i).arg(QString("&a%1;").arg(i - 1).repeated(10));
    row("entity expansion in a value", bomb + "]>" + puckdata("<name>T1</name><mode>&a9;</mode><dns>4</dns>"),
        name);
    row("entity expansion in an attribute",
        bomb + "]><scan_results><scan SSID='A'/><scan SSID='&a9;'/><scan SSID='B'/></scan_results>", network);
    row("external entity is not read",
        "<!DOCTYPE x [<!ENTITY a SYSTEM \"file:///proc/self/cmdline\">]>" +
            puckdata("<name>T1&a;</name><mode>S</mode>"),
        nameAndMode);
}

void TestReplies::malformedRepliesKeepEarlierValues()
{
    QFETCH(QString, document);
    reply(document);
    QTEST(_recorder->take(), "reported");
}

void TestReplies::contentBeforeTheRootIsSkipped()
{
    reply("<?xml version=\"1.0\"?>\r\n<!-- status -->\r\n <puckdata><name>T1</name></puckdata>");
    QCOMPARE(_recorder->take(), QStringList{"systemIDChanged:T1"});
}

using Parse = void (ZVTolvarTestPeer::*)(QCoreXmlStreamReader &) const;

void TestReplies::eachReaderStopsPastTheEndOfItsElement_data()
{
    QTest::addColumn<Parse>("parse");
    QTest::addColumn<QString>("document");
    const auto row = [](const char *name, Parse parse, const char *document) {
        QTest::newRow(name) << parse << QString(document);
    };
    row("status", &ZVTolvarTestPeer::parseStatus, "<puckdata><name>T1</name> </puckdata>");
    row("log", &ZVTolvarTestPeer::parseLog, "<log_file>one</log_file>");
    row("unknown element", &ZVTolvarTestPeer::skipUnknown, "<a>1<b><c/></b>2<d/></a>");
    row("empty unknown element", &ZVTolvarTestPeer::skipUnknown, "<a/>");
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

void TestReplies::anUnknownRootMakesTheDispatcherLoopForever_data()
{
    QTest::addColumn<QString>("document");
    QTest::addColumn<bool>("returns");
    QTest::newRow("known root element") << "<puckdata/>" << true;
    QTest::newRow("unknown root element of four bytes") << "<ab>" << false;
    QTest::newRow("fewer than four bytes") << "<a>" << true;
}

void TestReplies::anUnknownRootMakesTheDispatcherLoopForever()
{
    QFETCH(QString, document);
    QFETCH(bool, returns);
    const pid_t child = ::fork();
    QVERIFY(child >= 0);
    if (child == 0) {
        // A quarter of a second of CPU time, however long that takes, is more than any document needs.
        const itimerval cpuLimit = {{0, 0}, {0, 250000}};
        ::setitimer(ITIMER_VIRTUAL, &cpuLimit, nullptr);
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
