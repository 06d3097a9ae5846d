#include "tests/support/messagerecorder.h"

#include <utility>

#include "messages/diagnostics.h"

namespace
{
MessageRecorder *theRecorder = nullptr;
}

MessageRecorder::MessageRecorder()
{
    theRecorder = this;
    enableAllMessages();
    _earlier = qInstallMessageHandler(record);
}

MessageRecorder::~MessageRecorder()
{
    qInstallMessageHandler(_earlier);
    theRecorder = nullptr;
}

QStringList MessageRecorder::messages(const QString &prefix) const
{
    QStringList found;
    for (const QString &message : _messages) {
        if (message.startsWith(prefix))
            found += message;
    }
    return found;
}

QStringList MessageRecorder::take()
{
    return std::exchange(_messages, {});
}

void MessageRecorder::record(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    // This message is from the offscreen platform plugin, not from the program.
    if (message == QLatin1String("This plugin does not support propagateSizeHints()"))
        return;
    static constexpr struct {
        QtMsgType type;
        const char *prefix;
    } prefixes[] = {{QtDebugMsg, "D:"}, {QtInfoMsg, "I:"}, {QtWarningMsg, "W:"}, {QtCriticalMsg, "C:"}};
    for (const auto &entry : prefixes) {
        if (entry.type != type)
            continue;
        theRecorder->_messages += QLatin1String(entry.prefix) + message;
        if (theRecorder->_heard)
            theRecorder->_heard(theRecorder->_messages.constLast());
    }
}
