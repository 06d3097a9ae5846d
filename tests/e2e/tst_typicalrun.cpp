#include <chrono>

#include <QRegularExpression>
#include <QTest>
#include <QTimer>

#include "tests/e2e/scenario.h"

using namespace onscreen;

namespace
{
QByteArray ssid()
{
    return "The name with thirty-two letters";
}
QByteArray passphrase()
{
    return "as long as it may be";
}

/// One message of the session log: its prefix and its text, which may span several lines.
struct Message {
    char level;
    QString text;
};

QList<Message> messagesOf(const QByteArray &log)
{
    QList<Message> messages;
    QString text = QString::fromUtf8(log);
    if (text.endsWith('\n'))
        text.chop(1);
    for (const QString &line : text.split('\n')) {
        static const QRegularExpression start("^[DWCF]:");
        if (start.match(line).hasMatch())
            messages.append({line.at(0).toLatin1(), line.mid(2)});
        else if (!messages.isEmpty())
            messages.last().text += '\n' + line;
    }
    // The driver reads the screen through the accessibility bus, and Qt warns when a widget has been deleted
    // meanwhile.
    messages.removeIf([](const Message &message) {
        static const QRegularExpression warning(
            "^(WARNING Qt AtSpiAdaptor: )?(Could not find accessible on path|Accessible invalid): ");
        return warning.match(message.text).hasMatch();
    });
    return messages;
}

QString sent(const QString &command)
{
    return "--> \"" + command + "\r\n\" ";
}
} // namespace

/// Tests the typical run of the real program, on a real tty and udev, from plugging in to the saved
/// configuration.
class TestTypicalRun : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void presentAtTheStart_data();
    void presentAtTheStart();
    void pluggedInTwoSecondsAfterTheStart();
    void pluggedOutAndInOnTheConnectPage();
    void pluggedOutAndInDuringAScan();
    void foreignPortsAreLeftAlone();
    void commandsArePacedAtTenMillisecondsAByte();
    void theSessionLogLineByLine();
};

namespace
{
/// Continues from the choose-network page.
bool choosesAndSaves(Scenario &s)
{
    return s.user.seesTheNetworks() && s.user.picks(ssid()) && s.user.typesPassphrase(passphrase()) &&
           s.user.goesOn() && s.user.sees("Successfully tested connection to network\n") && s.user.saves() &&
           s.user.finishes();
}

/// Goes through the whole run, with a device that is plugged in or about to be.
bool walksThrough(Scenario &s)
{
    return s.user.seesTheDevice() && s.user.goesToTheNetworks() && choosesAndSaves(s);
}
} // namespace

// Verifies the result of the run.
#define VERIFY_SAVED(scenario)                                                                               \
    do {                                                                                                     \
        QCOMPARE((scenario).screen.exitCode(), 0);                                                           \
        const QList<QByteArray> lines = (scenario).receivedSinceStatus();                                    \
        QCOMPARE(lines, typicalLines(ssid(), passphrase()));                                                 \
        const TolvarState state = (scenario).deviceState();                                                  \
        QCOMPARE(state.saved.network, ssid());                                                               \
        QCOMPARE(state.saved.passphrase, passphrase());                                                      \
        QCOMPARE(state.saved.antenna, QByteArray("0"));                                                      \
        QCOMPARE(state.saved.useStaticIP, QByteArray("N"));                                                  \
        QVERIFY2(state.exited, "the device was expected to be told to leave its setup mode");                \
    } while (false)

void TestTypicalRun::presentAtTheStart_data()
{
    QTest::addColumn<bool>("prolific");
    QTest::newRow("0403:6001") << false;
    QTest::newRow("067b:2303") << true;
}

