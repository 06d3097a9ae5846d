#pragma once

#include <functional>

#include <QString>

/// Calls a function at each diagnostic message while it lives, so that a test can check the state at that
/// moment. The message is then passed to the previous message handler. Only one may exist at a time.
class MessageSpy
{
public:
    explicit MessageSpy(std::function<void(const QString &)> callback);
    ~MessageSpy();

private:
    Q_DISABLE_COPY_MOVE(MessageSpy)
    static void pass(QtMsgType type, const QMessageLogContext &context, const QString &message);

    std::function<void(const QString &)> _callback;
    QtMessageHandler _earlier;
};
