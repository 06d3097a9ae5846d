#include <cctype>
#include <cstdio>

#include <QFile>
#include <QProcess>
#include <QScopeGuard>
#include <QSerialPort>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <grp.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utime.h>

#include "tests/support/filecontents.h"
#include "tests/support/libcinterposer.h"
#include "tests/support/messagespy.h"
#include "tests/support/openedport.h"
#include "tests/support/plaintty.h"

namespace
{
constexpr int day = 86400;

QString lockPath(const QString &portName)
{
    return "/var/lock/LCK.." + QString(portName).replace('/', '_');
}

/// A lock file for the port.
class LockFile
{
public:
    LockFile(const QString &portName, const QByteArray &content, int age)
        : path(lockPath(portName))
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot create the lock file");
        file.close();
        utimbuf times;
        times.actime = times.modtime = ::time(nullptr) - age;
        ::utime(QFile::encodeName(path).constData(), &times);
    }
    ~LockFile() { QFile::remove(path); }
    Q_DISABLE_COPY_MOVE(LockFile)

    const QString path;
};

/// Starts another program.
void startOther(QProcess &process)
{
    process.start(QStringLiteral("sleep"), {QStringLiteral("1000")});
    if (!process.waitForStarted())
        qFatal("cannot start another program");
}

/// Ends the program that startOther() has started.
void end(QProcess &process)
{
    process.kill();
    process.waitForFinished();
}

/// The id of a process that has ended.
pid_t endedProcess()
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(0);
    ::waitpid(child, nullptr, 0);
    return child;
}

QString message(const QString &portName, const QString &reason)
{
    return QStringLiteral("C:Opening the port %1 failed: %2").arg(portName, reason);
}

/// The reason text for a port whose lock file this process holds.
QString lockedHere(const QString &portName)
{
    const QString program =
        QCoreApplication::applicationName().left(15); // the system keeps only 15 characters
    return QStringLiteral("Device or resource busy; the lock file %1 belongs to the process %2 (%3)")
        .arg(lockPath(portName))
        .arg(::getpid())
        .arg(program);
}
} // namespace

/// Tests ports that do not open, most of them because another program has locked them, and ports that lock
/// other programs out.
class TestQextSerialPortOpenErrors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { LibcInterposer::clear(); }
    void cleanup() { LibcInterposer::clear(); }

    void theLockFileOfARunningProgramIsRespected_data();
    void theLockFileOfARunningProgramIsRespected();
    void aLockFileThatNamesNoProcessIsRespectedWhileItIsFresh();
    void aLinkInPlaceOfALockFileIsNotFollowed();
    void aPipeInPlaceOfALockFileIsNotWaitedFor();
    void aStaleLockFileIsTakenOver_data();
    void aStaleLockFileIsTakenOver();
    void aStaleLockFileThatIsRemovedInTheMeantimeIsNoObstacle();
    void aStaleLockFileThatIsReplacedInTheMeantimeIsRespected();
    void aPortThatAnotherProgramHasLockedIsBusy();
    void aPortIsBusyEvenIfTheListOfLocksIsHidden();
    void aRecordLockOnThePortIsIgnored();
    void anOpenPortIsLockedForOtherPrograms();
    void aPortIsOpenedOncePerAttempt();
    void anErrorIsReportedOnce();
    void anErrorOfAnOrdinaryUserGivesTheReason_data();
    void anErrorOfAnOrdinaryUserGivesTheReason();
    void theGroupOfAForbiddenPortIsNamedIfKnown();
};

void TestQextSerialPortOpenErrors::theLockFileOfARunningProgramIsRespected_data()
{
    QTest::addColumn<QByteArray>("format"); // with %1 for the process id as text, %b for its bytes
    QTest::addColumn<int>("age");
    QTest::newRow("QLockFile format, new") << "%1\nother\n" + QSysInfo::machineHostName().toLatin1() + '\n'
                                           << 0;
    QTest::newRow("process id and names, one day old") << QByteArray("%1 minicom root\n") << day;
    QTest::newRow("process id without a line end, one day old") << QByteArray("%1") << day;
    QTest::newRow("binary process id, one day old") << QByteArray("%b") << day;
    QTest::newRow("process id 1 as text of four bytes, one day old") << QByteArray("  1\n") << day;
}

