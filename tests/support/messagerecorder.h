#pragma once

#include <functional>
#include <utility>

#include <QStringList>

/// Records every diagnostic message while it lives, each with the prefix of the session log ("D:", "W:",
/// "C:"). The previous message handler is restored afterwards. Only one may exist at a time.
class MessageRecorder
{
public:
    MessageRecorder();
    ~MessageRecorder();

    /// The messages so far.
    QStringList messages() const { return _messages; }
    /// The messages so far that begin with \a prefix.
    QStringList messages(const QString &prefix) const;
    /// Returns the messages so far and clears them.
    QStringList take();
    /// From now on, calls \a heard with each message when it is emitted.
    void tellOf(std::function<void(const QString &)> heard) { _heard = std::move(heard); }

private:
    Q_DISABLE_COPY_MOVE(MessageRecorder)
    static void record(QtMsgType type, const QMessageLogContext &, const QString &message);

    QStringList _messages;
    std::function<void(const QString &)> _heard;
    QtMessageHandler _earlier;
};
