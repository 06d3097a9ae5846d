#include <QTest>

#include "tests/support/linkfixture.h"
#include "tests/support/messagespy.h"
#include "tests/support/scopedconnection.h"

namespace
{
enum Mode { Scanning, ScanningAndTesting, Testing, Normal, Handshake };
constexpr const char *modeNames[] = {"scanning", "scanning and testing", "testing", "no mode", "handshake"};

constexpr struct {
    const char *name;
    char byte;
} bytes[] = {{"STX", 0x02}, {"ETX", 0x03}, {"EOT", 0x04}, {"prompt", '>'}, {"CR", '\r'},
             {"LF", '\n'},  {"NUL", '\0'}, {"x", 'x'},    {"space", ' '},  {"byte E9", '\xE9'}};

constexpr auto BeyondTheLast = static_cast<CommState>(7);

/// What a byte does to the link. Before it, the reply is "old", and the commands "first" and "second" are
/// queued. There is no port, so a command that is sent is lost.
struct Outcome {
    char sign;
    int next;            // the state afterwards, -1 for unchanged
    const char *reply;   // the collected reply afterwards; '+' is the byte
    const char *events;  // messages and signals in their order, each after the state and the modes at that
                         // time; '*' are the modes before
    const char *current; // the command sent
    const char *queue;   // the commands still queued
};

// clang-format off
constexpr Outcome outcomes[] = {
    // no effect
    { '.', -1, "old", "", "", "first,second" },
    // the byte is part of the reply
    { '+', -1, "old+", "", "", "first,second" },
    // a reply begins: to a scan, to a test, to a command
    { 's', IN_RESPONSE_RECEIVE, "", "6*:D:->IN_RESPONSE_RECEIVE and Scanning ", "", "first,second" },
    { 't', IN_RESPONSE_RECEIVE, "", "6*:D:->IN_RESPONSE_RECEIVE and testing ", "", "first,second" },
    { 'n', IN_RESPONSE_RECEIVE, "", "6*:D:->IN_RESPONSE_RECEIVE ", "", "first,second" },
    // a reply ends: to a scan, to a scan during a test, to a test, to a command
    { 'S', IN_PROMPT, "old",
      "5 scanning:D:->IN_PROMPT - end scaning |5 scanning:responseReceived old|5:D:_commState =  \"IN_PROMPT\" |5:scanFinished",
      "first", "second,setuarttrace n\r\n" },
    { 'B', IN_PROMPT, "old",
      "5 scanning testing:D:->IN_PROMPT - end scaning |5 scanning testing:responseReceived old|"
      "5 testing:D:_commState =  \"IN_PROMPT\" |5 testing:scanFinished",
      "first", "second,setuarttrace n\r\n" },
    { 'T', IN_PROMPT, "old",
      "5 testing:D:->IN_PROMPT - end testing |5 testing:responseReceived old|5:networkTestFinished",
      "", "first,second" },
    { 'N', WAITING_FOR_CONSOLE_PROMPT, "old", "4:D:->WAITING_FOR_CONSOLE_PROMPT |4:responseReceived old", "", "first,second" },
    // the prompt: the oldest command is sent
    { 'p', IN_PROMPT, "old", "5:D:->IN_PROMPT |5:readyForCommand", "first", "second" },
    // EOT in the handshake: a prompt will follow
    { 'h', WAITING_FOR_CONSOLE_PROMPT, "old", "4:D:-> Controller: WAITING_FOR_CONSOLE_PROMPT2 ", "", "first,second" },
};

/// The outcome of each byte, as a key character, in the order of the bytes in the column heading.
constexpr struct {
    Mode mode;
    CommState state;
    const char *signs;
} table[] = {
    //                                                           STX EOT CR  NUL space
    //                                                             ETX '>' LF  x   E9
    { Scanning,            NOT_CONNECTED,                       "s . . . . . . . . ." },
    { Scanning,            CANDIDATE_DEVICE_FOUND,              "s . . . . . . . . ." },
    { Scanning,            WAITING_FOR_STATUS,                  "s . . . . . . . . ." },
    { Scanning,            INITIAL_WAITING_FOR_CONSOLE_PROMPT,  "s . . . . . . . . ." },
    { Scanning,            WAITING_FOR_CONSOLE_PROMPT,          "s . . . . . . . . ." },
    { Scanning,            IN_PROMPT,                           "s . . . . . . . . ." },
    { Scanning,            IN_RESPONSE_RECEIVE,                 "s S + + + + + + + +" },
    { Scanning,            BeyondTheLast,                       "s . . . . . . . . ." },

    { ScanningAndTesting,  NOT_CONNECTED,                       "s . . . . . . . . ." },
    { ScanningAndTesting,  CANDIDATE_DEVICE_FOUND,              "s . . . . . . . . ." },
    { ScanningAndTesting,  WAITING_FOR_STATUS,                  "s . . . . . . . . ." },
    { ScanningAndTesting,  INITIAL_WAITING_FOR_CONSOLE_PROMPT,  "s . . . . . . . . ." },
    { ScanningAndTesting,  WAITING_FOR_CONSOLE_PROMPT,          "s . . . . . . . . ." },
    { ScanningAndTesting,  IN_PROMPT,                           "s . . . . . . . . ." },
    { ScanningAndTesting,  IN_RESPONSE_RECEIVE,                 "s B + + + + + + + +" },
    { ScanningAndTesting,  BeyondTheLast,                       "s . . . . . . . . ." },

    { Testing,             NOT_CONNECTED,                       "t . . . . . . . . ." },
    { Testing,             CANDIDATE_DEVICE_FOUND,              "t . . . . . . . . ." },
    { Testing,             WAITING_FOR_STATUS,                  "t . . . . . . . . ." },
    { Testing,             INITIAL_WAITING_FOR_CONSOLE_PROMPT,  "t . . . . . . . . ." },
    { Testing,             WAITING_FOR_CONSOLE_PROMPT,          "t . . . . . . . . ." },
    { Testing,             IN_PROMPT,                           "t . . . . . . . . ." },
    { Testing,             IN_RESPONSE_RECEIVE,                 "t T + + + + + + + +" },
    { Testing,             BeyondTheLast,                       "t . . . . . . . . ." },

    { Normal,              NOT_CONNECTED,                       ". . . . . . . . . ." },
    { Normal,              CANDIDATE_DEVICE_FOUND,              ". . . . . . . . . ." },
    { Normal,              WAITING_FOR_STATUS,                  ". . . . . . . . . ." },
    { Normal,              INITIAL_WAITING_FOR_CONSOLE_PROMPT,  ". . . p . . . . . ." },
    { Normal,              WAITING_FOR_CONSOLE_PROMPT,          ". . . p . . . . . ." },
    { Normal,              IN_PROMPT,                           "n . . . . . . . . ." },
    { Normal,              IN_RESPONSE_RECEIVE,                 "+ N + + + + + + + +" },
    { Normal,              BeyondTheLast,                       ". . . . . . . . . ." },

    { Handshake,           NOT_CONNECTED,                       ". . . . . . . . . ." },
    { Handshake,           CANDIDATE_DEVICE_FOUND,              ". . . . . . . . . ." },
    { Handshake,           WAITING_FOR_STATUS,                  ". . . . . . . . . ." },
    { Handshake,           INITIAL_WAITING_FOR_CONSOLE_PROMPT,  ". . h . . . . . . ." },
    { Handshake,           WAITING_FOR_CONSOLE_PROMPT,          ". . . p . . . . . ." },
    { Handshake,           IN_PROMPT,                           "n . . . . . . . . ." },
    { Handshake,           IN_RESPONSE_RECEIVE,                 "+ N + + + + + + + +" },
    { Handshake,           BeyondTheLast,                       ". . . . . . . . . ." },
};
// clang-format on

const Outcome &outcomeOf(char sign)
{
    for (const Outcome &outcome : outcomes) {
        if (outcome.sign == sign)
            return outcome;
    }
    qFatal("unknown outcome '%c' in the table", sign);
}
} // namespace

