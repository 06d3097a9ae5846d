#include <QFile>
#include <QScopeGuard>
#include <QSerialPort>
#include <QTemporaryDir>
#include <QTest>

#include <grp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "serial/qextserialport.h"
#include "tests/support/messagespy.h"
#include "tests/support/pty.h"

namespace
{
QString lockFile(const QString &portName)
{
    return "/var/lock/LCK.." + QString(portName).replace('/', '_');
}

/// The reason text for a port whose lock file this process holds.
QString lockedHere(const QString &portName)
{
    const QString program =
        QCoreApplication::applicationName().left(15); // the system keeps only 15 characters
    return QStringLiteral("Device or resource busy; the lock file %1 belongs to the process %2 (%3)")
        .arg(lockFile(portName))
        .arg(::getpid())
        .arg(program);
}
} // namespace

/// Tests the messages about a port that does not open.
class TestQextSerialPortRefusals : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRefusalNamesTheReason_data();
    void aRefusalNamesTheReason();
    void aRefusalIsNamedOnce();
    void aRefusalToAnOrdinaryUserNamesTheReason_data();
    void aRefusalToAnOrdinaryUserNamesTheReason();
    void aClosedPortOfAnUnnamedGroupIsToldByTheGroupsNumber();
    void aClosedFolderOnTheWayNamesNoGroup();
};

void TestQextSerialPortRefusals::aRefusalNamesTheReason_data()
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
                                                  << "";
}

void TestQextSerialPortRefusals::aRefusalNamesTheReason()
{
    QFETCH(QString, target);
    QFETCH(QString, reason);
    QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("port"));
    Pty terminal;
    QVERIFY(QFile::link(target.isEmpty() ? terminal.name() : target, name));
    QSerialPort other(name);
    if (target.isEmpty()) {
        QVERIFY(other.open(QIODevice::ReadWrite));
        reason = lockedHere(name);
    }

    MessageSpy log;
    QextSerialPort port(name);
    QVERIFY(!port.open(QIODevice::ReadWrite));
    QVERIFY(!port.isOpen());
    QCOMPARE(log.messages(),
             QStringList{QStringLiteral("C:Opening the port %1 failed: %2").arg(name, reason)});
    QCOMPARE(port.errorString(), reason);
}

void TestQextSerialPortRefusals::aRefusalIsNamedOnce()
{
    QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("port"));
    const auto attempt = [&name] { return QextSerialPort(name).open(QIODevice::ReadWrite); };
    const auto message = [&name](const QString &reason) {
        return QStringLiteral("C:Opening the port %1 failed: %2").arg(name, reason);
    };
    MessageSpy log;
    QVERIFY(!attempt());
    QVERIFY(!attempt()); // each attempt uses a new object
    QCOMPARE(log.take(), QStringList{message("No such file or directory")});

    Pty terminal;
    QVERIFY(QFile::link(terminal.name(), name));
    QSerialPort other(name);
    QVERIFY(other.open(QIODevice::ReadWrite));
    QVERIFY(!attempt());
    QVERIFY(!attempt());
    QCOMPARE(log.take(), QStringList{message(lockedHere(name))}); // a different reason is logged again

    other.close();
    QVERIFY(attempt());
    QVERIFY(other.open(QIODevice::ReadWrite));
    QVERIFY(!attempt());
    QCOMPARE(log.take(), QStringList{message(lockedHere(name))}); // it was open in between
}

namespace
{

constexpr uid_t nobody = 65534;
enum Obstacle { ClosedNode = 1, HeldLock = 2, NoLockFolder = 4, StaleLock = 8, ClosedLock = 16 };

/// Returns the id of a process that has ended.
pid_t endedProcess()
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(0);
    ::waitpid(child, nullptr, 0);
    return child;
}

// Hides the folders for lock files behind folders that only root may write to; for this process only.
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
        MessageSpy log;
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

