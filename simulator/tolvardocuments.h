#pragma once

#include <QByteArray>

#include "simulator/tolvarsetup.h"

/// The documents the device answers with. Each byte of a value is written as it stands, markup characters as
/// entities; nothing declares an encoding.
namespace TolvarDocuments
{
/// The answer to "get".
QByteArray status(const TolvarSetup &setup, const TolvarConfiguration &current, const QByteArray &testResult);
/// The answer to "scan": the networks that are not hidden, in the order of \a air.
QByteArray scanResults(const QList<TolvarNetwork> &air);
/// The answer to "test".
QByteArray testResults(const QByteArray &ssid, const QByteArray &description, int result);
/// The answer to "get_log_file".
QByteArray logFile(const QByteArray &text);
} // namespace TolvarDocuments
