#include <QTest>

#include "tests/support/linkfixture.h"
#include "tests/support/messagespy.h"
#include "tests/support/pendingtimers.h"
#include "tests/support/timingprobe.h"

/// Tests that the console is woken once a second until a prompt is seen.
class TestLinkWaking : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { _fixture.reset(); }

    void theConsoleIsWokenAndAskedForItsStatus_data();
    void theConsoleIsWokenAndAskedForItsStatus();
    void aWakeUpGoesStepByStep();
    void theConsoleIsWokenAgainASecondLater();
    void whatWakingHasQueuedGoesOutOneAPrompt();
    void afterThePromptTheTimerFiresOnceMoreAndStops_data();
    void afterThePromptTheTimerFiresOnceMoreAndStops();
    void inNoOtherStateIsAnythingWoken_data();
    void inNoOtherStateIsAnythingWoken();
    void withoutAPortNothingIsSentButTheTimerGoesOn();

private:
    ZVTolvarTestPeer inside() const { return _fixture->inside; }

    std::unique_ptr<LinkFixture> _fixture;
    std::unique_ptr<PendingTimers> _timers;
    ZVTolvar *_tolvar = nullptr;
};

void TestLinkWaking::init()
{
    _fixture = std::make_unique<LinkFixture>();
    _timers = std::make_unique<PendingTimers>();
    _tolvar = &_fixture->tolvar;
}

void TestLinkWaking::theConsoleIsWokenAndAskedForItsStatus_data()
{
    QTest::addColumn<CommState>("state");
    QTest::newRow("for the first time") << CANDIDATE_DEVICE_FOUND;
    QTest::newRow("again") << INITIAL_WAITING_FOR_CONSOLE_PROMPT;
}

void TestLinkWaking::theConsoleIsWokenAndAskedForItsStatus()
{
    QFETCH(CommState, state);
    _fixture->connectPort();
    inside().state() = state;
    _tolvar->onTimerKickOffTlovarConsole();
    QCOMPARE(inside().state(), INITIAL_WAITING_FOR_CONSOLE_PROMPT);
    QCOMPARE(_fixture->pty.collected(), QByteArray("C\r\n"));
    QCOMPARE(inside().queue(), QStringList{"get\r\n"});
    QCOMPARE(_fixture->log->messages(),
             QStringList{"D:_commState =  \"INITIAL_WAITING_FOR_CONSOLE_PROMPT\" "});
    QCOMPARE(_timers->underWay(), QList<int>{1000});
}

void TestLinkWaking::aWakeUpGoesStepByStep()
{
    _fixture->connectPort();
    inside().state() = CANDIDATE_DEVICE_FOUND;
    QByteArray wokenBefore;
    QList<int> timersBefore = {-1};
    const MessageSpy witness([&](const QString &) {
        wokenBefore = _fixture->pty.collected();
        timersBefore = _timers->underWay();
    });
    _tolvar->onTimerKickOffTlovarConsole();
    QCOMPARE(wokenBefore, QByteArray("C\r\n")); // before the status is requested
    QCOMPARE(timersBefore, QList<int>());       // the next second begins when this wake-up is complete
}

void TestLinkWaking::theConsoleIsWokenAgainASecondLater()
{
    _fixture->connectPort();
    inside().state() = CANDIDATE_DEVICE_FOUND;
    const auto hasBeenWokenTwice = [this] { return inside().queue().size() == 2; };
    TimingProbe timing(1000, hasBeenWokenTwice);
    _tolvar->onTimerKickOffTlovarConsole();
    timing.hasBegun();
    QTRY_VERIFY(timing.isOver());
    QCOMPARE(timing.verdict(), "in time");
    QCOMPARE(_fixture->pty.collected(), QByteArray("C\r\nC\r\n"));
    QCOMPARE(inside().queue(), QStringList({"get\r\n", "get\r\n"}));
    QCOMPARE(_timers->underWay(), QList<int>{1000});
}