void TestQextSerialPortRefusals::aRefusalToAnOrdinaryUserNamesTheReason_data()
{
    QTest::addColumn<int>("obstacles");
    QTest::addColumn<QString>("reason");
    const QString permission = QStringLiteral("Permission denied; the port belongs to the group \"dialout\"");
    QTest::newRow("the port is not the user's") << int(ClosedNode) << permission;
    QTest::newRow("nor is it when somebody has it open") << int(ClosedNode | HeldLock) << permission;
    QTest::newRow("nor when lock files have no place") << int(ClosedNode | NoLockFolder) << permission;
    QTest::newRow("somebody has it open") << int(HeldLock) << "";
    QTest::newRow("another user's program left its lock file behind")
        << int(StaleLock)
        << "Operation not permitted; the lock file %1 was left behind and belongs to the user \"root\"";
    QTest::newRow("another user's lock file can't be read")
        << int(ClosedLock) << "Permission denied; the lock file %1 belongs to the user \"root\"";
    QTest::newRow("lock files have no place")
        << int(NoLockFolder) << "Permission error while creating lock file";
}

void TestQextSerialPortRefusals::aRefusalToAnOrdinaryUserNamesTheReason()
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
    // Uses the device node itself, since no other user may access the test's folder.
    QSerialPort other(terminal.name());
    if (obstacles & HeldLock)
        QTRY_VERIFY(other.isOpen() ||
                    other.open(QIODevice::ReadWrite)); // another test may be about to release the lock file
    const QString name = other.portName();
    QFile lock(lockFile(name));
    if (obstacles & (StaleLock | ClosedLock)) {
        QVERIFY(lock.open(QIODevice::WriteOnly));
        lock.write(QByteArray::number(endedProcess()) + '\n');
        lock.close();
        if (obstacles & ClosedLock)
            QVERIFY(lock.setPermissions(QFile::ReadOwner));
    }
    const auto noLock = qScopeGuard([&] {
        if (!other.isOpen())
            lock.remove();
    });
    if (reason.isEmpty())
        reason = lockedHere(name);
    if (reason.contains(QLatin1String("%1")))
        reason = reason.arg(lock.fileName());
    const QStringList messages = attemptAsNobody(name, obstacles);
    if (messages.value(0) == QLatin1String("not possible here"))
        QSKIP("this system does not let the test hide folders");
    const QString message = QStringLiteral("C:Opening the port %1 failed: %2").arg(name, reason);
    QCOMPARE(messages, QStringList{message});
}

void TestQextSerialPortRefusals::aClosedPortOfAnUnnamedGroupIsToldByTheGroupsNumber()
{
    if (::geteuid() != 0)
        QSKIP("only root can try it as another user");
    constexpr gid_t unnamed = 54321;
    if (::getgrgid(unnamed))
        QSKIP("this system has a name for the group");
    Pty terminal;
    const QByteArray node = terminal.name().toLocal8Bit();
    QCOMPARE(::chown(node.constData(), 0, unnamed), 0);
    QCOMPARE(::chmod(node.constData(), 0660), 0);
    QCOMPARE(attemptAsNobody(terminal.portName(), 0),
             QStringList{"C:Opening the port " + terminal.portName() +
                         " failed: Permission denied; the port belongs to the group \"54321\""});
}

void TestQextSerialPortRefusals::aClosedFolderOnTheWayNamesNoGroup()
{
    if (::geteuid() != 0)
        QSKIP("only root can try it as another user");
    Pty terminal;
    QTemporaryDir folder; // only its owner may access it
    const QString name = folder.filePath(QStringLiteral("port"));
    QVERIFY(QFile::link(terminal.name(), name));
    QCOMPARE(attemptAsNobody(name, 0),
             QStringList{"C:Opening the port " + name + " failed: Permission denied"});
}

QTEST_GUILESS_MAIN(TestQextSerialPortRefusals)
#include "tst_qextserialport_openerrors.moc"
