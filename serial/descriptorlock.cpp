#include "serial/descriptorlock.h"

#include <QtGlobal>

#ifdef Q_OS_UNIX

#include <cerrno>

#include <QByteArray>
#include <QFile>
#include <QList>

#include <sys/file.h>
#include <sys/stat.h>
#ifdef Q_OS_LINUX
#include <sys/sysmacros.h>
#endif

#include "serial/systemtext.h"

/// The process that has locked the file, 0 if none is known.
static qint64 lockingProcess(const struct stat &file)
{
#ifdef Q_OS_LINUX
    // "1: FLOCK  ADVISORY  WRITE 1234 00:18:3 0 EOF". For a program that waits for a lock, "->" follows the
    // number.
    QFile list(QStringLiteral("/proc/locks"));
    if (!list.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray inode = QStringLiteral("%1:%2:%3")
                                 .arg(major(file.st_dev), 2, 16, QLatin1Char('0'))
                                 .arg(minor(file.st_dev), 2, 16, QLatin1Char('0'))
                                 .arg(file.st_ino)
                                 .toLatin1();
    const QList<QByteArray> lines = list.readAll().split('\n');
    for (const QByteArray &line : lines) {
        const QList<QByteArray> words = line.simplified().split(' ');
        if (words.value(1) == "FLOCK" && words.value(5) == inode)
            return words.value(4).toLongLong();
    }
#else
    Q_UNUSED(file)
#endif
    return 0;
}

static QString lockedBy(qint64 process)
{
    const QString program =
        process > 0 ? QLatin1String("the ") + processText(process) : QStringLiteral("another program");
    return busyText(QStringLiteral("the port is locked by %1").arg(program));
}

QString descriptorLockOn(const QString &path)
{
    struct stat port = {};
    if (::stat(QFile::encodeName(path).constData(), &port) != 0)
        return {};
    const qint64 process = lockingProcess(port);
    return process == 0 ? QString() : lockedBy(process);
}

QString lockDescriptor(int descriptor)
{
    if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK)
        return {};
    struct stat port = {};
    return lockedBy(::fstat(descriptor, &port) == 0 ? lockingProcess(port) : 0);
}

#else

QString descriptorLockOn(const QString &)
{
    return {};
}

QString lockDescriptor(int)
{
    return {};
}

#endif
