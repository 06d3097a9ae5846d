#include "tests/support/pendingtimers.h"

#include <QAbstractEventDispatcher>

namespace
{
using TimerInfo = QAbstractEventDispatcher::TimerInfo;

QList<TimerInfo> timersUnderWay()
{
    // A single shot uses an object of its own, which the event dispatcher knows until the timer fires.
    const auto *dispatcher = QAbstractEventDispatcher::instance();
    QList<TimerInfo> timers;
    for (QObject *holder : dispatcher->children())
        timers += dispatcher->registeredTimers(holder);
    return timers;
}
} // namespace

PendingTimers::PendingTimers()
{
    const QList<TimerInfo> timers = timersUnderWay();
    for (const TimerInfo &timer : timers)
        _earlier += timer.timerId;
}

QList<int> PendingTimers::underWay() const
{
    QList<int> intervals;
    const QList<TimerInfo> timers = timersUnderWay();
    for (const TimerInfo &timer : timers) {
        if (!_earlier.contains(timer.timerId))
            intervals += timer.interval;
    }
    return intervals;
}