void TestQextSerialPortOpenErrors::theLockFileOfARunningProgramIsRespected()
{
    QFETCH(QByteArray, format);
    QFETCH(int, age);
    QProcess program;
    startOther(program);
    // A number whose lowest byte is a digit, which could be taken for a text of one digit.
    while (format == "%b" && !std::isdigit(static_cast<int>(program.processId() & 0xff))) {
        end(program);
        startOther(program);
    }
    const auto endOfProgram = qScopeGuard([&] { end(program); });
    const pid_t number = format.contains('%') ? static_cast<pid_t>(program.processId()) : 1;
    const QByteArray content =
        format.replace("%1", QByteArray::number(number).rightJustified(10))
            .replace("%b", QByteArray(reinterpret_cast<const char *>(&number), sizeof number));
    const Pty terminal;
    const LockFile lock(terminal.portName(), content, age);
    const QString reason =
        QStringLiteral("Device or resource busy; the lock file %1 belongs to the process %2 (%3)")
            .arg(lock.path)
            .arg(number)
            .arg(contents(QStringLiteral("/proc/%1/comm").arg(number)).trimmed());

    MessageSpy log;
    QextSerialPort port(terminal.portName());
    QVERIFY(!port.open(QIODevice::ReadWrite));
    QVERIFY(!port.isOpen());
    QCOMPARE(port.errorString(), reason);
    QCOMPARE(log.messages(), QStringList{message(terminal.portName(), reason)});
    QCOMPARE(LibcInterposer::openings(terminal.name().toLatin1()), 0);
    QCOMPARE(contents(lock.path), content);
}

void TestQextSerialPortOpenErrors::aLockFileThatNamesNoProcessIsRespectedWhileItIsFresh()
{
    const Pty terminal;
    const LockFile lock(terminal.portName(), QByteArray(), 0);
    MessageSpy log;
    QVERIFY(!QextSerialPort(terminal.portName()).open(QIODevice::ReadWrite));
    const QString reason =
        QStringLiteral("Device or resource busy; the lock file %1 has just been made").arg(lock.path);
    QCOMPARE(log.messages(), QStringList{message(terminal.portName(), reason)});
}

void TestQextSerialPortOpenErrors::aLinkInPlaceOfALockFileIsNotFollowed()
{
    const Pty terminal;
    const LockFile target(terminal.portName() + ".target", QByteArray(), day); // it would be taken over
    const QString link = lockPath(terminal.portName());
    QVERIFY(QFile::link(target.path, link));
    const auto noLink = qScopeGuard([&] { QFile::remove(link); });
    QextSerialPort port(terminal.portName());
    QVERIFY(!port.open(QIODevice::ReadWrite));
    QVERIFY2(port.errorString().startsWith("Too many levels of symbolic links; the lock file " + link),
             qPrintable(port.errorString()));
}

void TestQextSerialPortOpenErrors::aPipeInPlaceOfALockFileIsNotWaitedFor()
{
    const Pty terminal;
    const QString pipe = lockPath(terminal.portName());
    QCOMPARE(::mkfifo(pipe.toLatin1().constData(), 0644), 0);
    const auto noPipe = qScopeGuard([&] { QFile::remove(pipe); });
    QextSerialPort port(terminal.portName());
    QVERIFY(!port.open(QIODevice::ReadWrite));
    QCOMPARE(port.errorString(),
             QStringLiteral("Device or resource busy; the lock file %1 has just been made").arg(pipe));
}

void TestQextSerialPortOpenErrors::aStaleLockFileIsTakenOver_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("age");
    QTest::newRow("ended process, new") << QByteArray::number(endedProcess()) + "\nother\n" << 0;
    QTest::newRow("no process id, one day old") << QByteArray("minicom\n") << day;
    QTest::newRow("process id out of range, one day old") << QByteArray("4294967297\n") << day;
}

void TestQextSerialPortOpenErrors::aStaleLockFileIsTakenOver()
{
    QFETCH(QByteArray, content);
    QFETCH(int, age);
    const Pty terminal;
    const LockFile lock(terminal.portName(), content, age);
    MessageSpy log;
    QextSerialPort port(terminal.portName());
    QVERIFY(port.open(QIODevice::ReadWrite));
    QCOMPARE(log.messages(), QStringList());
    QVERIFY(contents(lock.path).trimmed().startsWith(QByteArray::number(::getpid()) + '\n'));
    port.close();
    QVERIFY(!QFile::exists(lock.path));
}

