#pragma once

#include <utility>

#include <QByteArray>

/// Cuts lines out of bytes. CR LF, a lone CR and a lone LF end a line alike; a line is told of at its CR
/// already.
class LineCutter
{
public:
    enum Outcome {
        Text,    ///< the byte belongs to the line
        LineEnd, ///< the line is whole: take() it
        Nothing, ///< the LF of a CR LF
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

    /// How much of a line there is.
    qsizetype size() const { return _line.size(); }
    /// The line, which is gone from here then.
    QByteArray take() { return std::exchange(_line, QByteArray()); }

private:
    QByteArray _line;
    bool _afterReturn = false;
};
