#include <poll.h>
#include <unistd.h>

#include <atomic>
#include <thread>

#include <QElapsedTimer>
#include <QTest>

#include "tests/support/linkfixture.h"
#include "tests/support/messagespy.h"

namespace
{
using namespace std::chrono_literals;

constexpr auto BytePause = 10ms;
constexpr auto OneOverTheOther = 11ms; // shorter than a pause that is a millisecond too long
constexpr int Tries = 500;             // a computer that is too busy for all of them is faulty
} // namespace

/// Tests the queue of commands, and how they are sent.
class TestLinkQueue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { _fixture.reset(); }

    void whatIsSubmittedInsideAReplyGoesOutAfterItsPrompt();
    void threeSubmissionsAtThePromptGoOutAtOnceInTheirOrder();
    void aSubmissionSendsTheOldestWhichNeedNotBeItself();
    void onePromptSendsOneCommand();
    void aCommandWithoutAPortIsLost();
    void anEmptyQueueSendsNothing();

    void aSubmissionLogsTheState_data();
    void aSubmissionLogsTheState();
    void theStateIsLoggedWithoutASubmissionToo();
    void aSubmissionIsQueuedThenLoggedThenSent();
    void aCommandIsLoggedRawBeforeItGoesOut();

    void aCommandTakesTenMillisecondsAByte();
    void theDeviceHasAByteBeforeThePauseAfterIt();

private:
    ZVTolvarTestPeer inside() const { return _fixture->inside; }

    std::unique_ptr<LinkFixture> _fixture;
    ZVTolvar *_tolvar = nullptr;
};

void TestLinkQueue::init()
{
    _fixture = std::make_unique<LinkFixture>();
    _tolvar = &_fixture->tolvar;
}

void TestLinkQueue::whatIsSubmittedInsideAReplyGoesOutAfterItsPrompt()
{
    _fixture->connectPort();
    inside().state() = IN_RESPONSE_RECEIVE;
    _tolvar->submitCommand("get\r\n");
    QCOMPARE(inside().queue(), QStringList{"get\r\n"});
    _fixture->feed("\x03\r\n");
    QCOMPARE(_fixture->pty.collected(), QByteArray());
    _fixture->feed(">");
    QCOMPARE(_fixture->pty.collected(), QByteArray("get\r\n"));
    QCOMPARE(inside().queue(), QStringList());
    QCOMPARE(inside().state(), IN_PROMPT);
}

void TestLinkQueue::threeSubmissionsAtThePromptGoOutAtOnceInTheirOrder()
{
    _fixture->connectPort();
    inside().state() = IN_PROMPT;
    _tolvar->submitCommand("setssid A B\r\n");
    _tolvar->submitCommand("setpass \r\n");
    _tolvar->submitCommand("test\r\n");
    QCOMPARE(inside().queue(), QStringList());
    QCOMPARE(inside().state(), IN_PROMPT);
    QCOMPARE(_fixture->pty.collected(), QByteArray("setssid A B\r\nsetpass \r\ntest\r\n"));
}

void TestLinkQueue::aSubmissionSendsTheOldestWhichNeedNotBeItself()
{
    _fixture->connectPort();
    _tolvar->submitCommand("get\r\n");
    inside().state() = IN_PROMPT;
    _tolvar->submitCommand("scan\r\n");
    QCOMPARE(_fixture->pty.collected(), QByteArray("get\r\n"));
    QCOMPARE(inside().queue(), QStringList{"scan\r\n"});
    QCOMPARE(inside().currentCommand(), QStringLiteral("get\r\n"));
}

void TestLinkQueue::onePromptSendsOneCommand()
{
    _fixture->connectPort();
    inside().state() = WAITING_FOR_CONSOLE_PROMPT;
    inside().queue() = QStringList{"get\r\n", "get\r\n"};
    _fixture->feed(">>>"); // the console is already at its prompt: the other prompts have no effect
    QCOMPARE(_fixture->pty.collected(), QByteArray("get\r\n"));
    _fixture->feed("\x02<puckdata/>\x03\r\n>");
    QCOMPARE(_fixture->pty.collected(), QByteArray("get\r\nget\r\n"));
}

void TestLinkQueue::aCommandWithoutAPortIsLost()
{
    inside().queue() = QStringList{"get\r\n", "scan\r\n"};
    _tolvar->onReadyForCommand();
    QCOMPARE(inside().queue(), QStringList{"scan\r\n"});
    QCOMPARE(inside().currentCommand(), QStringLiteral("get\r\n"));
    QCOMPARE(_fixture->log->messages(), QStringList());
}

void TestLinkQueue::anEmptyQueueSendsNothing()
{
    _fixture->connectPort();
    inside().currentCommand() = "get\r\n";
    _tolvar->onReadyForCommand();
    QCOMPARE(inside().currentCommand(), QStringLiteral("get\r\n"));
    QCOMPARE(_fixture->log->messages(), QStringList());
    QCOMPARE(_fixture->pty.collected(), QByteArray());
}

