#pragma once

#include <functional>

#include <QList>
#include <QString>

/// Returns the time that a step takes by the monotonic clock, in milliseconds.
double milliseconds(const std::function<void()> &step);
/// Returns the CPU time that a step uses, in milliseconds; other programs may be busy meanwhile.
double processorMilliseconds(const std::function<void()> &step);

/// One row of the table: the samples of our code, and of the reference that it is compared with, taken
/// alternately.
struct Measure {
    QString name;
    QString unit = QStringLiteral("ms");
    double limit = 0;           ///< the limit of the ratio; 0 when there is none
    QList<double> ours = {};    ///< one sample per turn
    QList<double> against = {}; ///< the samples of the same turns; empty when there is no reference

    void add(double our, double other);
    /// Measures the CPU time of \a our and \a other alternately, \a turns times each after a warm-up turn
    /// that does not count.
    void timeByTurns(int turns, const std::function<void()> &our, const std::function<void()> &other);
    /// Appends the row to the file that ZV_BENCH_ROWS names, one JSON object per line, and prints it on
    /// standard error.
    void report() const;
};

/// Returns the lines of the session log in the home folder, without their line ends.
QList<QByteArray> sessionLogLines();
/// The reference that the session log is compared with: writes \a lines to a file and to standard output with
/// the C library, each flushed to both. The lines are as the session log contains them: with a level prefix
/// of two characters, which standard output does not get.
void writePlainLines(const QList<QByteArray> &lines);
