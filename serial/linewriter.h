#pragma once

#include <QtGlobal>

class QSerialPort;

/// Passes \a size bytes to the system before it returns. Returns how many the system took: fewer if it takes
/// none for \a writeTimeoutMs milliseconds, -1 if the line is gone.
qint64 writeThrough(QSerialPort &port, const char *data, qint64 size, int writeTimeoutMs);

/// The same with QSerialPort only, for systems whose ports are not file descriptors. It may read received
/// bytes in the meantime. Bytes that the system does not take in time stay in Qt's buffer, and Qt sends them
/// later.
qint64 writeByPort(QSerialPort &port, const char *data, qint64 size, int writeTimeoutMs);
