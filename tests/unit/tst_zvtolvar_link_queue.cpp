#include <QElapsedTimer>
#include <QTest>

#include "tests/support/linkfixture.h"
#include "tests/support/messagespy.h"
#include "tests/support/portinfos.h"

namespace
{
using namespace std::chrono_literals;

constexpr qint64 Endless = 1000000;
constexpr const char *Passphrase = "setpass secret words\r\n";

/// A port with limited space. It cuts the write that exceeds its space. From then on, its space is
/// \a roomAfterwards.
class JammedPort : public QextSerialPort
{
public:
    explicit JammedPort(qint64 room, qint64 roomAfterwards = 0)
        : QextSerialPort(QStringLiteral("jammed"))
        , _room(room)
        , _roomAfterwards(roomAfterwards)
    {
        setOpenMode(ReadWrite | Unbuffered);
    }

    void setRoom(qint64 room) { _room = room; }
    QByteArray taken() const { return _taken; }
    /// The time since the last byte was taken.
    std::chrono::nanoseconds sinceLastByte() const { return 1ns * _clock.nsecsElapsed(); }

protected:
    qint64 writeData(const char *data, qint64 size) override
    {
        const qint64 count = std::min(size, _room);
        _taken.append(data, count);
        _room = count < size ? _roomAfterwards : _room - count;
        _clock.start();
        return count;
    }

private:
    qint64 _room;
    qint64 _roomAfterwards;
    QByteArray _taken;
    QElapsedTimer _clock;
};
} // namespace

/// Tests the queue of commands, and how they are sent.
class TestLinkQueue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { _fixture.reset(); }

    void commandsSubmittedDuringAReplyAreSentOnePerPrompt();
    void aSubmissionAtThePromptSendsTheOldestCommand();
    void aSubmissionLogsTheState_data();
    void aSubmissionLogsTheState();
    void aSubmissionIsQueuedThenLoggedThenSent();
    void aPauseOfTenMillisecondsFollowsEachByte();

    void aCommandIsCutWhereTheLineAcceptsNoMore_data();
    void aCommandIsCutWhereTheLineAcceptsNoMore();
    void theNextCommandBeginsOnALineOfItsOwn_data();
    void theNextCommandBeginsOnALineOfItsOwn();
    void aLineEndThatIsCutItselfIsSentAgain();
    void aNewDeviceHasNoOpenLine();

private:
    ZVTolvarTestPeer inside() const { return _fixture->inside; }
    QStringList criticalMessages() const { return _fixture->log->messages("C:"); }
    /// Gives the controller this port, at the prompt.
    void usePort(QextSerialPort &port) const
    {
        inside().port() = &port;
        inside().state() = IN_PROMPT;
    }

    std::unique_ptr<LinkFixture> _fixture;
    ZVTolvar *_tolvar = nullptr;
};

void TestLinkQueue::init()
{
    _fixture = std::make_unique<LinkFixture>();
    _tolvar = &_fixture->tolvar;
}

void TestLinkQueue::commandsSubmittedDuringAReplyAreSentOnePerPrompt()
{
    JammedPort port(Endless);
    usePort(port);
    inside().state() = IN_RESPONSE_RECEIVE;
    _tolvar->submitCommand("get\r\n");
    _tolvar->submitCommand("scan\r\n");
    _fixture->feed("\x03\r\n");
    QCOMPARE(port.taken(), QByteArray());
    _fixture->feed(">>>"); // the console is already at its prompt: the other prompts have no effect
    QCOMPARE(port.taken(), QByteArray("get\r\n"));
    _fixture->feed("\x02<puckdata/>\x03\r\n>");
    QCOMPARE(port.taken(), QByteArray("get\r\nscan\r\n"));
    QCOMPARE(inside().queue(), QStringList());
}

void TestLinkQueue::aSubmissionAtThePromptSendsTheOldestCommand()
{
    JammedPort port(Endless);
    _tolvar->submitCommand("get\r\n");
    usePort(port);
    _tolvar->submitCommand("setssid A B\r\n");
    QCOMPARE(port.taken(), QByteArray("get\r\n"));
    QCOMPARE(inside().currentCommand(), QStringLiteral("get\r\n"));
    _tolvar->submitCommand("test\r\n"); // it is still at the prompt
    QCOMPARE(port.taken(), QByteArray("get\r\nsetssid A B\r\n"));
    QCOMPARE(inside().queue(), QStringList{"test\r\n"});
}

void TestLinkQueue::aSubmissionLogsTheState_data()
{
    QTest::addColumn<int>("state");
    int state = 0;
    for (const char *name : {"NOT_CONNECTED", "CANDIDATE_DEVICE_FOUND", "WAITING_FOR_STATUS",
                             "INITIAL_WAITING_FOR_CONSOLE_PROMPT", "WAITING_FOR_CONSOLE_PROMPT", "IN_PROMPT",
                             "IN_RESPONSE_RECEIVE", ""}) // a value above the last has no name
        QTest::newRow(name) << state++;
}

void TestLinkQueue::aSubmissionLogsTheState()
{
    QFETCH(int, state);
    inside().state() = static_cast<CommState>(state);
    _tolvar->submitCommand("save\r\n");
    const QString name = QTest::currentDataTag();
    QCOMPARE(_fixture->log->messages(), QStringList{"D:_commState =  \"" + name + "\" "});
    QCOMPARE(inside().queue(), state == IN_PROMPT ? QStringList() : QStringList{"save\r\n"});
    QCOMPARE(int(inside().state()), state);
}

