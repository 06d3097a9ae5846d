#include <cstdio>
#include <memory>
#include <thread>
#include <vector>

#include <QAbstractEventDispatcher>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSerialPort>
#include <QSignalSpy>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <fcntl.h>
#include <grp.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "serial/linewriter.h"
#include "serial/qextserialenumerator.h"
#include "serial/qextserialport.h"
#include "tests/support/messagerecorder.h"
#include "tests/support/pty.h"
#include "tests/support/ttycalls.h"

using PortPointer = std::unique_ptr<QextSerialPort>;

/// Ports on pseudo-terminals: bytes, sharing, settings, hang-ups and refusals.
class TestQextSerialPort : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aWriteHasReachedTheDeviceWhenItReturns();
    void everyByteOfALargeWriteArrives_data() { writers(); }
    void everyByteOfALargeWriteArrives();
    void aDeviceThatTakesNothingDoesNotHoldTheWriter_data() { writers(); }
    void aDeviceThatTakesNothingDoesNotHoldTheWriter();
    void aWriteTellsNobodyOfReceivedBytes();
    void receivedBytesAreToldOf_data();
    void receivedBytesAreToldOf();
    void linesAreReadOneByOne();
    void everyObjectGetsEveryByteBeforeTheFirstIsTold();
    void anObjectThatJoinsLaterGetsWhatComesLater();
    void anObjectMayGoInsideASlot_data();
    void anObjectMayGoInsideASlot();
    void aSlotMayRunAnEventLoop();
    void theLastToLeaveClosesTheLine();
    void anOpenPortIsNotOpenedAgain();
    void aHangUpLeavesTheObjectsDead();
    void aHangUpDoesNotSpin();
    void aPortThatComesUnderTheSameNameIsANewLine();
    void aByteThatAnotherProgramTookIsNoHangUp();
    void settingsTakeEffect_data();
    void settingsTakeEffect();
    void theDevicesSettingsLeaveNoMessage();
    void aRefusalNamesTheReason_data();
    void aRefusalNamesTheReason();
    void aRefusalIsNamedOnce();
    void aRefusalToAnOrdinaryUserNamesTheReason_data();
    void aRefusalToAnOrdinaryUserNamesTheReason();
    void aProcessEndsInOrderWithItsPortsOpen();

private:
    static void writers();
    static PortPointer opened(const Pty &terminal);
};

PortPointer TestQextSerialPort::opened(const Pty &terminal)
{
    auto port = std::make_unique<QextSerialPort>(terminal.portName());
    if (!port->open(QIODevice::ReadWrite))
        qFatal("the port did not open");
    return port;
}

void TestQextSerialPort::aWriteHasReachedTheDeviceWhenItReturns()
{
    Pty terminal;
    const PortPointer port = opened(terminal);
    for (const char c : QByteArray("get\r\n")) {
        QCOMPARE(port->write(&c, 1), 1);
        QCOMPARE(terminal.received(), QByteArray(1, c));
    }
    QCOMPARE(port->write(QByteArray("\0\x02\xff\n", 4)), 4);
    QCOMPARE(terminal.received(), QByteArray("\0\x02\xff\n", 4));
    QCOMPARE(port->bytesToWrite(), 0);
}

using Writer = qint64 (*)(QSerialPort &, const char *, qint64);

void TestQextSerialPort::writers()
{
    QTest::addColumn<Writer>("writer");
    QTest::newRow("by the system's own means") << &writeThrough;
    QTest::newRow("by Qt's port alone") << &writeByPort;
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
        QElapsedTimer patience;
        patience.start();
        while (arrived.size() < sent.size() && !patience.hasExpired(20000)) {
            arrived += terminal.received();
            std::this_thread::sleep_for(std::chrono::milliseconds(1)); // much slower than the writer
        }
    });
    const qint64 written = writer(port, sent.constData(), sent.size());
    device.join();
    QCOMPARE(written, sent.size());
    QVERIFY(arrived == sent);
}