void TestTypicalRun::presentAtTheStart()
{
    QFETCH(bool, prolific);
    Scenario s(DeviceConfig(), prolific ? UsbBridge::prolific() : UsbBridge::ftdi());
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.screen.waitFor(label("Getting status")));
    ZV_STEP(s, walksThrough(s));
    QCOMPARE(s.received().mid(0, 2), QList<QByteArray>({"C", "get"}));
    QCOMPARE(s.received().count("get"), 1);
    VERIFY_SAVED(s);
}

void TestTypicalRun::pluggedInTwoSecondsAfterTheStart()
{
    Scenario s;
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.user.seesTheSearch());
    QTimer after;
    after.setSingleShot(true);
    after.start(2000);
    QTRY_VERIFY(!after.isActive());
    ZV_STEP(s, s.user.seesTheSearch());
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.screen.waitFor(label("Getting status")));
    ZV_STEP(s, walksThrough(s));
    VERIFY_SAVED(s);
    QCOMPARE(s.received().count("get"), 2); // both controllers send it
}

void TestTypicalRun::pluggedOutAndInOnTheConnectPage()
{
    Scenario s;
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.user.seesTheDevice());
    s.tolvar.unplug();
    ZV_STEP(s, s.user.seesTheSearch());
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, walksThrough(s));
    VERIFY_SAVED(s);
}

void TestTypicalRun::pluggedOutAndInDuringAScan()
{
    DeviceConfig slow;
    slow.delays.scan = 60000; // the unplugging ends it, it does not end by itself
    Scenario s(slow);
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.user.seesTheDevice());
    ZV_STEP(s, s.user.goesToTheNetworks());
    QVERIFY(s.deviceGets("scan"));
    s.tolvar.unplug();
    ZV_STEP(s, s.screen.waitUntilGone(row("Please Wait....")));
    s.tolvar.reconfigure([](DeviceConfig &setup) { setup.delays.scan = 0; });
    QVERIFY(s.tolvar.plug());
    // The status restores the name, which enables Continue; the scan starts again with the page.
    ZV_STEP(s, s.screen.waitFor(field().beside("Network").withText("Workshop")));
    ZV_STEP(s, s.user.goesBack());
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, choosesAndSaves(s));
    VERIFY_SAVED(s);
}

void TestTypicalRun::foreignPortsAreLeftAlone()
{
    Scenario s;
    ForeignPort ftdi(s.bed);
    ForeignPort ch340(s.bed, UsbBridge::foreignCh340());
    QVERIFY(ftdi.plug());
    QVERIFY(ch340.plug());
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    ZV_STEP(s, walksThrough(s));
    VERIFY_SAVED(s);
    ftdi.catchUp();
    ch340.catchUp();
    QCOMPARE(ftdi.received(), QByteArray());
    QCOMPARE(ch340.received(), QByteArray());
}

void TestTypicalRun::commandsArePacedAtTenMillisecondsAByte()
{
    Scenario s;
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.user.seesTheDevice());
    ZV_STEP(s, s.user.goesToTheNetworks());
    ZV_STEP(s, s.user.seesTheNetworks());
    ZV_STEP(s, s.user.picks(ssid()));
    ZV_STEP(s, s.user.typesPassphrase(passphrase()));
    const qint64 beforeTheClick = std::chrono::steady_clock::now().time_since_epoch().count();
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.user.sees("Successfully tested connection to network\n"));
    ZV_STEP(s, s.user.saves());
    ZV_STEP(s, s.user.finishes());
    const TolvarState state = s.deviceState();

    // The three commands of the test follow each other, starting with the click. A byte arrives at its due
    // time or later, so none of the commands may be complete before the due time of its bytes, counted from
    // the click.
    const qsizetype firstLine = state.lineTexts().indexOf("setssid " + ssid());
    const qsizetype firstByte = state.lines.at(firstLine).firstByte;
    for (qsizetype line = firstLine; line < firstLine + 3; ++line) {
        const TolvarLine &command = state.lines.at(line);
        const qsizetype lastByte = command.firstByte + command.text.size() + 1;
        const double through = double(state.bytes.at(lastByte).time - beforeTheClick) / 1e6;
        QVERIFY2(through >= double(lastByte - firstByte) * 10,
                 qPrintable(QString("%1 was through after %2 ms").arg(command.text).arg(through)));
    }
}

