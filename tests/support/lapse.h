#pragma once

#include <functional>
#include <optional>

#include <QElapsedTimer>
#include <QTimer>

/// Whether something happens a given time after it is begun, neither sooner nor later by a millisecond.
///
///     Lapse lapse(500, [&] { return port.isOpen(); });
///     begin();
///     lapse.hasBegun();
///     QTRY_VERIFY(lapse.isOver());
///     QCOMPARE(lapse.verdict(), "in time");
///
/// A thread's timers fire in the order in which they are due, however late they all are: with one that is due
/// before the moment and one that is due after it, the time between is known on the busiest computer.
class Lapse : public QObject
{
public:
    Lapse(int milliseconds, std::function<bool()> hasHappened)
        : _milliseconds(milliseconds)
        , _hasHappened(std::move(hasHappened))
    {
        _clock.start();
        look(milliseconds - 1, _sooner);
    }
    void hasBegun() { look(_milliseconds + 1, _later); }

    bool isOver() const { return _later.has_value(); }
    const char *verdict() const
    {
        if (_sooner.value_or(false) || _clock.elapsed() < _milliseconds)
            return "too early";
        return _later.value_or(false) ? "in time" : "too late";
    }

private:
    void look(int milliseconds, std::optional<bool> &seen)
    {
        QTimer::singleShot(milliseconds, Qt::PreciseTimer, this, [this, &seen] { seen = _hasHappened(); });
    }

    const int _milliseconds;
    const std::function<bool()> _hasHappened;
    QElapsedTimer _clock;
    std::optional<bool> _sooner;
    std::optional<bool> _later;
};