void TestQextSerialPortOpenErrors::aStaleLockFileThatIsRemovedInTheMeantimeIsNoObstacle()
{
    const Pty terminal;
    const LockFile lock(terminal.portName(), QByteArray(), day);
    LibcInterposer::beforeLocking([&lock] { QFile::remove(lock.path); });
    QextSerialPort port(terminal.portName());
    QVERIFY2(port.open(QIODevice::ReadWrite), qPrintable(port.errorString()));
}

void TestQextSerialPortOpenErrors::aStaleLockFileThatIsReplacedInTheMeantimeIsRespected()
{
    const Pty terminal;
    const LockFile lock(terminal.portName(), QByteArray(), day);
    const QByteArray content = QByteArray::number(::getpid()) + '\n';
    const LockFile replacement(terminal.portName() + ".new", content, 0);
    LibcInterposer::beforeLocking([&] { std::rename(qPrintable(replacement.path), qPrintable(lock.path)); });
    QextSerialPort port(terminal.portName());
    QVERIFY(!port.open(QIODevice::ReadWrite));
    QVERIFY2(port.errorString().startsWith("Device or resource busy; the lock file " + lock.path),
             qPrintable(port.errorString()));
    QCOMPARE(contents(lock.path), content);
}

void TestQextSerialPortOpenErrors::aPortThatAnotherProgramHasLockedIsBusy()
{
    const Pty terminal;
    QProcess program;
    program.start(QStringLiteral("flock"), {"-s", "-F", terminal.name(), "cat"});
    QVERIFY(program.waitForStarted());
    program.write("locked\n");
    QVERIFY(program.waitForReadyRead());

    LibcInterposer::clear();
    MessageSpy log;
    QextSerialPort port(terminal.portName());
    QVERIFY(!port.open(QIODevice::ReadWrite));
    const QString reason =
        QStringLiteral("Device or resource busy; the port is locked by the process %1 (cat)")
            .arg(program.processId());
    QCOMPARE(log.messages(), QStringList{message(terminal.portName(), reason)});
    // Opening the port would change its settings.
    QCOMPARE(LibcInterposer::openings(terminal.name().toLatin1()), 0);

    program.closeWriteChannel();
    QVERIFY(program.waitForFinished());
    QVERIFY(port.open(QIODevice::ReadWrite));
}

// The list of locks is hidden from a program in a sandbox.
void TestQextSerialPortOpenErrors::aPortIsBusyEvenIfTheListOfLocksIsHidden()
{
    const Pty terminal;
    const PlainTty other(terminal.portName().toLatin1());
    QCOMPARE(::flock(other.descriptor, LOCK_EX | LOCK_NB), 0);
    LibcInterposer::failOpening("/proc/locks");
    QextSerialPort port(terminal.portName());
    QVERIFY(!port.open(QIODevice::ReadWrite));
    QCOMPARE(port.errorString(),
             QStringLiteral("Device or resource busy; the port is locked by another program"));
}

// A program that locks a port for others does it with flock(), as the system's own programs do.
void TestQextSerialPortOpenErrors::aRecordLockOnThePortIsIgnored()
{
    const Pty terminal;
    const PlainTty other(terminal.portName().toLatin1());
    struct flock record = {};
    record.l_type = F_WRLCK;
    QCOMPARE(::fcntl(other.descriptor, F_OFD_SETLK, &record), 0);
    QVERIFY(QextSerialPort(terminal.portName()).open(QIODevice::ReadWrite));
}

void TestQextSerialPortOpenErrors::anOpenPortIsLockedForOtherPrograms()
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

void TestQextSerialPortOpenErrors::aPortIsOpenedOncePerAttempt()
{
    const Pty terminal;
    const PortPointer port = openedPort(terminal);
    QCOMPARE(LibcInterposer::openings(terminal.name().toLatin1()), 1);

    QextSerialPort none(QStringLiteral("null"));
    QVERIFY(!none.open(QIODevice::ReadWrite));
    QCOMPARE(none.errorString(), QStringLiteral("Inappropriate ioctl for device"));
    QCOMPARE(LibcInterposer::openings("/dev/null"), 1);
}