void TestTypicalRun::theSessionLogLineByLine()
{
    Scenario s;
    QVERIFY(s.tolvar.plug());
    const QString port = QString::fromLatin1(s.tolvar.ttyName());
    ZV_STEP(s, s.start());
    ZV_STEP(s, walksThrough(s));

    const QByteArray log = s.sessionLog();
    QList<Message> messages = messagesOf(log);

    // The raw output of the device: everything that it sent, split into the reads in which it arrived, each
    // followed by one space.
    QString raw;
    for (const Message &message : messages) {
        if (message.level != 'W')
            continue;
        QVERIFY2(message.text.endsWith(' '), "a read is logged with one blank behind it");
        raw += message.text.chopped(1);
    }
    QVERIFY(raw.contains(">get\r\n\x02<puckdata>"));
    QVERIFY(raw.contains("</puckdata>\x03\r\n>setuarttrace y\r\n"));
    QVERIFY(raw.contains("\x02<scan_results>"));
    QVERIFY(raw.contains("</networktest_results>\x03\r\n>"));

    // The answers of functions that Qt calls often; each call is logged. QWizard decides how often.
    static const QRegularExpression asked(R"(^(Sysid: "(TOLVAR-4711)?" |nextId ".*" |"[^"]*" )$)");
    QStringList told;
    QStringList queries;
    for (const Message &message : messages) {
        if (message.level == 'W')
            continue;
        QCOMPARE(message.level, 'D');
        (asked.match(message.text).hasMatch() ? queries : told) += message.text;
    }

    const QStringList description = {"port name: \"" + port + "\" ",
                                     "friendly name: \"FT232R USB UART\" ",
                                     "physical name: \"/dev/" + port + "\" ",
                                     "enumerator name: \"USB\" ",
                                     "vendor ID: \"403\" ",
                                     "product ID: \"6001\" ",
                                     "=================================== "};
    QStringList expected = QStringList{"List of ports: "} + description +
                           QStringList{"Found! ", "****Device DISCOVERED: "} + description;
    const auto submitted = [&expected](const QStringList &commands) {
        for (const QString &command : commands)
            expected << "_commState =  \"IN_PROMPT\" " << sent(command);
    };
    expected += QStringList{"_commState =  \"INITIAL_WAITING_FOR_CONSOLE_PROMPT\" ",
                            "->IN_PROMPT ",
                            sent("get"),
                            "->IN_RESPONSE_RECEIVE ",
                            "->WAITING_FOR_CONSOLE_PROMPT ",
                            "->IN_PROMPT "};
    submitted({"setuarttrace y", "save", "scan"});
    expected += QStringList{"->IN_RESPONSE_RECEIVE and Scanning ", "->IN_PROMPT - end scaning "};
    submitted({"setuarttrace n"});
    expected += QStringList{"Password Edit: \"" + passphrase() + "\" "};
    submitted({"setssid " + ssid(), "setpass " + passphrase(), "test"});
    expected += QStringList{"->IN_RESPONSE_RECEIVE and testing ", "->IN_PROMPT - end testing "};
    submitted(
        {"ant_select 0", "setssid " + ssid(), "setpass " + passphrase(), "setstaticip N", "save", "exit"});
    QCOMPARE(told, expected);

    for (const QString &query : {QString("Sysid: \"\" "), QString("Sysid: \"TOLVAR-4711\" "),
                                 QString("nextId \"" + passphrase() + "\" "), QString("\"Workshop\" "),
                                 QString("\"" + ssid() + "\" ")})
        QVERIFY2(queries.contains(query), qPrintable("expected in the session log: " + query));
}

QTEST_GUILESS_MAIN(TestTypicalRun)
#include "tst_typicalrun.moc"
