#include <chrono>

#include <QElapsedTimer>
#include <QTest>
#include <QXmlStreamReader>

#include "simulator/simulatedtolvar.h"

namespace
{
// The host's end of a console: sends input and returns the output.
class Console
{
public:
    explicit Console(const DeviceConfig &config = DeviceConfig())
        : tolvar(config)
    {
        QObject::connect(&tolvar, &SimulatedTolvar::transmit, &tolvar,
                         [this](const QByteArray &bytes) { output += bytes; });
    }

    QByteArray send(const QByteArray &bytes)
    {
        output.clear();
        tolvar.receive(bytes);
        return output;
    }

    // Returns the document in the reply to a line. The test fails if the host could not read it.
    QByteArray ask(const QByteArray &line)
    {
        const QByteArray answer = send(line + "\r\n");
        const qsizetype start = answer.indexOf('\x02') + 1;
        QByteArray document = answer.mid(start, answer.indexOf('\x03') - start);
        QXmlStreamReader xml(QString::fromLatin1(document));
        while (!xml.atEnd())
            xml.readNext();
        if (xml.hasError())
            QTest::qFail(qPrintable(xml.errorString()), __FILE__, __LINE__);
        return document;
    }

    SimulatedTolvar tolvar;
    QByteArray output;
};

QByteArray everyByteOfAName()
{
    QByteArray bytes;
    for (int code = 0x20; code <= 0xFF; ++code)
        bytes += static_cast<char>(code);
    return bytes;
}

QByteArray shown(const TolvarConfiguration &c)
{
    return QByteArrayList{c.network, c.passphrase, c.antenna, c.useStaticIP, c.ipAddress, c.uartTrace}.join(
        '|');
}
} // namespace

/// Tests the console of the simulated device: its replies and documents, its settings, and what it records.
class TestSimulatedTolvar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bytesAreAnswered_data();
    void bytesAreAnswered();
    void settingsAreAppliedAtOnceAndKeptBySave_data();
    void settingsAreAppliedAtOnceAndKeptBySave();
    void theStatusDocumentHasEveryElement();
    void theStatusFollowsTheConfiguration();
    void theStatusMayHaveExtraAndMissingElements();
    void theScanDocumentListsTheVisibleNetworks();
    void theLogDocumentIsEscaped();
    void documentsAreByteTransparent();
    void aTestReportsWhetherTheDeviceCanJoin_data();
    void aTestReportsWhetherTheDeviceCanJoin();
    void aScanIsTracedOnRequest();
    void linesAreQueuedDuringAScanOrTest_data();
    void linesAreQueuedDuringAScanOrTest();
    void thePromptIsDelayed();
    void aPowerLossDiscardsUnsavedSettings();
    void aPowerLossEndsAScan();
    void exitEndsTheSession();
    void receivedLinesAndBytesAreRecorded();
    void aReplyMayMakeTheHostSendAtOnce();
};

