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
    void init();
    void cleanup() { _tolvar.reset(); }

    void theDeviceIsPulledOutAfterTheGivenBytes_data();
    void theDeviceIsPulledOutAfterTheGivenBytes();
    void theDeviceIsPulledOutOnlyOnce();
    void aReplugMayHaveTheSameName();
    void bytesAreInsertedAtTheGivenPosition_data();
    void bytesAreInsertedAtTheGivenPosition();
    void bytesAreReadOneByOne();
    void bytesAreReadAtOnce();

private:
    FakeUsbBus _bus;
    std::unique_ptr<PluggedTolvar> _tolvar;
    LineFaults _faults;
};

void TestSimulatorLineFaults::init()
{
    DeviceConfig config;
    config.delays.prompt = 1;
    _tolvar = std::make_unique<PluggedTolvar>(_bus, config);
    QVERIFY(_tolvar->plug());
    _faults = {};
}

void TestSimulatorLineFaults::theDeviceIsPulledOutAfterTheGivenBytes_data()
{
    QTest::addColumn<int>("bytes");
    QTest::addColumn<QByteArray>("reachTheDevice");
    QTest::addColumn<QByteArray>("reachTheComputer");

    QTest::newRow("first byte to the device") << 1 << QByteArray("C") << QByteArray();
    QTest::newRow("last byte to the device") << 3 << QByteArray("C\r\n") << QByteArray();
    QTest::newRow("first byte to the computer") << 4 << QByteArray("C\r\n") << QByteArray("\r");
    QTest::newRow("last byte to the computer") << 6 << QByteArray("C\r\n") << QByteArray("\r\n>");
}

void TestSimulatorLineFaults::theDeviceIsPulledOutAfterTheGivenBytes()
{
    QFETCH(int, bytes);
    const QSignalSpy pulledOut(_tolvar.get(), &PluggedPort::pulledOut);
    _faults.pulledOutAfter = bytes;
    _tolvar->setFaults(_faults);
    const PlainTty line(_tolvar->ttyName());
    QVERIFY(line.write("C\r\n"));

    // The line is down before any notification is delivered, while this thread is busy.
    QTEST(line.readUntil("never"), "reachTheComputer");
    QVERIFY(line.isHungUp());
    QCOMPARE(pulledOut.count(), 0);
    QTRY_COMPARE(pulledOut.count(), 1);
    QVERIFY(!_tolvar->isPlugged());
    QCOMPARE(QSerialPortInfo::availablePorts().size(), 0);
    QCOMPARE(_tolvar->passed(), bytes);
    QByteArray received;
    for (const TolvarByte &byte : _tolvar->state().bytes)
        received += byte.value;
    QTEST(received, "reachTheDevice");
    QVERIFY(!_tolvar->state().awake);
}

void TestSimulatorLineFaults::theDeviceIsPulledOutOnlyOnce()
{
    const QSignalSpy pulledOut(_tolvar.get(), &PluggedPort::pulledOut);
    _faults.pulledOutAfter = 1;
    _tolvar->setFaults(_faults);
    const PlainTty line(_tolvar->ttyName());
    QVERIFY(line.write("C\r\n"));
    QTRY_COMPARE(pulledOut.count(), 1);

    QVERIFY(_tolvar->plug());
    const PlainTty nextLine(_tolvar->ttyName());
    QVERIFY(nextLine.write("C\r\n"));
    QCOMPARE(nextLine.readUntil(">"), QByteArray("\r\n>"));
    QTRY_COMPARE(_tolvar->passed(), 6);
}

void TestSimulatorLineFaults::aReplugMayHaveTheSameName()
{
    const QByteArray name = _tolvar->ttyName();
    for (int time = 1; time <= 3; ++time) {
        const PlainTty line(name);
        QVERIFY(line.write("C\r\n"));
        QCOMPARE(line.readUntil(">"), QByteArray("\r\n>"));
        _tolvar->unplug();
        QVERIFY(line.isHungUp());
        QCOMPARE(QSerialPortInfo::availablePorts().size(), 0);
        QVERIFY(_tolvar->plug(name));
        QCOMPARE(_tolvar->ttyName(), name);
        QCOMPARE(QSerialPortInfo::availablePorts().size(), 1);
    }
}

void TestSimulatorLineFaults::bytesAreInsertedAtTheGivenPosition_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<QByteArray>("expected");

    QTest::newRow("before the first reply") << 0 << QByteArray("??\r\n>save\r\n\r\n>");
    QTest::newRow("inside a reply") << 1 << QByteArray("\r??\n>save\r\n\r\n>");
    QTest::newRow("between two replies") << 3 << QByteArray("\r\n>??save\r\n\r\n>");
}

void TestSimulatorLineFaults::bytesAreInsertedAtTheGivenPosition()
{
    QFETCH(int, place);
    _faults.insertAt = place;
    _faults.insertion = "??";
    _tolvar->setFaults(_faults);
    const PlainTty line(_tolvar->ttyName());
    QVERIFY(line.write("C\r\nsave\r\n"));
    QTEST(line.readUntil("ve\r\n\r\n>"), "expected");
}

void TestSimulatorLineFaults::bytesAreReadOneByOne()
{
    _faults.reads = LineFaults::Single;
    _tolvar->setFaults(_faults);
    const PlainTty line(_tolvar->ttyName());
    QVERIFY(line.write("C\r\nsave\r\n"));
    const QByteArray expected = "\r\n>save\r\n\r\n>";
    for (const char byte : expected)
        QCOMPARE(line.readOnce(), QByteArray(1, byte));
}

void TestSimulatorLineFaults::bytesAreReadAtOnce()
{
    _faults.reads = LineFaults::Merged;
    _tolvar->setFaults(_faults);
    const PlainTty line(_tolvar->ttyName());
    QVERIFY(line.write("C\r\nsave\r\n"));
    QCOMPARE(line.readOnce(), QByteArray("\r\n>save\r\n\r\n>"));
}

QTEST_GUILESS_MAIN(TestSimulatorLineFaults)
#include "tst_simulator_linefaults.moc"
