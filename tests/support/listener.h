#pragma once

#include <utility>

#include <QObject>

/// Has \a call called at each signal of a sender, for as long as the listener lives: what the call refers to
/// need not live longer.
class Listener
{
public:
    template <typename Sender, typename Signal, typename Call>
    Listener(const Sender *sender, Signal signal, Call call)
    {
        QObject::connect(sender, signal, &_here, std::move(call));
    }

private:
    QObject _here;
};
