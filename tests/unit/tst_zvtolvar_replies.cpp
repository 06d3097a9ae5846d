#include <csignal>

#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
#include <QPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include "tests/support/zvtolvarinspector.h"

namespace
{
/// Names the controller's signals as they are emitted, with the text they carry.
class SignalDiary : public QObject
{
    Q_OBJECT

public:
    explicit SignalDiary(ZVTolvar *tolvar)
    {
        const auto text = [this, tolvar](const char *name, void (ZVTolvar::*changed)(QString)) {
            connect(tolvar, changed, this,
                    [this, name](const QString &value) { _lines += name + (":" + value); });
        };
        const auto plain = [this, tolvar](const char *name, void (ZVTolvar::*signal)()) {
            connect(tolvar, signal, this, [this, name] { _lines += name; });
        };
        text("systemID", &ZVTolvar::systemIDChanged);
        text("status", &ZVTolvar::statusChanged);
        text("firmwareVersion", &ZVTolvar::firmwareVersionChanged);
        text("network", &ZVTolvar::networkChanged);
        text("password", &ZVTolvar::passwordChanged);
        text("ipAddress", &ZVTolvar::ipAddressChanged);
        text("useStaticIP", &ZVTolvar::useStaticIPChanged);
        text("mask", &ZVTolvar::maskChanged);
        text("gateway", &ZVTolvar::gatewayChanged);
        text("dns", &ZVTolvar::dnsChanged);
        text("testResult", &ZVTolvar::testResultChanged);
        text("upgradeResult", &ZVTolvar::upgradeResultChanged);
        text("macAddress", &ZVTolvar::macAddressChanged);
        text("antenna", &ZVTolvar::antennaChanged);
        text("uartTrace", &ZVTolvar::uartTraceChanged);
        text("sysLogOn", &ZVTolvar::sysLogOnChanged);
        text("sysLogServer", &ZVTolvar::sysLogServerChanged);
        plain("testFound", &ZVTolvar::networkTestFound);
        plain("testPassphraseInvalid", &ZVTolvar::networkTestPassphraseInvalid);
        plain("testSsidNotFound", &ZVTolvar::networkTestSsidNotFound);
        plain("testSystemError", &ZVTolvar::networkTestSystemError);
        plain("finishedWriteLog", &ZVTolvar::finishedWriteLog);
        plain("testFinished", &ZVTolvar::networkTestFinished);
        plain("scanFinished", &ZVTolvar::scanFinished);
        connect(tolvar, &ZVTolvar::scannedNetworkListChanged, this,
                [this](const auto *table) { _lines += "table:" + QString::number(table->size()); });
    }

    QStringList take() { return std::exchange(_lines, {}); }

private:
    QStringList _lines;
};

QString puckdata(const QString &children)
{
    return "<puckdata>" + children + "</puckdata>";
}
} // namespace

/// The documents that the device replies with.
class TestReplies : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void eachStatusElement_data();
    void eachStatusElement();
    void aWholeStatus();
    void aRepeatedStatusTellsOfChangesOnly();
    void whatIsMissingStaysAsItWas();
    void whatIsUnknownIsSkipped_data();
    void whatIsUnknownIsSkipped();
    void malformedStatus_data();
    void malformedStatus();
    void aNameIsMatchedExactly();

    void eachScanAttribute_data();
    void eachScanAttribute();
    void aScanEmptiesTheTableFirst();
    void aScanWithoutNetworks();
    void theSameSsidTwice();
    void aBrokenScanKeepsWhatCameBefore();

    void eachTestResult_data();
    void eachTestResult();
    void verdictsComeBeforeTheEndOfTheTest();

    void aLogIsWrittenAndItsFileClosed_data();
    void aLogIsWrittenAndItsFileClosed();
    void aLogThatNobodyWaitsForIsIgnored();
    void onlyTheFirstTextOfALogIsWritten();

    void deepNestingIsSkipped();
    void aDocumentAfterAnotherIsNotRead();
    void aForeignRootHoldsTheDispatcher_data();
    void aForeignRootHoldsTheDispatcher();

