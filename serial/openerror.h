#pragma once

#include <QString>

/// Logs one critical message with the port's name and \a reason. The same reason for the same port is not
/// logged again until forgetOpenError().
void logOpenError(const QString &portName, const QString &reason);

/// Call this when the port has opened or was removed: its next open error is logged, even if it is the same.
void forgetOpenError(const QString &portName);
