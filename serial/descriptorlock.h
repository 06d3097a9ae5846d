#pragma once

#include <QString>

// Programs lock a port that they have open with flock().

/// Returns that another program has locked the port, and its process; empty if no such lock is known. The
/// port is not opened for this: opening a port that another program uses changes its settings.
QString descriptorLockOn(const QString &path);

/// Locks the open port until it is closed. Returns the same text if another program has locked it; empty if
/// it is locked now, and if the system cannot lock ports.
QString lockDescriptor(int descriptor);
