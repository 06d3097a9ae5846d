#pragma once

#include <functional>
#include <utility>

#include <QStringList>

/// Records every diagnostic message while it lives, each as the session log would prefix it ("D:", "W:",
/// "C:"). The receiver that was there before is back afterwards. One at a time.
class MessageRecorder
{
public:
    MessageRecorder();
    ~MessageRecorder();

    /// The messages so far.
    QStringList messages() const { return _messages; }
    /// The messages so far that begin with \a prefix.
    QStringList messages(const QString &prefix) const;
    /// The messages so far, forgotten from here on.
    QStringList take();
    /// Has \a heard called with each message from here on, at the moment it is given.
    void tellOf(std::function<void(const QString &)> heard) { _heard = std::move(heard); }

private:
    Q_DISABLE_COPY_MOVE(MessageRecorder)
    static void record(QtMsgType type, const QMessageLogContext &, const QString &message);

    QStringList _messages;
    std::function<void(const QString &)> _heard;
    QtMessageHandler _earlier;
};
