#include <QTest>

#include "device/zvtolvar.h"
#include "tests/faults/faultfixture.h"
#include "tests/support/udevfaultinjector.h"

/// Tests a device that is unplugged and replugged so quickly that its port has the same name and is never
/// seen missing, with udev and where the list of ports is compared once a second.
class TestReplug : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { UdevFaultInjector::fail(UdevFaultInjector::None); }

    void aReplyOfTheFormerDeviceIsNotAwaited_data();
    void aReplyOfTheFormerDeviceIsNotAwaited();
};

void TestReplug::aReplyOfTheFormerDeviceIsNotAwaited_data()
{
    QTest::addColumn<UdevFaultInjector::Failure>("failure");
    QTest::addColumn<bool>("isScan");
    QTest::newRow("during a scan, udev") << UdevFaultInjector::None << true;
    QTest::newRow("during a scan, polling") << UdevFaultInjector::NoReceiving << true;
    QTest::newRow("during a status request, udev") << UdevFaultInjector::None << false;
    QTest::newRow("during a status request, polling") << UdevFaultInjector::NoReceiving << false;
}

void TestReplug::aReplyOfTheFormerDeviceIsNotAwaited()
{
    QFETCH(UdevFaultInjector::Failure, failure);
    QFETCH(bool, isScan);
    UdevFaultInjector::fail(failure);
    DeviceConfig config = tersestTolvar();
    config.faults.neverPrompts = !isScan;
    config.delays.scan = 3600000; // the device is unplugged long before
    bool isCleared = !isScan;     // recorded at the signal: the id is empty only until the next status
    FaultFixture fixture(config);
    QVERIFY(fixture.tolvar.plug());
    fixture.robot.start(fixture.userInput);
    QVERIFY(fixture.waitFor([&] {
        return isScan ? fixture.tolvar.state().lineTexts().contains("scan") : fixture.tolvar.state().awake;
    }));
    fixture.robot.stop();
    QCOMPARE(fixture.wizard._tolvar->scanning(), isScan);

    QObject::connect(fixture.wizard._tolvar, &ZVTolvar::systemIDChanged, &fixture.wizard,
                     [&isCleared](const QString &id) { isCleared = isCleared || id.isEmpty(); });
    fixture.tolvar.reconfigure([](DeviceConfig &device) { device = tersestTolvar(); });
    const QByteArray name = fixture.tolvar.ttyName();
    fixture.tolvar.unplug();
    QVERIFY(fixture.tolvar.plug(name));
    QVERIFY(fixture.waitFor([&] { return isCleared; }));
    QVERIFY(!fixture.wizard._tolvar->scanning());
    while (fixture.wizard.currentId() != 0)
        fixture.wizard.back();
    QCOMPARE(fixture.walk(), QString());
}

QTEST_MAIN(TestReplug)
#include "tst_replug.moc"
