#include <QTest>

#include <atomic>
#include <chrono>
#include <thread>

#include <QElapsedTimer>
#include <QXmlStreamReader>

#include "simulator/simulatedtolvar.h"
#include "simulator/tolvardocuments.h"

namespace
{
// The host's end of a console: sends input and returns the output.
class Console
{
public:
    explicit Console(const DeviceConfig &setup = DeviceConfig())
        : tolvar(setup)
    {
        QObject::connect(&tolvar, &SimulatedTolvar::transmit, &tolvar,
                         [this](const QByteArray &bytes) { said += bytes; });
    }

    QByteArray tell(const QByteArray &bytes)
    {
        said.clear();
        tolvar.receive(bytes);
        return said;
    }

    // Returns the text between the marks of the reply to a line.
    QByteArray ask(const QByteArray &line)
    {
        const QByteArray answer = tell(line + "\r\n");
        const qsizetype start = answer.indexOf('\x02');
        const qsizetype end = answer.indexOf('\x03');
        return start < 0 || end < start ? QByteArray() : answer.mid(start + 1, end - start - 1);
    }

    SimulatedTolvar tolvar;
    QByteArray said;
};

DeviceConfig withAir(const QList<TolvarNetwork> &air)
{
    DeviceConfig setup;
    setup.air = air;
    return setup;
}

// The reader's view of a document whose bytes are read as Latin-1, as the host reads them. An element's text
// is the text before its first child.
struct Element {
    QByteArray name;
    QByteArray text;
    QList<QPair<QByteArray, QByteArray>> attributes;
};

QList<Element> elementsOf(const QByteArray &document, bool *isWellFormed = nullptr)
{
    QList<Element> elements;
    QXmlStreamReader xml(QString::fromLatin1(document));
    bool isOpen = false;
    while (!xml.atEnd()) {
        xml.readNext();
        isOpen = xml.isStartElement() || (isOpen && !xml.isEndElement());
        if (xml.isStartElement()) {
            elements += Element{xml.name().toLatin1(), {}, {}};
            for (const QXmlStreamAttribute &attribute : xml.attributes())
                elements.last().attributes += {attribute.name().toLatin1(), attribute.value().toLatin1()};
        } else if (xml.isCharacters() && isOpen) {
            elements.last().text += xml.text().toLatin1();
        }
    }
    if (isWellFormed)
        *isWellFormed = !xml.hasError();
    return elements;
}

QByteArray textOf(const QByteArray &document, const QByteArray &name)
{
    for (const Element &element : elementsOf(document)) {
        if (element.name == name)
            return element.text;
    }
    return "(missing)";
}

QByteArray attributeOf(const Element &element, const QByteArray &name)
{
    for (const auto &[key, value] : element.attributes) {
        if (key == name)
            return value;
    }
    return "(missing)";
}

QByteArray everyByteOfAName()
{
    QByteArray bytes;
    for (int code = 0x20; code <= 0xFF; ++code)
        bytes += static_cast<char>(code);
    return bytes;
}
} // namespace

class tst_SimulatedTolvar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sleepsUntilWoken_data();
    void sleepsUntilWoken();
    void console_data();
    void console();
    void keepsWhatItIsTold_data();
    void keepsWhatItIsTold();
    void statusDocument();
    void statusFollowsTheConfiguration();
    void statusWithExtraAndMissingElements();
    void scanDocument();
    void logDocument();
    void documentsAreByteTransparent();
    void testsJoining_data();
    void testsJoining();
    void scanIsTracedOnDemand();
    void linesWaitWhileItWorks_data();
    void linesWaitWhileItWorks();
    void promptTakesItsTime();
    void faults_data();
    void faults();
    void losesWhatIsNotSaved();
    void losesWorkUnderWay();
    void exitEndsTheSession();
    void recordsLinesAndBytes();
    void canBeWatchedFromAnotherThread();
    void answersThatMakeTheHostSpeak();
    void believableAir();
};

