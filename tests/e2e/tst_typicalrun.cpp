#include <QRegularExpression>
#include <QTest>

#include "tests/e2e/scenario.h"

using namespace onscreen;

namespace
{
constexpr const char *ssid = "The name with thirty-two letters";
constexpr const char *passphrase = "as long as it may be";

/// Returns whether Qt logged the message because the driver asked the accessibility bus about a widget that
/// has been deleted meanwhile.
bool isOfDriver(const LogMessage &message)
{
    static const QRegularExpression warning(
        "^(WARNING Qt AtSpiAdaptor: )?(Could not find accessible on path|Accessible invalid): ");
    return warning.match(QString::fromUtf8(message.text)).hasMatch();
}

QString sent(const QString &command)
{
    return "--> \"" + command + "\r\n\" ";
}

void verifySaved(Scenario &s)
{
    QCOMPARE(s.screen.exitCode(), 0);
    QCOMPARE(s.receivedSinceStatus(), typicalLines(ssid, passphrase));
    const TolvarState state = s.deviceState();
    QCOMPARE(state.saved.network, QByteArray(ssid));
    QCOMPARE(state.saved.passphrase, QByteArray(passphrase));
    QCOMPARE(state.saved.antenna, QByteArray("0"));
    QCOMPARE(state.saved.useStaticIP, QByteArray("N"));
    QVERIFY2(state.exited, "the device is expected to have left setup mode");
}
} // namespace

/// Tests the typical run of the real program, on a real tty and udev, from plugging in to the saved
/// configuration.
class TestTypicalRun : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aDevicePresentAtTheStartIsSetUp();
    void aDevicePluggedInLaterAndRepluggedIsSetUp();
    void theSessionLogHasEveryMessage();
};

void TestTypicalRun::aDevicePresentAtTheStartIsSetUp()
{
    Scenario s(DeviceConfig(), UsbBridge::prolific());
    ForeignPort ftdi(s.bus);
    ForeignPort ch340(s.bus, UsbBridge::foreignCh340());
    QVERIFY(ftdi.plug());
    QVERIFY(ch340.plug());
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.robot.waitForText("Getting status"));
    ZV_STEP(s, s.robot.complete(ssid, passphrase));
    QCOMPARE(s.received().mid(0, 2), QList<QByteArray>({"C", "get"}));
    QCOMPARE(s.received().count("get"), 1);
    verifySaved(s);
    ftdi.receivePending();
    ch340.receivePending();
    QCOMPARE(ftdi.received(), QByteArray());
    QCOMPARE(ch340.received(), QByteArray());
}

void TestTypicalRun::aDevicePluggedInLaterAndRepluggedIsSetUp()
{
    Scenario s;
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.robot.waitForSearch());
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.robot.waitForDevice());
    s.tolvar.unplug();
    ZV_STEP(s, s.robot.waitForSearch());
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.robot.complete(ssid, passphrase));
    verifySaved(s);
}

void TestTypicalRun::theSessionLogHasEveryMessage()
{
    Scenario s;
    QVERIFY(s.tolvar.plug());
    const QString port = QString::fromLatin1(s.tolvar.ttyName());
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.robot.complete(ssid, passphrase));
    QList<LogMessage> messages = messagesOf(s.sessionLog());
    messages.removeIf(isOfDriver);

    // The raw output of the device: everything that it sent, split into the reads in which it arrived, each
    // followed by one space.
    QByteArray raw;
    for (const LogMessage &message : std::as_const(messages)) {
        if (message.level != 'W')
            continue;
        QVERIFY2(message.text.endsWith(' '), "a trailing space is expected after each logged read");
        raw += message.text.chopped(1);
    }
    QVERIFY(raw.contains(">get\r\n\x02<puckdata>"));
    QVERIFY(raw.contains("</puckdata>\x03\r\n>setuarttrace y\r\n"));
    QVERIFY(raw.contains("\x02<scan_results>"));
    QVERIFY(raw.contains("</networktest_results>\x03\r\n>"));

    // The answers of functions that Qt calls often; each call is logged. QWizard decides how often.
    static const QRegularExpression asked(R"(^(Sysid: "(TOLVAR-4711)?" |nextId ".*" |"[^"]*" )$)");
    QStringList otherMessages;
    QStringList queries;
    for (const LogMessage &message : std::as_const(messages)) {
        if (message.level == 'W')
            continue;
        QCOMPARE(message.level, 'D');
        const QString text = QString::fromUtf8(message.text);
        (asked.match(text).hasMatch() ? queries : otherMessages) += text;
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
    const QString setssid = QStringLiteral("setssid ") + ssid;
    const QString setpass = QStringLiteral("setpass ") + passphrase;
    expected += QStringList{QStringLiteral("Password Edit: \"%1\" ").arg(passphrase)};
    submitted({setssid, setpass, "test"});
    expected += QStringList{"->IN_RESPONSE_RECEIVE and testing ", "->IN_PROMPT - end testing "};
    submitted({"ant_select 0", setssid, setpass, "setstaticip N", "save", "exit"});
    QCOMPARE(otherMessages, expected);

    for (const QString &query : {QString("Sysid: \"\" "), QString("Sysid: \"TOLVAR-4711\" "),
                                 QStringLiteral("nextId \"%1\" ").arg(passphrase), QString("\"Workshop\" "),
                                 QStringLiteral("\"%1\" ").arg(ssid)})
        QVERIFY2(queries.contains(query), qPrintable("expected in the session log: " + query));
}

QTEST_GUILESS_MAIN(TestTypicalRun)
#include "tst_typicalrun.moc"
