#include <QRandomGenerator>
#include <QTest>

#include "tests/faults/faultbench.h"
#include "tests/faults/faultchoice.h"

Q_DECLARE_METATYPE(TolvarDelays)
Q_DECLARE_METATYPE(TolvarFaults)

/// The whole wizard on a line, or with a device, that is not as it should be.
class TestNoisyLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theRunGoesThrough_data();
    void theRunGoesThrough();
    void afterBytesFromNowhere_data();
    void afterBytesFromNowhere();
    void afterSeveralFaultsAtOnce_data();
    void afterSeveralFaultsAtOnce();
    void aPromptThatNeverComes();
    void theFirstOfTwoDevicesIsUsed();
};

namespace
{
// A reply whose root has another name holds the wizard for good, which is kept, so none may come about here.
// No document has control characters: "\x01" makes one that is cut out of another's middle an invalid one. A
// start mark in the middle begins a reply for the second controller, when that has just opened the port and
// takes a tag's end for a prompt. tst_spoiltbytes tries the bytes without it, on the controller alone.
constexpr char startMark[] = "\x02\x01";

/// Lets the run come to an end, or to a reply that is lost: then the user pulls the plug, and tries once more
/// on a sane line.
void pullOutAndWalkAgain(FaultBench &bench)
{
    bench.waitUntilQuiet();
    if (bench.walk.isDone())
        return;
    bench.walk.stop();
    bench.tolvar.unplug();
    QVERIFY(bench.waitFor([&] { return bench.isForgotten(); }));
    QCOMPARE(bench.wrongAfterUnplug(), QString());
    bench.tolvar.alter([](TolvarSetup &device) { device.faults = {}; });
    QCOMPARE(bench.walkAgain(), QString());
}

/// Plugs the device in on a line with these faults, and walks as far as it goes.
void walkInto(FaultBench &bench, const LineFaults &faults)
{
    bench.tolvar.setFaults(faults);
    QVERIFY(bench.tolvar.plug());
    bench.walk.start();
}
} // namespace

void TestNoisyLine::theRunGoesThrough_data()
{
    QTest::addColumn<LineFaults::Reads>("reads");
    QTest::addColumn<TolvarDelays>("delays");
    QTest::addColumn<TolvarFaults>("deviceFaults");

    const TolvarDelays none;
    const TolvarFaults sane;
    TolvarDelays latePrompts;
    latePrompts.prompt = 1500; // later than the next wake-up
    TolvarFaults doublePrompts;
    doublePrompts.promptsTwice = true;
    TolvarFaults garbage;
    garbage.garbageBeforeReplies = QByteArray("\x00\xFF <x> \x1B[2J &amp; ]]>", 21);

    QTest::newRow("each byte is read by itself") << LineFaults::Single << none << sane;
    QTest::newRow("what comes is read at once") << LineFaults::Merged << none << sane;
    QTest::newRow("each prompt comes late") << LineFaults::AsTheyCome << latePrompts << sane;
    QTest::newRow("each prompt comes twice") << LineFaults::AsTheyCome << none << doublePrompts;
    QTest::newRow("there is garbage before each reply") << LineFaults::AsTheyCome << none << garbage;
}

void TestNoisyLine::theRunGoesThrough()
{
    QFETCH(LineFaults::Reads, reads);
    TolvarSetup setup = tersestTolvar();
    QFETCH(TolvarDelays, delays);
    setup.delays = delays;
    QFETCH(TolvarFaults, deviceFaults);
    setup.faults = deviceFaults;
    FaultBench bench(setup);
    LineFaults faults;
    faults.reads = reads;
    walkInto(bench, faults);
    QVERIFY2(bench.waitFor([&] { return bench.walk.isDone(); }), qPrintable(FaultBench::lastMessages()));
    QVERIFY(bench.waitFor([&] { return bench.tolvar.state().exited; }));
    QCOMPARE(bench.tolvar.state().saved.network, QByteArray("B"));
    QCOMPARE(bench.tolvar.state().saved.passphrase, QByteArray("b"));
}

