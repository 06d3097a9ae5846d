#pragma once

#include <QString>

class QSerialPort;

/// Why the system refuses to open \a port, in its own plain words, such as "Permission denied". For a
/// permission, the group that owns the port is named as well. To be asked right after the failed open.
QString refusalOf(const QSerialPort &port);

/// Leaves one critical message with the port's name and \a reason. The same reason for the same port is not
/// told again until forgetRefusal().
void reportRefusal(const QString &portName, const QString &reason);

/// The port has opened or gone: its next refusal is news again.
void forgetRefusal(const QString &portName);