void TestLinkWaking::whatWakingHasQueuedGoesOutOneAPrompt()
{
    _fixture->connectPort();
    inside().state() = CANDIDATE_DEVICE_FOUND;
    _tolvar->onTimerKickOffTlovarConsole();
    _tolvar->onTimerKickOffTlovarConsole();
    _fixture->feed("\r\n>");
    QCOMPARE(_fixture->pty.collected(), QByteArray("C\r\nC\r\nget\r\n"));
    QCOMPARE(inside().queue(), QStringList{"get\r\n"});
    _fixture->feed("get\r\n\x02<puckdata/>\x03\r\n>");
    QCOMPARE(_fixture->pty.collected(), QByteArray("C\r\nC\r\nget\r\nget\r\n"));
    QCOMPARE(inside().queue(), QStringList());
}

void TestLinkWaking::afterThePromptTheTimerFiresOnceMoreAndStops_data()
{
    QTest::addColumn<QByteArray>("received");
    QTest::addColumn<CommState>("state");
    QTest::newRow("at the prompt") << QByteArray(">") << IN_PROMPT;
    QTest::newRow("inside the first reply") << QByteArray(">\x02<puckdata>") << IN_RESPONSE_RECEIVE;
}

void TestLinkWaking::afterThePromptTheTimerFiresOnceMoreAndStops()
{
    QFETCH(QByteArray, received);
    QFETCH(CommState, state);
    _fixture->connectPort();
    inside().state() = CANDIDATE_DEVICE_FOUND;
    _tolvar->onTimerKickOffTlovarConsole();
    _fixture->feed(received);
    QCOMPARE(_timers->underWay(), QList<int>{1000}); // the timer is not stopped, but it has no effect
    QTRY_COMPARE(_timers->underWay(), QList<int>());
    QCOMPARE(inside().state(), state);
    QCOMPARE(_fixture->pty.collected(), QByteArray("C\r\nget\r\n"));
    QCOMPARE(inside().queue(), QStringList());
}

void TestLinkWaking::inNoOtherStateIsAnythingWoken_data()
{
    QTest::addColumn<int>("state");
    QTest::newRow("not connected") << int(NOT_CONNECTED);
    QTest::newRow("waiting for the status") << int(WAITING_FOR_STATUS);
    QTest::newRow("waiting for a prompt") << int(WAITING_FOR_CONSOLE_PROMPT);
    QTest::newRow("at the prompt") << int(IN_PROMPT);
    QTest::newRow("inside a reply") << int(IN_RESPONSE_RECEIVE);
    QTest::newRow("a value above the last") << 7;
}

void TestLinkWaking::inNoOtherStateIsAnythingWoken()
{
    QFETCH(int, state);
    _fixture->connectPort();
    inside().state() = static_cast<CommState>(state);
    _tolvar->onTimerKickOffTlovarConsole();
    QCOMPARE(int(inside().state()), state);
    QCOMPARE(_fixture->pty.collected(), QByteArray());
    QCOMPARE(inside().queue(), QStringList());
    QCOMPARE(_fixture->log->messages(), QStringList());
    QCOMPARE(_timers->underWay(), QList<int>());
}

void TestLinkWaking::withoutAPortNothingIsSentButTheTimerGoesOn()
{
    inside().state() = CANDIDATE_DEVICE_FOUND;
    _tolvar->onTimerKickOffTlovarConsole();
    QCOMPARE(inside().state(), INITIAL_WAITING_FOR_CONSOLE_PROMPT);
    QCOMPARE(inside().queue(), QStringList());
    QCOMPARE(_fixture->log->messages(), QStringList());
    QCOMPARE(_timers->underWay(), QList<int>{1000});
}

QTEST_GUILESS_MAIN(TestLinkWaking)
#include "tst_zvtolvar_link_waking.moc"
