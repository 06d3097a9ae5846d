#include "app/diagnostics.h"

#include <QMessageLogger>

ZVMessage::~ZVMessage()
{
    // Not by qDebug(), which would format the finished text once more. What it asks, this does: categories,
    // and whether warnings are fatal.
    qt_message_output(_level, QMessageLogContext(), _text);
}

ZVMessage &ZVMessage::operator<<(const char *literal)
{
    _text += QLatin1String(literal);
    _text += QLatin1Char(' ');
    return *this;
}

ZVMessage &ZVMessage::operator<<(const QString &text)
{
    _text += QLatin1Char('"');
    _text += text;
    _text += QLatin1String("\" ");
    return *this;
}

ZVMessage &ZVMessage::operator<<(const QByteArray &bytes)
{
    return *this << QString::fromLatin1(bytes);
}

ZVMessage &ZVMessage::operator<<(int number)
{
    _text += QString::number(number);
    _text += QLatin1Char(' ');
    return *this;
}
