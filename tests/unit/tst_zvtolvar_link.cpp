#include <QElapsedTimer>
#include <QSignalSpy>
#include <QtTest>

#include "serial/qextserialport.h"
#include "tests/support/messagerecorder.h"
#include "tests/support/pty.h"
#include "tests/support/zvtolvarinspector.h"

namespace
{
enum Mode { Scanning, ScanningAndTesting, Testing, Normal, Handshake };
constexpr const char *modeNames[] = {"scanning", "scanning and testing", "testing", "normal", "handshake"};
constexpr int stateCount = 8; // one more than there are: a value above the last is ignored

constexpr int Any = -1;

struct ByteClass {
    const char *name;
    char byte;
};
constexpr ByteClass bytes[] = {{"STX", 0x02},         {"ETX", 0x03},     {"EOT", 0x04},
                               {"the prompt", '>'},   {"a letter", 'x'}, {"a zero byte", 0x00},
                               {"byte 0xFF", '\xFF'}, {"a blank", ' '}};

/// What a byte is expected to do. What no row names is expected to do nothing.
struct Expected {
    Mode mode;
    int state;
    int byte;
    int next;
    const char *log;      // the state change's debug message, null for none
    const char *response; // the reply afterwards ("old" before)
    const char *signal;   // signals in their order, joined with blanks
    const char *queued;   // what is queued afterwards beside the one command before
};

// clang-format off
constexpr Expected table[] = {
    { Scanning, Any, 0x02, IN_RESPONSE_RECEIVE, "D:->IN_RESPONSE_RECEIVE and Scanning ", "", "", "" },
    { Scanning, IN_RESPONSE_RECEIVE, 0x03, IN_PROMPT, "D:->IN_PROMPT - end scaning ", "old", "response:old scanning scanFinished", "setuarttrace n\r\n" },
    { Scanning, IN_RESPONSE_RECEIVE, Any, IN_RESPONSE_RECEIVE, nullptr, "old+", "", "" },
    { ScanningAndTesting, Any, 0x02, IN_RESPONSE_RECEIVE, "D:->IN_RESPONSE_RECEIVE and Scanning ", "", "", "" },
    { ScanningAndTesting, IN_RESPONSE_RECEIVE, 0x03, IN_PROMPT, "D:->IN_PROMPT - end scaning ", "old", "response:old scanning scanFinished", "setuarttrace n\r\n" },
    { ScanningAndTesting, IN_RESPONSE_RECEIVE, Any, IN_RESPONSE_RECEIVE, nullptr, "old+", "", "" },
    { Testing, Any, 0x02, IN_RESPONSE_RECEIVE, "D:->IN_RESPONSE_RECEIVE and testing ", "", "", "" },
    { Testing, IN_RESPONSE_RECEIVE, 0x03, IN_PROMPT, "D:->IN_PROMPT - end testing ", "old", "response:old testing testFinished", "" },
    { Testing, IN_RESPONSE_RECEIVE, Any, IN_RESPONSE_RECEIVE, nullptr, "old+", "", "" },
    { Normal, INITIAL_WAITING_FOR_CONSOLE_PROMPT, '>', IN_PROMPT, "D:->IN_PROMPT ", "old", "ready", "" },
    { Normal, WAITING_FOR_CONSOLE_PROMPT, '>', IN_PROMPT, "D:->IN_PROMPT ", "old", "ready", "" },
    { Normal, IN_PROMPT, 0x02, IN_RESPONSE_RECEIVE, "D:->IN_RESPONSE_RECEIVE ", "", "", "" },
    { Normal, IN_RESPONSE_RECEIVE, 0x03, WAITING_FOR_CONSOLE_PROMPT, "D:->WAITING_FOR_CONSOLE_PROMPT ", "old", "response:old", "" },
    { Normal, IN_RESPONSE_RECEIVE, Any, IN_RESPONSE_RECEIVE, nullptr, "old+", "", "" },
    { Handshake, INITIAL_WAITING_FOR_CONSOLE_PROMPT, 0x04, WAITING_FOR_CONSOLE_PROMPT, "D:-> Controller: WAITING_FOR_CONSOLE_PROMPT2 ", "old", "", "" },
    { Handshake, WAITING_FOR_CONSOLE_PROMPT, '>', IN_PROMPT, "D:->IN_PROMPT ", "old", "ready", "" },
    { Handshake, IN_PROMPT, 0x02, IN_RESPONSE_RECEIVE, "D:->IN_RESPONSE_RECEIVE ", "", "", "" },
    { Handshake, IN_RESPONSE_RECEIVE, 0x03, WAITING_FOR_CONSOLE_PROMPT, "D:->WAITING_FOR_CONSOLE_PROMPT ", "old", "response:old", "" },
    { Handshake, IN_RESPONSE_RECEIVE, Any, IN_RESPONSE_RECEIVE, nullptr, "old+", "", "" },
};
// clang-format on

Expected expected(Mode mode, int state, char byte)
{
    for (const Expected &row : table) {
        if (row.mode == mode && (row.state == Any || row.state == state) &&
            (row.byte == Any || row.byte == static_cast<unsigned char>(byte)))
            return row;
    }
    return {mode, state, byte, state, nullptr, "old", "", ""};
}
} // namespace

