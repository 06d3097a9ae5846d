#pragma once

#include <QString>

// The system's words for what stands in the way of a port.

/// The text of an errno, such as "Permission denied".
QString systemText(int error);
/// The text of EBUSY, with the reason behind it.
QString busyText(const QString &reason);
/// "process 1234 (minicom)"; without the name where the system does not give it.
QString processText(qint64 process);
/// The user that owns a file: the name, or the number of a user without one.
QString ownerText(const QString &path);
/// The group that owns a file, in the same way; empty when there is no such file.
QString groupText(const QString &path);
