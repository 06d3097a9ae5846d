#pragma once

#include <QByteArray>
#include <QList>

#include "simulator/tolvarsetup.h"

/// One byte the device has received, and when: nanoseconds of the system's monotonic clock.
struct TolvarByte {
    char value = 0;
    qint64 time = 0;
};

/// One line the device has received, without its end, and the place of its first byte in TolvarState::bytes.
struct TolvarLine {
    QByteArray text;
    qsizetype firstByte = 0;
};

/// What can be told of a simulated device from outside.
struct TolvarState {
    QList<TolvarByte> bytes;     ///< all that has arrived since it was made, line ends too
    QList<TolvarLine> lines;     ///< noted on arrival, whether the console has got to them or not
    TolvarConfiguration pending; ///< what it works with now
    TolvarConfiguration saved;   ///< what outlasts a loss of power
    QByteArray testResult;
    int sessions = 0;       ///< how often its console has been woken
    bool awake = false;     ///< a console session is on
    bool isWorking = false; ///< a command or its prompt takes its time; lines wait
    bool exited = false;    ///< the last session was ended by "exit"

    /// The received lines' texts.
    QList<QByteArray> lineTexts() const;
};
