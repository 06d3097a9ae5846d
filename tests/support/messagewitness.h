#pragma once

#include <functional>

#include <QString>

/// Calls somebody at each diagnostic message while it lives, to look at what is done by then and what isn't.
/// The message goes on to the receiver that was there before. One at a time.
class MessageWitness
{
public:
    explicit MessageWitness(std::function<void(const QString &)> callback);
    ~MessageWitness();

private:
    Q_DISABLE_COPY_MOVE(MessageWitness)
    static void pass(QtMsgType type, const QMessageLogContext &context, const QString &message);

    std::function<void(const QString &)> _callback;
    QtMessageHandler _earlier;
};
