#pragma once

#include <QByteArray>
#include <QList>

#include "simulator/deviceconfig.h"

/// One byte that the device received, and the time: nanoseconds of the system's monotonic clock.
struct TolvarByte {
    char value = 0;
    qint64 time = 0;
};

/// One line that the device received, without its line end, and the index of its first byte in
/// TolvarState::bytes.
struct TolvarLine {
    QByteArray text;
    qsizetype firstByte = 0;
};

/// The state of a simulated device as the tests see it.
struct TolvarState {
    QList<TolvarByte> bytes;     ///< all bytes since the object was created, line ends included
    QList<TolvarLine> lines;     ///< recorded on arrival, before the console processes them
    TolvarConfiguration pending; ///< the configuration in use
    TolvarConfiguration saved;   ///< the configuration that survives a loss of power
    QByteArray testResult;
    int sessions = 0;       ///< how many times the console has been woken
    bool awake = false;     ///< a console session is active
    bool isWorking = false; ///< a command or its prompt is delayed; lines are not processed
    bool exited = false;    ///< "exit" ended the last session

    /// The text of the received lines.
    QList<QByteArray> lineTexts() const;
};
