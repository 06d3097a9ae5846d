#include <QFile>
#include <QProcess>
#include <QSerialPort>
#include <QSysInfo>
#include <QTest>

#include <cctype>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utime.h>

#include "tests/support/libcinterposer.h"
#include "tests/support/messagespy.h"
#include "tests/support/openedport.h"
#include "tests/support/plaintty.h"

namespace
{
/// Another program: one that runs, or one that has ended.
class OtherProgram
{
public:
    enum Number { AnyNumber, LowestByteIsADigit };

    explicit OtherProgram(Number kind = AnyNumber)
    {
        do {
            _process.kill();
            _process.waitForFinished();
            _process.start(QStringLiteral("sleep"), {QStringLiteral("1000")});
            if (!_process.waitForStarted())
                qFatal("cannot start another program");
        } while (kind == LowestByteIsADigit && !std::isdigit(static_cast<int>(running() & 0xff)));
        QProcess ended;
        ended.start(QStringLiteral("true"), QStringList());
        ended.waitForStarted();
        _ended = ended.processId();
        ended.waitForFinished();
    }
    ~OtherProgram()
    {
        _process.kill();
        _process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(OtherProgram)

    qint64 running() const { return _process.processId(); }
    qint64 ended() const { return _ended; }

private:
    QProcess _process;
    qint64 _ended = 0;
};

/// A lock file for the terminal.
class LockFile
{
public:
    LockFile(const Pty &terminal, const QByteArray &content, int age)
        : path("/var/lock/LCK.." + terminal.portName().replace('/', '_').toLatin1())
    {
        QFile file(QString::fromLatin1(path));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("the lock file can't be made");
        file.close();
        utimbuf times;
        times.actime = times.modtime = ::time(nullptr) - age;
        ::utime(path.constData(), &times);
    }
    ~LockFile() { ::unlink(path.constData()); }
    Q_DISABLE_COPY_MOVE(LockFile)

    const QByteArray path;
};

constexpr int day = 86400;
} // namespace

/// Tests ports that other programs have locked, and ports that lock other programs out.
class TestQextSerialPortLocks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { LibcInterposer::clear(); }
    void cleanup() { LibcInterposer::clear(); }

    void theLockFileOfARunningProgramIsRespected_data();
    void theLockFileOfARunningProgramIsRespected();
    void aLockFileThatWasLeftBehindIsTakenOver_data();
    void aLockFileThatWasLeftBehindIsTakenOver();
    void anEmptyLockFileIsRespectedWhileItIsFresh();
    void aPortThatAnotherProgramHasLockedIsBusy_data();
    void aPortThatAnotherProgramHasLockedIsBusy();
    void anOpenPortIsLockedForOtherPrograms();
    void aPortIsOpenedOncePerAttempt();
};

void TestQextSerialPortLocks::theLockFileOfARunningProgramIsRespected_data()
{
    QTest::addColumn<QByteArray>("format"); // with %1 for the process id
    QTest::addColumn<int>("age");
    const QByteArray host = QSysInfo::machineHostName().toLatin1();
    QTest::newRow("Qt's, new") << "%1\nsleep\n" + host + '\n' << 0;
    QTest::newRow("Qt's, a day old") << "%1\nsleep\n" + host + '\n' << day;
    QTest::newRow("Qt's, of a program with another name") << "%1\nother\n" + host + '\n' << 0;
    QTest::newRow("a padded number, new") << QByteArray("%1\n") << 0;
    QTest::newRow("a padded number, a day old") << QByteArray("%1\n") << day;
    QTest::newRow("a number with a name behind it") << QByteArray("%1 minicom root\n") << 0;
    QTest::newRow("a number with a name behind it, a day old") << QByteArray("%1 minicom root\n") << day;
    QTest::newRow("a number without a line end") << QByteArray("%1") << day;
    // A number whose lowest byte is a digit, which could be taken for a text of one digit.
    QTest::newRow("the number's bytes") << QByteArray() << day;
}

void TestQextSerialPortLocks::theLockFileOfARunningProgramIsRespected()
{
    QFETCH(QByteArray, format);
    QFETCH(int, age);
    const OtherProgram program(format.isEmpty() ? OtherProgram::LowestByteIsADigit : OtherProgram::AnyNumber);
    const auto number = static_cast<pid_t>(program.running());
    QByteArray content(reinterpret_cast<const char *>(&number), sizeof number);
    if (!format.isEmpty())
        content = QByteArray(format).replace("%1", QByteArray::number(number).rightJustified(10));
    const Pty terminal;
    const LockFile lock(terminal, content, age);
    const QString reason =
        QStringLiteral("Device or resource busy; the lock file %1 belongs to the process %2 (sleep)")
            .arg(QLatin1String(lock.path))
            .arg(number);

    MessageSpy log;
    QextSerialPort port(terminal.portName());
    QVERIFY(!port.open(QIODevice::ReadWrite));
    QVERIFY(!port.open(QIODevice::ReadWrite));
    QCOMPARE(port.errorString(), reason);
    QCOMPARE(log.messages(), QStringList{"C:Opening the port " + terminal.portName() + " failed: " + reason});
    QCOMPARE(LibcInterposer::openings(terminal.name().toLatin1()), 0);
    QFile file(QString::fromLatin1(lock.path));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), content);
}

