#include "serial/portopening.h"

#include <QSerialPort>

#ifdef Q_OS_UNIX

#include <cerrno>

#include <QFile>

#include <unistd.h>

#include "serial/descriptorlock.h"
#include "serial/lockfile.h"
#include "serial/systemtext.h"

static QString permissionText(const QString &path)
{
    const QString group = groupText(path);
    if (group.isEmpty())
        return systemText(EACCES);
    return QStringLiteral("%1; the port belongs to the group \"%2\"").arg(systemText(EACCES), group);
}

/// What prevents opening the port, as far as this can be found without opening it.
static QString obstacleTo(const QString &portName, const QString &path)
{
    if (::access(QFile::encodeName(path).constData(), R_OK | W_OK) != 0)
        return errno == EACCES ? permissionText(path) : systemText(errno);
    QString obstacle = lockFileObstacle(portName);
    return obstacle.isEmpty() ? descriptorLockOn(path) : obstacle;
}

QString openPort(QSerialPort &port)
{
    const QString name = port.portName();
    const QString path = name.startsWith(QLatin1Char('/')) ? name : QLatin1String("/dev/") + name;
    QString obstacle = obstacleTo(name, path);
    if (!obstacle.isEmpty())
        return obstacle;
    if (!port.open(QIODevice::ReadWrite))
        return port.errorString() == qt_error_string(EACCES) ? permissionText(path) : port.errorString();
    QString lock = lockDescriptor(port.handle());
    if (!lock.isEmpty())
        port.close();
    return lock;
}

#else

QString openPort(QSerialPort &port)
{
    return port.open(QIODevice::ReadWrite) ? QString() : port.errorString();
}

#endif