void TestSimulatedTolvar::bytesAreAnswered_data()
{
    QTest::addColumn<TolvarFaults>("faults");
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("output");
    const auto asleep = [](const char *name, const QByteArray &input, const QByteArray &output) {
        QTest::newRow(name) << TolvarFaults() << input << output;
    };
    const auto awake = [asleep](const char *name, const QByteArray &input, const QByteArray &output) {
        asleep(name, "C\r\n" + input, "\r\n>" + output);
    };
    const auto withFault = [](const char *name, const TolvarFaults &faults, const QByteArray &output) {
        QTest::newRow(name) << faults << QByteArray("C\r\nget_log_file\r\n") << output;
    };

    asleep("wake-up by C", "C\r\n", "\r\n>");
    asleep("wake-up by an empty line", "\r\n", "\r\n>");
    asleep("no wake-up by C without a line end", "C", "");
    asleep("no wake-up by a command", "get\r\n", "");
    asleep("no wake-up by lower-case c", "c\r\n", "");

    awake("second C is unknown", "C\r\n", "C\r\n\r\n>");
    awake("incomplete line is echoed", "sav", "sav");
    awake("prompt after an empty line", "\r\n", "\r\n\r\n>");
    awake("CR ends a line", "save\r", "save\r\n\r\n>");
    awake("LF ends a line", "save\n", "save\r\n\r\n>");
    awake("LF CR ends two lines", "save\n\r", "save\r\n\r\n>\r\n\r\n>");
    awake("CR CR ends two lines", "\r\r", "\r\n\r\n>\r\n\r\n>");
    awake("reply between STX and ETX, then a prompt", "get_log_file\r\n",
          "get_log_file\r\n\x02<log_file>log</log_file>\x03\r\n>");
    awake("empty scan document without networks", "scan\r\n", "scan\r\n\x02<scan_results/>\x03\r\n>");
    awake("one prompt per setting",
          "setuarttrace n\r\nsetssid x\r\nsetpass x\r\nant_select 1\r\nsetstaticip N\r\nsave\r\n",
          "setuarttrace n\r\n\r\n>setssid x\r\n\r\n>setpass x\r\n\r\n>ant_select 1\r\n\r\n>"
          "setstaticip N\r\n\r\n>save\r\n\r\n>");
    awake("no prompt after exit", "exit\r\n", "exit\r\n");
    awake("upper-case command is unknown", "GET_LOG_FILE\r\n", "GET_LOG_FILE\r\n\r\n>");
    awake("command with a trailing space is unknown", "get_log_file \r\n", "get_log_file \r\n\r\n>");
    awake("command with a leading space is unknown", " get_log_file\r\n", " get_log_file\r\n\r\n>");

    TolvarFaults faults;
    faults.neverPrompts = true;
    withFault("no prompt", faults, "get_log_file\r\n\x02<log_file>log</log_file>\x03");
    faults = {};
    faults.promptsTwice = true;
    withFault("two prompts", faults, "\r\n>\r\n>get_log_file\r\n\x02<log_file>log</log_file>\x03\r\n>\r\n>");
    faults = {};
    faults.garbageBeforeReplies = "# \xFF>";
    withFault("garbage before a reply", faults,
              "\r\n>get_log_file\r\n# \xFF>\r\n\x02<log_file>log</log_file>\x03\r\n>");
    faults = {};
    faults.cutRepliesAfter = 9;
    withFault("truncated reply", faults, "\r\n>get_log_file\r\n\x02<log_file");
    faults.cutRepliesAfter = 0;
    withFault("reply truncated after STX", faults, "\r\n>get_log_file\r\n\x02");
    faults.cutRepliesAfter = 1000;
    withFault("reply shorter than the truncation", faults,
              "\r\n>get_log_file\r\n\x02<log_file>log</log_file>\x03\r\n>");
    faults = {};
    faults.malformedDocuments = true;
    withFault("malformed document", faults, "\r\n>get_log_file\r\n\x02<log_file>log</not_its_name>\x03\r\n>");
    faults = {};
    faults.deafTo = {"setssid", "get_log_file"};
    QTest::newRow("ignored commands") << faults << QByteArray("C\r\nsetssid a b\r\nget_log_file\r\nsave\r\n")
                                      << QByteArray("\r\n>setssid a b\r\nget_log_file\r\nsave\r\n\r\n>");
}

void TestSimulatedTolvar::bytesAreAnswered()
{
    QFETCH(TolvarFaults, faults);
    QFETCH(QByteArray, input);
    DeviceConfig config;
    config.faults = faults;
    config.air.clear();
    config.logText = "log";
    Console console(config);
    QTEST(console.send(input), "output");
    QVERIFY(console.tolvar.state().pending.network != "a b"); // the fault ignores that command
}

