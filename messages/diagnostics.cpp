#include "messages/diagnostics.h"

#include <cstring>

#include <QLoggingCategory>
#include <QMessageLogger>

namespace
{
QLoggingCategory::CategoryFilter theLoggingRules = nullptr;

void enableMessages(QLoggingCategory *category)
{
    theLoggingRules(category);
    // Other categories belong to Qt. Their debug messages would flood the log.
    if (std::strcmp(category->categoryName(), "default") == 0) {
        category->setEnabled(QtDebugMsg, true);
        category->setEnabled(QtInfoMsg, true);
    }
    category->setEnabled(QtWarningMsg, true);
    category->setEnabled(QtCriticalMsg, true);
}
} // namespace

void enableAllMessages()
{
    // Not setFilterRules(): rules from the environment override those that a program sets.
    if (!theLoggingRules)
        theLoggingRules =
            QLoggingCategory::installFilter(nullptr); // Qt's own filter, which applies the rules
    QLoggingCategory::installFilter(enableMessages);
}

ZVMessage::~ZVMessage()
{
    // Not qDebug(), which would format the finished text again. This function makes the same checks as
    // qDebug(): whether the category is enabled, and whether warnings are fatal.
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