/// Tests what each byte does in each state of each mode.
class TestLinkTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        _fixture = std::make_unique<LinkFixture>();
    } // one for all rows; each row resets it
    void cleanupTestCase() { _fixture.reset(); }

    void eachByteInEachStateOfEachMode_data();
    void eachByteInEachStateOfEachMode();

private:
    static QString modesOf(const ZVTolvarTestPeer &inside);

    std::unique_ptr<LinkFixture> _fixture;
};

void TestLinkTable::eachByteInEachStateOfEachMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<CommState>("state");
    QTest::addColumn<char>("byte");
    QTest::addColumn<char>("sign");
    QCOMPARE(int(std::size(table)), 5 * 8);
    for (const auto &row : table) {
        const char *sign = row.signs;
        for (const auto &byte : bytes) {
            QTest::addRow("%s, state %d, %s", modeNames[row.mode], row.state, byte.name)
                << int(row.mode) << row.state << byte.byte << *sign;
            sign += 2;
        }
    }
}

QString TestLinkTable::modesOf(const ZVTolvarTestPeer &inside)
{
    return QLatin1String(inside.scanning() ? " scanning" : "") +
           QLatin1String(inside.testing() ? " testing" : "");
}

void TestLinkTable::eachByteInEachStateOfEachMode()
{
    QFETCH(int, mode);
    QFETCH(CommState, state);
    QFETCH(char, byte);
    QFETCH(char, sign);
    const Outcome &outcome = outcomeOf(sign);

    const ZVTolvarTestPeer &in = _fixture->inside;
    in.scanning() = mode == Scanning || mode == ScanningAndTesting;
    in.testing() = mode == Testing || mode == ScanningAndTesting;
    in.eotHandshake() = mode == Handshake;
    in.state() = state;
    in.response() = "old";
    in.queue() = QStringList{"first", "second"};
    in.currentCommand().clear();
    _fixture->log->take();
    const QString modesBefore = modesOf(in);

    QStringList events;
    const auto note = [&](const QString &event) {
        events += QString::number(in.state()) + modesOf(in) + ':' + event;
    };
    const MessageSpy spy(note);
    const ZVTolvar *tolvar = &_fixture->tolvar;
    const ScopedConnection ready(tolvar, &ZVTolvar::readyForCommand, [&] { note("readyForCommand"); });
    const ScopedConnection received(tolvar, &ZVTolvar::responseReceived,
                                    [&](const QString &response) { note("responseReceived " + response); });
    const ScopedConnection scanned(tolvar, &ZVTolvar::scanFinished, [&] { note("scanFinished"); });
    const ScopedConnection tested(tolvar, &ZVTolvar::networkTestFinished,
                                  [&] { note("networkTestFinished"); });

    _fixture->tolvar.handleReceived(byte);

    QCOMPARE(int(in.state()), outcome.next < 0 ? int(state) : outcome.next);
    QCOMPARE(in.response(), QString(outcome.reply).replace('+', QLatin1Char(byte)));
    QCOMPARE(events.join('|'), QString(outcome.events).replace('*', modesBefore));
    QCOMPARE(in.currentCommand(), QString(outcome.current));
    QCOMPARE(in.queue().join(','), QString(outcome.queue));
    QCOMPARE(in.eotHandshake(), mode == Handshake);
    if (!strchr("SBT", sign))
        QCOMPARE(modesOf(in), modesBefore);
}

QTEST_GUILESS_MAIN(TestLinkTable)
#include "tst_zvtolvar_link_table.moc"
