#include <QTest>

#include "tests/support/lapse.h"
#include "tests/support/linkbench.h"
#include "tests/support/messagewitness.h"
#include "tests/support/singleshots.h"

/// Waking the console: once a second, until a prompt is seen.
class TestLinkWaking : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { _bench.reset(); }

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
    ZVTolvarInspector inside() const { return _bench->inside; }

    std::unique_ptr<LinkBench> _bench;
    std::unique_ptr<SingleShots> _timers;
    ZVTolvar *_tolvar = nullptr;
};

void TestLinkWaking::init()
{
    _bench = std::make_unique<LinkBench>();
    _timers = std::make_unique<SingleShots>();
    _tolvar = &_bench->tolvar;
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
    _bench->connectPort();
    inside().state() = state;
    _tolvar->onTimerKickOffTlovarConsole();
    QCOMPARE(inside().state(), INITIAL_WAITING_FOR_CONSOLE_PROMPT);
    QCOMPARE(_bench->pty.collected(), QByteArray("C\r\n"));
    QCOMPARE(inside().queue(), QStringList{"get\r\n"});
    QCOMPARE(_bench->log->messages(), QStringList{"D:_commState =  \"INITIAL_WAITING_FOR_CONSOLE_PROMPT\" "});
    QCOMPARE(_timers->underWay(), QList<int>{1000});
}

void TestLinkWaking::aWakeUpGoesStepByStep()
{
    _bench->connectPort();
    inside().state() = CANDIDATE_DEVICE_FOUND;
    QByteArray wokenBefore;
    QList<int> timersBefore = {-1};
    const MessageWitness witness([&](const QString &) {
        wokenBefore = _bench->pty.collected();
        timersBefore = _timers->underWay();
    });
    _tolvar->onTimerKickOffTlovarConsole();
    QCOMPARE(wokenBefore, QByteArray("C\r\n")); // before the status is asked for
    QCOMPARE(timersBefore, QList<int>());       // the next second begins when this wake-up is done
}

void TestLinkWaking::theConsoleIsWokenAgainASecondLater()
{
    _bench->connectPort();
    inside().state() = CANDIDATE_DEVICE_FOUND;
    const auto hasBeenWokenTwice = [this] { return inside().queue().size() == 2; };
    Lapse lapse(1000, hasBeenWokenTwice);
    _tolvar->onTimerKickOffTlovarConsole();
    lapse.hasBegun();
    QTRY_VERIFY(lapse.isOver());
    QCOMPARE(lapse.verdict(), "in time");
    QCOMPARE(_bench->pty.collected(), QByteArray("C\r\nC\r\n"));
    QCOMPARE(inside().queue(), QStringList({"get\r\n", "get\r\n"}));
    QCOMPARE(_timers->underWay(), QList<int>{1000});
}

void TestLinkWaking::whatWakingHasQueuedGoesOutOneAPrompt()
{
    _bench->connectPort();
    inside().state() = CANDIDATE_DEVICE_FOUND;
    _tolvar->onTimerKickOffTlovarConsole();
    _tolvar->onTimerKickOffTlovarConsole();
    _bench->feed("\r\n>");
    QCOMPARE(_bench->pty.collected(), QByteArray("C\r\nC\r\nget\r\n"));
    QCOMPARE(inside().queue(), QStringList{"get\r\n"});
    _bench->feed("get\r\n\x02<puckdata/>\x03\r\n>");
    QCOMPARE(_bench->pty.collected(), QByteArray("C\r\nC\r\nget\r\nget\r\n"));
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
    _bench->connectPort();
    inside().state() = CANDIDATE_DEVICE_FOUND;
    _tolvar->onTimerKickOffTlovarConsole();
    _bench->feed(received);
    QCOMPARE(_timers->underWay(), QList<int>{1000}); // it isn't stopped, it comes to nothing
    QTRY_COMPARE(_timers->underWay(), QList<int>());
    QCOMPARE(inside().state(), state);
    QCOMPARE(_bench->pty.collected(), QByteArray("C\r\nget\r\n"));
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
    _bench->connectPort();
    inside().state() = static_cast<CommState>(state);
    _tolvar->onTimerKickOffTlovarConsole();
    QCOMPARE(int(inside().state()), state);
    QCOMPARE(_bench->pty.collected(), QByteArray());
    QCOMPARE(inside().queue(), QStringList());
    QCOMPARE(_bench->log->messages(), QStringList());
    QCOMPARE(_timers->underWay(), QList<int>());
}

void TestLinkWaking::withoutAPortNothingIsSentButTheTimerGoesOn()
{
    inside().state() = CANDIDATE_DEVICE_FOUND;
    _tolvar->onTimerKickOffTlovarConsole();
    QCOMPARE(inside().state(), INITIAL_WAITING_FOR_CONSOLE_PROMPT);
    QCOMPARE(inside().queue(), QStringList());
    QCOMPARE(_bench->log->messages(), QStringList());
    QCOMPARE(_timers->underWay(), QList<int>{1000});
}

QTEST_GUILESS_MAIN(TestLinkWaking)
#include "tst_zvtolvar_link_waking.moc"