void TestSimulatedTolvar::settingsAreAppliedAtOnceAndKeptBySave_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("expected"); // network, passphrase, antenna, static IP, address, trace
    const auto row = [](const char *name, const QByteArray &line, const QByteArray &expected) {
        QTest::newRow(name) << line << expected;
    };
    row("network name with spaces", "setssid  a  b ", " a  b |p|0|N|10.0.0.1|N");
    row("empty network name", "setssid ", "|p|0|N|10.0.0.1|N");
    row("network name with every byte", "setssid " + everyByteOfAName(),
        everyByteOfAName() + "|p|0|N|10.0.0.1|N");
    row("setssid without an argument is ignored", "setssid", "n|p|0|N|10.0.0.1|N");
    row("passphrase of spaces", "setpass   ", "n|  |0|N|10.0.0.1|N");
    row("external antenna", "ant_select 1", "n|p|1|N|10.0.0.1|N");
    row("static address", "setstaticip Y 10.0.0.2", "n|p|0|Y|10.0.0.2|N");
    row("empty static address", "setstaticip Y ", "n|p|0|Y||N");
    row("DHCP keeps the last address", "setstaticip N", "n|p|0|N|10.0.0.1|N");
    row("static address without a space is ignored", "setstaticip Y", "n|p|0|N|10.0.0.1|N");
    row("trace on", "setuarttrace y", "n|p|0|N|10.0.0.1|Y");
    row("trace with an upper-case Y is ignored", "setuarttrace Y", "n|p|0|N|10.0.0.1|N");
}

void TestSimulatedTolvar::settingsAreAppliedAtOnceAndKeptBySave()
{
    QFETCH(QByteArray, line);
    DeviceConfig config;
    config.configuration = {"n", "p", "0", "N", "10.0.0.1", "N"};
    Console console(config);
    console.send("C\r\n" + line + "\r\n");
    QTEST(shown(console.tolvar.state().pending), "expected");
    QCOMPARE(shown(console.tolvar.state().saved), QByteArray("n|p|0|N|10.0.0.1|N"));
    console.send("save\r\n");
    QTEST(shown(console.tolvar.state().saved), "expected");
}

void TestSimulatedTolvar::theStatusDocumentHasEveryElement()
{
    DeviceConfig config;
    config.systemId = "T1";
    config.mode = "M";
    config.firmwareDate = "D";
    config.firmwareVersion = "A059";
    config.macAddress = "MAC";
    config.mask = "K";
    config.gateway = "G";
    config.dns = "DN";
    config.testResult = "2";
    config.upgradeResult = "4";
    config.sysLogOn = "Y";
    config.sysLogServer = "SL";
    config.configuration = {"N<&>\"", "secret", "1", "Y", "IP", "Y"};
    Console console(config);
    console.send("C\r\n");
    QCOMPARE(console.ask("get"), QByteArray("<puckdata>\n"
                                            "    <name>T1</name>\n"
                                            "    <mode>M</mode>\n"
                                            "    <firmware_date>D</firmware_date>\n"
                                            "    <firmware_version>A059</firmware_version>\n"
                                            "    <network_name>N&lt;&amp;&gt;&quot;</network_name>\n"
                                            "    <mac_address>MAC</mac_address>\n"
                                            "    <ip_address>IP</ip_address>\n"
                                            "    <useStaticIP>Y</useStaticIP>\n"
                                            "    <mask>K</mask>\n"
                                            "    <gateway>G</gateway>\n"
                                            "    <dns>DN</dns>\n"
                                            "    <test_result>2</test_result>\n"
                                            "    <upgrade_result>4</upgrade_result>\n"
                                            "    <ant>1</ant>\n"
                                            "    <trc>Y</trc>\n"
                                            "    <sl_on>Y</sl_on>\n"
                                            "    <sl_ip>SL</sl_ip>\n"
                                            "</puckdata>"));
}

void TestSimulatedTolvar::theStatusFollowsTheConfiguration()
{
    DeviceConfig config;
    config.air = {{"Home", "right", "WPA2"}};
    Console console(config);
    console.send("C\r\n");
    QVERIFY(console.ask("get").contains("<test_result>0</test_result>"));
    console.send("setssid Home\r\nsetpass wrong\r\nant_select 1\r\nsetuarttrace y\r\ntest\r\n");
    const QByteArray document = console.ask("get");
    for (const char *element : {"<network_name>Home</network_name>", "<ant>1</ant>", "<trc>Y</trc>",
                                "<test_result>1</test_result>"})
        QVERIFY2(document.contains(element), document);
}