void TestLinkQueue::aSubmissionIsQueuedThenLoggedThenSent()
{
    JammedPort port(Endless);
    usePort(port);
    QStringList seen;
    const MessageSpy spy([&](const QString &message) {
        seen += message + inside().queue().join(',') + '/' + inside().currentCommand() + '/' + port.taken();
    });
    _tolvar->submitCommand("a\"\u00e9\"\r\n");
    QCOMPARE(seen, QStringList({"D:_commState =  \"IN_PROMPT\" a\"\u00e9\"\r\n//",
                                "D:--> \"a\"\u00e9\"\r\n\" /a\"\u00e9\"\r\n/"}));
    QCOMPARE(_fixture->log->messages("D:"), _fixture->log->messages());
    QCOMPARE(port.taken(), QByteArray("a\"\xe9\"\r\n")); // a character is a byte
}

void TestLinkQueue::aPauseOfTenMillisecondsFollowsEachByte()
{
    JammedPort port(Endless);
    usePort(port);
    QElapsedTimer clock;
    clock.start();
    _tolvar->submitCommand("setuarttrace y\r\n"); // the call itself takes that long
    QVERIFY2(clock.elapsed() >= 160, "the pause after a byte is shorter than 10 ms");

    constexpr int tries = 500; // on a busy computer, only some are undisturbed
    auto shortest = std::chrono::nanoseconds::max();
    for (int i = 0; i < tries && shortest >= 11ms; ++i) {
        _tolvar->submitCommand("x");
        const std::chrono::nanoseconds time = port.sinceLastByte();
        QVERIFY2(time >= 10ms, "the pause after the last byte is shorter than 10 ms");
        shortest = std::min(shortest, time);
    }
    QVERIFY2(shortest < 11ms, "the pause after a byte is longer than 10 ms");
}

void TestLinkQueue::aCommandIsCutWhereTheLineAcceptsNoMore_data()
{
    QTest::addColumn<int>("room");
    QTest::addColumn<QByteArray>("taken");
    QTest::addColumn<QStringList>("logged");
    const auto cutAfter = [](int count) {
        return QStringList{QStringLiteral("C:The command was cut: the port took %1 of 22 bytes ").arg(count)};
    };
    QTest::newRow("0 bytes accepted") << 0 << QByteArray() << cutAfter(0);
    QTest::newRow("8 bytes accepted") << 8 << QByteArray("setpass ") << cutAfter(8);
    QTest::newRow("all but the line feed accepted")
        << 21 << QByteArray("setpass secret words\r") << cutAfter(21);
    QTest::newRow("all bytes accepted") << 22 << QByteArray(Passphrase) << QStringList();
}

void TestLinkQueue::aCommandIsCutWhereTheLineAcceptsNoMore()
{
    QFETCH(int, room);
    JammedPort port(room, Endless);
    usePort(port);
    _tolvar->submitCommand(Passphrase);
    QTEST(port.taken(), "taken"); // and not the rest of a command, though the port accepts bytes again
    QTEST(criticalMessages(), "logged");
}

void TestLinkQueue::theNextCommandBeginsOnALineOfItsOwn_data()
{
    QTest::addColumn<int>("room");
    QTest::addColumn<QByteArray>("taken");
    QTest::newRow("0 bytes accepted") << 0 << QByteArray("save\r\nexit\r\n");
    QTest::newRow("11 bytes accepted") << 11 << QByteArray("setpass sec\r\nsave\r\nexit\r\n");
    QTest::newRow("all bytes accepted") << 22 << QByteArray("setpass secret words\r\nsave\r\nexit\r\n");
}

void TestLinkQueue::theNextCommandBeginsOnALineOfItsOwn()
{
    QFETCH(int, room);
    JammedPort port(room);
    usePort(port);
    _tolvar->submitCommand(Passphrase);
    port.setRoom(0);
    _tolvar->submitCommand("test\r\n"); // lost as a whole
    port.setRoom(Endless);
    _fixture->log->take();
    _tolvar->submitCommand("save\r\n");
    _tolvar->submitCommand("exit\r\n");
    QTEST(port.taken(), "taken");
    // The line end is not part of the command, and is not logged with it.
    QVERIFY(_fixture->log->messages().contains("D:--> \"save\r\n\" "));
    QCOMPARE(criticalMessages(), QStringList());
}

void TestLinkQueue::aLineEndThatIsCutItselfIsSentAgain()
{
    JammedPort port(1);
    usePort(port);
    _tolvar->submitCommand("exit\r\n");
    port.setRoom(1);
    _fixture->log->take();
    _tolvar->submitCommand("test\r\n");
    QCOMPARE(criticalMessages(), QStringList{"C:The command was cut: the port took 0 of 6 bytes "});
    port.setRoom(Endless);
    _tolvar->submitCommand("save\r\n");
    QCOMPARE(port.taken(), QByteArray("e\r\r\nsave\r\n"));
}

void TestLinkQueue::aNewDeviceHasNoOpenLine()
{
    JammedPort first(3);
    usePort(first);
    inside().portName() = "jammed";
    _tolvar->submitCommand("save\r\n");
    _tolvar->onDeviceRemoved(PortInfos::bridge("jammed"));

    JammedPort second(Endless);
    usePort(second);
    _tolvar->submitCommand("get\r\n");
    QCOMPARE(second.taken(), QByteArray("get\r\n"));
}

QTEST_GUILESS_MAIN(TestLinkQueue)
#include "tst_zvtolvar_link_queue.moc"