void TestQextSerialPort::aDeviceThatTakesNothingDoesNotHoldTheWriter()
{
    QFETCH(Writer, writer);
    Pty terminal;
    QSerialPort port(terminal.portName());
    QVERIFY(port.open(QIODevice::ReadWrite));

    const QByteArray tooMuch(1 << 20, 'x');
    QElapsedTimer time;
    time.start();
    qint64 counted = writer(port, tooMuch.constData(), tooMuch.size());
    counted += writer(port, "y", 1);
    QVERIFY(time.elapsed() < 5000);
    QVERIFY(counted > 0);
    if (writer == &writeThrough)
        QVERIFY(counted < tooMuch.size()); // it keeps nothing

    // What was counted arrives, nothing else does, and the line is not spoiled.
    QByteArray arrived;
    QTRY_COMPARE((arrived += terminal.received()).size(), counted);
    QCOMPARE(writer(port, "z", 1), 1);
    QTRY_COMPARE((arrived += terminal.received()).size(), counted + 1);
    QVERIFY(arrived.endsWith('z'));
}

void TestQextSerialPort::aWriteTellsNobodyOfReceivedBytes()
{
    Pty terminal;
    const PortPointer port = opened(terminal);
    QSignalSpy told(port.get(), &QIODevice::readyRead);
    terminal.send(">");
    port->write("get\r\n");
    QCOMPARE(told.count(), 0);
    QVERIFY(told.wait());
}

void TestQextSerialPort::receivedBytesAreToldOf_data()
{
    QTest::addColumn<int>("sentAt");
    QTest::newRow("sent before the port is opened") << 0;
    QTest::newRow("sent between opening and connecting") << 1;
    QTest::newRow("sent after connecting") << 2;
}

void TestQextSerialPort::receivedBytesAreToldOf()
{
    QFETCH(int, sentAt);
    const QByteArray reply("\x02<a>\xe4\xff\r\n</a>\x03\r\n>\0", 17);
    Pty terminal;
    if (sentAt == 0)
        terminal.send(reply);
    QextSerialPort port(terminal.portName());
    QVERIFY(port.open(QIODevice::ReadWrite));
    if (sentAt == 1)
        terminal.send(reply);
    QSignalSpy told(&port, &QIODevice::readyRead);
    QCOMPARE(port.bytesAvailable(), 0); // the event loop has not run
    if (sentAt == 2)
        terminal.send(reply);
    QTRY_COMPARE(port.bytesAvailable(), reply.size());
    QTRY_COMPARE(told.count(), 1);
    QCOMPARE(port.read(3), reply.left(3));
    QCOMPARE(port.peek(2), reply.mid(3, 2));
    QCOMPARE(port.bytesAvailable(), reply.size() - 3);
    QCOMPARE(port.readAll(), reply.mid(3));
    QCOMPARE(port.bytesAvailable(), 0);
    QCOMPARE(port.read(10), QByteArray());
}

void TestQextSerialPort::linesAreReadOneByOne()
{
    Pty terminal;
    const PortPointer port = opened(terminal);
    QVERIFY(!port->canReadLine());
    terminal.send("one\r\ntwo\r\n>");
    QTRY_COMPARE(port->bytesAvailable(), 11);
    QVERIFY(port->canReadLine());
    QCOMPARE(port->readLine(), QByteArray("one\r\n"));
    QCOMPARE(port->readLine(), QByteArray("two\r\n"));
    QVERIFY(!port->canReadLine());
    QCOMPARE(port->readAll(), QByteArray(">"));
}

void TestQextSerialPort::everyObjectGetsEveryByteBeforeTheFirstIsTold()
{
    Pty terminal;
    std::vector<PortPointer> ports;
    for (int i = 0; i < 3; ++i)
        ports.push_back(opened(terminal));
    QCOMPARE(terminal.openDescriptors(), 1);

    int toldOf = 0;
    for (const PortPointer &port : ports) {
        connect(port.get(), &QIODevice::readyRead, this, [&] {
            if (toldOf++ > 0)
                return;
            for (const PortPointer &each : ports)
                QCOMPARE(each->bytesAvailable(), 3);
        });
    }
    terminal.send("abc");
    QTRY_COMPARE(toldOf, 3);
    for (const PortPointer &port : ports)
        QCOMPARE(port->readAll(), QByteArray("abc"));

    for (const PortPointer &port : ports)
        port->write("x");
    QCOMPARE(terminal.received(), QByteArray("xxx"));
}