void TestSimulatedTolvar::theStatusMayHaveExtraAndMissingElements()
{
    DeviceConfig config;
    config.extraStatusXml = "<radio><band>2.4</band>text<name>not this one</name></radio>";
    config.missingFromStatus = {"network_name", "dns"};
    Console console(config);
    console.send("C\r\n");
    const QByteArray document = console.ask("get");
    QVERIFY2(document.startsWith("<puckdata>\n    <name>TOLVAR-4711</name>" + config.extraStatusXml),
             document);
    QVERIFY2(!document.contains("network_name") && !document.contains("dns"), document);
    QCOMPARE(document.count("</"), 1 + 17 - 2 + 3);

    console.tolvar.reconfigure([](DeviceConfig &changed) { changed.missingFromStatus = {"name"}; });
    QVERIFY(console.ask("get").startsWith("<puckdata>" + config.extraStatusXml));
}

void TestSimulatedTolvar::theScanDocumentListsTheVisibleNetworks()
{
    TolvarNetwork hidden{"H", "x", "WPA2"};
    hidden.hidden = true;
    DeviceConfig config;
    config.air = {{"A \"<&>\x01\x02\x1F", "x", "WPA2", "11", "-42", "CCMP", "Y", "N"},
                  hidden,
                  {"", "", "OPEN", "1", "-90", "", "", "Y"}};
    Console console(config);
    const QByteArray answer = console.send("C\r\nscan\r\n");
    QCOMPARE(answer.mid(answer.indexOf('\x02')),
             QByteArray("\x02<scan_results>\n"
                        "    <scan SSID=\"A &quot;&lt;&amp;&gt;\x01?\x1F\" channel=\"11\" adhoc=\"N\" "
                        "sec=\"WPA2\" suites=\"CCMP\" WPS=\"Y\" RSSI=\"-42\"/>\n"
                        "    <scan SSID=\"\" channel=\"1\" adhoc=\"Y\" sec=\"OPEN\" suites=\"\" WPS=\"\" "
                        "RSSI=\"-90\"/>\n"
                        "</scan_results>\x03\r\n>"));
}

void TestSimulatedTolvar::theLogDocumentIsEscaped()
{
    DeviceConfig config;
    config.logText = "1: a < b\n2: \x02marks\x03 & \tcontrols \x7F\x80\xFF\n";
    Console console(config);
    console.send("C\r\n");
    QCOMPARE(console.ask("get_log_file"),
             QByteArray("<log_file>1: a &lt; b\n2: ?marks? &amp; \tcontrols \x7F\x80\xFF\n</log_file>"));
}

void TestSimulatedTolvar::documentsAreByteTransparent()
{
    DeviceConfig config;
    config.configuration.network = everyByteOfAName();
    config.air = {{everyByteOfAName(), "x", "WPA2"}};
    Console console(config);
    console.send("C\r\n");
    QByteArray escaped = everyByteOfAName().replace("&", "&amp;").replace("\"", "&quot;");
    escaped.replace("<", "&lt;").replace(">", "&gt;");
    QVERIFY(console.ask("get").contains("<network_name>" + escaped + "</network_name>"));
    QVERIFY(console.ask("scan").contains("<scan SSID=\"" + escaped + "\" "));
    QVERIFY(console.ask("test").contains("<status SSID=\"" + escaped + "\" "));
    QVERIFY(console.ask("scan").startsWith("<scan_results>")); // no declaration names an encoding
}

void TestSimulatedTolvar::aTestReportsWhetherTheDeviceCanJoin_data()
{
    QTest::addColumn<QByteArray>("network");
    QTest::addColumn<QByteArray>("passphrase");
    QTest::addColumn<QByteArray>("result");
    const auto row = [](const char *name, const char *network, const char *passphrase, const char *result) {
        QTest::newRow(name) << QByteArray(network) << QByteArray(passphrase) << QByteArray(result);
    };
    row("correct passphrase", "Home", " right ", "0");
    row("wrong passphrase", "Home", "right", "1");
    row("unknown network", "home", " right ", "2");
    row("network name with a trailing space", "Home ", " right ", "2");
    row("open network with a passphrase", "Open", "x", "0");
    row("hidden network", "Hidden", "h", "0");
    row("second network with the same name", "Home", "other", "0");
}

