#include <malloc.h>

#include <csignal>
#include <cstdio>
#include <memory>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
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

bool writeFile(const QString &path, const QByteArray &text, mode_t mode)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() &&
           ::fchmod(file.handle(), mode) == 0;
}

/// Runs \a function in a child process. Returns its result, or -1 if it did not return.
template <typename Function>
int inChild(Function function)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(function());
    int status = -1;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
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

// AddressSanitizer replaces the allocator. NOLINTNEXTLINE(*-identifier-naming,*-reserved-identifier)
extern "C" __attribute__((weak)) std::size_t __sanitizer_get_current_allocated_bytes();

namespace
{
/// Returns the number of bytes that the process has allocated.
std::size_t allocatedBytes()
{
    if (__sanitizer_get_current_allocated_bytes)
        return __sanitizer_get_current_allocated_bytes();
    const auto info = ::mallinfo2();
    return info.uordblks + info.hblkhd; // small blocks, and large blocks that have their own mapping
}

/// Simulates a full disk during its lifetime: limits the size of files, so only the data that fits is
/// written.
class FullDisk
{
public:
    explicit FullDisk(qint64 size)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &_earlier);
        const rlimit limit = {static_cast<rlim_t>(size), _earlier.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &_earlier); }

private:
    Q_DISABLE_COPY_MOVE(FullDisk)
    rlimit _earlier = {};
};

/// Mounts a disk of 32 KiB on \a folder, for this process only. Returns false where the system does not allow
/// that.
bool mountSmallDisk(const QString &folder)
{
    const QByteArray uid = "0 " + QByteArray::number(::getuid()) + " 1";
    const QByteArray gid = "0 " + QByteArray::number(::getgid()) + " 1";
    if (::unshare(CLONE_NEWNS) != 0 &&
        (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0 || !writeFile("/proc/self/setgroups", "deny", 0644) ||
         !writeFile("/proc/self/uid_map", uid, 0644) || !writeFile("/proc/self/gid_map", gid, 0644)))
        return false;
    return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount("none", QFile::encodeName(folder).constData(), "tmpfs", 0, "size=32k") == 0;
}

/// A message of about 100 bytes that contains its number.
QByteArray numbered(int number)
{
    return "message " + QByteArray::number(number).rightJustified(6, '0') + QByteArray(85, '.');
}

QByteArray numberedLines(int from, int to)
{
    QByteArray lines;
    for (int number = from; number < to; ++number)
        lines += "D:" + numbered(number) + '\n';
    return lines;
}

/// Calls \a call without standard output: there are too many messages.
template <typename Call>
void silently(Call call)
{
    std::fflush(stdout);
    const int earlier = ::dup(STDOUT_FILENO);
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    ::dup2(nowhere, STDOUT_FILENO);
    ::close(nowhere);
    call();
    ::dup2(earlier, STDOUT_FILENO);
    ::close(earlier);
}

void logNumbered(int from, int to)
{
    silently([from, to] {
        for (int number = from; number < to; ++number)
            zvMessageOutput(QtDebugMsg, numbered(number).constData());
    });
}
} // namespace

/// Tests the file of the session log. It contains the passphrase, so only its owner can read it at any time.
/// Logging continues after the disk was full for a while.
class TestSessionLogFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void onlyTheOwnerCanReadTheLog_data();
    void onlyTheOwnerCanReadTheLog();
    void aProcessThatReadsAnEarlierLogReadsNothingOfThisOne();
    void onlyTheOwnerCanReadTheTargetOfALink();
    void aSpecialFileKeepsItsPermissions();
    void anEarlierLogThatCannotBeWrittenIsLeftAlone();

    void aFullDiskCostsNoMemory();
    void loggingContinuesWhenThereIsSpace_data();
    void loggingContinuesWhenThereIsSpace();
    void theStreamContinuesWhenThereIsSpace();
    void loggingContinuesOnASmallDisk();
    void aLineAfterALostOneStartsOnItsOwnLine_data();
    void aLineAfterALostOneStartsOnItsOwnLine();
    void aNewLogAfterACutLineIsEmpty();

private:
    QString logPath() const { return _home->filePath("zvinstall.log"); }

    std::unique_ptr<QTemporaryDir> _home;
    mode_t _mask = 0;
};

