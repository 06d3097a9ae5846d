#pragma once

#include <QObject>

/// Sits inside a program with a wizard, which the toolkit loads it into as a plugin, and sees when the first
/// page is on the screen. It writes a report and ends the program.
///
/// The environment tells it what to do: in ZV_BENCH_REPORT the file that gets the report, in ZV_BENCH_IDLE
/// how many milliseconds the page is watched while nothing happens, if at all. The report is one line of
/// three numbers: when the page was shown (nanoseconds of the monotonic clock), the peak of the memory until
/// then (KiB), and the processor time of those milliseconds (in milliseconds).
class FirstPage : public QObject
{
    Q_OBJECT

public:
    FirstPage();
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void shown();
    void report(double idleCpu) const;

    bool _seen = false;
    qint64 _shownAt = 0;
    double _cpu = 0;
    qint64 _peakMemory = 0;
};
