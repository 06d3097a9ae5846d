#include "serial/openerror.h"

#include <QHash>

// Intentional leak: ports may be opened while statics are destroyed.
static QHash<QString, QString> &toldRefusals()
{
    static auto *const told = new QHash<QString, QString>;
    return *told;
}

void logOpenError(const QString &portName, const QString &reason)
{
    QString &told = toldRefusals()[portName];
    if (told == reason)
        return;
    told = reason;
    qCritical("%s", qUtf8Printable(QStringLiteral("Opening the port %1 failed: %2").arg(portName, reason)));
}

void forgetOpenError(const QString &portName)
{
    toldRefusals().remove(portName);
}