/// The console's link: waking, prompts, replies, the queue and the pace.
class TestLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void eachByteInEachStateOfEachMode_data();
    void eachByteInEachStateOfEachMode();
    void theSignalsOfAnEndComeInTheirOrder();

    void aNormalReply();
    void aPromptInsideAReplyIsText();
    void aScanTakesAReplyEvenBeforeAnyPrompt();
    void aSecondStartInsideAReply_data();
    void aSecondStartInsideAReply();
    void aReplyStaysUntilTheNextBegins();
    void eachByteIsOneCharacter();
    void aReplyInManyReadsIsTheSame();

    void whatIsSubmittedInsideAReplyGoesOutAfterItsPrompt();
    void threeSubmissionsAtThePromptGoOutAtOnce();
    void aSubmissionSendsTheOldestFirst();
    void aCommandWithoutAPortIsLost();
    void aCommandGoesByteByByte();
    void theQueueIsLoggedWithEachSubmission_data();
    void theQueueIsLoggedWithEachSubmission();

    void wakingRepeatsUntilAPromptIsSeen();
    void wakingStopsInAnyOtherState_data();
    void wakingStopsInAnyOtherState();
    void wakingStopsForGood();
    void wakingWithoutAPortQueuesNothing();

    void readingWithoutAPortOrBytesDoesNothing();
    void whatIsReadIsLoggedRaw_data();
    void whatIsReadIsLoggedRaw();

private:
    ZVTolvarInspector inside() const { return {*_tolvar}; }
    void openPort();
    void feed(const QByteArray &received)
    {
        for (const char c : received)
            _tolvar->handleReceived(c);
    }

    std::unique_ptr<Pty> _pty;
    std::unique_ptr<QextSerialPort> _port;
    std::unique_ptr<ZVTolvar> _tolvar;
    std::unique_ptr<MessageRecorder> _log;
};

void TestLink::init()
{
    _tolvar = std::make_unique<ZVTolvar>();
    _log = std::make_unique<MessageRecorder>();
}

void TestLink::cleanup()
{
    _log.reset();
    _tolvar.reset();
    _port.reset();
    _pty.reset();
}

void TestLink::openPort()
{
    _pty = std::make_unique<Pty>();
    _port = std::make_unique<QextSerialPort>(_pty->name());
    QVERIFY(_port->open(QIODevice::ReadWrite));
    connect(_port.get(), &QextSerialPort::readyRead, _tolvar.get(), &ZVTolvar::onReadyRead);
    inside().port() = _port.get();
}

void TestLink::eachByteInEachStateOfEachMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("state");
    QTest::addColumn<char>("byte");
    for (int mode = Scanning; mode <= Handshake; ++mode) {
        for (int state = 0; state < stateCount; ++state) {
            for (const ByteClass &byte : bytes)
                QTest::addRow("%s, state %d, %s", modeNames[mode], state, byte.name)
                    << mode << state << byte.byte;
        }
    }
}

