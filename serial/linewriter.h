#pragma once

#include <QtGlobal>

class QSerialPort;

/// Hands \a size bytes to the system before it returns. Gives how many the system took, which is fewer when
/// it takes none for \a patienceMs milliseconds; -1 when the line is gone.
qint64 writeThrough(QSerialPort &port, const char *data, qint64 size, int patienceMs);

/// The same by Qt's port alone, for systems whose ports are not file descriptors. It may read what has come
/// meanwhile, and what the system does not take in time stays with Qt, which sends it later.
qint64 writeByPort(QSerialPort &port, const char *data, qint64 size, int patienceMs);
