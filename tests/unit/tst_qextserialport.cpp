#include <functional>
#include <thread>
#include <vector>

#include <QElapsedTimer>
#include <QEventLoop>
#include <QSerialPort>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <sys/ioctl.h>

#include "serial/linewriter.h"
#include "tests/support/libcinterposer.h"
#include "tests/support/messagespy.h"
#include "tests/support/openedport.h"

/// Tests received and written bytes, line settings, and ports that several objects share.
class TestQextSerialPort : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void receivedBytesAreNotifiedAndRead();
    void linesAreReadOneByOne();
    void everyObjectGetsEveryByteBeforeTheFirstIsNotified();
    void aPortHasOneLineUnderBothItsNames();
    void aSlotMayCloseAndDestroyObjects_data();
    void aSlotMayCloseAndDestroyObjects();
    void aSlotMayRunAnEventLoop();
    void theLastUserClosesTheLine();
    void anOpenPortIsNotOpenedAgain();
    void unreadBytesAreLostWhenThePortIsClosed();
    void anObjectThatIsNotReadKeepsOneMebibyte();
    void aPortIsDestroyedWithItsParent();

    void settingsTakeEffect_data();
    void settingsTakeEffect();
    void openAppliesTheSettingsInAFixedOrder();
    void aSettingLeavesTheOthersAlone();

    void aWriteHasReachedTheDeviceWhenItReturns();
    void everyByteOfALargeWriteArrives_data() { writers(); }
    void everyByteOfALargeWriteArrives();
    void aWriteToARemovedDeviceFails_data() { writers(); }
    void aWriteToARemovedDeviceFails();
    void aWriteToAStuckDeviceReturns_data() { writers(); }
    void aWriteToAStuckDeviceReturns();
    void onlyTheFirstWriteWaitsForAStuckDevice();
    void aWriteDoesNotEmitReadyRead();

private:
    static void writers();
};

namespace
{
std::vector<PortPointer> threePorts(const Pty &terminal)
{
    std::vector<PortPointer> ports(3);
    for (PortPointer &port : ports)
        port = openedPort(terminal);
    return ports;
}
} // namespace

void TestQextSerialPort::receivedBytesAreNotifiedAndRead()
{
    const QByteArray reply("\x02<a>\xe4\xff\r\n</a>\x03\x11\x13\r\n>\0", 19);
    Pty terminal;
    QextSerialPort port(terminal.portName());
    QVERIFY(port.open(QIODevice::ReadWrite));
    QVERIFY(port.isSequential());
    terminal.send(reply);
    QSignalSpy notified(&port, &QIODevice::readyRead);
    QCOMPARE(port.bytesAvailable(), 0); // the event loop has not run
    char byte;
    QCOMPARE(port.read(&byte, 1), 0); // no data yet, and not the end
    QTRY_COMPARE(port.bytesAvailable(), reply.size());
    QTRY_COMPARE(notified.count(), 1);
    QCOMPARE(port.read(3), reply.left(3));
    QCOMPARE(port.peek(2), reply.mid(3, 2));
    QCOMPARE(port.bytesAvailable(), reply.size() - 3);
    QCOMPARE(port.read(100), reply.mid(3));
    QCOMPARE(port.bytesAvailable(), 0);
    QCOMPARE(port.read(&byte, 1), 0);
}

void TestQextSerialPort::linesAreReadOneByOne()
{
    Pty terminal;
    const PortPointer port = openedPort(terminal);
    QVERIFY(!port->canReadLine());
    terminal.send("one\r\ntwo\r\n>");
    QTRY_COMPARE(port->bytesAvailable(), 11);
    QVERIFY(port->canReadLine());
    QCOMPARE(port->readLine(), QByteArray("one\r\n"));
    QCOMPARE(port->peek(100), QByteArray("two\r\n>"));
    QVERIFY2(port->canReadLine(), "the peeked line cannot be read");
    QCOMPARE(port->readLine(), QByteArray("two\r\n"));
    QVERIFY(!port->canReadLine());
    QCOMPARE(port->readAll(), QByteArray(">"));
}

