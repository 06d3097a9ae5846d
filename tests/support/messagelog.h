#pragma once

#include <utility>

#include <QStringList>

/// Collects the program's messages while it lives, each with its level before it: "critical: ...".
class MessageLog
{
public:
    MessageLog()
    {
        _current = this;
        _previous = qInstallMessageHandler(&MessageLog::add);
    }
    ~MessageLog()
    {
        qInstallMessageHandler(_previous);
        _current = nullptr;
    }
    MessageLog(const MessageLog &) = delete;
    MessageLog &operator=(const MessageLog &) = delete;

    /// The messages so far, in order.
    QStringList messages() const { return _messages; }
    /// The messages so far, which are forgotten by that.
    QStringList take() { return std::exchange(_messages, {}); }

private:
    static void add(QtMsgType type, const QMessageLogContext &, const QString &text)
    {
        static const char *const levels[] = {"debug", "warning", "critical", "fatal", "info"};
        _current->_messages.append(QLatin1String(levels[type]) + QLatin1String(": ") + text);
    }

    static inline MessageLog *_current = nullptr;
    QtMessageHandler _previous = nullptr;
    QStringList _messages;
};