void TestNoisyLine::afterBytesFromNowhere_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("place");

    const QList<QPair<const char *, QByteArray>> intruders = {{"a start mark", startMark},
                                                              {"an end mark", "\x03"},
                                                              {"a prompt", "\x01>"},
                                                              {"garbage", "\x01\xFF<&]]>\r\n>"}};
    constexpr qsizetype talkLength = 800; // from the first prompt to the test's reply and a little more
    const QList<qsizetype> numbers = faultChoice(talkLength * intruders.size(), 2);
    for (const qsizetype number : numbers) {
        const auto &[name, bytes] = intruders.at(number % intruders.size());
        const qsizetype place = number / intruders.size();
        QTest::addRow("%s after %d bytes", name, static_cast<int>(place)) << bytes << static_cast<int>(place);
    }
}

void TestNoisyLine::afterBytesFromNowhere()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, place);
    FaultBench bench;
    LineFaults faults;
    faults.insertAt = place;
    faults.insertion = bytes;
    walkInto(bench, faults);
    pullOutAndWalkAgain(bench);
}

void TestNoisyLine::afterSeveralFaultsAtOnce_data()
{
    QTest::addColumn<int>("seed");
    constexpr int combinations = 1600;
    const QList<qsizetype> seeds = faultChoice(combinations, 2);
    for (const qsizetype seed : seeds)
        QTest::addRow("combination %d", static_cast<int>(seed)) << static_cast<int>(seed);
}

void TestNoisyLine::afterSeveralFaultsAtOnce()
{
    QFETCH(int, seed);
    QRandomGenerator random(static_cast<quint32>(seed));
    const auto isSo = [&random] { return random.bounded(2) == 1; };
    TolvarSetup setup = tersestTolvar();
    setup.faults.promptsTwice = isSo();
    if (isSo())
        setup.faults.garbageBeforeReplies = "\x01 <garbage> \xFF";
    if (isSo())
        setup.delays = {random.bounded(1500), random.bounded(500), random.bounded(500)};
    LineFaults faults;
    faults.reads = static_cast<LineFaults::Reads>(random.bounded(3));
    faults.insertAt = random.bounded(1000);
    faults.insertion = QList<QByteArray>{"", startMark, "\x03", "\x01>"}.at(random.bounded(4));
    if (isSo())
        faults.pulledOutAfter = 1 + random.bounded(1500);

    FaultBench bench(setup);
    walkInto(bench, faults);
    pullOutAndWalkAgain(bench);
}

void TestNoisyLine::aPromptThatNeverComes()
{
    TolvarSetup setup = tersestTolvar();
    setup.faults.neverPrompts = true;
    FaultBench bench(setup);
    walkInto(bench, {});
    // Both of the wizard's controllers wake it, and wake it again.
    const auto wakeUps = [&] { return bench.tolvar.state().lineTexts().count("C"); };
    QVERIFY(bench.waitFor([&] { return wakeUps() >= 4; }));
    // The status is asked for at the prompt, and not before.
    QVERIFY(!bench.tolvar.state().lineTexts().contains("get"));
    bench.walk.stop();
    bench.tolvar.unplug();
    QVERIFY(bench.waitFor([&] { return bench.isForgotten(); }));
    QCOMPARE(bench.wrongAfterUnplug(), QString());
    bench.tolvar.alter([](TolvarSetup &device) { device.faults.neverPrompts = false; });
    QCOMPARE(bench.walkAgain(), QString());
}

void TestNoisyLine::theFirstOfTwoDevicesIsUsed()
{
    FaultBench bench;
    PluggedTolvar second(bench.bed, tersestTolvar());
    walkInto(bench, {});
    QVERIFY(bench.waitFor([&] { return bench.tolvar.state().awake; }));
    QVERIFY(second.plug());
    QVERIFY2(bench.waitFor([&] { return bench.walk.isDone(); }), qPrintable(FaultBench::lastMessages()));
    QVERIFY(bench.waitFor([&] { return bench.tolvar.state().exited; }));
    QCOMPARE(second.state().bytes.size(), 0);
}

QTEST_MAIN(TestNoisyLine)
#include "tst_noisyline.moc"