void TestQextSerialPort::everyObjectGetsEveryByteBeforeTheFirstIsNotified()
{
    Pty terminal;
    const std::vector<PortPointer> ports = threePorts(terminal);
    QCOMPARE(terminal.openDescriptors(), 1);

    int notified = 0;
    for (const PortPointer &port : ports) {
        connect(port.get(), &QIODevice::readyRead, this, [&] {
            if (notified++ > 0)
                return;
            for (const PortPointer &each : ports)
                QCOMPARE(each->bytesAvailable(), 3);
        });
    }
    terminal.send("abc");
    QTRY_COMPARE(notified, 3);
    for (const PortPointer &port : ports) {
        QCOMPARE(port->readAll(), QByteArray("abc"));
        port->write("x");
    }
    QCOMPARE(terminal.received(), QByteArray("xxx"));
}

void TestQextSerialPort::aPortHasOneLineUnderBothItsNames()
{
    Pty terminal;
    const PortPointer first = openedPort(terminal); // without "/dev/"
    QextSerialPort second(terminal.name());
    QVERIFY(second.open(QIODevice::ReadWrite));
    QCOMPARE(terminal.openDescriptors(), 1);
}

using Action = void (*)(std::vector<PortPointer> &ports);

void TestQextSerialPort::aSlotMayCloseAndDestroyObjects_data()
{
    // What the slot of the first of three objects does, and which of the three objects survive.
    QTest::addColumn<Action>("action");
    QTest::addColumn<QList<int>>("survivors");
    QTest::newRow("destroys the sender") << Action([](auto &ports) { ports[0].reset(); }) << QList<int>{1, 2};
    QTest::newRow("closes the next") << Action([](auto &ports) { ports[1]->close(); }) << QList<int>{0, 2};
    QTest::newRow("destroys the next") << Action([](auto &ports) { ports[1].reset(); }) << QList<int>{0, 2};
    QTest::newRow("destroys all") << Action([](auto &ports) { ports = std::vector<PortPointer>(3); })
                                  << QList<int>{};
    QTest::newRow("closes the next and opens it again") << Action([](auto &ports) {
        ports[1]->close();
        ports[1]->open(QIODevice::ReadWrite);
    }) << QList<int>{0, 1, 2};
    QTest::newRow("closes all and opens them again") << Action([](auto &ports) {
        for (PortPointer &port : ports)
            port->close();
        for (PortPointer &port : ports)
            port->open(QIODevice::ReadWrite);
    }) << QList<int>{0, 1, 2};
}

void TestQextSerialPort::aSlotMayCloseAndDestroyObjects()
{
    QFETCH(Action, action);
    QFETCH(QList<int>, survivors);
    Pty terminal;
    std::vector<PortPointer> ports = threePorts(terminal);
    int notifiedOfNothing = 0;
    for (const PortPointer &port : ports) {
        connect(port.get(), &QIODevice::readyRead, this, [&notifiedOfNothing, each = port.get()] {
            if (each->bytesAvailable() == 0)
                ++notifiedOfNothing;
        });
    }
    bool done = false;
    connect(ports[0].get(), &QIODevice::readyRead, this, [&] {
        if (!std::exchange(done, true))
            action(ports);
    });
    terminal.send("a");
    QTRY_VERIFY(done);
    QCOMPARE(terminal.openDescriptors(), survivors.isEmpty() ? 0 : 1);
    terminal.send("b");
    for (const int survivor : std::as_const(survivors)) {
        QextSerialPort *port = ports[static_cast<size_t>(survivor)].get();
        QTRY_VERIFY(port->peek(10).endsWith('b'));
        port->readAll();
        QCOMPARE(port->write("c"), 1);
    }
    QCOMPARE(terminal.received(), QByteArray(survivors.size(), 'c'));
    QCOMPARE(notifiedOfNothing, 0);
}

void TestQextSerialPort::aSlotMayRunAnEventLoop()
{
    // A message box that opens on a device's reply does the same.
    Pty terminal;
    const PortPointer port = openedPort(terminal);
    int exitCode = -1;
    connect(port.get(), &QIODevice::readyRead, this, [&] {
        if (port->readAll() != "open the box")
            return;
        QEventLoop box;
        QTimer::singleShot(10000, &box, [&box] { box.exit(1); });
        connect(port.get(), &QIODevice::readyRead, &box, [&] { box.exit(0); });
        terminal.send("close the box");
        exitCode = box.exec();
    });
    terminal.send("open the box");
    QTRY_COMPARE(exitCode, 0);
}

