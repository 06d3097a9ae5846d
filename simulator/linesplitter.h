#pragma once

#include <utility>

#include <QByteArray>

/// Splits bytes into lines. CR LF, a lone CR and a lone LF each end a line. A line that ends in CR LF is
/// reported at the CR.
class LineSplitter
{
public:
    enum Outcome {
        Text,    ///< the byte is part of the line
        LineEnd, ///< the line is complete: call take()
        Nothing, ///< the byte is the LF of a CR LF
    };

    Outcome feed(char byte)
    {
        const bool afterReturn = std::exchange(_afterReturn, byte == '\r');
        if (byte == '\n' && afterReturn)
            return Nothing;
        if (byte == '\r' || byte == '\n')
            return LineEnd;
        _line += byte;
        return Text;
    }

    /// The length of the line so far.
    qsizetype size() const { return _line.size(); }
    /// Returns the line and clears it.
    QByteArray take() { return std::exchange(_line, QByteArray()); }

private:
    QByteArray _line;
    bool _afterReturn = false;
};
