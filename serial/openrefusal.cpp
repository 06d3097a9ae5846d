#include "serial/openrefusal.h"

#include <QHash>

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