void TestSimulatedTolvar::aTestReportsWhetherTheDeviceCanJoin()
{
    QFETCH(QByteArray, network);
    QFETCH(QByteArray, passphrase);
    QFETCH(QByteArray, result);
    TolvarNetwork hidden{"Hidden", "h", "WPA2"};
    hidden.hidden = true;
    DeviceConfig config;
    config.air = {{"Home", " right ", "WPA2"}, {"Open", "", "OPEN"}, hidden, {"Home", "other", "WEP"}};
    Console console(config);
    console.send("C\r\nsetssid " + network + "\r\nsetpass " + passphrase + "\r\n");
    const QByteArray document = console.ask("test");
    QVERIFY2(document.startsWith("<networktest_results>\n    <status SSID=\"" + network + "\" desc=\""),
             document);
    QVERIFY2(document.endsWith("\" result=\"" + result + "\"/>\n</networktest_results>"), document);
    QCOMPARE(console.tolvar.state().testResult, result);
    QCOMPARE(console.tolvar.state().saved.network, QByteArray("Workshop")); // a test saves nothing

    console.tolvar.reconfigure([](DeviceConfig &changed) { changed.faults.systemErrorOnTest = true; });
    QVERIFY(console.ask("test").contains("result=\"3\""));
}

void TestSimulatedTolvar::aScanIsTracedOnRequest()
{
    Console console;
    console.send("C\r\nsetuarttrace y\r\n");
    const QByteArray traced = console.send("scan\r\n");
    QCOMPARE(traced.left(traced.indexOf('\x02')).count("\r\n"), 1 + 1 + defaultAir().size());
    QVERIFY(traced.endsWith("</scan_results>\x03\r\n>"));
    QVERIFY(console.send("get\r\n").startsWith("get\r\n\x02")); // only the scan is traced

    console.send("setuarttrace n\r\n");
    QVERIFY(console.send("scan\r\n").startsWith("scan\r\n\x02"));
}

void TestSimulatedTolvar::linesAreQueuedDuringAScanOrTest_data()
{
    QTest::addColumn<QByteArray>("work");
    QTest::newRow("during a scan") << QByteArray("scan\r\n");
    QTest::newRow("during a test") << QByteArray("test\r\n");
}

void TestSimulatedTolvar::linesAreQueuedDuringAScanOrTest()
{
    QFETCH(QByteArray, work);
    DeviceConfig config;
    config.air.clear();
    config.delays.scan = 150;
    config.delays.test = 150;
    config.logText = "log";
    Console console(config);
    console.send("C\r\n");

    QElapsedTimer clock;
    clock.start();
    // The queued lines arrive in pieces, the first together with the command itself. The LF of the command's
    // line does not belong to them.
    QCOMPARE(console.send(work + "setssid Home\r\nget_l"), work);
    QVERIFY(console.tolvar.state().isWorking);
    QCOMPARE(console.send("og_file\r\nsave\r\n"), QByteArray());
    QCOMPARE(console.tolvar.state().lineTexts().size(), 5); // recorded at once
    QVERIFY(console.tolvar.state().pending.network != "Home");

    QTRY_VERIFY(!console.tolvar.state().isWorking);
    QVERIFY(clock.elapsed() >= 150);
    QVERIFY(console.output.startsWith('\x02'));
    QVERIFY(console.output.endsWith("\x03\r\n>"
                                    "setssid Home\r\n\r\n>"
                                    "get_log_file\r\n\x02<log_file>log</log_file>\x03\r\n>"
                                    "save\r\n\r\n>"));
    QCOMPARE(console.output.count('\x02'), 2);
    QCOMPARE(console.tolvar.state().saved.network, QByteArray("Home"));
}

void TestSimulatedTolvar::thePromptIsDelayed()
{
    DeviceConfig config;
    config.delays.prompt = 40;
    Console console(config);
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(console.send("C\r\nsave\r\nhelp\r\n"), QByteArray());
    QTRY_COMPARE(console.output, QByteArray("\r\n>save\r\n\r\n>help\r\n\r\n>"));
    QVERIFY(clock.elapsed() >= qint64{3} * 40);
}

void TestSimulatedTolvar::aPowerLossDiscardsUnsavedSettings()
{
    Console console;
    console.send("C\r\nsetssid kept\r\nsave\r\nsetssid lost\r\nsetpass half a li");
    console.tolvar.losePower();
    const TolvarState state = console.tolvar.state();
    QCOMPARE(state.pending.network, QByteArray("kept"));
    QCOMPARE(state.saved.network, QByteArray("kept"));
    QVERIFY(!state.awake);
    QCOMPARE(console.send("ne\r\nsetpass x\r\n"), QByteArray());
    QCOMPARE(console.send("C\r\n"), QByteArray("\r\n>"));
    QCOMPARE(console.tolvar.state().sessions, 2);
    QCOMPARE(console.tolvar.state().pending.passphrase, DeviceConfig().configuration.passphrase);
}