void TestQextSerialPort::anObjectThatJoinsLaterGetsWhatComesLater()
{
    Pty terminal;
    const PortPointer first = opened(terminal);
    terminal.send("early");
    QTRY_COMPARE(first->bytesAvailable(), 5);
    const PortPointer second =
        std::make_unique<QextSerialPort>(terminal.name()); // the same port by its other name
    QVERIFY(second->open(QIODevice::ReadWrite));
    QSignalSpy secondTold(second.get(), &QIODevice::readyRead);
    terminal.send("late");
    QTRY_COMPARE(second->bytesAvailable(), 4);
    QCOMPARE(second->readAll(), QByteArray("late"));
    QCOMPARE(first->readAll(), QByteArray("earlylate"));
    QTRY_COMPARE(secondTold.count(), 1);
}

using Deed = void (*)(std::vector<PortPointer> &ports);

void TestQextSerialPort::anObjectMayGoInsideASlot_data()
{
    // What the first of three objects' slot does, and which of the three live on.
    QTest::addColumn<Deed>("deed");
    QTest::addColumn<QList<int>>("survivors");
    QTest::newRow("the told object closes itself")
        << Deed([](auto &ports) { ports[0]->close(); }) << QList<int>{1, 2};
    QTest::newRow("the told object dies") << Deed([](auto &ports) { ports[0].reset(); }) << QList<int>{1, 2};
    QTest::newRow("the next object is closed")
        << Deed([](auto &ports) { ports[1]->close(); }) << QList<int>{0, 2};
    QTest::newRow("the next object dies") << Deed([](auto &ports) { ports[1].reset(); }) << QList<int>{0, 2};
    QTest::newRow("the last object dies") << Deed([](auto &ports) { ports[2].reset(); }) << QList<int>{0, 1};
    QTest::newRow("all are closed") << Deed([](auto &ports) {
        for (PortPointer &port : ports)
            port->close();
    }) << QList<int>{};
    QTest::newRow("all die") << Deed([](auto &ports) {
        for (PortPointer &port : ports)
            port.reset();
    }) << QList<int>{};
    QTest::newRow("the next object is closed and opened again") << Deed([](auto &ports) {
        ports[1]->close();
        ports[1]->open(QIODevice::ReadWrite);
    }) << QList<int>{0, 1, 2};
    QTest::newRow("all are closed and opened again") << Deed([](auto &ports) {
        for (PortPointer &port : ports)
            port->close();
        for (PortPointer &port : ports)
            port->open(QIODevice::ReadWrite);
    }) << QList<int>{0, 1, 2};
}

void TestQextSerialPort::anObjectMayGoInsideASlot()
{
    QFETCH(Deed, deed);
    QFETCH(QList<int>, survivors);
    Pty terminal;
    std::vector<PortPointer> ports;
    for (int i = 0; i < 3; ++i)
        ports.push_back(opened(terminal));
    int toldOfNothing = 0;
    for (const PortPointer &port : ports) {
        connect(port.get(), &QIODevice::readyRead, this, [&toldOfNothing, each = port.get()] {
            if (each->bytesAvailable() == 0)
                ++toldOfNothing;
        });
    }
    bool done = false;
    connect(ports[0].get(), &QIODevice::readyRead, this, [&] {
        if (!std::exchange(done, true))
            deed(ports);
    });
    terminal.send("a");
    QTRY_VERIFY(done);
    for (const int survivor : std::as_const(survivors))
        ports[static_cast<size_t>(survivor)]->readAll();
    QCOMPARE(terminal.openDescriptors(), survivors.isEmpty() ? 0 : 1);
    terminal.send("b");
    for (const int survivor : std::as_const(survivors)) {
        QextSerialPort *port = ports[static_cast<size_t>(survivor)].get();
        QTRY_VERIFY(port->bytesAvailable() > 0);
        QCOMPARE(port->readAll().right(1), QByteArray("b"));
        QCOMPARE(port->write("c"), 1);
    }
    QCOMPARE(terminal.received(), QByteArray(survivors.size(), 'c'));
    QCOMPARE(toldOfNothing, 0);
}

