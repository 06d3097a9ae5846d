#include "simulator/linefaults.h"

#include <QSerialPortInfo>
#include <QSignalSpy>
#include <QTest>

#include "simulator/fakeusbbus.h"
#include "simulator/pluggedport.h"
#include "tests/support/plaintty.h"

/// Tests the faults that can be injected into the line between the simulated device and a program.
class TestSimulatorLineFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pulledOutAfterSoManyBytes_data();
    void pulledOutAfterSoManyBytes();
    void pulledOutOnce();
    void aReplugMayHaveTheSameName();
    void bytesComeInBetween_data();
    void bytesComeInBetween();
    void bytesAreReadOneByOne();
    void bytesAreReadAtOnce();
};

void TestSimulatorLineFaults::pulledOutAfterSoManyBytes_data()
{
    QTest::addColumn<int>("bytes");
    QTest::addColumn<QByteArray>("reachTheDevice");
    QTest::addColumn<QByteArray>("reachTheComputer");

    QTest::newRow("the first one to the device") << 1 << QByteArray("C") << QByteArray();
    QTest::newRow("the last one to the device") << 3 << QByteArray("C\r\n") << QByteArray();
    QTest::newRow("the first one to the computer") << 4 << QByteArray("C\r\n") << QByteArray("\r");
    QTest::newRow("the last one to the computer") << 6 << QByteArray("C\r\n") << QByteArray("\r\n>");
}

void TestSimulatorLineFaults::pulledOutAfterSoManyBytes()
{
    QFETCH(int, bytes);
    FakeUsbBus bed;
    PluggedTolvar tolvar(bed);
    const QSignalSpy pulledOut(&tolvar, &PluggedPort::pulledOut);
    LineFaults faults;
    faults.pulledOutAfter = bytes;
    tolvar.setFaults(faults);
    QVERIFY(tolvar.plug());
    const PlainTty line(tolvar.ttyName());
    QVERIFY(line.write("C\r\n"));

    // The line is down before any notification is delivered, while this thread is busy.
    QTEST(line.readUntil("never"), "reachTheComputer");
    QVERIFY(line.isHungUp());
    QCOMPARE(pulledOut.count(), 0);
    QTRY_COMPARE(pulledOut.count(), 1);
    QVERIFY(!tolvar.isPlugged());
    QCOMPARE(QSerialPortInfo::availablePorts().size(), 0);
    QCOMPARE(tolvar.passed(), bytes);
    QByteArray received;
    for (const TolvarByte &byte : tolvar.state().bytes)
        received += byte.value;
    QTEST(received, "reachTheDevice");
    QVERIFY(!tolvar.state().awake);
}

void TestSimulatorLineFaults::pulledOutOnce()
{
    FakeUsbBus bed;
    PluggedTolvar tolvar(bed);
    const QSignalSpy pulledOut(&tolvar, &PluggedPort::pulledOut);
    LineFaults faults;
    faults.pulledOutAfter = 1;
    tolvar.setFaults(faults);
    QVERIFY(tolvar.plug());
    const PlainTty line(tolvar.ttyName());
    QVERIFY(line.write("C\r\n"));
    QTRY_COMPARE(pulledOut.count(), 1);

    QVERIFY(tolvar.plug());
    const PlainTty nextLine(tolvar.ttyName());
    QVERIFY(nextLine.write("C\r\n"));
    QCOMPARE(nextLine.readUntil(">"), QByteArray("\r\n>"));
    QTRY_COMPARE(tolvar.passed(), 6);
}

void TestSimulatorLineFaults::aReplugMayHaveTheSameName()
{
    FakeUsbBus bed;
    PluggedTolvar tolvar(bed);
    QVERIFY(tolvar.plug());
    const QByteArray name = tolvar.ttyName();
    for (int time = 1; time <= 3; ++time) {
        const PlainTty line(name);
        QVERIFY(line.write("C\r\n"));
        QCOMPARE(line.readUntil(">"), QByteArray("\r\n>"));
        tolvar.unplug();
        QVERIFY(line.isHungUp());
        QCOMPARE(QSerialPortInfo::availablePorts().size(), 0);
        QVERIFY(tolvar.plug(name));
        QCOMPARE(tolvar.ttyName(), name);
        QCOMPARE(QSerialPortInfo::availablePorts().size(), 1);
    }
}

void TestSimulatorLineFaults::bytesComeInBetween_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<QByteArray>("expected");

    QTest::newRow("before the first") << 0 << QByteArray("??\r\n>save\r\n\r\n>");
    QTest::newRow("inside an answer") << 1 << QByteArray("\r??\n>save\r\n\r\n>");
    QTest::newRow("between two answers") << 3 << QByteArray("\r\n>??save\r\n\r\n>");
    QTest::newRow("inside a later one") << 5 << QByteArray("\r\n>sa??ve\r\n\r\n>");
}

void TestSimulatorLineFaults::bytesComeInBetween()
{
    QFETCH(int, place);
    FakeUsbBus bed;
    PluggedTolvar tolvar(bed);
    LineFaults faults;
    faults.insertAt = place;
    faults.insertion = "??";
    tolvar.setFaults(faults);
    QVERIFY(tolvar.plug());
    const PlainTty line(tolvar.ttyName());
    QVERIFY(line.write("C\r\nsave\r\n"));
    QTEST(line.readUntil("ve\r\n\r\n>"), "expected");
}

void TestSimulatorLineFaults::bytesAreReadOneByOne()
{
    FakeUsbBus bed;
    PluggedTolvar tolvar(bed);
    LineFaults faults;
    faults.reads = LineFaults::Single;
    tolvar.setFaults(faults);
    QVERIFY(tolvar.plug());
    const PlainTty line(tolvar.ttyName());
    QVERIFY(line.write("C\r\nsave\r\n"));
    const QByteArray expected = "\r\n>save\r\n\r\n>";
    for (const char byte : expected)
        QCOMPARE(line.readOnce(), QByteArray(1, byte));
}

void TestSimulatorLineFaults::bytesAreReadAtOnce()
{
    FakeUsbBus bed;
    DeviceConfig setup;
    setup.delays.prompt = 1;
    PluggedTolvar tolvar(bed, setup);
    LineFaults faults;
    faults.reads = LineFaults::Merged;
    tolvar.setFaults(faults);
    QVERIFY(tolvar.plug());
    const PlainTty line(tolvar.ttyName());
    QVERIFY(line.write("C\r\nsave\r\n"));
    QCOMPARE(line.readOnce(), QByteArray("\r\n>save\r\n\r\n>"));
}

QTEST_GUILESS_MAIN(TestSimulatorLineFaults)
#include "tst_simulator_linefaults.moc"