private:
    void reply(const QString &document) { _tolvar->onResponseReceived(document); }
    static QString read(const QString &path);

    std::unique_ptr<ZVTolvar> _tolvar;
    std::unique_ptr<SignalDiary> _diary;
    QTemporaryDir _folder;
};

void TestReplies::init()
{
    _tolvar = std::make_unique<ZVTolvar>();
    _diary = std::make_unique<SignalDiary>(_tolvar.get());
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
    QTest::newRow("name") << "name"
                          << "systemID";
    QTest::newRow("mode") << "mode"
                          << "status";
    QTest::newRow("firmware_date is read and ignored") << "firmware_date"
                                                       << "";
    QTest::newRow("firmware_version") << "firmware_version"
                                      << "firmwareVersion";
    QTest::newRow("network_name") << "network_name"
                                  << "network";
    QTest::newRow("mac_address") << "mac_address"
                                 << "macAddress";
    QTest::newRow("ip_address") << "ip_address"
                                << "ipAddress";
    QTest::newRow("useStaticIP") << "useStaticIP"
                                 << "useStaticIP";
    QTest::newRow("mask") << "mask"
                          << "mask";
    QTest::newRow("gateway") << "gateway"
                             << "gateway";
    QTest::newRow("dns") << "dns"
                         << "dns";
    QTest::newRow("test_result") << "test_result"
                                 << "testResult";
    QTest::newRow("upgrade_result") << "upgrade_result"
                                    << "upgradeResult";
    QTest::newRow("ant") << "ant"
                         << "antenna";
    QTest::newRow("trc") << "trc"
                         << "uartTrace";
    QTest::newRow("sl_on") << "sl_on"
                           << "sysLogOn";
    QTest::newRow("sl_ip") << "sl_ip"
                           << "sysLogServer";
    QTest::newRow("there is no passphrase element") << "password"
                                                    << "";
}

void TestReplies::eachStatusElement()
{
    QFETCH(QString, element);
    QFETCH(QString, signal);
    const QString child = "<" + element + "> a &amp; b </" + element + ">";
    reply("<?xml version=\"1.0\"?>\r\n" + puckdata(child + "<mode>last</mode>"));
    QStringList expected;
    if (!signal.isEmpty())
        expected += signal + ": a & b ";
    QCOMPARE(_diary->take(), expected << "status:last");
}

void TestReplies::aWholeStatus()
{
    reply(puckdata("\r\n <dns>4</dns>\r\n <name>T1</name> <mode>SETUP</mode>\r\n<ant>1</ant><mask/>\r\n"));
    QCOMPARE(_diary->take(), QStringList({"dns:4", "systemID:T1", "status:SETUP", "antenna:1"}));
}

void TestReplies::aRepeatedStatusTellsOfChangesOnly()
{
    const QString status = "<name>T1</name><mode>%1</mode><firmware_version>A060</firmware_version>";
    reply(puckdata(status.arg("SETUP")));
    _diary->take();
    reply(puckdata(status.arg("SETUP")));
    QCOMPARE(_diary->take(), QStringList());
    reply(puckdata(status.arg("JOINED")));
    QCOMPARE(_diary->take(), QStringList{"status:JOINED"});
}

void TestReplies::whatIsMissingStaysAsItWas()
{
    reply(puckdata("<name>T1</name><network_name>Home</network_name>"));
    _diary->take();
    reply(puckdata("<name>T2</name>"));
    QCOMPARE(_tolvar->network(), QStringLiteral("Home"));
    QCOMPARE(_diary->take(), QStringList{"systemID:T2"});
    reply(puckdata("<network_name/>"));
    QCOMPARE(_diary->take(), QStringList{"network:"});
}

void TestReplies::whatIsUnknownIsSkipped_data()
{
    QTest::addColumn<QString>("unknown");
    QTest::newRow("a text") << "<uptime>12</uptime>";
    QTest::newRow("nothing") << "<uptime/>";
    QTest::newRow("children of its own") << "<radio><a><b>1</b></a><c/>text<d>2</d></radio>";
    QTest::newRow("children with known names") << "<radio><name>no</name><mode>no</mode></radio>";
    QTest::newRow("a comment and an instruction") << "<!-- name --><?name no?>";
}

