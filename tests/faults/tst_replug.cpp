#include <QTest>

#include "device/zvtolvar.h"
#include "pages/pageid.h"
#include "tests/faults/faultfixture.h"
#include "tests/support/udevfaultinjector.h"

/// Tests a device that is unplugged and replugged so quickly that its port has the same name and is never
/// seen missing, with udev and where the list of ports is compared once a second.
class TestReplug : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { UdevFaultInjector::fail(UdevFaultInjector::None); }

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
    QTest::newRow("udev") << int(UdevFaultInjector::None);
    QTest::newRow("once a second") << int(UdevFaultInjector::NoReceiving);
}

void TestReplug::aScanIsNotWaitedForEndlessly()
{
    QFETCH(int, failure);
    UdevFaultInjector::fail(static_cast<UdevFaultInjector::Failure>(failure));
    DeviceConfig setup = tersestTolvar();
    setup.delays.scan = 3600000; // the device is unplugged long before
    bool isForgotten = false;    // only for a moment: the arrival is reported right after the removal
    FaultFixture fixture(setup);
    QVERIFY(fixture.tolvar.plug());
    fixture.walk.start();
    QVERIFY2(fixture.waitFor([&] { return fixture.tolvar.state().lineTexts().contains("scan"); }),
             qPrintable(FaultFixture::lastMessages()));
    fixture.walk.stop();
    QVERIFY(fixture.wizard._tolvar->scanning());

    QObject::connect(fixture.wizard._tolvar, &ZVTolvar::systemIDChanged, &fixture.wizard,
                     [&isForgotten](const QString &id) { isForgotten = isForgotten || id.isEmpty(); });
    fixture.tolvar.reconfigure([](DeviceConfig &device) { device.delays.scan = 0; });
    const QByteArray name = fixture.tolvar.ttyName();
    fixture.tolvar.unplug();
    QVERIFY(fixture.tolvar.plug(name));
    QVERIFY2(fixture.waitFor([&] { return isForgotten; }), qPrintable(FaultFixture::lastMessages()));
    QVERIFY(!fixture.wizard._tolvar->scanning());
    QVERIFY2(fixture.waitFor([&] { return !fixture.wizard._tolvar->systemID().isEmpty(); }),
             qPrintable(FaultFixture::lastMessages()));

    while (fixture.wizard.currentId() != ConnectPageId)
        fixture.wizard.back();
    fixture.walk.start();
    QVERIFY2(fixture.waitFor([&] { return fixture.walk.isDone(); }),
             qPrintable(FaultFixture::lastMessages()));
    QVERIFY(fixture.waitFor([&] { return fixture.tolvar.state().exited; }));
    QCOMPARE(fixture.tolvar.state().saved.network, QByteArray("B"));
}

void TestReplug::aStatusIsNotWaitedForEndlessly()
{
    QFETCH(int, failure);
    UdevFaultInjector::fail(static_cast<UdevFaultInjector::Failure>(failure));
    DeviceConfig setup = tersestTolvar();
    setup.faults.neverPrompts = true;
    FaultFixture fixture(setup);
    QVERIFY(fixture.tolvar.plug());
    QVERIFY2(fixture.waitFor([&] { return fixture.tolvar.state().awake; }),
             qPrintable(FaultFixture::lastMessages()));

    fixture.tolvar.reconfigure([](DeviceConfig &device) { device.faults.neverPrompts = false; });
    const QByteArray name = fixture.tolvar.ttyName();
    fixture.tolvar.unplug();
    QVERIFY(fixture.tolvar.plug(name));
    fixture.walk.start();
    QVERIFY2(fixture.waitFor([&] { return fixture.walk.isDone(); }),
             qPrintable(FaultFixture::lastMessages()));
    QVERIFY(fixture.waitFor([&] { return fixture.tolvar.state().exited; }));
}

QTEST_MAIN(TestReplug)
#include "tst_replug.moc"