void TestQextSerialPort::aSlotMayRunAnEventLoop()
{
    // As a message box does that opens on a device's reply.
    Pty terminal;
    const PortPointer port = opened(terminal);
    QByteArray inner;
    connect(port.get(), &QIODevice::readyRead, this, [&] {
        const QByteArray bytes = port->readAll();
        if (bytes != "open the box")
            return;
        QEventLoop box;
        QTimer::singleShot(10000, &box, [&box] { box.exit(1); });
        connect(port.get(), &QIODevice::readyRead, &box, [&] {
            inner += "told";
            box.exit(0);
        });
        terminal.send("close the box");
        QCOMPARE(box.exec(), 0);
    });
    terminal.send("open the box");
    QTRY_COMPARE(inner, QByteArray("told"));
}

void TestQextSerialPort::theLastToLeaveClosesTheLine()
{
    Pty terminal;
    PortPointer first = opened(terminal);
    PortPointer second = opened(terminal);
    QSignalSpy told(second.get(), &QIODevice::readyRead);
    first->close();
    QVERIFY(!first->isOpen());
    QCOMPARE(terminal.openDescriptors(), 1);
    terminal.send("a");
    QVERIFY(told.wait());
    QCOMPARE(first->bytesAvailable(), 0);
    second.reset();
    QCOMPARE(terminal.openDescriptors(), 0);
    QVERIFY(first->open(QIODevice::ReadWrite));
    QCOMPARE(terminal.openDescriptors(), 1);
}

void TestQextSerialPort::anOpenPortIsNotOpenedAgain()
{
    Pty terminal;
    const PortPointer port = opened(terminal);
    QVERIFY(!port->open(QIODevice::ReadWrite));
    terminal.send("a");
    QTRY_VERIFY(port->bytesAvailable() > 0);
    QCOMPARE(port->readAll(), QByteArray("a")); // once, not twice
}

void TestQextSerialPort::aHangUpLeavesTheObjectsDead()
{
    MessageRecorder log;
    Pty terminal;
    const PortPointer first = opened(terminal);
    const PortPointer second = opened(terminal);
    terminal.send("mostly unread");
    QTRY_COMPARE(second->bytesAvailable(), 13);
    QCOMPARE(second->read(7), QByteArray("mostly "));
    QSignalSpy told(first.get(), &QIODevice::readyRead);

    terminal.hangUp();
    QCOMPARE(first->write("x"), -1); // even before the event loop has seen it
    QTRY_COMPARE(terminal.openDescriptors(), 0);
    for (QextSerialPort *port : {first.get(), second.get()}) {
        QCOMPARE(port->bytesAvailable(), 0);
        QCOMPARE(port->read(100), QByteArray());
        QCOMPARE(port->readAll(), QByteArray());
        QCOMPARE(port->write("get\r\n"), -1);
        port->setDtr(true);
        port->setBaudRate(BAUD9600);
    }
    QCOMPARE(told.count(), 0);
    QCOMPARE(log.messages(), QStringList());
}

void TestQextSerialPort::aHangUpDoesNotSpin()
{
    Pty terminal;
    const PortPointer port = opened(terminal);
    terminal.send("a");
    QTRY_COMPARE(port->bytesAvailable(), 1);
    int turns = 0;
    QEventLoop loop;
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &loop,
            [&turns] { ++turns; });
    terminal.hangUp();
    QTimer::singleShot(300, &loop, &QEventLoop::quit);
    loop.exec();
    QVERIFY2(turns > 0 && turns < 20, qPrintable(QString::number(turns)));
    QCOMPARE(terminal.openDescriptors(), 0);
}

void TestQextSerialPort::aPortThatComesUnderTheSameNameIsANewLine()
{
    // The name stays the same while the terminal behind it changes.
    QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("port"));
    Pty terminal;
    QVERIFY(QFile::link(terminal.name(), name));
    QextSerialPort old(name);
    QVERIFY(old.open(QIODevice::ReadWrite));
    terminal.hangUp();
    QTRY_COMPARE(terminal.openDescriptors(), 0);

    Pty replug;
    QVERIFY(QFile::remove(name));
    QVERIFY(QFile::link(replug.name(), name));
    QextSerialPort fresh(name);
    QVERIFY(fresh.open(QIODevice::ReadWrite));
    replug.send("hello");
    QTRY_COMPARE(fresh.bytesAvailable(), 5);
    QCOMPARE(fresh.readAll(), QByteArray("hello"));
    QCOMPARE(old.bytesAvailable(), 0);
    QCOMPARE(old.write("x"), -1);
    QVERIFY(old.open(QIODevice::ReadWrite)); // a dead object may be opened again
    QCOMPARE(old.write("x"), 1);
    QCOMPARE(replug.received(), QByteArray("x"));
}

