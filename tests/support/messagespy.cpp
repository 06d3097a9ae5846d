#include "tests/support/messagespy.h"

#include <QHash>

#include "messages/diagnostics.h"

namespace
{
QtMessageHandler earlierHandler = nullptr;

QList<MessageSpy *> &spies()
{
    static QList<MessageSpy *> all;
    return all;
}
} // namespace

MessageSpy::MessageSpy(Callback callback)
    : _callback(std::move(callback))
{
    if (spies().isEmpty()) {
        enableAllMessages();
        earlierHandler = qInstallMessageHandler(record);
    }
    spies() += this;
}

MessageSpy::~MessageSpy()
{
    spies().removeOne(this);
    if (spies().isEmpty())
        qInstallMessageHandler(earlierHandler);
}

QStringList MessageSpy::messages(const QString &prefix) const
{
    QStringList found;
    for (const QString &message : _messages) {
        if (message.startsWith(prefix))
            found += message;
    }
    return found;
}

void MessageSpy::record(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    // This message is from the offscreen platform plugin, not from the program.
    if (message == QLatin1String("This plugin does not support propagateSizeHints()"))
        return;
    static const QHash<QtMsgType, QString> prefixes = {
        {QtDebugMsg, "D:"}, {QtInfoMsg, "I:"}, {QtWarningMsg, "W:"}, {QtCriticalMsg, "C:"}};
    for (MessageSpy *spy : std::as_const(spies())) {
        spy->_messages += prefixes.value(type) + message;
        if (spy->_callback)
            spy->_callback(spy->_messages.constLast());
    }
}
