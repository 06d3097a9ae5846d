#include <cerrno>
#include <ctime>

#include <QAbstractEventDispatcher>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <fcntl.h>
#include <unistd.h>

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
    void aHangUpLeavesTheObjectsDead();
    void aHangUpDoesNotSpin();
    void aPortThatGoesWhileItIsSetUpDoesNotOpen_data();
    void aPortThatGoesWhileItIsSetUpDoesNotOpen();
    void aPortThatComesUnderTheSameNameIsANewLine();
    void aDeadObjectMayBeOpenedAgain();
    void aByteThatAnotherProgramTookIsNoHangUp();
    void aLineThatCannotBeReadIsTriedAtABoundedRate_data();
    void aLineThatCannotBeReadIsTriedAtABoundedRate();
    void aQuestionWithoutAnAnswerIsNoHangUp();
    void aLineThatClosesByItselfSaysSoOnce();
    void aLineThatItsUsersLeaveSaysNothing();
    void anOpenPortIsWatchedUntilItIsClosed();
    void aProcessEndsInOrderWithItsPortsOpen();
};

void TestQextSerialPortEnds::aHangUpLeavesTheObjectsDead()
{
    Pty terminal;
    const PortPointer first = openedPort(terminal);
    const PortPointer second = openedPort(terminal);
    qint64 toldOf = 0;
    connect(second.get(), &QIODevice::readyRead, this, [&] { toldOf = second->bytesAvailable(); });
    terminal.send("mostly unread");
    QTRY_COMPARE(toldOf, 13);
    QCOMPARE(second->read(7), QByteArray("mostly "));
    QSignalSpy told(first.get(), &QIODevice::readyRead);
    QVERIFY(!first->isDead());

    terminal.hangUp();
    QCOMPARE(first->write("x"), -1); // even before the event loop has noticed it
    QTRY_COMPARE(terminal.openDescriptors(), 0);
    for (QextSerialPort *port : {first.get(), second.get()}) {
        QVERIFY2(port->isOpen(), "dead, and open as far as its user knows");
        QVERIFY(port->isDead());
        QCOMPARE(port->bytesAvailable(), 0);
        char byte;
        QCOMPARE(port->read(&byte, 1), -1);
        QCOMPARE(port->read(100), QByteArray());
        QCOMPARE(port->readAll(), QByteArray());
        QCOMPARE(port->write("get\r\n"), -1);
        port->setDtr(true);
        port->setBaudRate(BAUD9600);
    }
    QCOMPARE(told.count(), 0);
}

void TestQextSerialPortEnds::aHangUpDoesNotSpin()
{
    Pty terminal;
    const PortPointer port = openedPort(terminal);
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

void TestQextSerialPortEnds::aPortThatGoesWhileItIsSetUpDoesNotOpen_data()
{
    QTest::addColumn<bool>("byQt"); // counted from the notifiers that Qt creates when it opens the port
    QTest::addColumn<int>("setting");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("error");
    QTest::newRow("inside Qt's open") << true << 1 << "C:Opening the port %1 failed: Input/output error"
                                      << "Input/output error";
    const QString closed = QStringLiteral("C:The port %1 was closed: the device hung up");
    QTest::newRow("at the first setting") << false << 1 << closed << "the device hung up";
    QTest::newRow("at a later one") << false << 3 << closed << "the device hung up";
}

void TestQextSerialPortEnds::aPortThatGoesWhileItIsSetUpDoesNotOpen()
{
    QFETCH(bool, byQt);
    QFETCH(int, setting);
    QFETCH(QString, message);
    QFETCH(QString, error);
    LibcInterposer::clear();
    const Pty another;
    const PortPointer open = openedPort(another);
    const int number = (byQt ? 0 : LibcInterposer::timesSet()) + setting;

    MessageSpy log;
    Pty terminal;
    QextSerialPort port(terminal.portName());
    port.setBaudRate(BAUD115200);
    port.setFlowControl(FLOW_XONXOFF);
    port.setParity(PAR_ODD);
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

void TestQextSerialPortEnds::aPortThatComesUnderTheSameNameIsANewLine()
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
}

void TestQextSerialPortEnds::aDeadObjectMayBeOpenedAgain()
{
    QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("port"));
    Pty terminal;
    QVERIFY(QFile::link(terminal.name(), name));
    QextSerialPort port(name);
    QVERIFY(port.open(QIODevice::ReadWrite));
    terminal.hangUp();
    QTRY_COMPARE(terminal.openDescriptors(), 0);
    QVERIFY(port.isOpen());

    QVERIFY(QFile::remove(name));
    MessageSpy log;
    QVERIFY(!port.open(QIODevice::ReadWrite));
    QVERIFY(!port.isOpen());
    QCOMPARE(log.take().size(), 1);

    Pty replug;
    QVERIFY(QFile::link(replug.name(), name));
    QVERIFY(port.open(QIODevice::ReadWrite));
    QCOMPARE(port.write("x"), 1);
    QCOMPARE(replug.received(), QByteArray("x"));
}

