#include <QAbstractEventDispatcher>
#include <QTest>
#include <QTimer>

#include <ctime>

#include "device/zvtolvar.h"
#include "tests/faults/faultfixture.h"
#include "tests/support/descriptors.h"

/// Tests that repeated plugging and unplugging leaves no resources behind, and that an idle program uses no
/// CPU time.
class TestPlugCycles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theWizardLeavesNoDescriptor();
    void anIdleWizardIsNotBusy_data();
    void anIdleWizardIsNotBusy();
};

void TestPlugCycles::theWizardLeavesNoDescriptor()
{
    FaultFixture fixture;
    const auto plugAndUnplug = [&fixture] {
        return fixture.tolvar.plug() &&
               fixture.waitFor([&] { return !fixture.wizard._tolvar->systemID().isEmpty(); }) &&
               fixture.unplug().isEmpty();
    };
    QVERIFY(plugAndUnplug());
    const QStringList before = openDescriptors();
    for (int cycle = 0; cycle < 5; ++cycle)
        QVERIFY(plugAndUnplug());
    QCOMPARE(openDescriptors(), before);
}

void TestPlugCycles::anIdleWizardIsNotBusy_data()
{
    QTest::addColumn<QString>("what");
    for (const char *what :
         {"no device", "a device that is silent", "a device that is gone", "a device at rest"})
        QTest::newRow(what) << QString::fromLatin1(what);
}

void TestPlugCycles::anIdleWizardIsNotBusy()
{
    QFETCH(QString, what);
    DeviceConfig config = tersestTolvar();
    config.faults.neverPrompts = what.contains(QLatin1String("silent"));
    FaultFixture fixture(config);
    if (what != QLatin1String("no device")) {
        QVERIFY(fixture.tolvar.plug());
        QVERIFY(fixture.waitFor([&] {
            return config.faults.neverPrompts
                       ? fixture.tolvar.state().awake
                       : !fixture.wizard._tolvar->systemID().isEmpty() && !fixture.isBusy();
        }));
    }
    if (what.contains(QLatin1String("gone")))
        QCOMPARE(fixture.unplug(), QString());

    // A busy loop makes thousands of iterations per second, even on a busy computer. The progress bar
    // needs 60.
    int iterations = 0;
    QObject here;
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &here,
            [&iterations] { ++iterations; });
    const std::clock_t cpuBefore = std::clock();
    QEventLoop second;
    QTimer::singleShot(1000, Qt::PreciseTimer, &second, &QEventLoop::quit);
    second.exec();
    const auto cpu = static_cast<double>(std::clock() - cpuBefore) / CLOCKS_PER_SEC;
    QVERIFY2(iterations < 300,
             qPrintable(QStringLiteral("%1 event loop iterations in a second").arg(iterations)));
    // Under a sanitizer, painting the bar takes longer.
    QVERIFY2(cpu < 0.5, qPrintable(QStringLiteral("%1 s of CPU time in a second").arg(cpu)));
}

QTEST_MAIN(TestPlugCycles)
#include "tst_plugcycles.moc"
