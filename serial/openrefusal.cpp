#include "serial/openrefusal.h"

#include <QHash>
#include <QSerialPort>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <cstring>

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <unistd.h>
#endif

// Lives to the end on purpose: ports may be opened while statics are torn down.
static QHash<QString, QString> &toldRefusals()
{
    static auto *const told = new QHash<QString, QString>;
    return *told;
}

void reportRefusal(const QString &portName, const QString &reason)
{
    QString &told = toldRefusals()[portName];
    if (told == reason)
        return;
    told = reason;
    qCritical("%s", qUtf8Printable(QStringLiteral("Opening the port %1 failed: %2").arg(portName, reason)));
}

void forgetRefusal(const QString &portName)
{
    toldRefusals().remove(portName);
}

#ifdef Q_OS_UNIX

static QString systemText(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

// What the node itself answers, 0 when it opens.
static int errorOfNode(const QString &path)
{
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return errno;
    ::close(descriptor);
    return 0;
}

static QString owningGroup(const QString &path)
{
    const QFileInfo node(path);
    if (!node.exists())
        return {};
    const QString name = node.group();
    return name.isEmpty() ? QString::number(node.groupId()) : name;
}

QString refusalOf(const QSerialPort &port)
{
    const QString name = port.portName();
    const QString path = name.startsWith(QLatin1Char('/')) ? name : QLatin1String("/dev/") + name;
    // Qt takes a lock file before it looks at the port, and calls whatever stops it there a permission: ask
    // the port itself.
    if (const int error = errorOfNode(path)) {
        const QString group = error == EACCES ? owningGroup(path) : QString();
        if (group.isEmpty())
            return systemText(error);
        return QStringLiteral("%1; the port belongs to the group \"%2\"").arg(systemText(error), group);
    }
    const bool noLockFolder =
        port.errorString() == QSerialPort::tr("Permission error while creating lock file");
    if (port.error() == QSerialPort::PermissionError && !noLockFolder)
        return systemText(EBUSY); // somebody else holds the lock file
    return port.errorString();
}

#else

QString refusalOf(const QSerialPort &port)
{
    return port.errorString();
}

#endif
