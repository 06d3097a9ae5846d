#include "simulator/conversationprinter.h"

#include <cstdio>

#include <QStringDecoder>

QString readable(const QByteArray &bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    QString text = utf8(bytes);
    if (utf8.hasError())
        text = QString::fromLatin1(bytes);

    QString shown;
    for (const QChar character : std::as_const(text)) {
        if (character.category() == QChar::Other_Control)
            shown += QStringLiteral("\\x%1").arg(character.unicode(), 2, 16, QLatin1Char('0'));
        else
            shown += character;
    }
    return shown;
}

ConversationPrinter::ConversationPrinter(bool isVerbose)
    : _isVerbose(isVerbose)
    , _out(stdout)
{
    _clock.start();
}

void ConversationPrinter::line(char mark, const QString &text)
{
    const double seconds = static_cast<double>(_clock.elapsed()) / 1000;
    _out << QStringLiteral("[tolvar %1] ").arg(seconds, 8, 'f', 3) << mark << ' ' << text << Qt::endl;
}

void ConversationPrinter::printNote(const QString &text)
{
    line('*', text);
}

void ConversationPrinter::print(SimulatedTolvar::Speech what, const QByteArray &text)
{
    switch (what) {
    case SimulatedTolvar::HostLine:
        line('>', readable(text));
        break;
    case SimulatedTolvar::Reply:
        line('<', readable(text.left(text.indexOf('>') + 1)) + QStringLiteral(" %1 bytes").arg(text.size()));
        if (_isVerbose) {
            for (const QByteArray &row : text.trimmed().split('\n'))
                line('<', QStringLiteral("    ") + readable(row));
        }
        break;
    case SimulatedTolvar::Note:
        printNote(readable(text));
        break;
    case SimulatedTolvar::Prompt:
    case SimulatedTolvar::Trace:
        if (_isVerbose)
            line('<', readable(text.trimmed()));
        break;
    }
}