void TestLink::eachByteInEachStateOfEachMode()
{
    QFETCH(int, mode);
    QFETCH(int, state);
    QFETCH(char, byte);
    const Expected row = expected(static_cast<Mode>(mode), state, byte);

    const ZVTolvarInspector in = inside();
    in.scanning() = mode == Scanning || mode == ScanningAndTesting;
    in.testing() = mode == Testing || mode == ScanningAndTesting;
    in.eotHandshake() = mode == Handshake;
    in.state() = static_cast<CommState>(state);
    in.response() = "old";
    QStringList signalled;
    connect(_tolvar.get(), &ZVTolvar::responseReceived, this, [&](const QString &response) {
        signalled += "response:" + response;
        if (in.scanning())
            signalled += "scanning"; // the mode lasts until the reply was read
        else if (in.testing())
            signalled += "testing";
    });
    connect(_tolvar.get(), &ZVTolvar::readyForCommand, this, [&] { signalled += "ready"; });
    connect(_tolvar.get(), &ZVTolvar::scanFinished, this, [&] {
        QVERIFY(!in.scanning());
        signalled += "scanFinished";
    });
    connect(_tolvar.get(), &ZVTolvar::networkTestFinished, this, [&] {
        QVERIFY(!in.testing());
        signalled += "testFinished";
    });

    _tolvar->handleReceived(byte);

    QCOMPARE(int(in.state()), row.next);
    QString response = row.response;
    if (response.endsWith('+'))
        response.replace('+', QLatin1Char(byte));
    QCOMPARE(in.response(), response);
    QCOMPARE(signalled.join(' '), QString(row.signal));

    // A scan's end submits at the prompt, where the submission is taken out at once - and lost, without a
    // port.
    QStringList messages;
    if (row.log)
        messages += row.log;
    if (*row.queued)
        messages += "D:_commState =  \"IN_PROMPT\" ";
    QCOMPARE(_log->messages(), messages);
    QCOMPARE(in.currentCommand(), QString(row.queued));
    QVERIFY(in.queue().isEmpty());
}

void TestLink::theSignalsOfAnEndComeInTheirOrder()
{
    const ZVTolvarInspector in = inside();
    in.queue() = QStringList{"save\r\n"}; // left over: it is the oldest, and goes instead
    in.state() = IN_RESPONSE_RECEIVE;
    in.scanning() = true;
    QStringList queueAtFinish;
    QString currentAtFinish;
    connect(_tolvar.get(), &ZVTolvar::scanFinished, this, [&] {
        queueAtFinish = in.queue();
        currentAtFinish = in.currentCommand();
    });
    _tolvar->handleReceived(0x03);
    QCOMPARE(currentAtFinish, QStringLiteral("save\r\n"));
    QCOMPARE(queueAtFinish, QStringList{"setuarttrace n\r\n"});
}

void TestLink::aNormalReply()
{
    const ZVTolvarInspector in = inside();
    in.state() = IN_PROMPT;
    QSignalSpy response(_tolvar.get(), &ZVTolvar::responseReceived);
    QSignalSpy ready(_tolvar.get(), &ZVTolvar::readyForCommand);
    feed("ab\x02<puckdata/>\x03\r\n>");
    QCOMPARE(response.count(), 1);
    QCOMPARE(response.constFirst().constFirst().toString(), QStringLiteral("<puckdata/>"));
    QCOMPARE(ready.count(), 1);
    QCOMPARE(in.state(), IN_PROMPT);
    QCOMPARE(_log->messages(),
             QStringList({"D:->IN_RESPONSE_RECEIVE ", "D:->WAITING_FOR_CONSOLE_PROMPT ", "D:->IN_PROMPT "}));
}

void TestLink::aPromptInsideAReplyIsText()
{
    inside().state() = IN_PROMPT;
    QSignalSpy response(_tolvar.get(), &ZVTolvar::responseReceived);
    QSignalSpy ready(_tolvar.get(), &ZVTolvar::readyForCommand);
    feed("\x02<puckdata>></puckdata>\x03");
    QCOMPARE(response.constFirst().constFirst().toString(), QStringLiteral("<puckdata>></puckdata>"));
    QVERIFY(ready.isEmpty());
}

void TestLink::aScanTakesAReplyEvenBeforeAnyPrompt()
{
    inside().scanning() = true;
    QSignalSpy finished(_tolvar.get(), &ZVTolvar::scanFinished);
    feed("\x02<scan_results/>\x03");
    QCOMPARE(finished.count(), 1);
    QCOMPARE(inside().state(), IN_PROMPT);
}

