#pragma once

#include <functional>
#include <optional>

#include <QElapsedTimer>
#include <QTimer>

/// Checks that something happens a given time after its start, with a tolerance of one millisecond.
///
///     TimingProbe timing(500, [&] { return port.isOpen(); });
///     begin();
///     timing.actionStarted();
///     QTRY_VERIFY(timing.isOver());
///     QCOMPARE(timing.verdict(), "in time");
///
/// The timers of a thread fire in the order in which they are due, even if all of them are late. One timer is
/// due before the expected moment and one after it, so the check is reliable even on a busy machine.
class TimingProbe : public QObject
{
public:
    /// Starts the clock. \a hasHappened must become true after \a milliseconds.
    TimingProbe(int milliseconds, std::function<bool()> hasHappened)
        : _milliseconds(milliseconds)
        , _hasHappened(std::move(hasHappened))
    {
        _clock.start();
        checkAfter(milliseconds - 1, _sooner);
    }
    /// Must be called right after the action that makes it happen.
    void actionStarted() { checkAfter(_milliseconds + 1, _later); }

    /// Returns true when both checks have been made.
    bool isOver() const { return _later.has_value(); }
    /// "in time", "too early" or "too late".
    const char *verdict() const
    {
        if (_sooner.value_or(false) || _clock.elapsed() < _milliseconds)
            return "too early";
        return _later.value_or(false) ? "in time" : "too late";
    }

private:
    void checkAfter(int milliseconds, std::optional<bool> &seen)
    {
        QTimer::singleShot(milliseconds, Qt::PreciseTimer, this, [this, &seen] { seen = _hasHappened(); });
    }

    const int _milliseconds;
    const std::function<bool()> _hasHappened;
    QElapsedTimer _clock;
    std::optional<bool> _sooner;
    std::optional<bool> _later;
};
