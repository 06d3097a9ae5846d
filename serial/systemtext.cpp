#include "serial/systemtext.h"

#include <cerrno>
#include <cstring>

#include <QFile>
#include <QFileInfo>

QString systemText(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

QString busyText(const QString &reason)
{
    return systemText(EBUSY) + QLatin1String("; ") + reason;
}

QString processText(qint64 process)
{
    QString number = QStringLiteral("process %1").arg(process);
    QFile name(QStringLiteral("/proc/%1/comm").arg(process));
    if (!name.open(QIODevice::ReadOnly))
        return number;
    return QStringLiteral("%1 (%2)").arg(number, QString::fromLocal8Bit(name.readAll().trimmed()));
}

QString ownerText(const QString &path)
{
    const QFileInfo file(path);
    const QString name = file.owner();
    return name.isEmpty() ? QString::number(file.ownerId()) : name;
}

QString groupText(const QString &path)
{
    const QFileInfo file(path);
    if (!file.exists())
        return {};
    const QString name = file.group();
    return name.isEmpty() ? QString::number(file.groupId()) : name;
}
