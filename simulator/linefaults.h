#pragma once

#include <QByteArray>

/// What can go wrong between the device and the computer. None of it does by default. Bytes are counted from
/// the last plugging on.
struct LineFaults {
    /// How what the device sends reaches the computer.
    enum Reads {
        AsTheyCome,
        Single, ///< each byte by itself, when the one before has been read
        Merged  ///< all that comes within a tenth of a second at once
    };

    qsizetype pulledOutAfter = -1; ///< bytes in both directions together, once; -1: never
    qsizetype insertAt = -1;       ///< bytes sent by the device ahead of the insertion; -1: nowhere
    QByteArray insertion;          ///< comes to the computer as if the device had sent it
    Reads reads = AsTheyCome;
};
