#pragma once

#include <functional>

#include <QList>
#include <QString>

/// Milliseconds that a step takes, by the monotonic clock.
double milliseconds(const std::function<void()> &step);
/// Milliseconds of processor time that a step takes; other programs may be busy meanwhile.
double processorMilliseconds(const std::function<void()> &step);

/// One row of the table: what was seen of ours, and of what ours is held against, turn and turn about.
struct Measure {
    QString name;
    QString unit;
    double bar = 0;        ///< the greatest ratio that will do; 0 when there is none
    QList<double> ours;    ///< one sample a turn
    QList<double> against; ///< the same turns' samples; empty when there is nothing to hold it against

    void add(double our, double other);
};

/// Takes the processor time of \a ours and \a against by turns, \a turns of each after one that doesn't
/// count.
void timeByTurns(Measure &measure, int turns, const std::function<void()> &ours,
                 const std::function<void()> &against);

/// Adds the row to the file that ZV_BENCH_ROWS names, one JSON object a line, and says it on standard error.
void tell(const Measure &measure);
