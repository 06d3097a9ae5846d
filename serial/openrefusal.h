#pragma once

#include <QString>

/// Leaves one critical message with the port's name and \a reason. The same reason for the same port is not
/// told again until forgetRefusal().
void reportRefusal(const QString &portName, const QString &reason);

/// The port has opened or gone: its next refusal is news again.
void forgetRefusal(const QString &portName);