void TestLink::aSecondStartInsideAReply_data()
{
    QTest::addColumn<bool>("scanning");
    QTest::addColumn<bool>("testing");
    QTest::addColumn<QByteArray>("response");
    QTest::newRow("begins anew while scanning") << true << false << QByteArray("<scan_results/>");
    QTest::newRow("begins anew while testing") << false << true << QByteArray("<scan_results/>");
    QTest::newRow("is a byte of the reply otherwise")
        << false << false << QByteArray("<a/>\x02<scan_results/>");
}

void TestLink::aSecondStartInsideAReply()
{
    QFETCH(bool, scanning);
    QFETCH(bool, testing);
    QFETCH(QByteArray, response);
    // The malformed text must not reach the dispatcher, which would stop at its foreign root.
    disconnect(_tolvar.get(), &ZVTolvar::responseReceived, _tolvar.get(), &ZVTolvar::onResponseReceived);
    inside().state() = IN_PROMPT;
    inside().scanning() = scanning;
    inside().testing() = testing;
    QSignalSpy received(_tolvar.get(), &ZVTolvar::responseReceived);
    feed("\x02<a/>\x02<scan_results/>\x03");
    QCOMPARE(received.count(), 1);
    QCOMPARE(received.constFirst().constFirst().toString(), QString::fromLatin1(response));
}

void TestLink::aReplyStaysUntilTheNextBegins()
{
    inside().state() = IN_PROMPT;
    feed("\x02<puckdata/>\x03\r\n>");
    QCOMPARE(inside().response(), QStringLiteral("<puckdata/>"));
    feed("\x02");
    QCOMPARE(inside().response(), QString());
}

void TestLink::eachByteIsOneCharacter()
{
    inside().state() = IN_PROMPT;
    QSignalSpy response(_tolvar.get(), &ZVTolvar::responseReceived);
    QByteArray reply = "<puckdata><name>";
    for (int byte = 0xA0; byte <= 0xFF; ++byte)
        reply += static_cast<char>(byte);
    reply += "</name></puckdata>";
    feed("\x02" + reply + "\x03");
    QCOMPARE(response.constFirst().constFirst().toString(), QString::fromLatin1(reply));
    QCOMPARE(_tolvar->systemID().size(), 0x60);
    QCOMPARE(_tolvar->systemID().toLatin1(), reply.mid(16, 0x60));
}

void TestLink::aReplyInManyReadsIsTheSame()
{
    openPort();
    inside().state() = IN_PROMPT;
    QSignalSpy response(_tolvar.get(), &ZVTolvar::responseReceived);
    for (const char c : QByteArray("\x02<puckdata><name>T</name></puckdata>\x03")) {
        const auto before = _log->messages("W:").size();
        _pty->send(QByteArray(1, c));
        QTRY_COMPARE(_log->messages("W:").size(), before + 1); // read by itself
    }
    QCOMPARE(response.count(), 1);
    QCOMPARE(_tolvar->systemID(), QStringLiteral("T"));

    // And two replies with all between them in one read.
    _log->take();
    _pty->send(
        "\r\n>get\r\n\x02<puckdata><name>U</name></puckdata>\x03\r\n>get\r\n\x02<puckdata><mode>M</mode>"
        "</puckdata>\x03\r\n>");
    QTRY_COMPARE(_tolvar->status(), QStringLiteral("M"));
    QCOMPARE(_tolvar->systemID(), QStringLiteral("U"));
    QCOMPARE(response.count(), 3);
    QCOMPARE(inside().state(), IN_PROMPT);
}

void TestLink::whatIsSubmittedInsideAReplyGoesOutAfterItsPrompt()
{
    openPort();
    inside().state() = IN_RESPONSE_RECEIVE;
    _tolvar->submitCommand("get\r\n");
    QCOMPARE(inside().queue(), QStringList{"get\r\n"});
    feed("\x03\r\n");
    QCOMPARE(_pty->collected(), QByteArray());
    feed(">");
    QTRY_COMPARE(_pty->collected(), QByteArray("get\r\n"));
    QVERIFY(inside().queue().isEmpty());
    QCOMPARE(inside().state(), IN_PROMPT);
}

