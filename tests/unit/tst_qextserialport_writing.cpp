#include <thread>

#include <QElapsedTimer>
#include <QSerialPort>
#include <QSignalSpy>
#include <QTest>

#include "serial/linewriter.h"
#include "tests/support/openedport.h"

/// Tests the bytes written to the device.
class TestQextSerialPortWriting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aWriteHasReachedTheDeviceWhenItReturns();
    void everyByteOfALargeWriteArrives_data() { writers(); }
    void everyByteOfALargeWriteArrives();
    void aDeviceThatIsGoneTakesNothing_data() { writers(); }
    void aDeviceThatIsGoneTakesNothing();
    void aDeviceThatTakesNothingDoesNotHoldTheWriter_data() { writers(); }
    void aDeviceThatTakesNothingDoesNotHoldTheWriter();
    void aStuckDeviceIsWaitedForOnce();
    void aWriteTellsNobodyOfReceivedBytes();

private:
    static void writers();
};

void TestQextSerialPortWriting::aWriteHasReachedTheDeviceWhenItReturns()
{
    Pty terminal;
    const PortPointer port = openedPort(terminal);
    const QByteArray command = "get\r\n";
    for (const char c : command) {
        QCOMPARE(port->write(&c, 1), 1);
        QCOMPARE(terminal.received(), QByteArray(1, c));
    }
    QCOMPARE(port->write(QByteArray("\0\x02\xff\n", 4)), 4);
    QCOMPARE(terminal.received(), QByteArray("\0\x02\xff\n", 4));
    QCOMPARE(port->bytesToWrite(), 0);
}

using Writer = qint64 (*)(QSerialPort &, const char *, qint64, int);
constexpr int writeTimeoutMs = 500;

void TestQextSerialPortWriting::writers()
{
    QTest::addColumn<Writer>("writer");
    QTest::newRow("by the system's own means") << &writeThrough;
    QTest::newRow("by Qt's port alone") << &writeByPort;
}

void TestQextSerialPortWriting::everyByteOfALargeWriteArrives()
{
    QFETCH(Writer, writer);
    Pty terminal;
    QSerialPort port(terminal.portName());
    QVERIFY(port.open(QIODevice::ReadWrite));

    QByteArray sent;
    for (int number = 0; number < 50000; ++number)
        sent += QByteArray::number(number) + ' ';
    QByteArray arrived;
    std::thread device([&] {
        QElapsedTimer patience;
        patience.start();
        while (arrived.size() < sent.size() && !patience.hasExpired(20000)) {
            arrived += terminal.received();
            std::this_thread::sleep_for(std::chrono::milliseconds(1)); // much slower than the writer
        }
    });
    // The writer stops when a busy computer keeps the device waiting too long, and continues where it
    // stopped.
    qint64 written = 0;
    int calls = 0;
    while (written < sent.size() && calls < 3) {
        written += writer(port, sent.constData() + written, sent.size() - written, writeTimeoutMs);
        ++calls;
    }
    device.join();
    QCOMPARE(written, sent.size());
    QVERIFY(arrived == sent);
}

void TestQextSerialPortWriting::aDeviceThatIsGoneTakesNothing()
{
    QFETCH(Writer, writer);
    Pty terminal;
    QSerialPort port(terminal.portName());
    QVERIFY(port.open(QIODevice::ReadWrite));
    terminal.hangUp();
    QCOMPARE(writer(port, "x", 1, writeTimeoutMs), -1);
    port.close();
    QCOMPARE(writer(port, "x", 1, writeTimeoutMs), -1);
}

void TestQextSerialPortWriting::aDeviceThatTakesNothingDoesNotHoldTheWriter()
{
    QFETCH(Writer, writer);
    Pty terminal;
    QSerialPort port(terminal.portName());
    QVERIFY(port.open(QIODevice::ReadWrite));

    const QByteArray tooMuch(1 << 17, 'x');
    QElapsedTimer time;
    time.start();
    qint64 counted = writer(port, tooMuch.constData(), tooMuch.size(), writeTimeoutMs);
    counted += writer(port, "y", 1, writeTimeoutMs);
    QVERIFY(time.elapsed() < 20000);
    QVERIFY(counted > 0);
    if (writer == &writeThrough)
        QVERIFY(counted < tooMuch.size()); // the port buffers nothing

    // The bytes that write() counted arrive, no others do, and the line still works.
    QByteArray arrived;
    QTRY_COMPARE((arrived += terminal.received()).size(), counted);
    QCOMPARE(writer(port, "z", 1, writeTimeoutMs), 1);
    QTRY_COMPARE((arrived += terminal.received()).size(), counted + 1);
    QVERIFY(arrived.endsWith('z'));
}

void TestQextSerialPortWriting::aStuckDeviceIsWaitedForOnce()
{
    Pty terminal;
    const PortPointer port = openedPort(terminal);
    QVERIFY(port->write(QByteArray(1 << 17, 'x')) < 1 << 17);
    QElapsedTimer time;
    time.start();
    for (int i = 0; i < 20; ++i)
        port->write("y", 1);
    QVERIFY2(time.elapsed() < 10000, qPrintable(QString::number(time.elapsed())));

    // As soon as the device accepts bytes again, writing works.
    QByteArray arrived;
    QTRY_VERIFY((arrived += terminal.received()).endsWith('y') || port->write("y", 1) == 1);
    QTRY_VERIFY((arrived += terminal.received()).endsWith('y'));
}

void TestQextSerialPortWriting::aWriteTellsNobodyOfReceivedBytes()
{
    Pty terminal;
    const PortPointer port = openedPort(terminal);
    QSignalSpy told(port.get(), &QIODevice::readyRead);
    terminal.send(">");
    port->write("get\r\n");
    QCOMPARE(told.count(), 0);
    QVERIFY(told.wait());
}

QTEST_GUILESS_MAIN(TestQextSerialPortWriting)
#include "tst_qextserialport_writing.moc"