void tst_SimulatedTolvar::sleepsUntilWoken_data()
{
    QTest::addColumn<QByteArray>("told");
    QTest::addColumn<QByteArray>("said");

    QTest::newRow("a C wakes it") << QByteArray("C\r\n") << QByteArray("\r\n>");
    QTest::newRow("an empty line wakes it") << QByteArray("\r\n") << QByteArray("\r\n>");
    QTest::newRow("a C without its line end does not") << QByteArray("C") << QByteArray();
    QTest::newRow("a command does not") << QByteArray("get\r\n") << QByteArray();
    QTest::newRow("a lower-case c does not") << QByteArray("c\r\n") << QByteArray();
    QTest::newRow("a second C is an unknown line")
        << QByteArray("C\r\nC\r\n") << QByteArray("\r\n>C\r\n\r\n>");
}

void tst_SimulatedTolvar::sleepsUntilWoken()
{
    QFETCH(QByteArray, told);
    Console console;
    QTEST(console.tell(told), "said");
}

void tst_SimulatedTolvar::console_data()
{
    QTest::addColumn<QByteArray>("told");
    QTest::addColumn<QByteArray>("said");
    const auto row = [](const char *name, const QByteArray &told, const QByteArray &said) {
        QTest::newRow(name) << told << said;
    };

    row("bytes are echoed as they come", "sav", "sav");
    row("an empty line gets a prompt", "\r\n", "\r\n\r\n>");
    row("an unknown line gets a prompt", "help\r\n", "help\r\n\r\n>");
    row("CR LF ends one line", "save\r\n", "save\r\n\r\n>");
    row("a lone CR ends a line", "save\r", "save\r\n\r\n>");
    row("a lone LF ends a line", "save\n", "save\r\n\r\n>");
    row("LF CR ends two lines", "save\n\r", "save\r\n\r\n>\r\n\r\n>");
    row("two CR end two lines", "\r\r", "\r\n\r\n>\r\n\r\n>");
    row("each line gets its own prompt", "save\r\nsave\r\n", "save\r\n\r\n>save\r\n\r\n>");
    row("a reply stands between its marks, the prompt after it", "get_log_file\r\n",
        "get_log_file\r\n\x02<log_file>one line</log_file>\x03\r\n>");
    row("an empty air is an empty document", "scan\r\n", "scan\r\n\x02<scan_results/>\x03\r\n>");
    row("setuarttrace gets a prompt", "setuarttrace n\r\n", "setuarttrace n\r\n\r\n>");
    row("setssid gets a prompt", "setssid x\r\n", "setssid x\r\n\r\n>");
    row("setpass gets a prompt", "setpass x\r\n", "setpass x\r\n\r\n>");
    row("ant_select gets a prompt", "ant_select 1\r\n", "ant_select 1\r\n\r\n>");
    row("setstaticip gets a prompt", "setstaticip N\r\n", "setstaticip N\r\n\r\n>");
    row("exit gets no prompt", "exit\r\n", "exit\r\n");
    row("a command in capitals is unknown", "GET_LOG_FILE\r\n", "GET_LOG_FILE\r\n\r\n>");
    row("a command with a blank after it is unknown", "get_log_file \r\n", "get_log_file \r\n\r\n>");
    row("a command with a blank before it is unknown", " get_log_file\r\n", " get_log_file\r\n\r\n>");
}

void tst_SimulatedTolvar::console()
{
    QFETCH(QByteArray, told);
    DeviceConfig setup = withAir({});
    setup.logText = "one line";
    Console console(setup);
    console.tell("C\r\n");
    QTEST(console.tell(told), "said");
}

