#include <cerrno>
#include <ctime>

#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "messages/diagnostics.h"
#include "serial/qextserialenumerator.h"
#include "tests/support/descriptors.h"
#include "tests/support/libcinterposer.h"
#include "tests/support/messagespy.h"
#include "tests/support/openedport.h"

/// Tests devices that disappear, and processes that end, while ports are open.
class TestQextSerialPortEnds : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void afterAHangUpEveryOperationFails();
    void aPortThatHangsUpWhileItIsSetUpDoesNotOpen_data();
    void aPortThatHangsUpWhileItIsSetUpDoesNotOpen();
    void aPortReplacedUnderTheSameNameIsANewLine();
    void aFailedReadIsRepeatedAtABoundedRate_data();
    void aFailedReadIsRepeatedAtABoundedRate();
    void anOpenPortIsWatchedUntilItsUsersCloseIt();
    void aProcessEndsNormallyWithOpenPorts();
};

void TestQextSerialPortEnds::afterAHangUpEveryOperationFails()
{
    MessageSpy log;
    Pty terminal;
    const PortPointer first = openedPort(terminal);
    const PortPointer second = openedPort(terminal);
    terminal.send("mostly unread");
    QTRY_COMPARE(second->bytesAvailable(), 13);
    QCOMPARE(second->read(7), QByteArray("mostly "));
    QCoreApplication::processEvents(); // the objects are notified of all bytes
    QSignalSpy notified(first.get(), &QIODevice::readyRead);
    QVERIFY(!first->isDead());

    terminal.hangUp();
    QCOMPARE(first->write("x"), -1); // even before the event loop has noticed it
    QTRY_COMPARE(terminal.openDescriptors(), 0);
    const QString reason = QStringLiteral("the device hung up");
    for (QextSerialPort *port : {first.get(), second.get()}) {
        QVERIFY2(port->isOpen(), "the port was closed by the hang-up");
        QVERIFY(port->isDead());
        QCOMPARE(port->errorString(), reason);
        QCOMPARE(port->bytesAvailable(), 0);
        char byte;
        QCOMPARE(port->read(&byte, 1), -1);
        QCOMPARE(port->write("get\r\n"), -1);
        port->setBaudRate(BAUD9600);
    }
    QCOMPARE(notified.count(), 0);
    QCOMPARE(log.messages(), QStringList{"C:The port " + terminal.portName() + " was closed: " + reason});
}

void TestQextSerialPortEnds::aPortThatHangsUpWhileItIsSetUpDoesNotOpen_data()
{
    QTest::addColumn<bool>("inQtsOpen"); // counted from the notifiers that Qt creates when it opens the port
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("error");
    QTest::newRow("during QSerialPort::open()") << true << "C:Opening the port %1 failed: Input/output error"
                                                << "Input/output error";
    QTest::newRow("during the first setting") << false << "C:The port %1 was closed: the device hung up"
                                              << "the device hung up";
}

void TestQextSerialPortEnds::aPortThatHangsUpWhileItIsSetUpDoesNotOpen()
{
    QFETCH(bool, inQtsOpen);
    QFETCH(QString, message);
    QFETCH(QString, error);
    LibcInterposer::clear();
    const Pty another;
    const PortPointer open = openedPort(another);
    const int number = (inQtsOpen ? 0 : LibcInterposer::timesSet()) + 1;

    MessageSpy log;
    Pty terminal;
    QextSerialPort port(terminal.portName());
    port.setBaudRate(BAUD115200);
    port.setStopBits(STOP_2);
    LibcInterposer::beforeSettings(number, [&terminal] { terminal.hangUp(); });
    const bool isOpened = port.open(QIODevice::ReadWrite);
    LibcInterposer::clear();
    QVERIFY(!isOpened);
    QVERIFY(!port.isOpen());
    QCOMPARE(port.errorString(), error);
    QCOMPARE(terminal.openDescriptors(), 0);
    QCOMPARE(log.messages(), QStringList{message.arg(terminal.portName())});
}

void TestQextSerialPortEnds::aPortReplacedUnderTheSameNameIsANewLine()
{
    // The name stays the same while the terminal behind it changes.
    QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("port"));
    Pty terminal;
    QVERIFY(QFile::link(terminal.name(), name));
    QextSerialPort old(name);
    QVERIFY(old.open(QIODevice::ReadWrite));
    QextSerialPort reopened(name);
    QVERIFY(reopened.open(QIODevice::ReadWrite));
    terminal.hangUp();
    QTRY_COMPARE(terminal.openDescriptors(), 0);
    QVERIFY(QFile::remove(name));
    QVERIFY(!reopened.open(QIODevice::ReadWrite));
    QVERIFY2(!reopened.isOpen(), "the port is open after a failed reopening");

    Pty replug;
    QVERIFY(QFile::link(replug.name(), name));
    QVERIFY(reopened.open(QIODevice::ReadWrite));
    replug.send("hello");
    QTRY_COMPARE(reopened.peek(100), QByteArray("hello"));
    QCOMPARE(reopened.write("x"), 1);
    QCOMPARE(replug.received(), QByteArray("x"));
    QVERIFY(old.isDead());
    QCOMPARE(old.bytesAvailable(), 0);

    MessageSpy log;
    QVERIFY(old.open(QIODevice::ReadWrite)); // directly, while it is still open and dead
    QCOMPARE(log.messages(), QStringList());
}

