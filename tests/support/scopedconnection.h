#pragma once

#include <utility>

#include <QObject>

/// Calls \a call at each signal of a sender until the ScopedConnection is destroyed. The objects that \a call
/// refers to need not live longer than the ScopedConnection.
class ScopedConnection
{
public:
    template <typename Sender, typename Signal, typename Call>
    ScopedConnection(const Sender *sender, Signal signal, Call call)
    {
        QObject::connect(sender, signal, &_here, std::move(call));
    }

private:
    QObject _here;
};
