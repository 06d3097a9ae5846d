#pragma once

#include <QByteArray>

/// The faults of the line between the device and the computer. By default there are none. Bytes are counted
/// from the last plug().
struct LineFaults {
    /// How the bytes that the device sends reach the computer.
    enum Reads {
        AsTheyCome,
        Single, ///< each byte separately, after the previous one has been read
        Merged  ///< all bytes of a tenth of a second at once
    };

    qsizetype pulledOutAfter = -1; ///< unplugs, once, after this many bytes in both directions; -1: never
    qsizetype insertAt = -1; ///< number of bytes that the device sends before the insertion; -1: no insertion
    QByteArray insertion;    ///< arrives at the computer as if the device had sent it
    Reads reads = AsTheyCome;
};
