#include "tests/support/messagewitness.h"

#include <utility>

namespace
{
MessageWitness *theWitness = nullptr;
}

MessageWitness::MessageWitness(std::function<void(const QString &)> callback)
    : _callback(std::move(callback))
{
    theWitness = this;
    _earlier = qInstallMessageHandler(pass);
}

MessageWitness::~MessageWitness()
{
    qInstallMessageHandler(_earlier);
    theWitness = nullptr;
}

void MessageWitness::pass(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    theWitness->_callback(message);
    theWitness->_earlier(type, context, message);
}