void TestSessionLogFile::init()
{
    _home = std::make_unique<QTemporaryDir>();
    qputenv("HOME", QFile::encodeName(_home->path()));
    _mask = ::umask(022);
}

void TestSessionLogFile::cleanup()
{
    ::umask(_mask);
    theSessionLog.setDevice(nullptr);
}

void TestSessionLogFile::onlyTheOwnerCanReadTheLog_data()
{
    QTest::addColumn<uint>("mask");
    QTest::addColumn<int>("earlier"); // mode of an existing log, -1 for none
    QTest::newRow("new file, umask 000") << 0U << -1;
    QTest::newRow("new file, umask 777") << 0777U << -1;
    QTest::newRow("existing file, readable by the group") << 022U << 0640;
    QTest::newRow("existing file, writable by the group") << 022U << 0620;
    QTest::newRow("existing file, readable by others") << 022U << 0604;
    QTest::newRow("existing file, writable by others") << 022U << 0602;
    QTest::newRow("existing file, executable by all") << 022U << 0711;
}

void TestSessionLogFile::onlyTheOwnerCanReadTheLog()
{
    QFETCH(uint, mask);
    QFETCH(int, earlier);
    if (earlier >= 0)
        QVERIFY(writeFile(logPath(), "D:the run before\n", static_cast<mode_t>(earlier)));
    moments().clear();
    ::umask(static_cast<mode_t>(mask));
    openSessionLog();
    for (const Moment &moment : std::as_const(moments())) {
        QCOMPARE(moment.mode & 066U, 0U); // it had this mode from its creation
        QCOMPARE(moment.size, 0);
    }
    zvMessageOutput(QtDebugMsg, "secret");
    QCOMPARE(contents(logPath()), QByteArray("D:secret\n"));
    QCOMPARE(modeOf(logPath()), 0600U);
}

