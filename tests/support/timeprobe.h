#pragma once

#include <functional>
#include <optional>

#include <QTimer>

/// Looks once whether something has happened, a given time after it was made. A thread's timers fire in the
/// order in which they are due, however late they all are: with one probe due before a timer and one due
/// after it, the time between is known on the busiest computer.
class TimeProbe : public QObject
{
public:
    TimeProbe(int milliseconds, const std::function<bool()> &hasHappened)
    {
        QTimer::singleShot(milliseconds, Qt::PreciseTimer, this,
                           [this, hasHappened] { _seen = hasHappened(); });
    }

    bool hasLooked() const { return _seen.has_value(); }
    bool sawIt() const { return _seen.value_or(false); }

private:
    Q_DISABLE_COPY_MOVE(TimeProbe)

    std::optional<bool> _seen;
};
