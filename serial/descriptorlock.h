#pragma once

#include <QString>

// Programs lock a port that they have open by flock().

/// Returns that another program has locked the port, with its process, and empty when none is known to. The
/// port is not opened for this: opening a port that another program uses changes the settings under it.
QString descriptorLockOn(const QString &path);

/// Locks the open port until it is closed. Returns the same when another program has locked it; empty when it
/// is locked, and when the system can't lock ports.
QString lockDescriptor(int descriptor);