void TestQextSerialPort::aByteThatAnotherProgramTookIsNoHangUp()
{
    Pty terminal;
    const int thief =
        ::open(terminal.name().toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    QVERIFY(thief >= 0);
    int stolen = 0;
    QSocketNotifier notifier(thief,
                             QSocketNotifier::Read); // stands before the port's own, and so is told before it
    connect(&notifier, &QSocketNotifier::activated, this, [&] {
        char byte;
        if (::read(thief, &byte, 1) == 1)
            ++stolen;
    });
    const PortPointer port = opened(terminal);
    for (int i = 1; i <= 5; ++i) {
        terminal.send("s");
        QTRY_COMPARE(stolen, i);
        QCoreApplication::processEvents();
    }
    notifier.setEnabled(false);
    ::close(thief);
    QCOMPARE(port->write("x"), 1);
    terminal.send("mine");
    QTRY_COMPARE(port->bytesAvailable(), 4);
    QCOMPARE(port->readAll(), QByteArray("mine"));
}

using Setter = void (*)(QextSerialPort &port);
using Check = bool (*)(const termios &asked);

void TestQextSerialPort::settingsTakeEffect_data()
{
    QTest::addColumn<Setter>("set");
    QTest::addColumn<Check>("isSet");
    QTest::addColumn<QList<int>>("modemLines");

    const auto row = [](const char *name, Setter set, Check isSet) {
        QTest::newRow(name) << set << isSet << QList<int>{};
    };
    const auto modemRow = [](const char *name, Setter set, int line) {
        QTest::newRow(name) << set << Check([](const termios &) { return true; }) << QList<int>{line};
    };
    row(
        "9600 baud", [](auto &p) { p.setBaudRate(BAUD9600); },
        [](auto &t) { return cfgetospeed(&t) == B9600; });
    row(
        "19200 baud", [](auto &p) { p.setBaudRate(BAUD19200); },
        [](auto &t) { return cfgetospeed(&t) == B19200; });
    row(
        "38400 baud", [](auto &p) { p.setBaudRate(BAUD38400); },
        [](auto &t) { return cfgetospeed(&t) == B38400; });
    row(
        "57600 baud", [](auto &p) { p.setBaudRate(BAUD57600); },
        [](auto &t) { return cfgetospeed(&t) == B57600; });
    row(
        "115200 baud", [](auto &p) { p.setBaudRate(BAUD115200); },
        [](auto &t) { return cfgetospeed(&t) == B115200; });
    row(
        "no flow control", [](auto &p) { p.setFlowControl(FLOW_OFF); },
        [](auto &t) { return !(t.c_cflag & CRTSCTS) && !(t.c_iflag & (IXON | IXOFF)); });
    row(
        "hardware flow control", [](auto &p) { p.setFlowControl(FLOW_HARDWARE); },
        [](auto &t) { return (t.c_cflag & CRTSCTS) && !(t.c_iflag & (IXON | IXOFF)); });
    row(
        "XON and XOFF", [](auto &p) { p.setFlowControl(FLOW_XONXOFF); },
        [](auto &t) { return !(t.c_cflag & CRTSCTS) && (t.c_iflag & IXON) && (t.c_iflag & IXOFF); });
    row(
        "no parity", [](auto &p) { p.setParity(PAR_NONE); }, [](auto &t) { return !(t.c_cflag & PARENB); });
    row(
        "odd parity", [](auto &p) { p.setParity(PAR_ODD); },
        [](auto &t) { return (t.c_cflag & PARENB) && (t.c_cflag & PARODD) && !(t.c_cflag & CMSPAR); });
    row(
        "even parity", [](auto &p) { p.setParity(PAR_EVEN); },
        [](auto &t) { return (t.c_cflag & PARENB) && !(t.c_cflag & PARODD) && !(t.c_cflag & CMSPAR); });
    row(
        "mark parity", [](auto &p) { p.setParity(PAR_MARK); },
        [](auto &t) { return (t.c_cflag & PARENB) && (t.c_cflag & PARODD) && (t.c_cflag & CMSPAR); });
    row(
        "space parity", [](auto &p) { p.setParity(PAR_SPACE); },
        [](auto &t) { return (t.c_cflag & PARENB) && !(t.c_cflag & PARODD) && (t.c_cflag & CMSPAR); });
    row(
        "5 data bits", [](auto &p) { p.setDataBits(DATA_5); },
        [](auto &t) { return (t.c_cflag & CSIZE) == CS5; });
    row(
        "6 data bits", [](auto &p) { p.setDataBits(DATA_6); },
        [](auto &t) { return (t.c_cflag & CSIZE) == CS6; });
    row(
        "7 data bits", [](auto &p) { p.setDataBits(DATA_7); },
        [](auto &t) { return (t.c_cflag & CSIZE) == CS7; });
    row(
        "8 data bits", [](auto &p) { p.setDataBits(DATA_8); },
        [](auto &t) { return (t.c_cflag & CSIZE) == CS8; });
    row(
        "1 stop bit", [](auto &p) { p.setStopBits(STOP_1); }, [](auto &t) { return !(t.c_cflag & CSTOPB); });
    row(
        "2 stop bits", [](auto &p) { p.setStopBits(STOP_2); },
        [](auto &t) { return (t.c_cflag & CSTOPB) != 0; });
    modemRow(
        "DTR on", [](auto &p) { p.setDtr(); }, TIOCM_DTR);
    modemRow(
        "DTR off", [](auto &p) { p.setDtr(false); }, -TIOCM_DTR);
    modemRow(
        "RTS on", [](auto &p) { p.setRts(); }, TIOCM_RTS);
    modemRow(
        "RTS off", [](auto &p) { p.setRts(false); }, -TIOCM_RTS);
}

void TestQextSerialPort::settingsTakeEffect()
{
    QFETCH(Setter, set);
    QFETCH(Check, isSet);
    QFETCH(QList<int>, modemLines);
    MessageRecorder log;
    {
        Pty terminal;
        QextSerialPort port(terminal.portName());
        TtyCalls::clear();
        set(port);
        QCOMPARE(TtyCalls::modemLines(), QList<int>{});
        QVERIFY(port.open(QIODevice::ReadWrite));
        QVERIFY2(isSet(TtyCalls::lastSettings()), "set before the open");
        QCOMPARE(TtyCalls::modemLines(), modemLines);
    }
    {
        Pty terminal;
        const PortPointer first = opened(terminal);
        TtyCalls::clear();
        set(*first);
        if (modemLines.isEmpty())
            QVERIFY2(isSet(TtyCalls::lastSettings()), "set on the open port");
        QCOMPARE(TtyCalls::modemLines(), modemLines);
        // The line's settings are those of the last who opened or set.
        QextSerialPort second(terminal.portName());
        set(second);
        TtyCalls::clear();
        QVERIFY(second.open(QIODevice::ReadWrite));
        if (modemLines.isEmpty())
            QVERIFY2(isSet(TtyCalls::lastSettings()), "set by who opened it later");
        QCOMPARE(TtyCalls::modemLines(), modemLines);
    }
    QCOMPARE(log.messages(), QStringList());
}

void TestQextSerialPort::theDevicesSettingsLeaveNoMessage()
{
    MessageRecorder log;
    Pty terminal;
    QextSerialPort port(terminal.portName());
    port.setBaudRate(BAUD115200);
    port.setFlowControl(FLOW_OFF);
    port.setParity(PAR_NONE);
    port.setDataBits(DATA_8);
    port.setStopBits(STOP_1);
    port.setDtr(false);
    port.setRts(false);
    QVERIFY(port.open(QIODevice::ReadWrite));
    termios settings;
    QCOMPARE(::tcgetattr(terminal.device(), &settings), 0);
    QCOMPARE(cfgetospeed(&settings), speed_t(B115200));
    QCOMPARE(cfgetispeed(&settings), speed_t(B115200));
    terminal.send("\r\n\x03\x11\x13"); // nothing of what a terminal would swallow or change
    QTRY_COMPARE(port.bytesAvailable(), 5);
    QCOMPARE(port.readAll(), QByteArray("\r\n\x03\x11\x13"));
    port.close();
    QCOMPARE(log.messages(), QStringList());
}

void TestQextSerialPort::aRefusalNamesTheReason_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no port is there") << "/nowhere/ttyUSB0"
                                      << "No such file or directory";
    QTest::newRow("the port is none") << "/dev/null"
                                      << "Inappropriate ioctl for device";
    QTest::newRow("a folder on the way is none") << "/dev/null/ttyUSB0"
                                                 << "Not a directory";
    QTest::newRow("another program has the port") << ""
                                                  << "Device or resource busy";
}

