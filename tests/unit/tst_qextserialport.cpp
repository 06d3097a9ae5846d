#include <vector>

#include <QEventLoop>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include "tests/support/openedport.h"

static std::vector<PortPointer> threePorts(const Pty &terminal)
{
    std::vector<PortPointer> ports(3);
    for (PortPointer &port : ports)
        port = openedPort(terminal);
    return ports;
}

/// Tests received bytes, and ports that several objects share.
class TestQextSerialPort : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void receivedBytesAreToldOf_data();
    void receivedBytesAreToldOf();
    void linesAreReadOneByOne();
    void everyObjectGetsEveryByteBeforeTheFirstIsTold();
    void anObjectThatJoinsLaterGetsWhatComesLater();
    void aPortHasOneLineUnderBothItsNames();
    void anObjectMayGoInsideASlot_data();
    void anObjectMayGoInsideASlot();
    void aSlotMayRunAnEventLoop();
    void theLastToLeaveClosesTheLine();
    void anOpenPortIsNotOpenedAgain();
    void whatWasNotReadIsLostWhenThePortIsClosed();
    void anObjectThatNobodyReadsKeepsOneMebibyte();
    void aPortIsAStreamOfBytes();
    void aPortGoesWithItsParent();
    void aClosedPortHasNoLine();
};

void TestQextSerialPort::receivedBytesAreToldOf_data()
{
    QTest::addColumn<int>("sentAt");
    QTest::newRow("sent between opening and connecting") << 1;
    QTest::newRow("sent after connecting") << 2;
}

void TestQextSerialPort::receivedBytesAreToldOf()
{
    QFETCH(int, sentAt);
    const QByteArray reply("\x02<a>\xe4\xff\r\n</a>\x03\r\n>\0", 17);
    Pty terminal;
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
    const PortPointer port = openedPort(terminal);
    QVERIFY(!port->canReadLine());
    terminal.send("one\r\ntwo\r\n>");
    QTRY_COMPARE(port->bytesAvailable(), 11);
    QVERIFY(port->canReadLine());
    QCOMPARE(port->readLine(), QByteArray("one\r\n"));
    QCOMPARE(port->readLine(), QByteArray("two\r\n"));
    QVERIFY(!port->canReadLine());
    QCOMPARE(port->readAll(), QByteArray(">"));

    terminal.send("three\r\n");
    QTRY_COMPARE(port->bytesAvailable(), 7);
    QCOMPARE(port->peek(100), QByteArray("three\r\n"));
    QVERIFY2(port->canReadLine(), "what was looked at is still there to be read");
    QCOMPARE(port->readLine(), QByteArray("three\r\n"));
}

void TestQextSerialPort::everyObjectGetsEveryByteBeforeTheFirstIsTold()
{
    Pty terminal;
    const std::vector<PortPointer> ports = threePorts(terminal);
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
    const PortPointer first = openedPort(terminal);
    terminal.send("early");
    QTRY_COMPARE(first->bytesAvailable(), 5);
    const PortPointer second = openedPort(terminal);
    QSignalSpy secondTold(second.get(), &QIODevice::readyRead);
    terminal.send("late");
    QTRY_COMPARE(secondTold.count(), 1);
    QCOMPARE(second->readAll(), QByteArray("late"));
    QCOMPARE(first->readAll(), QByteArray("earlylate"));
}

void TestQextSerialPort::aPortHasOneLineUnderBothItsNames()
{
    Pty terminal;
    QextSerialPort first(terminal.name().mid(5)); // without "/dev/"
    QextSerialPort second(terminal.name());
    QTRY_VERIFY(first.isOpen() ||
                first.open(QIODevice::ReadWrite)); // another test may be about to release the lock file
    QVERIFY(second.open(QIODevice::ReadWrite));
    QCOMPARE(terminal.openDescriptors(), 1);
}

using Deed = void (*)(std::vector<PortPointer> &ports);

void TestQextSerialPort::anObjectMayGoInsideASlot_data()
{
    // What the slot of the first of three objects does, and which of the three objects survive.
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
    std::vector<PortPointer> ports = threePorts(terminal);
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
    // A message box that opens on a device's reply does the same.
    Pty terminal;
    const PortPointer port = openedPort(terminal);
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
    PortPointer first = openedPort(terminal);
    PortPointer second = openedPort(terminal);
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
    const PortPointer port = openedPort(terminal);
    QVERIFY(!port->open(QIODevice::ReadWrite));
    terminal.send("a");
    QTRY_VERIFY(port->bytesAvailable() > 0);
    QCOMPARE(port->readAll(), QByteArray("a")); // once, not twice
}

void TestQextSerialPort::whatWasNotReadIsLostWhenThePortIsClosed()
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

void TestQextSerialPort::anObjectThatNobodyReadsKeepsOneMebibyte()
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
    QTRY_COMPARE(abandoned->bytesAvailable(), 5);
    QCOMPARE(abandoned->readAll(), QByteArray("later"));
}

void TestQextSerialPort::aPortIsAStreamOfBytes()
{
    Pty terminal;
    const PortPointer port = openedPort(terminal);
    QVERIFY(port->isSequential());
    char bytes[4] = "";
    QCOMPARE(port->read(bytes, 1), 0); // no data yet, and not the end
    terminal.send("abcdef");
    QTRY_COMPARE(port->bytesAvailable(), 6);
    QCOMPARE(port->read(bytes, 4), 4);
    QCOMPARE(QByteArray(bytes, 4), QByteArray("abcd"));
    QCOMPARE(port->read(bytes, 4), 2);
    QCOMPARE(QByteArray(bytes, 2), QByteArray("ef"));
    QCOMPARE(port->read(bytes, 4), 0);
}

void TestQextSerialPort::aPortGoesWithItsParent()
{
    Pty terminal;
    auto parent = std::make_unique<QObject>();
    auto *port = new QextSerialPort(terminal.portName(), QextSerialPort::EventDriven, parent.get());
    QVERIFY(port->open(QIODevice::ReadWrite));
    QCOMPARE(terminal.openDescriptors(), 1);
    parent.reset();
    QCOMPARE(terminal.openDescriptors(), 0);
}

void TestQextSerialPort::aClosedPortHasNoLine()
{
    Pty terminal;
    QextSerialPort port(terminal.portName());
    QVERIFY(!port.isOpen());
    QCOMPARE(terminal.openDescriptors(), 0);
    port.close(); // this has no effect
    QVERIFY(port.open(QIODevice::ReadWrite));
    QVERIFY(port.isOpen());
    port.close();
    port.setBaudRate(BAUD19200); // takes effect at the next open
    QCOMPARE(terminal.openDescriptors(), 0);
    QVERIFY(port.open(QIODevice::ReadWrite));
    const termios settings = terminal.settings();
    QCOMPARE(cfgetospeed(&settings), speed_t(B19200));
}

QTEST_GUILESS_MAIN(TestQextSerialPort)
#include "tst_qextserialport.moc"
