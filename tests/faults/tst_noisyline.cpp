#include <QTest>

#include "tests/faults/faultbench.h"
#include "tests/faults/faultchoice.h"

/// The whole wizard on a line, or with a device, that is not as it should be.
class TestNoisyLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theRunGoesThrough_data();
    void theRunGoesThrough();
    void afterBytesFromNowhere_data();
    void afterBytesFromNowhere();
    void aPromptThatNeverComes();
    void theFirstOfTwoDevicesIsUsed();
};

namespace
{
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

    // No control character is allowed in a document: with one ahead, none of this can make a root of another
    // name.
    const QList<QPair<const char *, QByteArray>> intruders = {{"a start mark", "\x02"},
                                                              {"an end mark", "\x03"},
                                                              {"a prompt", "\x01>"},
                                                              {"garbage", "\x01\xFF<&]]>\r\n>"}};
    constexpr qsizetype talkLength = 800; // from the first prompt to the test's reply and a little more
    const QList<qsizetype> numbers = faultChoice(talkLength * intruders.size(), 3);
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
    // It may come to an end, or a reply is lost and the wizard waits: then the user pulls the plug.
    bench.waitUntilQuiet();
    if (bench.walk.isDone())
        return;
    bench.walk.stop();
    bench.tolvar.unplug();
    QVERIFY(bench.waitFor([&] { return bench.isForgotten(); }));
    QCOMPARE(bench.wrongAfterUnplug(), QStringList());
    QCOMPARE(bench.walkAgain(), QString());
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
    QCOMPARE(bench.wrongAfterUnplug(), QStringList());
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

Q_DECLARE_METATYPE(TolvarDelays)
Q_DECLARE_METATYPE(TolvarFaults)
QTEST_MAIN(TestNoisyLine)
#include "tst_noisyline.moc"