void TestLinkQueue::aSubmissionLogsTheState_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("message");
    QTest::newRow("0") << 0 << "D:_commState =  \"NOT_CONNECTED\" ";
    QTest::newRow("1") << 1 << "D:_commState =  \"CANDIDATE_DEVICE_FOUND\" ";
    QTest::newRow("2") << 2 << "D:_commState =  \"WAITING_FOR_STATUS\" ";
    QTest::newRow("3") << 3 << "D:_commState =  \"INITIAL_WAITING_FOR_CONSOLE_PROMPT\" ";
    QTest::newRow("4") << 4 << "D:_commState =  \"WAITING_FOR_CONSOLE_PROMPT\" ";
    QTest::newRow("5") << 5 << "D:_commState =  \"IN_PROMPT\" ";
    QTest::newRow("6") << 6 << "D:_commState =  \"IN_RESPONSE_RECEIVE\" ";
    QTest::newRow("a value above the last has no name") << 7 << "D:_commState =  \"\" ";
}

void TestLinkQueue::aSubmissionLogsTheState()
{
    QFETCH(int, state);
    QFETCH(QString, message);
    inside().state() = static_cast<CommState>(state);
    _tolvar->submitCommand("save\r\n");
    QCOMPARE(_fixture->log->messages(), QStringList{message});
    QCOMPARE(inside().queue(), state == IN_PROMPT ? QStringList() : QStringList{"save\r\n"});
    QCOMPARE(int(inside().state()), state);
}

void TestLinkQueue::theStateIsLoggedWithoutASubmissionToo()
{
    inside().state() = IN_RESPONSE_RECEIVE;
    _tolvar->debug_commState();
    QCOMPARE(_fixture->log->messages(), QStringList{"D:_commState =  \"IN_RESPONSE_RECEIVE\" "});
    QCOMPARE(inside().queue(), QStringList());
}

void TestLinkQueue::aSubmissionIsQueuedThenLoggedThenSent()
{
    _fixture->connectPort();
    inside().state() = IN_PROMPT;
    QStringList seen;
    const MessageSpy witness([&](const QString &message) {
        seen += message + inside().queue().join(',') + '/' + inside().currentCommand() + '/' +
                _fixture->pty.collected();
    });
    _tolvar->submitCommand("exit");
    QCOMPARE(seen, QStringList({"D:_commState =  \"IN_PROMPT\" exit//", "D:--> \"exit\" /exit/"}));
    QCOMPARE(_fixture->pty.collected(), QByteArray("exit"));
}

void TestLinkQueue::aCommandIsLoggedRawBeforeItGoesOut()
{
    _fixture->connectPort();
    inside().state() = IN_PROMPT;
    _tolvar->submitCommand("setssid \"caf\u00e9\"\r\n");
    QCOMPARE(_fixture->log->messages(),
             QStringList({"D:_commState =  \"IN_PROMPT\" ", "D:--> \"setssid \"caf\u00e9\"\r\n\" "}));
    QCOMPARE(_fixture->pty.collected(), QByteArray("setssid \"caf\xe9\"\r\n"));
}

void TestLinkQueue::aCommandTakesTenMillisecondsAByte()
{
    _fixture->connectPort();
    inside().state() = IN_PROMPT;
    const auto timeFor = [this](const QString &command) {
        QElapsedTimer clock;
        clock.start();
        _tolvar->submitCommand(command); // the call itself takes that long, since the event loop waits too
        return std::chrono::nanoseconds(clock.nsecsElapsed());
    };
    QVERIFY2(timeFor("setuarttrace y\r\n") >= 16 * BytePause, "each byte is given 10 ms");

    auto shortest = std::chrono::nanoseconds::max();
    for (int i = 0; i < Tries && shortest >= OneOverTheOther; ++i) {
        const auto time = timeFor("x");
        QVERIFY2(time >= BytePause, "the last byte is given 10 ms too");
        shortest = std::min(shortest, time);
    }
    QVERIFY2(shortest < OneOverTheOther, "a byte is given 10 ms and no more");
}

void TestLinkQueue::theDeviceHasAByteBeforeThePauseAfterIt()
{
    _fixture->connectPort();
    inside().state() = IN_PROMPT;
    // The device reads in its own thread and records when each of its reads ends.
    std::atomic<qint64> arrival = 0;
    std::atomic<bool> stop = false;
    QElapsedTimer clock;
    clock.start();
    std::thread device([&, descriptor = _fixture->pty.device()] {
        while (!stop) {
            pollfd line{descriptor, POLLIN, 0};
            char some[64];
            if (::poll(&line, 1, 10) > 0 && ::read(descriptor, some, sizeof some) > 0)
                arrival = clock.nsecsElapsed();
        }
    });
    // The reader may be late; then the test tries again. The reader is never early.
    std::chrono::nanoseconds lead = 0ns;
    for (int i = 0; i < Tries && lead < BytePause / 2; ++i) {
        arrival = 0;
        _tolvar->submitCommand("x");
        const qint64 returned = clock.nsecsElapsed();
        if (!QTest::qWaitFor([&] { return arrival > 0; }))
            break;
        lead = std::chrono::nanoseconds(returned - arrival);
    }
    stop = true;
    device.join();
    QVERIFY2(lead >= BytePause / 2, "a byte reaches the device at once, and the pause follows it");
}

QTEST_GUILESS_MAIN(TestLinkQueue)
#include "tst_zvtolvar_link_queue.moc"
