#include "serial/portrefusal.h"

#include <QFileInfo>
#include <QSerialPort>
#include <QSerialPortInfo>
#include <QtGlobal>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <unistd.h>
#endif

namespace
{
/// Where the system keeps the port: its node, where there are nodes.
QString location(const QSerialPort &port)
{
    return QSerialPortInfo(port).systemLocation();
}
} // namespace

QString portRefusal(const QSerialPort &port)
{
    QString reason = port.errorString();
    QString hint;
#ifdef Q_OS_UNIX
    const QString node = location(port);
    if (port.error() == QSerialPort::PermissionError) {
        if (::access(QFile::encodeName(node).constData(), R_OK | W_OK) == 0) {
            // The node itself is open to the user: another program holds it, by its lock file or exclusively.
            reason = qt_error_string(EBUSY);
        } else {
            reason = qt_error_string(EACCES);
            hint = QStringLiteral("; the port belongs to the group \"%1\"").arg(QFileInfo(node).group());
        }
    }
#endif
    return QStringLiteral("Cannot open %1: %2%3").arg(port.portName(), reason, hint);
}
