#pragma once

#include <QByteArray>
#include <QString>

/// Composes one diagnostic message and delivers it when it goes out of scope, at the end of the statement:
///
///     zvDebug() << "port name:" << info.portName;
///
/// A space follows each item, including the last one. Literals are not quoted, numbers are decimal, strings
/// and byte arrays are in plain double quotes with their content unchanged, including line ends. QDebug drops
/// the last space and escapes quoted content; the format of the session log does neither.
class ZVMessage
{
public:
    explicit ZVMessage(QtMsgType level)
        : _level(level)
    {
        _text.reserve(typicalMessageLength);
    }
    ~ZVMessage();

    /// A literal, without quotes. Device output is also passed this way: each byte is one character, up to
    /// the first zero byte.
    ZVMessage &operator<<(const char *literal);
    /// A string, in double quotes.
    ZVMessage &operator<<(const QString &text);
    /// A byte array, in double quotes; each byte is one character.
    ZVMessage &operator<<(const QByteArray &bytes);
    /// A number, in decimal.
    ZVMessage &operator<<(int number);

private:
    Q_DISABLE_COPY_MOVE(ZVMessage)

    static constexpr qsizetype typicalMessageLength = 120; // characters; few messages are longer

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
/// A failure that the user should know about ("C:"); the console view shows it too.
inline ZVMessage zvCritical()
{
    return ZVMessage(QtCriticalMsg);
}