void tst_SimulatedTolvar::keepsWhatItIsTold_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QList<QByteArray>>(
        "expected"); // network, passphrase, antenna, static IP, address, trace
    const auto row = [](const char *name, const QByteArray &line, const QList<QByteArray> &expected) {
        QTest::newRow(name) << line << expected;
    };

    row("a network name", "setssid Home", {"Home", "p", "0", "N", "10.0.0.1", "N"});
    row("a name with blanks at every place", "setssid  a  b ", {" a  b ", "p", "0", "N", "10.0.0.1", "N"});
    row("an empty name", "setssid ", {"", "p", "0", "N", "10.0.0.1", "N"});
    row("a name of every byte", "setssid " + everyByteOfAName(),
        {everyByteOfAName(), "p", "0", "N", "10.0.0.1", "N"});
    row("the word alone sets nothing", "setssid", {"n", "p", "0", "N", "10.0.0.1", "N"});
    row("a passphrase", "setpass secret", {"n", "secret", "0", "N", "10.0.0.1", "N"});
    row("a passphrase of blanks", "setpass   ", {"n", "  ", "0", "N", "10.0.0.1", "N"});
    row("an empty passphrase", "setpass ", {"n", "", "0", "N", "10.0.0.1", "N"});
    row("the other antenna", "ant_select 1", {"n", "p", "1", "N", "10.0.0.1", "N"});
    row("a static address", "setstaticip Y 10.0.0.2", {"n", "p", "0", "Y", "10.0.0.2", "N"});
    row("a static address that is empty", "setstaticip Y ", {"n", "p", "0", "Y", "", "N"});
    row("no static address keeps the last one", "setstaticip N", {"n", "p", "0", "N", "10.0.0.1", "N"});
    row("a static address needs its blank", "setstaticip Y", {"n", "p", "0", "N", "10.0.0.1", "N"});
    row("trace on", "setuarttrace y", {"n", "p", "0", "N", "10.0.0.1", "Y"});
    row("trace with a capital sets nothing", "setuarttrace Y", {"n", "p", "0", "N", "10.0.0.1", "N"});
}

void tst_SimulatedTolvar::keepsWhatItIsTold()
{
    QFETCH(QByteArray, line);
    QFETCH(QList<QByteArray>, expected);
    const auto asList = [](const TolvarConfiguration &c) {
        return QList<QByteArray>{c.network, c.passphrase, c.antenna, c.useStaticIP, c.ipAddress, c.uartTrace};
    };
    DeviceConfig setup;
    setup.configuration = {"n", "p", "0", "N", "10.0.0.1", "N"};
    const QList<QByteArray> before = asList(setup.configuration);

    Console console(setup);
    console.tell("C\r\n" + line + "\r\n");
    QCOMPARE(asList(console.tolvar.state().pending), expected);
    QCOMPARE(asList(console.tolvar.state().saved), before);

    console.tell("save\r\n");
    QCOMPARE(asList(console.tolvar.state().saved), expected);
}