void TestQextSerialPortLocks::aLockFileThatWasLeftBehindIsTakenOver_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<int>("age");
    const QByteArray host = QSysInfo::machineHostName().toLatin1();
    QTest::newRow("Qt's") << "%1\nother\n" + host + '\n' << 0;
    QTest::newRow("a padded number") << QByteArray("%1\n") << 0;
    QTest::newRow("a number with a name behind it") << QByteArray("%1 minicom root\n") << 0;
    QTest::newRow("nothing in it, a day old") << QByteArray("") << day;
    QTest::newRow("no number in it, a day old") << QByteArray("minicom\n") << day;
    QTest::newRow("a number that no process has") << QByteArray("99999999999999999999\n") << day;
}

void TestQextSerialPortLocks::aLockFileThatWasLeftBehindIsTakenOver()
{
    QFETCH(QByteArray, format);
    QFETCH(int, age);
    const OtherProgram program;
    const Pty terminal;
    const LockFile lock(terminal,
                        format.replace("%1", QByteArray::number(program.ended()).rightJustified(10)), age);
    MessageSpy log;
    QextSerialPort port(terminal.portName());
    QVERIFY(port.open(QIODevice::ReadWrite));
    QCOMPARE(log.messages(), QStringList());
    QFile file(QString::fromLatin1(lock.path));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readLine().trimmed(), QByteArray::number(::getpid())); // our process id
    port.close();
    QVERIFY(!file.exists());
}

void TestQextSerialPortLocks::anEmptyLockFileIsRespectedWhileItIsFresh()
{
    const Pty terminal;
    const LockFile lock(terminal, QByteArray(), 0);
    MessageSpy log;
    QextSerialPort port(terminal.portName());
    QVERIFY(!port.open(QIODevice::ReadWrite));
    QCOMPARE(log.messages(),
             QStringList{QStringLiteral("C:Opening the port %1 failed: Device or resource busy; "
                                        "the lock file %2 has just been made")
                             .arg(terminal.portName(), QLatin1String(lock.path))});
}

void TestQextSerialPortLocks::aPortThatAnotherProgramHasLockedIsBusy_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("for itself alone") << LOCK_EX;
    QTest::newRow("with others") << LOCK_SH;
}

void TestQextSerialPortLocks::aPortThatAnotherProgramHasLockedIsBusy()
{
    QFETCH(int, kind);
    const Pty terminal;
    QProcess program;
    program.start(QStringLiteral("flock"), {kind == LOCK_EX ? QStringLiteral("-x") : QStringLiteral("-s"),
                                            QStringLiteral("-F"), terminal.name(), QStringLiteral("cat")});
    QVERIFY(program.waitForStarted());
    program.write("locked\n");
    QVERIFY(program.waitForReadyRead());
    const termios before = terminal.settings();

    LibcInterposer::clear();
    MessageSpy log;
    QextSerialPort port(terminal.portName());
    QVERIFY(!port.open(QIODevice::ReadWrite));
    QCOMPARE(log.messages(),
             QStringList{
                 QStringLiteral("C:Opening the port %1 failed: Device or resource busy; the port is locked "
                                "by the process %2 (cat)")
                     .arg(terminal.portName())
                     .arg(program.processId())});
    QCOMPARE(LibcInterposer::openings(terminal.name().toLatin1()), 0);
    const termios after = terminal.settings();
    QCOMPARE(after.c_cflag, before.c_cflag);
    QCOMPARE(after.c_iflag, before.c_iflag);
    QCOMPARE(after.c_lflag, before.c_lflag);
    QCOMPARE(after.c_oflag, before.c_oflag);

    program.closeWriteChannel();
    QVERIFY(program.waitForFinished());
    QVERIFY(port.open(QIODevice::ReadWrite));
}

void TestQextSerialPortLocks::anOpenPortIsLockedForOtherPrograms()
{
    const Pty terminal;
    const PlainTty other(
        terminal.portName().toLatin1()); // opened first, because the port allows only one program
    const PortPointer port = openedPort(terminal);
    QCOMPARE(::flock(other.descriptor, LOCK_EX | LOCK_NB), -1);
    QCOMPARE(errno, EWOULDBLOCK);
    port->close();
    QCOMPARE(::flock(other.descriptor, LOCK_EX | LOCK_NB), 0);
}

void TestQextSerialPortLocks::aPortIsOpenedOncePerAttempt()
{
    const Pty terminal;
    QextSerialPort port(terminal.portName());
    LibcInterposer::clear();
    QVERIFY(port.open(QIODevice::ReadWrite));
    QCOMPARE(LibcInterposer::openings(terminal.name().toLatin1()), 1);
    port.close();

    LibcInterposer::clear();
    QextSerialPort none(QStringLiteral("null"));
    QVERIFY(!none.open(QIODevice::ReadWrite));
    QCOMPARE(none.errorString(), QStringLiteral("Inappropriate ioctl for device"));
    QCOMPARE(LibcInterposer::openings("/dev/null"), 1);
}

QTEST_GUILESS_MAIN(TestQextSerialPortLocks)
#include "tst_qextserialport_locks.moc"