void TestLink::threeSubmissionsAtThePromptGoOutAtOnce()
{
    openPort();
    inside().state() = IN_PROMPT;
    _tolvar->submitCommand("setssid A B\r\n");
    _tolvar->submitCommand("setpass \r\n");
    _tolvar->submitCommand("test\r\n");
    QVERIFY(inside().queue().isEmpty());
    QCOMPARE(inside().state(), IN_PROMPT);
    QCOMPARE(_pty->collected(), QByteArray("setssid A B\r\nsetpass \r\ntest\r\n"));
}

void TestLink::aSubmissionSendsTheOldestFirst()
{
    openPort();
    _tolvar->submitCommand("get\r\n");
    inside().state() = IN_PROMPT;
    _tolvar->submitCommand("scan\r\n");
    QCOMPARE(_pty->collected(), QByteArray("get\r\n"));
    QCOMPARE(inside().queue(), QStringList{"scan\r\n"});
    QCOMPARE(inside().currentCommand(), QStringLiteral("get\r\n"));
}

void TestLink::aCommandWithoutAPortIsLost()
{
    inside().queue() = QStringList{"get\r\n", "scan\r\n"};
    _tolvar->onReadyForCommand();
    QCOMPARE(inside().queue(), QStringList{"scan\r\n"});
    QCOMPARE(inside().currentCommand(), QStringLiteral("get\r\n"));
    QCOMPARE(_log->messages(), QStringList());

    inside().queue().clear();
    _tolvar->onReadyForCommand();
    QCOMPARE(inside().currentCommand(), QStringLiteral("get\r\n"));
}

void TestLink::aCommandGoesByteByByte()
{
    openPort();
    inside().state() = IN_PROMPT;
    QElapsedTimer clock;
    clock.start();
    _tolvar->submitCommand("setssid caf\u00e9\r\n");
    // 14 bytes, 10 ms after each: the call itself lasts that long, since the event loop waits too.
    QVERIFY2(clock.elapsed() >= 140, "a command is paced at 10 ms a byte");
    QCOMPARE(_pty->collected(), QByteArray("setssid caf\xe9\r\n"));
    QCOMPARE(_log->messages(),
             QStringList({"D:_commState =  \"IN_PROMPT\" ", "D:--> \"setssid caf\u00e9\r\n\" "}));
}

void TestLink::theQueueIsLoggedWithEachSubmission_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("name");
    QTest::newRow("0") << 0 << "NOT_CONNECTED";
    QTest::newRow("1") << 1 << "CANDIDATE_DEVICE_FOUND";
    QTest::newRow("2") << 2 << "WAITING_FOR_STATUS";
    QTest::newRow("3") << 3 << "INITIAL_WAITING_FOR_CONSOLE_PROMPT";
    QTest::newRow("4") << 4 << "WAITING_FOR_CONSOLE_PROMPT";
    QTest::newRow("5") << 5 << "IN_PROMPT";
    QTest::newRow("6") << 6 << "IN_RESPONSE_RECEIVE";
    QTest::newRow("a value above the last has no name") << 7 << "";
}

void TestLink::theQueueIsLoggedWithEachSubmission()
{
    QFETCH(int, state);
    QFETCH(QString, name);
    inside().state() = static_cast<CommState>(state);
    _tolvar->submitCommand("save\r\n");
    QCOMPARE(_log->messages(), QStringList{"D:_commState =  \"" + name + "\" "});
    QCOMPARE(inside().queue(), state == 5 ? QStringList() : QStringList{"save\r\n"});
}