void TestSimulatedTolvar::aPowerLossEndsAScan()
{
    DeviceConfig config;
    config.delays.scan = 30;
    Console console(config);
    console.send("C\r\nscan\r\nsetssid lost\r\n");
    console.tolvar.losePower();
    QVERIFY(!console.tolvar.state().isWorking);
    QCOMPARE(console.send("C\r\n"), QByteArray("\r\n>"));
    // The only reply is that of a new scan, which takes twice as long as the lost one.
    console.tolvar.reconfigure([](DeviceConfig &changed) { changed.delays.scan = 60; });
    QCOMPARE(console.send("scan\r\n"), QByteArray("scan\r\n"));
    QTRY_VERIFY(!console.tolvar.state().isWorking);
    QCOMPARE(console.output.count('\x02'), 1);
    QVERIFY(console.tolvar.state().pending.network != "lost");
}

void TestSimulatedTolvar::exitEndsTheSession()
{
    Console console;
    console.send("C\r\n");
    QVERIFY(!console.tolvar.state().exited);
    QCOMPARE(console.send("exit\r\nget\r\nsetssid x\r\n"), QByteArray("exit\r\n"));
    QVERIFY(console.tolvar.state().exited);
    QVERIFY(!console.tolvar.state().awake);
    QVERIFY(console.tolvar.state().pending.network != "x");

    console.tolvar.losePower();
    QVERIFY(console.tolvar.state().exited); // the command has been received, whatever happens to the power

    QCOMPARE(console.send("C\r\n"), QByteArray("\r\n>"));
    QVERIFY(!console.tolvar.state().exited);
    QCOMPARE(console.tolvar.state().sessions, 2);
}

void TestSimulatedTolvar::receivedLinesAndBytesAreRecorded()
{
    Console console;
    const qint64 before = std::chrono::steady_clock::now().time_since_epoch().count();
    console.send("C\r\n");
    QTest::qSleep(5);
    console.send("get\r");
    QTest::qSleep(5);
    console.send("\nsave\nrest");
    const qint64 after = std::chrono::steady_clock::now().time_since_epoch().count();

    const TolvarState state = console.tolvar.state();
    QCOMPARE(state.lineTexts(), QList<QByteArray>({"C", "get", "save"}));
    QByteArray bytes;
    for (const TolvarByte &byte : state.bytes)
        bytes += byte.value;
    QCOMPARE(bytes, QByteArray("C\r\nget\r\nsave\nrest"));
    for (const TolvarLine &line : state.lines)
        QCOMPARE(bytes.mid(line.firstByte, line.text.size()), line.text);
    QVERIFY(state.bytes.first().time >= before);
    QVERIFY(state.bytes.at(3).time - state.bytes.at(2).time >= 5'000'000);
    QVERIFY(state.bytes.at(7).time - state.bytes.at(6).time >= 5'000'000);
    QVERIFY(state.bytes.last().time <= after);
}

void TestSimulatedTolvar::aReplyMayMakeTheHostSendAtOnce()
{
    // A host on the same thread that answers each prompt at once must not overtake the console.
    SimulatedTolvar tolvar;
    QByteArray output;
    QList<QByteArray> queue = {"setssid a\r\n", "save\r\n", "exit\r\n"};
    connect(&tolvar, &SimulatedTolvar::transmit, &tolvar, [&](const QByteArray &bytes) {
        output += bytes;
        if (bytes.endsWith('>') && !queue.isEmpty())
            tolvar.receive(queue.takeFirst());
    });
    tolvar.receive("C\r\n");
    QCOMPARE(output, QByteArray("\r\n>setssid a\r\n\r\n>save\r\n\r\n>exit\r\n"));
}

QTEST_GUILESS_MAIN(TestSimulatedTolvar)
#include "tst_simulatedtolvar.moc"
