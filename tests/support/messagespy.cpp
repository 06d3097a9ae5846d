#include "tests/support/messagespy.h"

#include <utility>

namespace
{
MessageSpy *theWitness = nullptr;
}

MessageSpy::MessageSpy(std::function<void(const QString &)> callback)
    : _callback(std::move(callback))
{
    theWitness = this;
    _earlier = qInstallMessageHandler(pass);
}

MessageSpy::~MessageSpy()
{
    qInstallMessageHandler(_earlier);
    theWitness = nullptr;
}

void MessageSpy::pass(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    theWitness->_callback(message);
    theWitness->_earlier(type, context, message);
}
