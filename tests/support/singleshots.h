#pragma once

#include <QList>

/// The single-shot timers that were started since it was made, as the event dispatcher has them.
class SingleShots
{
public:
    SingleShots();

    /// The intervals of those that have not fired yet, in milliseconds, the one started first in front.
    QList<int> underWay() const;

private:
    QList<int> _earlier; // by timer id, which is not used again for long
};
