#pragma once

#include <functional>
#include <utility>

#include <QStringList>

/// Records each diagnostic message while it lives, with the prefix of the session log ("D:", "W:", "C:"), and
/// can call a function at each, so that a test can check the state at that moment. Several may exist at a
/// time. The last one restores the previous message handler.
class MessageSpy
{
public:
    using Callback = std::function<void(const QString &message)>;

    explicit MessageSpy(Callback callback = {});
    ~MessageSpy();

    /// From now on, calls \a callback with each message when it is emitted.
    void setCallback(Callback callback) { _callback = std::move(callback); }
    /// The messages so far that begin with \a prefix.
    QStringList messages(const QString &prefix = QString()) const;
    /// Returns the messages so far and clears them.
    QStringList take() { return std::exchange(_messages, {}); }

private:
    Q_DISABLE_COPY_MOVE(MessageSpy)
    static void record(QtMsgType type, const QMessageLogContext &, const QString &message);

    QStringList _messages;
    Callback _callback;
};
