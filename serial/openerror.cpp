#include "serial/openerror.h"

#include <QHash>

// Intentional leak: ports may be opened while statics are destroyed.
static QHash<QString, QString> &loggedErrors()
{
    static auto *const errors = new QHash<QString, QString>;
    return *errors;
}

void logOpenError(const QString &portName, const QString &reason)
{
    QString &logged = loggedErrors()[portName];
    if (logged == reason)
        return;
    logged = reason;
    qCritical("%s", qUtf8Printable(QStringLiteral("Opening the port %1 failed: %2").arg(portName, reason)));
}

void forgetOpenError(const QString &portName)
{
    loggedErrors().remove(portName);
}
