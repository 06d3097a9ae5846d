#pragma once

#include <QList>

/// The single-shot timers that were started since it was created, as known to the event dispatcher.
class PendingTimers
{
public:
    PendingTimers();

    /// The intervals in milliseconds of those that have not fired yet, in the order in which they were
    /// started.
    QList<int> underWay() const;

private:
    QList<int> _earlier; // timer ids; they are not reused soon
};