void TestQextSerialPort::aRefusalNamesTheReason()
{
    QFETCH(QString, target);
    QFETCH(QString, reason);
    QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("port"));
    Pty terminal;
    QVERIFY(QFile::link(target.isEmpty() ? terminal.name() : target, name));
    QSerialPort other(name);
    if (target.isEmpty())
        QVERIFY(other.open(QIODevice::ReadWrite));

    MessageRecorder log;
    QextSerialPort port(name);
    QVERIFY(!port.open(QIODevice::ReadWrite));
    QVERIFY(!port.isOpen());
    QCOMPARE(log.messages(),
             QStringList{QStringLiteral("C:Opening the port %1 failed: %2").arg(name, reason)});
    QCOMPARE(port.errorString(), reason);
}

void TestQextSerialPort::aRefusalIsNamedOnce()
{
    QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("port"));
    const auto attempt = [&name] { return QextSerialPort(name).open(QIODevice::ReadWrite); };
    const auto message = [&name](const char *reason) {
        return QStringLiteral("C:Opening the port %1 failed: %2").arg(name, QLatin1String(reason));
    };
    MessageRecorder log;
    QVERIFY(!attempt());
    QVERIFY(!attempt()); // each attempt is another object
    QCOMPARE(log.take(), QStringList{message("No such file or directory")});

    Pty terminal;
    QVERIFY(QFile::link(terminal.name(), name));
    QSerialPort other(name);
    QVERIFY(other.open(QIODevice::ReadWrite));
    QVERIFY(!attempt());
    QVERIFY(!attempt());
    QCOMPARE(log.take(), QStringList{message("Device or resource busy")}); // another reason is news

    other.close();
    QVERIFY(attempt());
    QVERIFY(other.open(QIODevice::ReadWrite));
    QVERIFY(!attempt());
    QCOMPARE(log.take(), QStringList{message("Device or resource busy")}); // it had opened in between
}

