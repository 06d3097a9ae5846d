#include "serial/lockfile.h"

#include <QtGlobal>

#ifdef Q_OS_UNIX

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <limits>

#include <QByteArray>
#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "serial/systemtext.h"

namespace
{
/// How long a lock file may name no process, in seconds. A program creates the file first and writes to it
/// afterwards.
constexpr time_t timeToWrite = 30;

/// The lock file of a port, in the first of these folders that can be read, as in QSerialPort.
QString lockFilePath(const QString &portName)
{
    static constexpr const char *folders[] = {"/var/lock",         "/etc/locks", "/var/spool/locks",
                                              "/var/spool/uucp",   "/tmp",       "/var/tmp",
                                              "/var/lock/lockdev", "/run/lock"};
    for (const char *folder : folders) {
        if (::access(folder, R_OK) == 0)
            return QLatin1String(folder) + QLatin1String("/LCK..") +
                   QString(portName).replace(QLatin1Char('/'), QLatin1Char('_'));
    }
    return {};
}

/// The process that a lock file names, 0 if it names none. There are two formats. Text: the number, possibly
/// after spaces; a line end, the program or the user may follow. Binary: the bytes of the number and nothing
/// else. Process ids end at 2^22, so the highest byte of a binary number is 0, which text does not contain.
qint64 processIn(const QByteArray &content)
{
    qint64 process = 0;
    if (pid_t number = 0; content.size() == sizeof number && content.contains('\0')) {
        std::memcpy(&number, content.constData(), sizeof number);
        process = number;
    } else {
        const QByteArray text = content.trimmed();
        qsizetype digits = 0;
        while (digits < text.size() && text.at(digits) >= '0' && text.at(digits) <= '9')
            ++digits;
        // strchr() also finds a NUL, which ends the number too.
        if (digits == text.size() || std::strchr(" \t\r\n", text.at(digits)))
            process = text.left(digits).toLongLong();
    }
    return process > 0 && process <= std::numeric_limits<pid_t>::max() ? process : 0;
}

bool isRunning(qint64 process)
{
    return ::kill(static_cast<pid_t>(process), 0) == 0 || errno == EPERM;
}

/// A lock file that is open for reading.
class LockFile
{
public:
    explicit LockFile(const QString &path)
        : _path(QFile::encodeName(path))
        , _descriptor(::open(_path.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC))
        , _error(_descriptor < 0 ? errno : 0)
    {
    }
    ~LockFile()
    {
        if (_descriptor >= 0)
            ::close(_descriptor);
    }
    Q_DISABLE_COPY_MOVE(LockFile)

    /// 0 if it is open.
    int error() const { return _error; }

    qint64 process() const
    {
        char content[64];
        const ssize_t size = ::read(_descriptor, content, sizeof content);
        return size > 0 ? processIn(QByteArray(content, size)) : 0;
    }

    bool isFresh() const
    {
        struct stat file = {};
        return ::fstat(_descriptor, &file) == 0 && std::abs(std::time(nullptr) - file.st_mtime) < timeToWrite;
    }

    /// Removes the file, unless another program has replaced it. Returns 0 or the error.
    int remove() const
    {
        struct stat opened = {};
        struct stat named = {};
        if (::flock(_descriptor, LOCK_EX | LOCK_NB) != 0 || ::fstat(_descriptor, &opened) != 0)
            return EBUSY; // another program is removing it
        if (::lstat(_path.constData(), &named) != 0)
            return errno == ENOENT ? 0 : errno;
        if (opened.st_ino != named.st_ino || opened.st_dev != named.st_dev)
            return EBUSY;
        return ::unlink(_path.constData()) == 0 || errno == ENOENT ? 0 : errno;
    }

private:
    const QByteArray _path;
    const int _descriptor;
    const int _error;
};
} // namespace

QString lockFileObstacle(const QString &portName)
{
    const QString path = lockFilePath(portName);
    const LockFile file(path);
    if (file.error() == ENOENT)
        return {};
    const QString owner = ownerText(path);
    if (file.error() != 0)
        return QStringLiteral("%1; the lock file %2 belongs to the user \"%3\"")
            .arg(systemText(file.error()), path, owner);
    const qint64 process = file.process();
    if (process != 0 && isRunning(process))
        return busyText(QStringLiteral("the lock file %1 belongs to the %2").arg(path, processText(process)));
    if (process == 0 && file.isFresh())
        return busyText(QStringLiteral("the lock file %1 has just been made").arg(path));
    if (const int error = file.remove())
        return QStringLiteral("%1; the lock file %2 was left behind and belongs to the user \"%3\"")
            .arg(systemText(error), path, owner);
    return {};
}

#else

QString lockFileObstacle(const QString &)
{
    return {};
}

#endif