void TestSessionLogFile::aProcessThatReadsAnEarlierLogReadsNothingOfThisOne()
{
    QVERIFY(writeFile(logPath(), "D:before\n", 0644));
    QFile reader(logPath());
    QVERIFY(reader.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    openSessionLog();
    zvMessageOutput(QtDebugMsg, "a secret that is longer");
    QCOMPARE(reader.readAll(), QByteArray("D:before\n"));
}

void TestSessionLogFile::onlyTheOwnerCanReadTheTargetOfALink()
{
    const QString target = _home->filePath("elsewhere");
    QVERIFY(writeFile(target, "D:before\n", 0666));
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

void TestSessionLogFile::aSpecialFileKeepsItsPermissions()
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

void TestSessionLogFile::anEarlierLogThatCannotBeWrittenIsLeftAlone()
{
    constexpr uid_t nobody = 65534;
    QVERIFY(writeFile(logPath(), "D:before\n", 0444));
    const bool isRoot = ::geteuid() == 0; // root may open everything
    for (const QString &path : {_home->path(), logPath()})
        QVERIFY(!isRoot || ::chown(QFile::encodeName(path).constData(), nobody, nobody) == 0);
    QCOMPARE(inChild([isRoot] {
                 if (isRoot && ::setresuid(nobody, nobody, nobody) != 0)
                     return 2;
                 openSessionLog();
                 return theSessionLog.device()->isOpen() ? 1 : 0;
             }),
             0);
    QCOMPARE(contents(logPath()), QByteArray("D:before\n"));
    QCOMPARE(modeOf(logPath()), 0444U);
}

void TestSessionLogFile::aFullDiskCostsNoMemory()
{
    QVERIFY(QFile::link("/dev/full", logPath()));
    openSessionLog();
    QVERIFY(theSessionLog.device()->isOpen());
    logNumbered(0, 1000); // allocates every buffer
    const std::size_t before = allocatedBytes();
    logNumbered(0, 200'000); // 20 MB
    const std::size_t after = allocatedBytes();
    QVERIFY2(after < before + 100'000,
             qPrintable(QString("the process allocated %1 more bytes").arg(after - before)));
}

void TestSessionLogFile::loggingContinuesWhenThereIsSpace_data()
{
    QTest::addColumn<int>("lost");
    QTest::addColumn<int>("partOfALine"); // the bytes that still fit on the disk after the last whole line
    for (const int lost : {0, 1, 1000}) {
        QTest::addRow("%d lines lost after a complete line", lost) << lost << 0;
        QTest::addRow("%d lines lost after a partial line", lost) << lost << 50;
    }
}

void TestSessionLogFile::loggingContinuesWhenThereIsSpace()
{
    QFETCH(int, lost);
    QFETCH(int, partOfALine);
    openSessionLog();
    logNumbered(0, 50);
    constexpr int fitting = 80;
    const QByteArray kept = numberedLines(0, fitting + 1);
    {
        const qint64 size = numberedLines(0, fitting).size() + partOfALine;
        const FullDisk disk(size);
        logNumbered(50, fitting + 1 + lost);
        QCOMPARE(contents(logPath()), kept.left(size));
    }
    // The first line that did not fit is kept and the others are dropped.
    for (int number = 2000; number < 2003; ++number) {
        logNumbered(number, number + 1);
        QCOMPARE(contents(logPath()), kept + numberedLines(2000, number + 1));
    }
}

void TestSessionLogFile::theStreamContinuesWhenThereIsSpace()
{
    openSessionLog();
    {
        const FullDisk disk(0);
        theSessionLog << "delayed\n";
        logNumbered(0, 1);
    }
    theSessionLog << "written\n";
    logNumbered(1, 2);
    QVERIFY2(contents(logPath()).endsWith("written\n" + numberedLines(1, 2)), contents(logPath()));
}

void TestSessionLogFile::loggingContinuesOnASmallDisk()
{
    enum { Continued, Stopped, NotFull, NotMounted };
    const int result = inChild([this] {
        if (!mountSmallDisk(_home->path()))
            return NotMounted;
        openSessionLog();
        logNumbered(0, 50);
        QFile filler(_home->filePath("filler"));
        if (!filler.open(QIODevice::WriteOnly) || filler.write(QByteArray(32'768, 'x')) == 32'768)
            return NotFull;
        logNumbered(50, 1000);
        if (contents(logPath()).contains(numbered(999)))
            return NotFull;
        filler.remove();
        logNumbered(1000, 1003);
        return contents(logPath()).endsWith('\n' + numberedLines(1000, 1003)) ? Continued : Stopped;
    });
    if (result == NotMounted)
        QSKIP("mounting a file system is not permitted");
    QCOMPARE(result, int(Continued));
}

void TestSessionLogFile::aLineAfterALostOneStartsOnItsOwnLine_data()
{
    QTest::addColumn<int>("space");
    QTest::addColumn<QByteArray>("lineEnd");
    QTest::newRow("partly on the disk") << 8192 << QByteArray("\n");
    QTest::newRow("one byte on the disk") << 1 << QByteArray("\n");
    QTest::newRow("not on the disk") << 0 << QByteArray();
}

void TestSessionLogFile::aLineAfterALostOneStartsOnItsOwnLine()
{
    QFETCH(int, space);
    QFETCH(QByteArray, lineEnd);
    openSessionLog();
    logNumbered(0, 1);
    const QByteArray start = numberedLines(0, 1);
    const QByteArray large(30'000, 'x'); // more than the file's buffer
    {
        const FullDisk disk(start.size() + space);
        silently([&large] {
            for (int again = 0; again < 5; ++again)
                zvMessageOutput(QtWarningMsg, large.constData());
        });
    }
    logNumbered(1, 3);
    QCOMPARE(contents(logPath()), start + ("W:" + large).left(space) + lineEnd + numberedLines(1, 3));
}

void TestSessionLogFile::aNewLogAfterACutLineIsEmpty()
{
    openSessionLog();
    {
        const FullDisk disk(8192);
        const QByteArray large(30'000, 'x'); // more than the file's buffer
        silently([&large] { zvMessageOutput(QtWarningMsg, large.constData()); });
    }
    openSessionLog();
    logNumbered(0, 1);
    QCOMPARE(contents(logPath()), numberedLines(0, 1));
}

QTEST_GUILESS_MAIN(TestSessionLogFile)
#include "tst_sessionlog_file.moc"
