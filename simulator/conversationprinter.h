#pragma once

#include <QElapsedTimer>
#include <QTextStream>

#include "simulator/simulatedtolvar.h"

/// Returns the bytes as readable text: decoded as UTF-8 if they are valid, otherwise as Latin-1, with control
/// characters as \xNN.
QString readable(const QByteArray &bytes);

/// Prints a device's conversation with its host to standard output: '>' marks what the device receives, '<'
/// what it sends, '*' a note.
class ConversationPrinter
{
public:
    /// If \a isVerbose is true, prints whole documents, and also prompts and traces.
    explicit ConversationPrinter(bool isVerbose);

    void print(SimulatedTolvar::Speech what, const QByteArray &text);
    /// Prints a note that is not part of the conversation.
    void printNote(const QString &text);

private:
    void line(char mark, const QString &text);

    const bool _isVerbose;
    QTextStream _out;
    QElapsedTimer _clock;
};
