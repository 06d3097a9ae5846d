#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>

#include "messages/sessionlog.h"
#include "tests/support/filecontents.h"

namespace
{
/// The state of a file at the moment when its permissions are about to be set.
struct Moment {
    mode_t mode;
    off_t size;
};
QList<Moment> &moments()
{
    static QList<Moment> theMoments;
    return theMoments;
}

mode_t modeOf(const QString &path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777U : 0;
}

bool put(const QString &path, const QByteArray &text, mode_t mode)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() &&
           ::fchmod(file.handle(), mode) == 0;
}
} // namespace

// This replaces the C library's function for the whole program. NOLINTNEXTLINE(*-inconsistent-declaration-*)
extern "C" int fchmod(int descriptor, mode_t mode)
{
    struct stat status = {};
    ::fstat(descriptor, &status);
    moments() += {status.st_mode & 07777U, status.st_size};
    return static_cast<int>(::syscall(SYS_fchmod, descriptor, mode));
}

/// The session log contains the passphrase. Tests that only its owner can read it, at any time.
class TestSessionLogPrivacy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void theLogIsItsOwnersAlone_data();
    void theLogIsItsOwnersAlone();
    void whoHasAnEarlierLogOpenReadsNothingOfThisOne();
    void aLogAtTheEndOfALinkIsItsOwnersAlone();
    void whatIsNoFileKeepsItsPermissions();
    void anEarlierLogThatCantBeWrittenIsLeftAlone();

private:
    QString logPath() const { return _home->filePath("zvinstall.log"); }

    std::unique_ptr<QTemporaryDir> _home;
    mode_t _mask = 0;
};

void TestSessionLogPrivacy::init()
{
    _home = std::make_unique<QTemporaryDir>();
    qputenv("HOME", QFile::encodeName(_home->path()));
    _mask = ::umask(022);
}

void TestSessionLogPrivacy::cleanup()
{
    ::umask(_mask);
}

void TestSessionLogPrivacy::theLogIsItsOwnersAlone_data()
{
    QTest::addColumn<uint>("mask");
    QTest::addColumn<int>("earlier"); // mode of an earlier log, -1 for none
    QTest::newRow("in a new file") << 022U << -1;
    QTest::newRow("in a new file that the system would give to all") << 0U << -1;
    QTest::newRow("in a new file that the system would give to none") << 0777U << -1;
    QTest::newRow("where an earlier one was everybody's") << 022U << 0666;
    QTest::newRow("where an earlier one was everybody's, and so are new files") << 0U << 0666;
    QTest::newRow("where an earlier one could be read by all") << 022U << 0644;
    QTest::newRow("where an earlier one could be read by the group") << 022U << 0640;
    QTest::newRow("where an earlier one could be written by the group") << 022U << 0620;
    QTest::newRow("where an earlier one could be read by others") << 022U << 0604;
    QTest::newRow("where an earlier one could be written by others") << 022U << 0602;
    QTest::newRow("where an earlier one could be run, too") << 022U << 0711;
    QTest::newRow("where an earlier one was the owner's alone") << 022U << 0600;
}

void TestSessionLogPrivacy::theLogIsItsOwnersAlone()
{
    QFETCH(uint, mask);
    QFETCH(int, earlier);
    if (earlier >= 0)
        QVERIFY(put(logPath(), "D:the run before\n", static_cast<mode_t>(earlier)));
    moments().clear();
    ::umask(static_cast<mode_t>(mask));
    openSessionLog();
    QCOMPARE(modeOf(logPath()), 0600U);
    for (const Moment &moment : std::as_const(moments())) {
        QCOMPARE(moment.mode & 066U, 0U); // it had this mode from its creation
        QCOMPARE(moment.size, 0);
    }
    zvMessageOutput(QtDebugMsg, "secret");
    QCOMPARE(contents(logPath()), QByteArray("D:secret\n"));
    QCOMPARE(modeOf(logPath()), 0600U);
}

void TestSessionLogPrivacy::whoHasAnEarlierLogOpenReadsNothingOfThisOne()
{
    QVERIFY(put(logPath(), "D:before\n", 0644));
    QFile reader(logPath());
    QVERIFY(reader.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    openSessionLog();
    zvMessageOutput(QtDebugMsg, "a secret that is longer");
    QCOMPARE(reader.readAll(), QByteArray("D:before\n"));
    QCOMPARE(contents(logPath()), QByteArray("D:a secret that is longer\n"));
}

void TestSessionLogPrivacy::aLogAtTheEndOfALinkIsItsOwnersAlone()
{
    const QString target = _home->filePath("elsewhere");
    QVERIFY(put(target, "D:before\n", 0666));
    QVERIFY(QFile::link(target, logPath()));
    moments().clear();
    openSessionLog();
    QCOMPARE(modeOf(target), 0600U);
    QCOMPARE(moments().size(), 1);
    QCOMPARE(moments().constFirst().size, 0); // it was empty while other users could open it
    zvMessageOutput(QtDebugMsg, "secret");
    QVERIFY(QFileInfo(logPath()).isSymLink());
    QCOMPARE(contents(target), QByteArray("D:secret\n"));
}

void TestSessionLogPrivacy::whatIsNoFileKeepsItsPermissions()
{
    const QByteArray pipe = QFile::encodeName(logPath());
    QCOMPARE(::mkfifo(pipe.constData(), 0644), 0);
    const int reader = ::open(pipe.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    QVERIFY(reader >= 0);
    openSessionLog();
    zvMessageOutput(QtDebugMsg, "abc");
    QByteArray read(100, '\0');
    read.resize(::read(reader, read.data(), 100));
    ::close(reader);
    QCOMPARE(read, QByteArray("D:abc\n"));
    QCOMPARE(modeOf(logPath()), 0644U);
}

void TestSessionLogPrivacy::anEarlierLogThatCantBeWrittenIsLeftAlone()
{
    constexpr uid_t nobody = 65534;
    QVERIFY(put(logPath(), "D:before\n", 0444));
    const bool isRoot = ::geteuid() == 0; // root may open everything
    if (isRoot) {
        QCOMPARE(::chown(QFile::encodeName(_home->path()).constData(), nobody, nobody), 0);
        QCOMPARE(::chown(QFile::encodeName(logPath()).constData(), nobody, nobody), 0);
    }
    const pid_t child = ::fork();
    QVERIFY(child >= 0);
    if (child == 0) {
        if (isRoot && ::setresuid(nobody, nobody, nobody) != 0)
            ::_exit(2);
        openSessionLog();
        ::_exit(theSessionLog.device()->isOpen() ? 1 : 0);
    }
    int status = 0;
    QCOMPARE(::waitpid(child, &status, 0), child);
    QVERIFY(WIFEXITED(status));
    QCOMPARE(WEXITSTATUS(status), 0);
    QCOMPARE(contents(logPath()), QByteArray("D:before\n"));
    QCOMPARE(modeOf(logPath()), 0444U);
}

QTEST_GUILESS_MAIN(TestSessionLogPrivacy)
#include "tst_sessionlog_privacy.moc"
