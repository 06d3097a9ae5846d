#include <malloc.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>

#include "messages/sessionlog.h"
#include "tests/support/filecontents.h"

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

bool writeText(const char *path, const QByteArray &text)
{
    QFile file(QString::fromLatin1(path));
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(text) == text.size();
}

/// Gives the process its own mount namespace. Returns false where the system does not allow that.
bool unshareMounts()
{
    const QByteArray uid = QByteArray::number(::getuid());
    const QByteArray gid = QByteArray::number(::getgid());
    if (::unshare(CLONE_NEWNS) != 0) {
        if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0 || !writeText("/proc/self/setgroups", "deny") ||
            !writeText("/proc/self/uid_map", "0 " + uid + " 1") ||
            !writeText("/proc/self/gid_map", "0 " + gid + " 1"))
            return false;
    }
    return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}
bool ownMounts = false;

/// Redirects standard output to /dev/null during its lifetime: there are too many messages.
class SilentOutput
{
public:
    SilentOutput()
        : _earlier(::dup(STDOUT_FILENO))
    {
        std::fflush(stdout);
        const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        ::dup2(nowhere, STDOUT_FILENO);
        ::close(nowhere);
    }
    ~SilentOutput()
    {
        std::fflush(stdout);
        ::dup2(_earlier, STDOUT_FILENO);
        ::close(_earlier);
    }

private:
    Q_DISABLE_COPY_MOVE(SilentOutput)
    const int _earlier;
};

/// A home folder on a disk of 128 KiB.
class SmallDisk
{
public:
    SmallDisk()
        : _path(QFile::encodeName(_folder.path()))
        , isMounted(ownMounts && ::mount("none", _path.constData(), "tmpfs", 0, "size=128k") == 0)
    {
        qputenv("HOME", _path);
    }
    ~SmallDisk()
    {
        theSessionLog.setDevice(nullptr);
        if (isMounted)
            ::umount2(_path.constData(), MNT_DETACH);
    }

    /// Fills the disk up to \a left bytes; a page has 4096 bytes.
    void fill(qint64 left = 0)
    {
        const int file =
            ::open(QFile::encodeName(filler()).constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        constexpr std::array<char, 4096> page = {};
        qint64 size = 0;
        while (::write(file, page.data(), page.size()) == ssize_t(page.size()))
            size += qint64(page.size());
        QCOMPARE(errno, ENOSPC);
        QCOMPARE(::ftruncate(file, size - left), 0);
        ::close(file);
    }
    void makeSpace() { QVERIFY(QFile::remove(filler())); }
    QByteArray log() const { return contents(_folder.filePath("zvinstall.log")); }

private:
    Q_DISABLE_COPY_MOVE(SmallDisk)
    QString filler() const { return _folder.filePath("filler"); }

    const QTemporaryDir _folder;
    const QByteArray _path;

public:
    const bool isMounted;
};

#define REQUIRE_SMALL_DISK(disk)                                                                             \
    do {                                                                                                     \
        if (!(disk).isMounted)                                                                               \
            QSKIP("this system does not let the process mount a small disk");                                \
    } while (false)

/// A message of 100 bytes that contains its number.
QByteArray numbered(int number)
{
    return "message " + QByteArray::number(number).rightJustified(6, '0') + QByteArray(85, '.');
}
void logNumbered(int from, int to)
{
    const SilentOutput silence;
    for (int number = from; number < to; ++number)
        zvMessageOutput(QtDebugMsg, numbered(number).constData());
}
} // namespace

/// Tests the session log on a disk that is full for a while.
class TestSessionLogFullDisk : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFullDiskCostsNoMemory();
    void theLogGoesOnWhenThereIsSpace_data();
    void theLogGoesOnWhenThereIsSpace();
    void aLineAfterACutOneStartsOnItsOwnLine();
};

void TestSessionLogFullDisk::aFullDiskCostsNoMemory()
{
    const QTemporaryDir home;
    qputenv("HOME", QFile::encodeName(home.path()));
    QVERIFY(QFile::link("/dev/full", home.filePath("zvinstall.log")));
    openSessionLog();
    QVERIFY(theSessionLog.device()->isOpen());
    logNumbered(0, 1000); // allocates every buffer
    const std::size_t before = allocatedBytes();
    logNumbered(0, 200'000); // 20 MB
    const std::size_t after = allocatedBytes();
    QVERIFY2(after < before + 100'000, qPrintable(QString("%1 bytes more").arg(after - before)));
    theSessionLog.setDevice(nullptr);
}

void TestSessionLogFullDisk::theLogGoesOnWhenThereIsSpace_data()
{
    QTest::addColumn<int>("lost");
    for (const int lost : {1, 2, 100, 200'000})
        QTest::addRow("after %d messages", lost) << lost;
    // About 30 messages still fit on the disk, and 160 into the file's buffer of 16 KiB.
    for (int lost = 180; lost < 200; ++lost)
        QTest::addRow("after %d messages", lost) << lost;
}

void TestSessionLogFullDisk::theLogGoesOnWhenThereIsSpace()
{
    QFETCH(int, lost);
    SmallDisk disk;
    REQUIRE_SMALL_DISK(disk);
    openSessionLog();
    zvMessageOutput(QtDebugMsg,
                    QByteArray(61, '-').constData()); // shifts the lines relative to the disk's pages
    logNumbered(0, 50);
    disk.fill();
    logNumbered(50, 50 + lost);
    const qsizetype full = disk.log().size();
    disk.makeSpace();
    const int next = 50 + lost;
    for (int number = next; number < next + 3; ++number) {
        logNumbered(number, number + 1);
        // The message is in the file as soon as it is logged, on its own line.
        QVERIFY2(disk.log().endsWith("\nD:" + numbered(number) + '\n'), disk.log().right(300));
    }
    // No message is cut, repeated or out of order.
    int last = -1;
    QList<QByteArray> lines = disk.log().split('\n').mid(1);
    QCOMPARE(lines.takeLast(), QByteArray());
    for (const QByteArray &line : std::as_const(lines)) {
        const int number = line.mid(int(qstrlen("D:message ")), 6).toInt();
        QCOMPARE(line, "D:" + numbered(number));
        QVERIFY2(number > last, line);
        last = number;
    }
    QVERIFY2(disk.log().size() - full < 20'000, "what could not be written was expected to be dropped");
}

void TestSessionLogFullDisk::aLineAfterACutOneStartsOnItsOwnLine()
{
    SmallDisk disk;
    REQUIRE_SMALL_DISK(disk);
    openSessionLog();
    logNumbered(0, 1);
    disk.fill(8192);
    const QByteArray large = "large " + QByteArray(30'000, 'x');
    {
        const SilentOutput silence;
        zvMessageOutput(QtWarningMsg, large.constData());
        QVERIFY2(disk.log().endsWith("xxx"), "the line was expected to be cut");
        for (int again = 0; again < 5; ++again)
            zvMessageOutput(QtWarningMsg, large.constData());
    }
    disk.makeSpace();
    logNumbered(1, 3);
    const QByteArray log = disk.log();
    QVERIFY2(log.endsWith("\nD:" + numbered(1) + "\nD:" + numbered(2) + '\n'), log.right(300));
    QCOMPARE(log.count("\nW:large "), 1);
    QCOMPARE(log.count('\n'), 4);
}

int main(int argc, char *argv[])
{
    ownMounts = unshareMounts(); // before a second thread exists
    QCoreApplication application(argc, argv);
    TestSessionLogFullDisk test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_sessionlog_fulldisk.moc"
