#pragma once

#include <QElapsedTimer>
#include <QTextStream>

#include "simulator/simulatedtolvar.h"

/// Bytes as people can read them: UTF-8 where they are, else Latin-1, control characters as \xNN.
QString readable(const QByteArray &bytes);

/// Writes the device's side of a conversation to standard output, one line for each thing said.
class ConversationPrinter
{
public:
    /// \a isVerbose shows documents in full, and prompts and traces too.
    explicit ConversationPrinter(bool isVerbose);

    void print(SimulatedTolvar::Speech what, const QByteArray &text);
    /// A remark that is no part of the conversation.
    void remark(const QString &text);

private:
    void line(char mark, const QString &text);

    const bool _isVerbose;
    QTextStream _out;
    QElapsedTimer _clock;
};