void TestLink::wakingRepeatsUntilAPromptIsSeen()
{
    openPort();
    inside().state() = CANDIDATE_DEVICE_FOUND;
    QElapsedTimer clock;
    clock.start();
    _tolvar->onTimerKickOffTlovarConsole();
    QCOMPARE(inside().state(), INITIAL_WAITING_FOR_CONSOLE_PROMPT);
    QCOMPARE(_pty->collected(), QByteArray("C\r\n"));
    QCOMPARE(inside().queue(), QStringList{"get\r\n"});
    QCOMPARE(_log->messages(), QStringList{"D:_commState =  \"INITIAL_WAITING_FOR_CONSOLE_PROMPT\" "});

    QTRY_COMPARE(inside().queue().size(), 2);
    QVERIFY2(clock.elapsed() >= 1000, "the console is woken once a second");
    QCOMPARE(_pty->collected(), QByteArray("C\r\nC\r\n"));

    // The prompt sends one "get"; the other waits for the prompt after the reply. The next wake-up stops the
    // chain.
    _pty->send(">");
    QTRY_COMPARE(_pty->collected(), QByteArray("C\r\nC\r\nget\r\n"));
    QCOMPARE(inside().queue(), QStringList{"get\r\n"});
    _pty->send("get\r\n\x02<puckdata/>\x03\r\n>");
    QTRY_COMPARE(_pty->collected(), QByteArray("C\r\nC\r\nget\r\nget\r\n"));
    QVERIFY(inside().queue().isEmpty());
}

void TestLink::wakingStopsInAnyOtherState_data()
{
    QTest::addColumn<int>("state");
    for (const int state : {0, 2, 4, 5, 6, 7})
        QTest::addRow("state %d", state) << state;
}

void TestLink::wakingStopsInAnyOtherState()
{
    QFETCH(int, state);
    openPort();
    inside().state() = static_cast<CommState>(state);
    _tolvar->onTimerKickOffTlovarConsole();
    QCOMPARE(int(inside().state()), state);
    QCOMPARE(_pty->collected(), QByteArray());
    QVERIFY(inside().queue().isEmpty());
    QVERIFY(_log->messages().isEmpty());
}

void TestLink::wakingStopsForGood()
{
    openPort();
    inside().state() = CANDIDATE_DEVICE_FOUND;
    _tolvar->onTimerKickOffTlovarConsole();
    QTRY_COMPARE(_pty->collected(), QByteArray("C\r\n"));
    inside().state() =
        IN_PROMPT; // a prompt was seen: the timer under way fires once more, and ends the chain
    QTimer aTurnLater;
    aTurnLater.setSingleShot(true);
    aTurnLater.start(1200);
    QTRY_VERIFY(!aTurnLater.isActive());
    inside().state() = INITIAL_WAITING_FOR_CONSOLE_PROMPT; // a timer that still ran would wake again
    aTurnLater.start(1200);
    QTRY_VERIFY(!aTurnLater.isActive());
    QCOMPARE(_pty->collected(), QByteArray("C\r\n"));
    QCOMPARE(inside().queue(), QStringList{"get\r\n"});
}

void TestLink::wakingWithoutAPortQueuesNothing()
{
    inside().state() = CANDIDATE_DEVICE_FOUND;
    _tolvar->onTimerKickOffTlovarConsole();
    QCOMPARE(inside().state(), INITIAL_WAITING_FOR_CONSOLE_PROMPT);
    QVERIFY(inside().queue().isEmpty());
    QVERIFY(_log->messages().isEmpty());
}

void TestLink::readingWithoutAPortOrBytesDoesNothing()
{
    _tolvar->onReadyRead();
    openPort();
    _tolvar->onReadyRead();
    QVERIFY(_log->messages().isEmpty());
}

void TestLink::whatIsReadIsLoggedRaw_data()
{
    QTest::addColumn<QByteArray>("sent");
    QTest::addColumn<QString>("message");
    QTest::newRow("control bytes and line ends stay")
        << QByteArray("get\r\n\x02<a>\x03\r\n>") << "W:get\r\n\x02<a>\x03\r\n> ";
    QTest::newRow("a zero byte ends the text") << QByteArray("ab\0cd", 5) << "W:ab ";
    QTest::newRow("a byte is a character") << QByteArray("caf\xc3\xa9") << QString("W:caf\u00c3\u00a9 ");
    QTest::newRow("quotes and percent signs stay") << QByteArray("\"%s\"") << "W:\"%s\" ";
}

void TestLink::whatIsReadIsLoggedRaw()
{
    QFETCH(QByteArray, sent);
    QFETCH(QString, message);
    openPort();
    _pty->send(sent);
    QTRY_COMPARE(_log->messages(), QStringList{message});
}

QTEST_GUILESS_MAIN(TestLink)
#include "tst_zvtolvar_link.moc"