namespace
{
/// Another program that also reads from the terminal, and is always faster.
class Thief
{
public:
    /// Create it before the port is opened, so that it is notified before the port.
    explicit Thief(Pty &terminal)
        : _terminal(terminal)
        , _descriptor(
              ::open(terminal.name().toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
        , _notifier(_descriptor, QSocketNotifier::Read)
    {
        QObject::connect(&_notifier, &QSocketNotifier::activated, &_notifier, [this] {
            char byte;
            if (!_resting && ::read(_descriptor, &byte, 1) == 1)
                ++_stolen;
        });
    }
    ~Thief()
    {
        _notifier.setEnabled(false);
        ::close(_descriptor);
    }
    Q_DISABLE_COPY_MOVE(Thief)

    /// The device sends \a count bytes one by one. The port is notified of each byte and gets none.
    bool steal(int count)
    {
        for (_stolen = 0; count > 0; --count) {
            const int before = _stolen;
            _terminal.send("s");
            if (!QTest::qWaitFor([&] { return _stolen > before; }))
                return false;
            QCoreApplication::processEvents();
        }
        return true;
    }
    /// Sets whether the port gets the received bytes.
    void setResting(bool resting) { _resting = resting; }

private:
    Pty &_terminal;
    int _descriptor;
    int _stolen = 0;
    bool _resting = false;
    QSocketNotifier _notifier;
};
} // namespace

void TestQextSerialPortEnds::aByteThatAnotherProgramTookIsNoHangUp()
{
    MessageSpy log;
    Pty terminal;
    Thief thief(terminal);
    const PortPointer port = openedPort(terminal);
    const auto isAlive = [&] { return port->write("x") == 1; };
    QVERIFY(thief.steal(300));
    QVERIFY2(isAlive(), "stolen bytes are no hang-up");
    thief.setResting(true);
    terminal.send("mine");
    QTRY_COMPARE(port->bytesAvailable(), 4);
    QCOMPARE(port->readAll(), QByteArray("mine"));
    QCOMPARE(log.messages(), QStringList());
}

void TestQextSerialPortEnds::aLineThatCannotBeReadIsTriedAtABoundedRate_data()
{
    QTest::addColumn<int>("failure");
    QTest::newRow("nothing is there after all") << EAGAIN;
#if QT_VERSION < QT_VERSION_CHECK(6, 8, 0)
    QTest::newRow("the end of the file without a hang-up") << 0; // later versions do not report it
#endif
    QTest::newRow("an input error") << EIO;
    QTest::newRow("an error that Qt does not know") << ENOMEM;
}

void TestQextSerialPortEnds::aLineThatCannotBeReadIsTriedAtABoundedRate()
{
    QFETCH(int, failure);
    MessageSpy log;
    Pty terminal;
    const PortPointer port = openedPort(terminal);
    LibcInterposer::failReading(terminal.name().toLocal8Bit(), failure);
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

    QTRY_COMPARE(port->bytesAvailable(), 6); // it was never closed
    QCOMPARE(log.messages(QStringLiteral("C:")), QStringList());
}

void TestQextSerialPortEnds::aQuestionWithoutAnAnswerIsNoHangUp()
{
    MessageSpy log;
    Pty terminal;
    const PortPointer port = openedPort(terminal);
    LibcInterposer::failHangUpQuestions();
    LibcInterposer::failReading(terminal.name().toLocal8Bit(), EAGAIN);
    terminal.send("unread");
    QTRY_VERIFY(LibcInterposer::failedReads() > 1);
    LibcInterposer::clear();
    QTRY_COMPARE(port->bytesAvailable(), 6);
    QCOMPARE(log.messages(), QStringList());
}

void TestQextSerialPortEnds::aLineThatClosesByItselfSaysSoOnce()
{
    MessageSpy log;
    Pty terminal;
    const PortPointer first = openedPort(terminal);
    const PortPointer second = openedPort(terminal);
    terminal.hangUp();
    QTRY_COMPARE(terminal.openDescriptors(), 0);
    QCOMPARE(first->write("x"), -1);
    QCOMPARE(log.messages(),
             QStringList{"C:The port " + terminal.portName() + " was closed: the device hung up"});
    QCOMPARE(first->errorString(), QStringLiteral("the device hung up"));
    QCOMPARE(second->errorString(), QStringLiteral("the device hung up"));
}

void TestQextSerialPortEnds::aLineThatItsUsersLeaveSaysNothing()
{
    MessageSpy log;
    Pty terminal;
    PortPointer first = openedPort(terminal);
    const PortPointer second = openedPort(terminal);
    second->close();
    first.reset();
    QCOMPARE(terminal.openDescriptors(), 0);
    QCOMPARE(log.messages(), QStringList());
}

void TestQextSerialPortEnds::anOpenPortIsWatchedUntilItIsClosed()
{
    // Some versions of Qt report a hang-up and some do not, so the line always has its own watch.
    const auto watches = [] { return openDescriptors().count(QStringLiteral("anon_inode:[eventpoll]")); };
    Pty terminal;
    const qsizetype before = watches();
    const PortPointer first = openedPort(terminal);
    const PortPointer second = openedPort(terminal);
    QCOMPARE(watches(), before + 1);
    first->close();
    QCOMPARE(watches(), before + 1);
    second->close();
    QCOMPARE(watches(), before);
}

// The lock file that Qt holds for the open port, in whichever folder Qt chose.
static QString lockFile(const Pty &terminal)
{
    const QString name =
        QLatin1String("LCK..") + terminal.portName().replace(QLatin1Char('/'), QLatin1Char('_'));
    for (const char *folder :
         {"/var/lock", "/run/lock", "/var/spool/locks", "/var/spool/uucp", "/tmp", "/var/tmp"}) {
        QString path = QDir(QLatin1String(folder)).filePath(name);
        if (QFile::exists(path))
            return path;
    }
    return {};
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
        if (lockFile(terminal).isEmpty())
            return 2;
    }
    return lockFile(terminal).isEmpty() ? 0 : 3;
}

void TestQextSerialPortEnds::aProcessEndsInOrderWithItsPortsOpen()
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("leave-ports-open")});
    QVERIFY(process.waitForFinished(60000));
    const QByteArray said = process.readAllStandardError();
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QVERIFY2(process.exitCode() == 0, said + " exit code " + QByteArray::number(process.exitCode()));
    static const QRegularExpression messages(
        QStringLiteral("^Opening the port /nowhere/port failed: No such file or directory\n"
                       "The port pts/[0-9]+ was closed: the device hung up\n$"));
    QVERIFY2(messages.match(QString::fromLocal8Bit(said)).hasMatch(), said);
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
