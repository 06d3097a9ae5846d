#pragma once

#include <QString>

// The system's descriptions of what prevents opening a port.

/// The text of an errno, such as "Permission denied".
QString systemText(int error);
/// The text of EBUSY, followed by the reason.
QString busyText(const QString &reason);
/// "process 1234 (minicom)"; without the name if the system does not give it.
QString processText(qint64 process);
/// The user that owns a file: the name, or the number of a user without a name.
QString ownerText(const QString &path);
/// The group that owns a file, in the same form; empty if there is no such file.
QString groupText(const QString &path);