void TestQextSerialPort::theLastUserClosesTheLine()
{
    Pty terminal;
    PortPointer first = openedPort(terminal);
    PortPointer second = openedPort(terminal);
    QSignalSpy notified(second.get(), &QIODevice::readyRead);
    first->close();
    first->close(); // this has no effect
    QVERIFY(!first->isOpen());
    QCOMPARE(terminal.openDescriptors(), 1);
    terminal.send("a");
    QVERIFY(notified.wait());
    QCOMPARE(first->bytesAvailable(), 0);
    second.reset();
    QCOMPARE(terminal.openDescriptors(), 0);

    first->setBaudRate(BAUD19200); // takes effect at the next open
    QVERIFY(first->open(QIODevice::ReadWrite));
    QCOMPARE(terminal.openDescriptors(), 1);
    const termios settings = terminal.settings();
    QCOMPARE(cfgetospeed(&settings), speed_t(B19200));
}

void TestQextSerialPort::anOpenPortIsNotOpenedAgain()
{
    Pty terminal;
    const PortPointer port = openedPort(terminal);
    QVERIFY(!port->open(QIODevice::ReadWrite));
    terminal.send("a");
    QTRY_VERIFY(port->bytesAvailable() > 0);
    QCOMPARE(port->readAll(), QByteArray("a")); // once, not twice
}

void TestQextSerialPort::unreadBytesAreLostWhenThePortIsClosed()
{
    Pty terminal;
    const PortPointer closing = openedPort(terminal);
    const PortPointer staying = openedPort(terminal);
    terminal.send("unread");
    QTRY_COMPARE(closing->bytesAvailable(), 6);
    closing->close();
    QCOMPARE(closing->bytesAvailable(), 0);
    QVERIFY(closing->open(QIODevice::ReadWrite));
    QCOMPARE(closing->bytesAvailable(), 0);
    QCOMPARE(staying->readAll(), QByteArray("unread")); // each object has its own buffer
}

void TestQextSerialPort::anObjectThatIsNotReadKeepsOneMebibyte()
{
    constexpr qsizetype mebibyte = 1048576;
    Pty terminal;
    const PortPointer abandoned = openedPort(terminal);
    const PortPointer used = openedPort(terminal);
    QByteArray sent;
    QByteArray read;
    connect(used.get(), &QIODevice::readyRead, this, [&] { read += used->readAll(); });
    while (sent.size() < mebibyte + 100000) {
        const QByteArray piece = QByteArray::number(sent.size()).repeated(500);
        terminal.send(piece);
        sent += piece;
        QTRY_COMPARE(read.size(), sent.size());
    }
    QVERIFY(read == sent);
    QCOMPARE(abandoned->bytesAvailable(), mebibyte);
    QVERIFY(abandoned->readAll() == sent.left(mebibyte));

    terminal.send("later"); // the port works as before
    QTRY_COMPARE(abandoned->peek(100), QByteArray("later"));
}

void TestQextSerialPort::aPortIsDestroyedWithItsParent()
{
    Pty terminal;
    auto parent = std::make_unique<QObject>();
    auto *port = new QextSerialPort(terminal.portName(), QextSerialPort::EventDriven, parent.get());
    QVERIFY(port->open(QIODevice::ReadWrite));
    parent.reset();
    QCOMPARE(terminal.openDescriptors(), 0);
}

using Setter = std::function<void(QextSerialPort &port)>;
using Field = unsigned (*)(const termios &requested);

