#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

#include "simulator/fakeusbbus.h"
#include "simulator/pluggedport.h"
#include "tests/support/plaintty.h"

/// Tests the fake bus and its ports, where the tests that use them would not show the cause of a failure.
class TestFakeUsbBus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noTtyNameIsUsedTwice();
    void waitForReturnsOnTheConditionOrTheTimeout();
    void aForeignPortRecordsWhatItReceivesAndSendsNothing();
};

void TestFakeUsbBus::noTtyNameIsUsedTwice()
{
    const QByteArray last = FakeUsbBus().plug(UsbBridge::ftdi());
    const QByteArray next = FakeUsbBus().plug(UsbBridge::ftdi()); // continues the numbering of the last bus
    QCOMPARE(next.mid(6).toInt(), last.mid(6).toInt() + 1);
    FakeUsbBus bus(42);
    QCOMPARE(bus.plug(UsbBridge::ftdi()), QByteArray("ttyUSB42"));
    bus.unplug("ttyUSB42");
    QCOMPARE(bus.plug(UsbBridge::ftdi()), QByteArray("ttyUSB43"));
}

void TestFakeUsbBus::waitForReturnsOnTheConditionOrTheTimeout()
{
    FakeUsbBus bus;
    PluggedTolvar tolvar(bus);
    QVERIFY(tolvar.plug());
    const auto isAwake = [](const TolvarState &state) { return state.awake; };
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!tolvar.waitFor(isAwake, 60));
    QVERIFY(clock.elapsed() >= 60);

    // This thread's events are processed meanwhile: one of them wakes the device.
    const PlainTty line(tolvar.ttyName());
    QTimer::singleShot(20, &tolvar, [&line] { line.write("C\r\n"); });
    QVERIFY(tolvar.waitFor(isAwake));
    QVERIFY(tolvar.waitFor(isAwake, 0));
}

void TestFakeUsbBus::aForeignPortRecordsWhatItReceivesAndSendsNothing()
{
    FakeUsbBus bus;
    ForeignPort first(bus);
    ForeignPort second(bus, UsbBridge::foreignCh340());
    QVERIFY(first.plug() && second.plug());
    const PlainTty line(second.ttyName());
    QVERIFY(line.write("C\r\nget\r\n"));
    QVERIFY(second.waitUntil([&second] { return second.received() == "C\r\nget\r\n"; }));
    QCOMPARE(first.received(), QByteArray());
    second.unplug();
    QCOMPARE(line.readOnce(), QByteArray());
}

QTEST_GUILESS_MAIN(TestFakeUsbBus)
#include "tst_fakeusbbus.moc"
