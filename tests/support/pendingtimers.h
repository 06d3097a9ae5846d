#pragma once

#include <QAbstractEventDispatcher>

/// The single-shot timers that were started after this object was created, as known to the event dispatcher.
class PendingTimers
{
public:
    PendingTimers()
    {
        forEachTimer([this](const TimerInfo &timer) { _earlier += timer.timerId; });
    }

    /// The intervals in milliseconds of the timers that have not fired yet, in the order in which they were
    /// started.
    QList<int> intervals() const
    {
        QList<int> found;
        forEachTimer([&](const TimerInfo &timer) {
            if (!_earlier.contains(timer.timerId))
                found += timer.interval;
        });
        return found;
    }

private:
    using TimerInfo = QAbstractEventDispatcher::TimerInfo;

    template <typename Visit>
    static void forEachTimer(Visit visit)
    {
        // A single shot uses an object of its own, which the event dispatcher knows until the timer fires.
        const auto *dispatcher = QAbstractEventDispatcher::instance();
        for (QObject *holder : dispatcher->children()) {
            for (const TimerInfo &timer : dispatcher->registeredTimers(holder))
                visit(timer);
        }
    }

    QList<int> _earlier; // timer ids; they are not reused soon
};
