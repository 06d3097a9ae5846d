#pragma once

#include <QObject>

/// Runs inside a program with a wizard, which Qt loads it into as a plugin, and detects when the first page
/// is on the screen. It writes a report and ends the program.
///
/// Environment variables configure it: ZV_BENCH_REPORT names the file that gets the report, and ZV_BENCH_IDLE
/// gives the time in milliseconds for which the idle page is measured, if at all. The report is one line of
/// three numbers: when the page was shown (nanoseconds of the monotonic clock), the peak memory until then
/// (KiB), and the CPU time that the idle page used (milliseconds).
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
