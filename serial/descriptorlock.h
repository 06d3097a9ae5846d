#pragma once

#include <QString>

// Programs lock a port that they have open with flock().

/// Returns an error text that names the process that has locked the port; empty if no lock is known. Does not
/// open the port: opening a port that another program uses changes its settings.
QString descriptorLockOn(const QString &path);

/// Locks the open port until it is closed. Returns the same text if another program has locked it; empty if
/// the lock was obtained, or if the system cannot lock ports.
QString lockDescriptor(int descriptor);
