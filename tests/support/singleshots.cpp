#include "tests/support/singleshots.h"

#include <QAbstractEventDispatcher>

namespace
{
using TimerInfo = QAbstractEventDispatcher::TimerInfo;

QList<TimerInfo> timersUnderWay()
{
    // A single shot runs on an object of its own, which the dispatcher holds until it has fired.
    const auto *dispatcher = QAbstractEventDispatcher::instance();
    QList<TimerInfo> timers;
    for (QObject *holder : dispatcher->children())
        timers += dispatcher->registeredTimers(holder);
    return timers;
}
} // namespace

SingleShots::SingleShots()
{
    const QList<TimerInfo> timers = timersUnderWay();
    for (const TimerInfo &timer : timers)
        _earlier += timer.timerId;
}

QList<int> SingleShots::underWay() const
{
    QList<int> intervals;
    const QList<TimerInfo> timers = timersUnderWay();
    for (const TimerInfo &timer : timers) {
        if (!_earlier.contains(timer.timerId))
            intervals += timer.interval;
    }
    return intervals;
}