void TestQextSerialPortOpenErrors::anErrorIsReportedOnce()
{
    QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("port"));
    const auto attempt = [&name] { return QextSerialPort(name).open(QIODevice::ReadWrite); };
    MessageSpy log;
    QVERIFY(!attempt());
    QVERIFY(!attempt()); // each attempt uses a new object
    QCOMPARE(log.take(), QStringList{message(name, "No such file or directory")});

    Pty terminal;
    QVERIFY(QFile::link(terminal.name(), name));
    QSerialPort other(name);
    QVERIFY(other.open(QIODevice::ReadWrite));
    QVERIFY(!attempt());
    QVERIFY(!attempt());
    QCOMPARE(log.take(), QStringList{message(name, lockedHere(name))}); // a different reason is logged again

    other.close();
    QVERIFY(attempt());
    QVERIFY(other.open(QIODevice::ReadWrite));
    QVERIFY(!attempt());
    QCOMPARE(log.take(), QStringList{message(name, lockedHere(name))}); // it was open in between
}

// The messages of two attempts to open the port as an ordinary user; only root can become one.
static QStringList attemptAsNobody(const QString &name)
{
    constexpr uid_t nobody = 65534;
    int results[2];
    if (::pipe(results) != 0)
        return {};
    const pid_t child = ::fork();
    if (child == 0) {
        if (::setgroups(0, nullptr) != 0 || ::setresgid(nobody, nobody, nobody) != 0 ||
            ::setresuid(nobody, nobody, nobody) != 0)
            ::_exit(1);
        MessageSpy log;
        for (int i = 0; i < 2; ++i)
            QextSerialPort(name).open(QIODevice::ReadWrite);
        const QByteArray text = log.messages("C:").join(QLatin1Char('\n')).toUtf8();
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

void TestQextSerialPortOpenErrors::anErrorOfAnOrdinaryUserGivesTheReason_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("isHeld");
    QTest::addColumn<int>("lockMode");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no permission for the port")
        << 0660 << true << 0644 << "Permission denied; the port belongs to the group \"dialout\"";
    QTest::newRow("port locked by another process") << 0666 << true << 0644 << "";
    QTest::newRow("stale lock file of another user")
        << 0666 << false << 0644
        << "Operation not permitted; the lock file %1 was left behind and belongs to the user \"root\"";
    QTest::newRow("unreadable lock file of another user")
        << 0666 << false << 0600 << "Permission denied; the lock file %1 belongs to the user \"root\"";
}

void TestQextSerialPortOpenErrors::anErrorOfAnOrdinaryUserGivesTheReason()
{
    QFETCH(int, mode);
    QFETCH(bool, isHeld);
    QFETCH(int, lockMode);
    QFETCH(QString, reason);
    if (::geteuid() != 0)
        QSKIP("switching to another user requires root");
    const group *dialout = ::getgrnam("dialout");
    if (!dialout)
        QSKIP("the group dialout does not exist");

    // Uses the device node itself, since no other user may access the test's folder.
    const Pty terminal;
    const QByteArray node = terminal.name().toLocal8Bit();
    QCOMPARE(::chown(node.constData(), 0, dialout->gr_gid), 0);
    QCOMPARE(::chmod(node.constData(), static_cast<mode_t>(mode)), 0);
    const QString name = terminal.portName();
    const LockFile lock(name, QByteArray::number(isHeld ? ::getpid() : endedProcess()) + '\n', 0);
    QCOMPARE(::chmod(lock.path.toLatin1().constData(), static_cast<mode_t>(lockMode)), 0);
    reason = reason.isEmpty() ? lockedHere(name) : reason.replace("%1", lock.path);
    QCOMPARE(attemptAsNobody(name), QStringList{message(name, reason)});
}

void TestQextSerialPortOpenErrors::theGroupOfAForbiddenPortIsNamedIfKnown()
{
    if (::geteuid() != 0)
        QSKIP("switching to another user requires root");
    constexpr gid_t unnamed = 2000054321; // no system assigns such a number
    const Pty terminal;
    QCOMPARE(::chown(terminal.name().toLatin1().constData(), 0, unnamed), 0);
    QCOMPARE(::chmod(terminal.name().toLatin1().constData(), 0660), 0);
    const QString byNumber =
        QStringLiteral("Permission denied; the port belongs to the group \"2000054321\"");
    QCOMPARE(attemptAsNobody(terminal.portName()), QStringList{message(terminal.portName(), byNumber)});

    const QTemporaryDir folder; // only its owner may access it
    const QString name = folder.filePath(QStringLiteral("port"));
    QVERIFY(QFile::link(terminal.name(), name));
    QCOMPARE(attemptAsNobody(name), QStringList{message(name, "Permission denied")});
}

QTEST_GUILESS_MAIN(TestQextSerialPortOpenErrors)
#include "tst_qextserialport_openerrors.moc"
