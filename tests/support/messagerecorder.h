#pragma once

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

private:
    Q_DISABLE_COPY_MOVE(MessageRecorder)
    static void record(QtMsgType type, const QMessageLogContext &, const QString &message);

    QStringList _messages;
    QtMessageHandler _earlier;
};
