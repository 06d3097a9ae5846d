#pragma once

#include <QByteArray>
#include <QString>

/// Composes one diagnostic message and hands it on when it goes out of scope, at the end of the statement:
///
///     zvDebug() << "port name:" << info.portName;
///
/// Each item is followed by one blank, the last one too. Literals stand bare, numbers in decimal, texts and
/// byte strings between plain double quotes with their content raw, line ends included. The toolkit's own
/// stream drops the last blank and escapes what is quoted, and the session log's format is neither.
class ZVMessage
{
public:
    explicit ZVMessage(QtMsgType level)
        : _level(level)
    {
        _text.reserve(mostOfAMessage);
    }
    ~ZVMessage();

    /// A literal, bare. Device output comes this way too: each byte is one character, up to the first zero
    /// byte.
    ZVMessage &operator<<(const char *literal);
    /// A text, between double quotes.
    ZVMessage &operator<<(const QString &text);
    /// A byte string, between double quotes; each byte is one character.
    ZVMessage &operator<<(const QByteArray &bytes);
    /// A number, in decimal.
    ZVMessage &operator<<(int number);

private:
    Q_DISABLE_COPY_MOVE(ZVMessage)

    static constexpr qsizetype mostOfAMessage = 120; // all but a few are shorter

    QtMsgType _level;
    QString _text;
};

/// Delivers every message to the message handler, whatever Qt's logging rules say (QT_LOGGING_RULES,
/// qtlogging.ini). The rules still decide on debug and info messages of named categories, such as Qt's own.
void enableAllMessages();

/// A debug message: state changes and traces ("D:" in the session log).
inline ZVMessage zvDebug()
{
    return ZVMessage(QtDebugMsg);
}
/// A warning: the device's raw output ("W:"), which the console view shows.
inline ZVMessage zvWarning()
{
    return ZVMessage(QtWarningMsg);
}
/// Something failed that the user should know of ("C:"); the console view shows it too.
inline ZVMessage zvCritical()
{
    return ZVMessage(QtCriticalMsg);
}