void TestReplies::whatIsUnknownIsSkipped()
{
    QFETCH(QString, unknown);
    reply(puckdata("<name>T1</name>" + unknown + "<mode>SETUP</mode>" + unknown));
    QCOMPARE(_diary->take(), QStringList({"systemID:T1", "status:SETUP"}));
    reply("<scan_results>" + unknown + "<scan SSID=\"A\"/>" + unknown + "<scan SSID=\"B\"/></scan_results>");
    QCOMPARE(_diary->take(), QStringList({"table:0", "table:1", "table:2"}));
    reply("<networktest_results>" + unknown + "<status result=\"2\"/>" + unknown + "</networktest_results>");
    QCOMPARE(_diary->take(), QStringList{"testSsidNotFound"});
}

void TestReplies::malformedStatus_data()
{
    QTest::addColumn<QString>("document");
    QTest::addColumn<QStringList>("diary");
    QTest::newRow("nothing") << "" << QStringList();
    QTest::newRow("no markup") << "status ok" << QStringList();
    QTest::newRow("a root that never ends") << "<puckdata>" << QStringList();
    QTest::newRow("cut off between two") << "<puckdata><name>T1</name>" << QStringList{"systemID:T1"};
    QTest::newRow("cut off in a name") << "<puckdata><name>T1</name><mo" << QStringList{"systemID:T1"};
    QTest::newRow("ends crossed") << "<puckdata><name>T1</name><mode>S</name></puckdata>"
                                  << QStringList({"systemID:T1", "status:S"});
    QTest::newRow("an unknown entity")
        << "<puckdata><name>T1</name><mode>&no;</mode></puckdata>" << QStringList{"systemID:T1"};
    QTest::newRow("a child inside a value ends the reading")
        << "<puckdata><name>T1</name><mode>S<b/></mode><dns>4</dns></puckdata>"
        << QStringList({"systemID:T1", "status:S"});
    QTest::newRow("a control byte") << "<puckdata><name>T1</name><mode>\x01</mode></puckdata>"
                                    << QStringList{"systemID:T1"};
}

void TestReplies::malformedStatus()
{
    QFETCH(QString, document);
    QFETCH(QStringList, diary);
    reply(document);
    QCOMPARE(_diary->take(), diary);
}

void TestReplies::aNameIsMatchedExactly()
{
    reply(puckdata("<Name>no</Name><usestaticip>no</usestaticip><name>T1</name>"));
    QCOMPARE(_diary->take(), QStringList{"systemID:T1"});
    reply("<scan_results><Scan SSID=\"no\"/><scan ssid=\"no\" SSID=\"A\"/></scan_results>");
    QCOMPARE(_tolvar->scannedNetworks()->keys(), QStringList{"A"});
}

void TestReplies::eachScanAttribute_data()
{
    QTest::addColumn<QString>("attribute");
    QTest::addColumn<int>("field");
    QTest::newRow("SSID") << "SSID" << 0;
    QTest::newRow("channel") << "channel" << 1;
    QTest::newRow("adhoc") << "adhoc" << 2;
    QTest::newRow("sec") << "sec" << 3;
    QTest::newRow("suites") << "suites" << 4;
    QTest::newRow("WPS") << "WPS" << 5;
    QTest::newRow("RSSI") << "RSSI" << 6;
    QTest::newRow("an unknown one") << "rate" << -1;
}

void TestReplies::eachScanAttribute()
{
    QFETCH(QString, attribute);
    QFETCH(int, field);
    reply("<scan_results><scan " + attribute + "=\" &quot;x&quot; \">text is ignored</scan></scan_results>");
    QCOMPARE(_diary->take(), QStringList({"table:0", "table:1"}));
    const ZVScanResult record = _tolvar->scannedNetworks()->constBegin().value();
    QStringList expected = {"", "", "", "", "", "", ""};
    if (field >= 0)
        expected[field] = " \"x\" ";
    QCOMPARE(QStringList({record.ssid, record.channel, record.adhoc, record.security, record.suites,
                          record.wps, record.rssi}),
             expected);
    QCOMPARE(_tolvar->scannedNetworks()->constBegin().key(), record.ssid);
}