void TestQextSerialPort::settingsTakeEffect_data()
{
    QTest::addColumn<Setter>("set");
    QTest::addColumn<Field>("field");
    QTest::addColumn<unsigned>("value");
    QTest::addColumn<QList<int>>("modemLines");

    const Field speed = [](const termios &t) { return unsigned(cfgetospeed(&t)); };
    const Field flow = [](const termios &t) { return (t.c_cflag & CRTSCTS) | (t.c_iflag & (IXON | IXOFF)); };
    const Field parity = [](const termios &t) { return t.c_cflag & (PARENB | PARODD | CMSPAR); };
    const Field dataBits = [](const termios &t) { return t.c_cflag & CSIZE; };
    const Field stopBits = [](const termios &t) { return t.c_cflag & CSTOPB; };
    const auto row = [](const char *name, auto setter, auto setting, Field field, unsigned value) {
        QTest::newRow(name) << Setter([=](QextSerialPort &port) { (port.*setter)(setting); }) << field
                            << value << QList<int>();
    };
    row("9600 baud", &QextSerialPort::setBaudRate, BAUD9600, speed, B9600);
    row("19200 baud", &QextSerialPort::setBaudRate, BAUD19200, speed, B19200);
    row("38400 baud", &QextSerialPort::setBaudRate, BAUD38400, speed, B38400);
    row("57600 baud", &QextSerialPort::setBaudRate, BAUD57600, speed, B57600);
    row("115200 baud", &QextSerialPort::setBaudRate, BAUD115200, speed, B115200);
    row("no flow control", &QextSerialPort::setFlowControl, FLOW_OFF, flow, 0);
    row("hardware flow control", &QextSerialPort::setFlowControl, FLOW_HARDWARE, flow, CRTSCTS);
    row("XON and XOFF", &QextSerialPort::setFlowControl, FLOW_XONXOFF, flow, IXON | IXOFF);
    row("no parity", &QextSerialPort::setParity, PAR_NONE, parity, 0);
    row("odd parity", &QextSerialPort::setParity, PAR_ODD, parity, PARENB | PARODD);
    row("even parity", &QextSerialPort::setParity, PAR_EVEN, parity, PARENB);
    row("mark parity", &QextSerialPort::setParity, PAR_MARK, parity, PARENB | PARODD | CMSPAR);
    row("space parity", &QextSerialPort::setParity, PAR_SPACE, parity, PARENB | CMSPAR);
    row("5 data bits", &QextSerialPort::setDataBits, DATA_5, dataBits, CS5);
    row("6 data bits", &QextSerialPort::setDataBits, DATA_6, dataBits, CS6);
    row("7 data bits", &QextSerialPort::setDataBits, DATA_7, dataBits, CS7);
    row("8 data bits", &QextSerialPort::setDataBits, DATA_8, dataBits, CS8);
    row("1 stop bit", &QextSerialPort::setStopBits, STOP_1, stopBits, 0);
    row("1.5 stop bits, unsupported on Linux", &QextSerialPort::setStopBits, STOP_1_5, stopBits, 0);
    row("2 stop bits", &QextSerialPort::setStopBits, STOP_2, stopBits, CSTOPB);
    const auto modemRow = [](const char *name, auto setter, bool setting, int line) {
        QTest::newRow(name) << Setter([=](QextSerialPort &port) { (port.*setter)(setting); })
                            << Field([](const termios &) { return 0U; }) << 0U << QList<int>{line};
    };
    modemRow("DTR on", &QextSerialPort::setDtr, true, TIOCM_DTR);
    modemRow("DTR off", &QextSerialPort::setDtr, false, -TIOCM_DTR);
    modemRow("RTS on", &QextSerialPort::setRts, true, TIOCM_RTS);
    modemRow("RTS off", &QextSerialPort::setRts, false, -TIOCM_RTS);
}

void TestQextSerialPort::settingsTakeEffect()
{
    QFETCH(Setter, set);
    QFETCH(Field, field);
    QFETCH(unsigned, value);
    QFETCH(QList<int>, modemLines);
    MessageSpy log;
    Pty terminal;
    QextSerialPort first(terminal.portName());
    LibcInterposer::clear();
    set(first);
    QCOMPARE(LibcInterposer::modemLines(), QList<int>{});
    QVERIFY(first.open(QIODevice::ReadWrite)); // applies what was set before
    QCOMPARE(field(LibcInterposer::lastSettings()), value);
    QCOMPARE(LibcInterposer::modemLines(), modemLines);

    Pty another;
    const PortPointer open = openedPort(another);
    LibcInterposer::clear();
    set(*open); // takes effect at once
    QCOMPARE(field(LibcInterposer::lastSettings()), value);
    QCOMPARE(LibcInterposer::modemLines(), modemLines);

    QextSerialPort second(another.portName());
    set(second);
    LibcInterposer::clear();
    QVERIFY(second.open(QIODevice::ReadWrite)); // applies it to the line that is already open
    QCOMPARE(field(LibcInterposer::lastSettings()), value);
    QCOMPARE(LibcInterposer::modemLines(), modemLines);
    QCOMPARE(log.messages(), QStringList());
}