namespace
{

constexpr uid_t nobody = 65534;
enum Obstacle { ClosedNode = 1, HeldLock = 2, NoLockFolder = 4 };

// Hides the folders that lock files go to behind ones that only root may write to; for this process alone.
bool hideLockFolders()
{
    if (::unshare(CLONE_NEWNS) != 0 || ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        return false;
    for (const char *folder : {"/run/lock", "/var/lock", "/var/spool", "/var/tmp", "/tmp"}) {
        struct stat status;
        if (::stat(folder, &status) == 0 && ::mount("none", folder, "tmpfs", 0, "mode=0755") != 0)
            return false;
    }
    return true;
}

// The messages of two attempts to open the port as an ordinary user; only root can become one.
QStringList attemptAsNobody(const QString &name, int obstacles)
{
    int results[2];
    if (::pipe(results) != 0)
        return {};
    const pid_t child = ::fork();
    if (child == 0) {
        const bool ready = (!(obstacles & NoLockFolder) || hideLockFolders()) &&
                           ::setgroups(0, nullptr) == 0 && ::setresgid(nobody, nobody, nobody) == 0 &&
                           ::setresuid(nobody, nobody, nobody) == 0;
        MessageRecorder log;
        for (int i = 0; i < 2; ++i)
            QextSerialPort(name).open(QIODevice::ReadWrite);
        const QByteArray text =
            ready ? log.messages("C:").join(QLatin1Char('\n')).toUtf8() : "not possible here";
        ::_exit(::write(results[1], text.constData(), static_cast<size_t>(text.size())) < 0);
    }
    ::close(results[1]);
    QFile pipe;
    if (!pipe.open(results[0], QIODevice::ReadOnly, QFile::AutoCloseHandle))
        return {};
    const QString text = QString::fromUtf8(pipe.readAll());
    ::waitpid(child, nullptr, 0);
    return text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

void TestQextSerialPort::aRefusalToAnOrdinaryUserNamesTheReason_data()
{
    QTest::addColumn<int>("obstacles");
    QTest::addColumn<QString>("reason");
    const QString permission = QStringLiteral("Permission denied; the port belongs to the group \"dialout\"");
    QTest::newRow("the port is not the user's") << int(ClosedNode) << permission;
    QTest::newRow("nor is it when somebody has it open") << int(ClosedNode | HeldLock) << permission;
    QTest::newRow("nor when lock files have no place") << int(ClosedNode | NoLockFolder) << permission;
    QTest::newRow("somebody has it open") << int(HeldLock) << "Device or resource busy";
    QTest::newRow("lock files have no place")
        << int(NoLockFolder) << "Permission error while creating lock file";
}

void TestQextSerialPort::aRefusalToAnOrdinaryUserNamesTheReason()
{
    QFETCH(int, obstacles);
    QFETCH(QString, reason);
    if (::geteuid() != 0)
        QSKIP("only root can try it as another user");
    const group *dialout = ::getgrnam("dialout");
    if (!dialout)
        QSKIP("this system has no group named dialout");

    Pty terminal;
    const QByteArray node = terminal.name().toLocal8Bit();
    QCOMPARE(::chown(node.constData(), 0, dialout->gr_gid), 0);
    QCOMPARE(::chmod(node.constData(), obstacles & ClosedNode ? 0660 : 0666), 0);
    QSerialPort other(terminal.portName());
    if (obstacles & HeldLock)
        QVERIFY(other.open(QIODevice::ReadWrite));
    const QStringList messages = attemptAsNobody(terminal.portName(), obstacles);
    if (messages.value(0) == QLatin1String("not possible here"))
        QSKIP("this system does not let the test hide folders");
    QCOMPARE(
        messages,
        QStringList{QStringLiteral("C:Opening the port %1 failed: %2").arg(terminal.portName(), reason)});
}

// The lock file that Qt holds for the open port, in whichever folder it found fit.
static QString lockFile(const Pty &terminal)
{
    const QString name =
        QLatin1String("LCK..") + terminal.portName().replace(QLatin1Char('/'), QLatin1Char('_'));
    for (const char *folder :
         {"/var/lock", "/run/lock", "/var/spool/locks", "/var/spool/uucp", "/tmp", "/var/tmp"}) {
        const QString path = QDir(QLatin1String(folder)).filePath(name);
        if (QFile::exists(path))
            return path;
    }
    return QString();
}

// What a process does that drops its ports, as the device's controller does: it ends with ports open, dead
// and refused, and says where the open one's lock file is.
static int leavePortsOpen()
{
    static Pty terminal;
    static Pty gone;
    static QextSerialPort staticPort(terminal.portName()); // outlives the application
    static QextSerialEnumerator enumerator;
    int noArguments = 0;
    QCoreApplication application(noArguments, nullptr);
    enumerator.setUpNotifications();
    auto *dead = new QextSerialPort(gone.portName());
    auto *refused = new QextSerialPort(QStringLiteral("/dev/null"));
    auto *open = new QextSerialPort(terminal.portName());
    if (!dead->open(QIODevice::ReadWrite) || !open->open(QIODevice::ReadWrite) ||
        !staticPort.open(QIODevice::ReadWrite) || refused->open(QIODevice::ReadWrite))
        return 1;
    gone.hangUp();
    terminal.send("unread");
    while (open->bytesAvailable() == 0 || gone.openDescriptors() > 0)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    std::printf("%s", qPrintable(lockFile(terminal)));
    return 0;
}

void TestQextSerialPort::aProcessEndsInOrderWithItsPortsOpen()
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("leave-ports-open")});
    QVERIFY(process.waitForFinished(60000));
    const QByteArray said = process.readAllStandardError();
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QVERIFY2(process.exitCode() == 0, said.constData());
    QCOMPARE(said, QByteArray("Opening the port null failed: Inappropriate ioctl for device\n"));
    const QString lock = QString::fromLocal8Bit(process.readAllStandardOutput());
    QVERIFY(!lock.isEmpty());
    QVERIFY2(!QFile::exists(lock), qPrintable(lock));
}

int main(int argc, char *argv[])
{
    if (argc == 2 && qstrcmp(argv[1], "leave-ports-open") == 0)
        return leavePortsOpen();
    QCoreApplication application(argc, argv);
    TestQextSerialPort test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_qextserialport.moc"