void tst_SimulatedTolvar::statusDocument()
{
    DeviceConfig setup;
    setup.systemId = "T1";
    setup.mode = "M";
    setup.firmwareDate = "D";
    setup.firmwareVersion = "A059";
    setup.macAddress = "MAC";
    setup.mask = "K";
    setup.gateway = "G";
    setup.dns = "DN";
    setup.testResult = "2";
    setup.upgradeResult = "4";
    setup.sysLogOn = "Y";
    setup.sysLogServer = "SL";
    setup.configuration = {"N<&>\"", "secret", "1", "Y", "IP", "Y"};
    Console console(setup);
    console.tell("C\r\n");
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

void tst_SimulatedTolvar::statusFollowsTheConfiguration()
{
    Console console(withAir({{"Home", "right", "WPA2"}}));
    console.tell("C\r\n");
    QCOMPARE(textOf(console.ask("get"), "test_result"), QByteArray("0"));
    console.tell("setssid Home\r\nsetpass wrong\r\nant_select 1\r\nsetuarttrace y\r\ntest\r\n");
    const QByteArray document = console.ask("get");
    QCOMPARE(textOf(document, "network_name"), QByteArray("Home"));
    QCOMPARE(textOf(document, "ant"), QByteArray("1"));
    QCOMPARE(textOf(document, "trc"), QByteArray("Y"));
    QCOMPARE(textOf(document, "test_result"), QByteArray("1"));
}

void tst_SimulatedTolvar::statusWithExtraAndMissingElements()
{
    DeviceConfig setup;
    setup.extraStatusXml = "<radio><band>2.4</band>text<name>not this one</name></radio>";
    setup.missingFromStatus = {"network_name", "dns"};
    Console console(setup);
    console.tell("C\r\n");
    bool isWellFormed = false;
    QList<QByteArray> names;
    for (const Element &element : elementsOf(console.ask("get"), &isWellFormed))
        names += element.name;
    QVERIFY(isWellFormed);
    QCOMPARE(names.mid(0, 6), QList<QByteArray>({"puckdata", "name", "radio", "band", "name", "mode"}));
    QVERIFY(!names.contains("network_name"));
    QVERIFY(!names.contains("dns"));
    QCOMPARE(names.size(), 1 + 17 - 2 + 3);

    console.tolvar.reconfigure([](DeviceConfig &changed) { changed.missingFromStatus = {"name"}; });
    const QList<Element> elements = elementsOf(console.ask("get"), &isWellFormed);
    QVERIFY(isWellFormed);
    QCOMPARE(elements.at(1).name, QByteArray("radio"));
}

void tst_SimulatedTolvar::scanDocument()
{
    TolvarNetwork first{"A \"<&>", "x", "WPA2", "11", "-42", "CCMP", "Y", "N"};
    TolvarNetwork hidden{"H", "x", "WPA2"};
    hidden.hidden = true;
    TolvarNetwork last{"", "", "OPEN", "1", "-90", "", "", "Y"};
    Console console(withAir({first, hidden, last}));
    console.tell("C\r\n");
    QCOMPARE(console.ask("scan"),
             QByteArray("<scan_results>\n"
                        "    <scan SSID=\"A &quot;&lt;&amp;&gt;\" channel=\"11\" adhoc=\"N\" sec=\"WPA2\" "
                        "suites=\"CCMP\" WPS=\"Y\" RSSI=\"-42\"/>\n"
                        "    <scan SSID=\"\" channel=\"1\" adhoc=\"Y\" sec=\"OPEN\" suites=\"\" WPS=\"\" "
                        "RSSI=\"-90\"/>\n"
                        "</scan_results>"));
}

void tst_SimulatedTolvar::logDocument()
{
    DeviceConfig setup;
    setup.logText = "1: a < b\n2: \x02marks\x03 & \tcontrols \x7F\x80\xFF\n";
    Console console(setup);
    console.tell("C\r\n");
    const QByteArray document = console.ask("get_log_file");
    QCOMPARE(document,
             QByteArray("<log_file>1: a &lt; b\n2: ?marks? &amp; \tcontrols \x7F\x80\xFF\n</log_file>"));
}

void tst_SimulatedTolvar::documentsAreByteTransparent()
{
    const QByteArray name = everyByteOfAName();
    bool isWellFormed = false;

    DeviceConfig setup = withAir({{name, "x", "WPA2"}});
    setup.configuration.network = name;
    Console console(setup);
    console.tell("C\r\n");
    QCOMPARE(textOf(console.ask("get"), "network_name"), name);
    QCOMPARE(attributeOf(elementsOf(console.ask("scan"), &isWellFormed).at(1), "SSID"), name);
    QVERIFY(isWellFormed);
    QCOMPARE(attributeOf(elementsOf(console.ask("test"), &isWellFormed).at(1), "SSID"), name);
    QVERIFY(isWellFormed);
    // The byte is unchanged on the line: 0xE9 is one byte, and no declaration names an encoding.
    QVERIFY(console.ask("scan").contains("\xE8\xE9\xEA"));
    QVERIFY(console.ask("scan").startsWith("<scan_results>"));
}

void tst_SimulatedTolvar::testsJoining_data()
{
    QTest::addColumn<QByteArray>("network");
    QTest::addColumn<QByteArray>("passphrase");
    QTest::addColumn<bool>("isBroken");
    QTest::addColumn<QByteArray>("result");
    const auto row = [](const char *name, const char *network, const char *passphrase, bool isBroken,
                        const char *result) {
        QTest::newRow(name) << QByteArray(network) << QByteArray(passphrase) << isBroken
                            << QByteArray(result);
    };

    row("the right passphrase joins", "Home", " right ", false, "0");
    row("a wrong passphrase does not", "Home", "right", false, "1");
    row("no passphrase is a wrong one", "Home", "", false, "1");
    row("an unknown network is not found", "home", " right ", false, "2");
    row("a name with a blank too many is unknown", "Home ", " right ", false, "2");
    row("a system error whatever it is told", "Home", " right ", true, "3");
    row("an open network takes no passphrase", "Open", "", false, "0");
    row("an open network takes any passphrase", "Open", "x", false, "0");
    row("a hidden network can be joined", "Hidden", "h", false, "0");
    row("the second network of a name may take it", "Home", "other", false, "0");
}

void tst_SimulatedTolvar::testsJoining()
{
    QFETCH(QByteArray, network);
    QFETCH(QByteArray, passphrase);
    QFETCH(bool, isBroken);
    TolvarNetwork hidden{"Hidden", "h", "WPA2"};
    hidden.hidden = true;
    DeviceConfig setup =
        withAir({{"Home", " right ", "WPA2"}, {"Open", "", "OPEN"}, hidden, {"Home", "other", "WEP"}});
    setup.faults.systemErrorOnTest = isBroken;

    Console console(setup);
    console.tell("C\r\nsetssid " + network + "\r\nsetpass " + passphrase + "\r\n");
    const QList<Element> elements = elementsOf(console.ask("test"));
    QCOMPARE(elements.size(), 2);
    QCOMPARE(elements.at(0).name, QByteArray("networktest_results"));
    QCOMPARE(elements.at(1).name, QByteArray("status"));
    QCOMPARE(attributeOf(elements.at(1), "SSID"), network);
    QVERIFY(!attributeOf(elements.at(1), "desc").isEmpty());
    QTEST(attributeOf(elements.at(1), "result"), "result");
    QTEST(console.tolvar.state().testResult, "result");
    // A test saves nothing.
    QCOMPARE(console.tolvar.state().saved.network, DeviceConfig().configuration.network);
}

void tst_SimulatedTolvar::scanIsTracedOnDemand()
{
    Console console;
    console.tell("C\r\n");
    QVERIFY(console.tell("scan\r\n").startsWith("scan\r\n\x02"));

    console.tell("setuarttrace y\r\n");
    const QByteArray traced = console.tell("scan\r\n");
    const QByteArray trace = traced.mid(6, traced.indexOf('\x02') - 6);
    QCOMPARE(trace.count("\r\n"), 1 + defaultAir().size());
    QVERIFY(traced.endsWith("</scan_results>\x03\r\n>"));
    // Only the scan is traced.
    QVERIFY(console.tell("get\r\n").startsWith("get\r\n\x02"));

    console.tell("setuarttrace n\r\n");
    QVERIFY(console.tell("scan\r\n").startsWith("scan\r\n\x02"));
}

void tst_SimulatedTolvar::linesWaitWhileItWorks_data()
{
    QTest::addColumn<QByteArray>("work");
    QTest::newRow("while it scans") << QByteArray("scan\r\n");
    QTest::newRow("while it tests") << QByteArray("test\r\n");
}

void tst_SimulatedTolvar::linesWaitWhileItWorks()
{
    QFETCH(QByteArray, work);
    DeviceConfig setup = withAir({});
    setup.delays.scan = 150;
    setup.delays.test = 150;
    setup.logText = "log";
    Console console(setup);
    console.tell("C\r\n");

    QElapsedTimer clock;
    clock.start();
    // The queued lines arrive in pieces, the first together with the command itself. The LF of the command's
    // line does not belong to them.
    QCOMPARE(console.tell(work + "setssid Home\r\nget_l"), work);
    QVERIFY(console.tolvar.state().isWorking);
    QCOMPARE(console.tell("og_file\r\nsave\r\n"), QByteArray());
    QCOMPARE(console.tolvar.state().lineTexts().size(), 5); // recorded at once
    QVERIFY(console.tolvar.state().pending.network != "Home");

    QTRY_VERIFY(!console.tolvar.state().isWorking);
    QVERIFY(clock.elapsed() >= 150);
    QVERIFY(console.said.startsWith('\x02'));
    QVERIFY(console.said.endsWith("\x03\r\n>"
                                  "setssid Home\r\n\r\n>"
                                  "get_log_file\r\n\x02<log_file>log</log_file>\x03\r\n>"
                                  "save\r\n\r\n>"));
    QCOMPARE(console.said.count('\x02'), 2);
    QCOMPARE(console.tolvar.state().saved.network, QByteArray("Home"));
}

void tst_SimulatedTolvar::promptTakesItsTime()
{
    DeviceConfig setup;
    setup.delays.prompt = 40;
    Console console(setup);
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(console.tell("C\r\nsave\r\nhelp\r\n"), QByteArray());
    QTRY_COMPARE(console.said, QByteArray("\r\n>save\r\n\r\n>help\r\n\r\n>"));
    QVERIFY(clock.elapsed() >= qint64{3} * 40);
}

void tst_SimulatedTolvar::faults_data()
{
    QTest::addColumn<TolvarFaults>("faults");
    QTest::addColumn<QByteArray>("told");
    QTest::addColumn<QByteArray>("said");
    const auto row = [](const char *name, const TolvarFaults &faults, const QByteArray &told,
                        const QByteArray &said) { QTest::newRow(name) << faults << told << said; };
    const QByteArray document = "<log_file>log</log_file>";

    TolvarFaults faults;
    row("none", faults, "C\r\nget_log_file\r\n", "\r\n>get_log_file\r\n\x02" + document + "\x03\r\n>");
    faults.neverPrompts = true;
    row("it never prompts", faults, "C\r\nget_log_file\r\n", "get_log_file\r\n\x02" + document + '\x03');
    faults = {};
    faults.promptsTwice = true;
    row("it prompts twice", faults, "C\r\nget_log_file\r\n",
        "\r\n>\r\n>get_log_file\r\n\x02" + document + "\x03\r\n>\r\n>");
    faults = {};
    faults.garbageBeforeReplies = "# \xFF>";
    row("garbage before a reply", faults, "C\r\nget_log_file\r\n",
        "\r\n>get_log_file\r\n# \xFF>\r\n\x02" + document + "\x03\r\n>");
    faults = {};
    faults.cutRepliesAfter = 9;
    row("a reply that breaks off", faults, "C\r\nget_log_file\r\n", "\r\n>get_log_file\r\n\x02<log_file");
    faults.cutRepliesAfter = 0;
    row("a reply that breaks off at once", faults, "C\r\nget_log_file\r\n", "\r\n>get_log_file\r\n\x02");
    faults.cutRepliesAfter = 1000;
    row("a reply shorter than the cut", faults, "C\r\nget_log_file\r\n",
        "\r\n>get_log_file\r\n\x02" + document + "\x03\r\n>");
    faults = {};
    faults.malformedDocuments = true;
    row("a malformed document", faults, "C\r\nget_log_file\r\n",
        "\r\n>get_log_file\r\n\x02<log_file>log</not_its_name>\x03\r\n>");
    faults = {};
    faults.deafTo = {"get_log_file"};
    row("deaf to a command", faults, "C\r\nget_log_file\r\nsave\r\n", "\r\n>get_log_file\r\nsave\r\n\r\n>");
    faults.deafTo = {"setssid", "save"};
    row("deaf to a command with a value, and to another", faults, "C\r\nsetssid a b\r\nsave\r\n",
        "\r\n>setssid a b\r\nsave\r\n");
}

void tst_SimulatedTolvar::faults()
{
    QFETCH(TolvarFaults, faults);
    QFETCH(QByteArray, told);
    DeviceConfig setup;
    setup.faults = faults;
    setup.logText = "log";
    setup.configuration.network = "before";
    Console console(setup);
    QTEST(console.tell(told), "said");
    QCOMPARE(console.tolvar.state().pending.network, QByteArray("before"));
}

void tst_SimulatedTolvar::losesWhatIsNotSaved()
{
    Console console;
    console.tell("C\r\nsetssid kept\r\nsave\r\nsetssid lost\r\nsetpass half a li");
    console.tolvar.losePower();
    const TolvarState state = console.tolvar.state();
    QCOMPARE(state.pending.network, QByteArray("kept"));
    QCOMPARE(state.saved.network, QByteArray("kept"));
    QVERIFY(!state.awake);
    QCOMPARE(console.tell("ne\r\nsetpass x\r\n"), QByteArray());
    QCOMPARE(console.tell("C\r\n"), QByteArray("\r\n>"));
    QCOMPARE(console.tolvar.state().sessions, 2);
    QCOMPARE(console.tolvar.state().pending.passphrase, DeviceConfig().configuration.passphrase);
}

void tst_SimulatedTolvar::losesWorkUnderWay()
{
    DeviceConfig setup;
    setup.delays.scan = 30;
    Console console(setup);
    console.tell("C\r\nscan\r\nsetssid lost\r\n");
    console.tolvar.losePower();
    QVERIFY(!console.tolvar.state().isWorking);
    QCOMPARE(console.tell("C\r\n"), QByteArray("\r\n>"));
    // The only reply is that of a new scan, which takes twice as long as the lost one.
    console.tolvar.reconfigure([](DeviceConfig &changed) { changed.delays.scan = 60; });
    QCOMPARE(console.tell("scan\r\n"), QByteArray("scan\r\n"));
    QTRY_VERIFY(!console.tolvar.state().isWorking);
    QCOMPARE(console.said.count('\x02'), 1);
    QVERIFY(console.tolvar.state().pending.network != "lost");
}

void tst_SimulatedTolvar::exitEndsTheSession()
{
    Console console;
    console.tell("C\r\n");
    QVERIFY(!console.tolvar.state().exited);
    QCOMPARE(console.tell("exit\r\nget\r\nsetssid x\r\n"), QByteArray("exit\r\n"));
    QVERIFY(console.tolvar.state().exited);
    QVERIFY(!console.tolvar.state().awake);
    QVERIFY(console.tolvar.state().pending.network != "x");

    console.tolvar.losePower();
    QVERIFY(console.tolvar.state().exited); // the command has been received, whatever happens to the power

    QCOMPARE(console.tell("C\r\n"), QByteArray("\r\n>"));
    QVERIFY(!console.tolvar.state().exited);
    QCOMPARE(console.tolvar.state().sessions, 2);
}

void tst_SimulatedTolvar::recordsLinesAndBytes()
{
    Console console;
    const qint64 before = std::chrono::steady_clock::now().time_since_epoch().count();
    console.tell("C\r\n");
    QTest::qSleep(5);
    console.tell("get\r");
    QTest::qSleep(5);
    console.tell("\nsave\nrest");
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

void tst_SimulatedTolvar::canBeWatchedFromAnotherThread()
{
    Console console;
    console.tell("C\r\n");
    std::atomic<bool> isOver = false;
    std::atomic<qsizetype> seen = 0;
    bool isConsistent = true;
    std::thread watcher([&] {
        while (!isOver) {
            const TolvarState state = console.tolvar.state();
            isConsistent = isConsistent && state.lines.size() >= seen;
            seen = state.lines.size();
            console.tolvar.reconfigure([](DeviceConfig &setup) { setup.mode += 'x'; });
        }
    });
    for (int i = 0; i < 200; ++i)
        console.tell("get\r\nsetssid " + QByteArray::number(i) + "\r\n");
    const bool hasSeenAll = QTest::qWaitFor([&] { return seen == 401; });
    isOver = true;
    watcher.join();
    QVERIFY(hasSeenAll);
    QVERIFY(isConsistent);
}

void tst_SimulatedTolvar::answersThatMakeTheHostSpeak()
{
    // A host on the same thread that answers each prompt at once must not overtake the console.
    SimulatedTolvar tolvar;
    QByteArray said;
    QList<QByteArray> queue = {"setssid a\r\n", "save\r\n", "exit\r\n"};
    connect(&tolvar, &SimulatedTolvar::transmit, &tolvar, [&](const QByteArray &bytes) {
        said += bytes;
        if (bytes.endsWith('>') && !queue.isEmpty())
            tolvar.receive(queue.takeFirst());
    });
    tolvar.receive("C\r\n");
    QCOMPARE(said, QByteArray("\r\n>setssid a\r\n\r\n>save\r\n\r\n>exit\r\n"));
}

void tst_SimulatedTolvar::believableAir()
{
    QList<QByteArray> securities;
    bool hasBlanks = false;
    bool hasLongest = false;
    bool hasUtf8 = false;
    for (const TolvarNetwork &network : defaultAir()) {
        securities += network.security;
        hasBlanks = hasBlanks || (network.ssid.startsWith(' ') && network.ssid.endsWith(' '));
        hasLongest = hasLongest || network.ssid.size() == 32;
        hasUtf8 = hasUtf8 || network.ssid.contains("\xC3\xA9");
        QVERIFY(network.ssid.size() <= 32);
    }
    QVERIFY(securities.contains("WPA2") && securities.contains("WEP") && securities.contains("OPEN"));
    QVERIFY(hasBlanks && hasLongest && hasUtf8);
}

QTEST_GUILESS_MAIN(tst_SimulatedTolvar)
#include "tst_simulatedtolvar.moc"