void TestQextSerialPort::openAppliesTheSettingsInAFixedOrder()
{
    Pty terminal;
    QextSerialPort port(terminal.portName());
    port.setRts();
    port.setDtr();
    port.setStopBits(STOP_2);
    port.setDataBits(DATA_7);
    port.setParity(PAR_ODD);
    port.setFlowControl(FLOW_XONXOFF);
    port.setBaudRate(BAUD19200);
    LibcInterposer::clear();
    QVERIFY(port.open(QIODevice::ReadWrite));
    const QStringList order{"baud rate", "flow control", "parity", "data bits", "stop bits", "DTR", "RTS"};
    // The settings that open() makes come first.
    QCOMPARE(LibcInterposer::order().mid(LibcInterposer::order().size() - order.size()), order);
    QCOMPARE(LibcInterposer::modemLines(), QList<int>({TIOCM_DTR, TIOCM_RTS}));
}

void TestQextSerialPort::aSettingLeavesTheOthersAlone()
{
    Pty terminal;
    QextSerialPort first(terminal.portName());
    first.setBaudRate(BAUD9600);
    QVERIFY(first.open(QIODevice::ReadWrite));
    const PortPointer second = openedPort(terminal);
    second->setBaudRate(BAUD57600);
    LibcInterposer::clear();
    first.setStopBits(STOP_2);
    QCOMPARE(LibcInterposer::order(), QStringList{"stop bits"});
}

void TestQextSerialPort::aWriteHasReachedTheDeviceWhenItReturns()
{
    Pty terminal;
    const PortPointer port = openedPort(terminal);
    QCOMPARE(port->write("g"), 1);
    QCOMPARE(terminal.received(), QByteArray("g"));
    QCOMPARE(port->write(QByteArray("\0\x02\xff\n", 4)), 4);
    QCOMPARE(terminal.received(), QByteArray("\0\x02\xff\n", 4));
    QCOMPARE(port->bytesToWrite(), 0);
}

using Writer = qint64 (*)(QSerialPort &, const char *, qint64, int);
static constexpr int writeTimeoutMs = 500;

void TestQextSerialPort::writers()
{
    QTest::addColumn<Writer>("writer");
    QTest::newRow("with system calls") << &writeThrough;
    QTest::newRow("with QIODevice::write()") << &writeByPort;
}

void TestQextSerialPort::everyByteOfALargeWriteArrives()
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
        QElapsedTimer waiting;
        waiting.start();
        while (arrived.size() < sent.size() && !waiting.hasExpired(20000)) {
            arrived += terminal.received();
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
        }
    });
    // The device needs much longer than three timeouts, but each byte that it takes starts the timeout again.
    // The writer stops when a busy computer keeps the device waiting too long, and continues where it
    // stopped.
    qint64 written = 0;
    for (int calls = 0; written < sent.size() && calls < 3; ++calls)
        written += writer(port, sent.constData() + written, sent.size() - written, writeTimeoutMs);
    device.join();
    QCOMPARE(written, sent.size());
    QVERIFY(arrived == sent);
}

void TestQextSerialPort::aWriteToARemovedDeviceFails()
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

void TestQextSerialPort::aWriteToAStuckDeviceReturns()
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

void TestQextSerialPort::onlyTheFirstWriteWaitsForAStuckDevice()
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

void TestQextSerialPort::aWriteDoesNotEmitReadyRead()
{
    Pty terminal;
    const PortPointer port = openedPort(terminal);
    QSignalSpy notified(port.get(), &QIODevice::readyRead);
    terminal.send(">");
    port->write("get\r\n");
    QCOMPARE(notified.count(), 0);
    QVERIFY(notified.wait());
}

QTEST_GUILESS_MAIN(TestQextSerialPort)
#include "tst_qextserialport.moc"