void TestQextSerialPortEnds::aFailedReadIsRepeatedAtABoundedRate_data()
{
    QTest::addColumn<int>("failure");
    QTest::addColumn<bool>("systemReplies"); // when it is asked whether the line has hung up
    QTest::newRow("byte read by another process") << EAGAIN << true;
    QTest::newRow("unknown line state") << EAGAIN << false;
#if QT_VERSION < QT_VERSION_CHECK(6, 8, 0)
    QTest::newRow("end of file without a hang-up") << 0 << true; // later versions do not report it
#endif
    QTest::newRow("error unknown to Qt") << ENOMEM << true;
}

void TestQextSerialPortEnds::aFailedReadIsRepeatedAtABoundedRate()
{
    QFETCH(int, failure);
    QFETCH(bool, systemReplies);
    MessageSpy log;
    Pty terminal;
    const PortPointer port = openedPort(terminal);
    LibcInterposer::failReading(terminal.name().toLocal8Bit(), failure);
    if (!systemReplies)
        LibcInterposer::failHangUpChecks();
    terminal.send("unread");
    QEventLoop loop;
    const std::clock_t before = std::clock();
    QTimer::singleShot(500, &loop, &QEventLoop::quit);
    loop.exec();
    const auto busy = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
    const int tries = LibcInterposer::failedReads();
    LibcInterposer::clear();
    QVERIFY2(tries > 1 && tries < 60, qPrintable(QString::number(tries)));
    QVERIFY2(busy < 0.25, qPrintable(QString::number(busy)));

    QTRY_COMPARE(port->peek(100), QByteArray("unread")); // it was never closed
    QCOMPARE(port->write("x"), 1);
    QCOMPARE(log.messages(QStringLiteral("C:")), QStringList());
}

void TestQextSerialPortEnds::anOpenPortIsWatchedUntilItsUsersCloseIt()
{
    // Some versions of Qt report a hang-up and some do not, so the line always has its own watch.
    const auto watches = [] { return openDescriptors().count(QStringLiteral("anon_inode:[eventpoll]")); };
    MessageSpy log;
    Pty terminal;
    const qsizetype before = watches();
    const PortPointer first = openedPort(terminal);
    PortPointer second = openedPort(terminal);
    QCOMPARE(watches(), before + 1);
    first->close();
    QCOMPARE(watches(), before + 1);
    second.reset();
    QCOMPARE(watches(), before);
    QCOMPARE(log.messages(), QStringList());
}

// Whether Qt holds a lock file for the open port.
static bool hasLockFile(const Pty &terminal)
{
    return QFile::exists("/var/lock/LCK.." + terminal.portName().replace('/', '_'));
}

// Runs a child process that does not clean up its ports: like the device's controller, it ends with ports
// that are open, disconnected, or failed to open. Returns its exit code.
static int leavePortsOpen()
{
    enableAllMessages();
    static Pty terminal;
    static Pty gone;
    static QextSerialPort staticPort(terminal.portName()); // outlives the application
    static QextSerialEnumerator enumerator;
    {
        int noArguments = 0;
        QCoreApplication application(noArguments, nullptr);
        enumerator.setUpNotifications();
        auto *dead = new QextSerialPort(gone.portName());
        auto *refused = new QextSerialPort(QStringLiteral("/nowhere/port"));
        auto *open = new QextSerialPort(terminal.portName());
        if (!dead->open(QIODevice::ReadWrite) || !open->open(QIODevice::ReadWrite) ||
            !staticPort.open(QIODevice::ReadWrite) || refused->open(QIODevice::ReadWrite))
            return 1;
        gone.hangUp();
        terminal.send("unread");
        while (open->bytesAvailable() == 0 || gone.openDescriptors() > 0)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (!hasLockFile(terminal))
            return 2;
    }
    if (hasLockFile(terminal))
        return 3;
    return staticPort.isDead() ? 0 : 4;
}

void TestQextSerialPortEnds::aProcessEndsNormallyWithOpenPorts()
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("leave-ports-open")});
    QVERIFY(process.waitForFinished(60000));
    const QByteArray output = process.readAllStandardError();
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QVERIFY2(process.exitCode() == 0, output + " exit code " + QByteArray::number(process.exitCode()));
    static const QRegularExpression messages(
        QStringLiteral("^Opening the port /nowhere/port failed: No such file or directory\n"
                       "The port pts/[0-9]+ was closed: the device hung up\n$"));
    QVERIFY2(messages.match(QString::fromLocal8Bit(output)).hasMatch(), output);
}

int main(int argc, char *argv[])
{
    if (argc == 2 && qstrcmp(argv[1], "leave-ports-open") == 0)
        return leavePortsOpen();
    QCoreApplication application(argc, argv);
    TestQextSerialPortEnds test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_qextserialport_ends.moc"