void TestReplies::aScanEmptiesTheTableFirst()
{
    reply("<scan_results><scan SSID=\"A\"/><scan SSID=\"B\"/></scan_results>");
    _diary->take();
    reply("<scan_results><scan SSID=\"C\" RSSI=\"\"/></scan_results>");
    QCOMPARE(_diary->take(), QStringList({"table:0", "table:1"}));
    QCOMPARE(_tolvar->scannedNetworks()->keys(), QStringList{"C"});
    QVERIFY(_tolvar->scannedNetworks()->value("C").rssi.isNull());
}

void TestReplies::aScanWithoutNetworks()
{
    reply("<scan_results><scan SSID=\"A\"/></scan_results>");
    _diary->take();
    reply("<scan_results></scan_results>");
    QCOMPARE(_diary->take(), QStringList{"table:0"});
    QVERIFY(_tolvar->scannedNetworks()->isEmpty());
}

void TestReplies::theSameSsidTwice()
{
    reply("<scan_results><scan SSID=\"A\" RSSI=\"-80\"/><scan SSID=\"A\" RSSI=\"-20\"/></scan_results>");
    QCOMPARE(_diary->take(), QStringList({"table:0", "table:1"}));
    QCOMPARE(_tolvar->getScanResult("A").rssi, QStringLiteral("-80"));
}

void TestReplies::aBrokenScanKeepsWhatCameBefore()
{
    reply("<scan_results><scan SSID=\"A\"/><scan SSID=\"B/>");
    QCOMPARE(_diary->take(), QStringList({"table:0", "table:1"}));
}

void TestReplies::eachTestResult_data()
{
    QTest::addColumn<QString>("status");
    QTest::addColumn<QStringList>("diary");
    QTest::newRow("0 is found") << "<status SSID=\"A\" desc=\"ok\" result=\"0\">x</status>"
                                << QStringList{"testFound"};
    QTest::newRow("1 is a wrong passphrase")
        << "<status result=\"1\"/>" << QStringList{"testPassphraseInvalid"};
    QTest::newRow("2 is an unknown SSID") << "<status result=\"2\"/>" << QStringList{"testSsidNotFound"};
    QTest::newRow("3 is a system error") << "<status result=\"3\"/>" << QStringList{"testSystemError"};
    QTest::newRow("4 is nothing") << "<status result=\"4\"/>" << QStringList();
    QTest::newRow("7 is nothing") << "<status result=\"7\"/>" << QStringList();
    QTest::newRow("-1 is nothing") << "<status result=\"-1\"/>" << QStringList();
    QTest::newRow("none is found") << "<status/>" << QStringList{"testFound"};
    QTest::newRow("empty is found") << "<status result=\"\"/>" << QStringList{"testFound"};
    QTest::newRow("a word is found") << "<status result=\"two\"/>" << QStringList{"testFound"};
    QTest::newRow("one verdict a status")
        << "<status result=\"2\"/><status result=\"0\"/>" << QStringList({"testSsidNotFound", "testFound"});
    QTest::newRow("no status is no verdict") << "" << QStringList();
}

void TestReplies::eachTestResult()
{
    QFETCH(QString, status);
    QFETCH(QStringList, diary);
    reply("<networktest_results>" + status + "</networktest_results>");
    QCOMPARE(_diary->take(), diary);
}

void TestReplies::verdictsComeBeforeTheEndOfTheTest()
{
    const ZVTolvarInspector inside{*_tolvar};
    const auto feed = [this](const QByteArray &bytes) {
        for (const char c : bytes)
            _tolvar->handleReceived(c);
    };
    inside.testing() = true;
    feed("\x02<networktest_results><status result=\"1\"/></networktest_results>\x03");
    QCOMPARE(_diary->take(), QStringList({"testPassphraseInvalid", "testFinished"}));
    inside.scanning() = true;
    feed("\x02<scan_results><scan SSID=\"A\"/></scan_results>\x03");
    QCOMPARE(_diary->take(), QStringList({"table:0", "table:1", "scanFinished"}));
}

QString TestReplies::read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return "cannot be read: " + file.errorString();
    return QString::fromLatin1(file.readAll());
}

