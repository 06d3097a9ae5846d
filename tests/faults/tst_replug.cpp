#include <QTest>

#include "device/zvtolvar.h"
#include "pages/pageid.h"
#include "tests/faults/faultbench.h"
#include "tests/support/udevcalls.h"

/// The device is pulled out and plugged in again so quickly that its port has the same name and is never
/// missed, with udev and where the list of ports is compared once a second.
class TestReplug : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { UdevCalls::fail(UdevCalls::None); }

    void aScanIsNotWaitedForEndlessly_data() { watchers(); }
    void aScanIsNotWaitedForEndlessly();
    void aStatusIsNotWaitedForEndlessly_data() { watchers(); }
    void aStatusIsNotWaitedForEndlessly();

private:
    static void watchers();
};

void TestReplug::watchers()
{
    QTest::addColumn<int>("failure");
    QTest::newRow("udev") << int(UdevCalls::None);
    QTest::newRow("once a second") << int(UdevCalls::NoReceiving);
}

void TestReplug::aScanIsNotWaitedForEndlessly()
{
    QFETCH(int, failure);
    UdevCalls::fail(static_cast<UdevCalls::Failure>(failure));
    TolvarSetup setup = tersestTolvar();
    setup.delays.scan = 3600000; // it is pulled out long before
    FaultBench bench(setup);
    QVERIFY(bench.tolvar.plug());
    bench.walk.start();
    QVERIFY2(bench.waitFor([&] { return bench.tolvar.state().lineTexts().contains("scan"); }),
             qPrintable(FaultBench::lastMessages()));
    bench.walk.stop();
    QVERIFY(bench.wizard._tolvar->scanning());

    bool isForgotten = false; // for a moment: what has come is reported right behind what has gone
    QObject::connect(bench.wizard._tolvar, &ZVTolvar::systemIDChanged, &bench.wizard,
                     [&isForgotten](const QString &id) { isForgotten = isForgotten || id.isEmpty(); });
    bench.tolvar.alter([](TolvarSetup &device) { device.delays.scan = 0; });
    const QByteArray name = bench.tolvar.ttyName();
    bench.tolvar.unplug();
    QVERIFY(bench.tolvar.plug(name));
    QVERIFY2(bench.waitFor([&] { return isForgotten; }), qPrintable(FaultBench::lastMessages()));
    QVERIFY(!bench.wizard._tolvar->scanning());
    QVERIFY2(bench.waitFor([&] { return !bench.wizard._tolvar->systemID().isEmpty(); }),
             qPrintable(FaultBench::lastMessages()));

    while (bench.wizard.currentId() != ConnectPageId)
        bench.wizard.back();
    bench.walk.start();
    QVERIFY2(bench.waitFor([&] { return bench.walk.isDone(); }), qPrintable(FaultBench::lastMessages()));
    QVERIFY(bench.waitFor([&] { return bench.tolvar.state().exited; }));
    QCOMPARE(bench.tolvar.state().saved.network, QByteArray("B"));
}

void TestReplug::aStatusIsNotWaitedForEndlessly()
{
    QFETCH(int, failure);
    UdevCalls::fail(static_cast<UdevCalls::Failure>(failure));
    TolvarSetup setup = tersestTolvar();
    setup.faults.neverPrompts = true;
    FaultBench bench(setup);
    QVERIFY(bench.tolvar.plug());
    QVERIFY2(bench.waitFor([&] { return bench.tolvar.state().awake; }),
             qPrintable(FaultBench::lastMessages()));

    bench.tolvar.alter([](TolvarSetup &device) { device.faults.neverPrompts = false; });
    const QByteArray name = bench.tolvar.ttyName();
    bench.tolvar.unplug();
    QVERIFY(bench.tolvar.plug(name));
    bench.walk.start();
    QVERIFY2(bench.waitFor([&] { return bench.walk.isDone(); }), qPrintable(FaultBench::lastMessages()));
    QVERIFY(bench.waitFor([&] { return bench.tolvar.state().exited; }));
}

QTEST_MAIN(TestReplug)
#include "tst_replug.moc"
