#include "app/diagnostics.h"

#include <QMessageLogger>

ZVMessage::~ZVMessage()
{
    const QByteArray text = _text.toUtf8();
    if (_level == QtWarningMsg)
        qWarning("%s", text.constData());
    else
        qDebug("%s", text.constData());
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
