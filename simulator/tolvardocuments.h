#pragma once

#include <QByteArray>

#include "simulator/deviceconfig.h"

/// The documents that the device replies with. The bytes of a value are written unchanged, except that markup
/// characters become entities, and that these bytes become '?': in attributes 0x00, 0x02 and 0x03; in
/// elements all control characters but tab and line ends. No document declares an encoding.
namespace TolvarDocuments
{
/// The reply to "get".
QByteArray status(const DeviceConfig &config, const TolvarConfiguration &current,
                  const QByteArray &testResult);
/// The reply to "scan": the networks that are not hidden, in the order of \a air.
QByteArray scanResults(const QList<TolvarNetwork> &air);
/// The reply to "test".
QByteArray testResults(const QByteArray &ssid, const QByteArray &description, int result);
/// The reply to "get_log_file".
QByteArray logFile(const QByteArray &text);
} // namespace TolvarDocuments