void TestReplies::aLogIsWrittenAndItsFileClosed_data()
{
    QTest::addColumn<QString>("document");
    QTest::addColumn<QString>("written"); // as Latin-1
    QTest::newRow("lines") << "<log_file>one\ntwo &lt;x&gt;\n</log_file>"
                           << "one\ntwo <x>\n";
    QTest::newRow("CR LF from the device is one line end") << "<log_file>one\r\ntwo\r\n</log_file>"
                                                           << "one\ntwo\n";
    QTest::newRow("an empty root") << "<log_file/>"
                                   << "";
    QTest::newRow("cut off: nothing of it can be read") << "<log_file>one\ntwo"
                                                        << "";
    QTest::newRow("as many bytes as characters, whatever they take")
        << QString("<log_file>caf\u00e9!\n</log_file>") << QString("caf\u00c3\u00a9!");
}

void TestReplies::aLogIsWrittenAndItsFileClosed()
{
    QFETCH(QString, document);
    QFETCH(QString, written);
    const QString path = _folder.filePath("log.txt");
    QPointer<QFile> file = new QFile(path);
    QVERIFY(file->open(QIODevice::WriteOnly | QIODevice::Text));
    _tolvar->getLogFileTo(file);
    QVERIFY(_diary->take().isEmpty());
    reply(document);
    QCOMPARE(_diary->take(), QStringList{"finishedWriteLog"});
    QVERIFY2(file.isNull(), "the file object is deleted");
    QCOMPARE(ZVTolvarInspector{*_tolvar}.logFile(), nullptr);
    QCOMPARE(read(path), written);
}

void TestReplies::aLogThatNobodyWaitsForIsIgnored()
{
    reply("<log_file>one\ntwo\n</log_file>");
    QCOMPARE(_diary->take(), QStringList{"finishedWriteLog"});
    reply(puckdata("<name>T1</name>"));
    QCOMPARE(_tolvar->systemID(), QStringLiteral("T1"));
}

void TestReplies::onlyTheFirstTextOfALogIsWritten()
{
    const QString path = _folder.filePath("log.txt");
    auto *file = new QFile(path);
    QVERIFY(file->open(QIODevice::WriteOnly | QIODevice::Text));
    _tolvar->getLogFileTo(file);
    reply("<!-- the log --><log_file>one</log_file><log_file>two</log_file>");
    QCOMPARE(read(path), QStringLiteral("one"));
}

void TestReplies::deepNestingIsSkipped()
{
    constexpr int levels = 100000;
    reply(puckdata(QString("<a>").repeated(levels) + QString("</a>").repeated(levels) + "<name>T1</name>"));
    QCOMPARE(_diary->take(), QStringList{"systemID:T1"});
}

void TestReplies::aDocumentAfterAnotherIsNotRead()
{
    reply(puckdata("<name>T1</name>") + puckdata("<name>T2</name>"));
    QCOMPARE(_tolvar->systemID(), QStringLiteral("T1"));
}

void TestReplies::aForeignRootHoldsTheDispatcher_data()
{
    QTest::addColumn<QString>("document");
    QTest::addColumn<bool>("returns");
    QTest::newRow("a known root is read and left") << "<puckdata/>" << true;
    QTest::newRow("an unknown root") << "<uptime/>" << false;
    QTest::newRow("a known name in other letters") << "<PuckData/>" << false;
}

void TestReplies::aForeignRootHoldsTheDispatcher()
{
    QFETCH(QString, document);
    QFETCH(bool, returns);
    const pid_t child = ::fork();
    QVERIFY(child >= 0);
    if (child == 0) {
        reply(document);
        ::_exit(0);
    }
    const auto hasReturned = [child] { return ::waitpid(child, nullptr, WNOHANG) == child; };
    bool returned = false;
    // One that returns does so when it gets round to it; for one that doesn't, half a second is long enough.
    for (int turns = returns ? 2000 : 50; turns > 0 && !returned; --turns) {
        QTest::qWait(10);
        returned = hasReturned();
    }
    if (!returned) {
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
    }
    QCOMPARE(returned, returns);
}

QTEST_GUILESS_MAIN(TestReplies)
#include "tst_zvtolvar_replies.moc"
