// bench_start PROGRAM BAREWIZARD: measures how long the program takes to show its first page, how much memory
// that takes, and how much CPU time the page uses while it waits for a device. Each value is compared with
// the bare wizard.

#include <chrono>

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "bench/measure.h"

namespace
{
constexpr int startTurns = 31;
constexpr int idleTurns = 5;
constexpr int idleTime = 5000; // ms

struct Start {
    double untilFirstPage; // ms
    double cpuTime;        // ms
    double peakMemory;     // KiB
    double idleCpu;        // ms
};

Start start(const QString &program, const QStringList &arguments, int idle)
{
    const QTemporaryDir home;
    const QString report = home.filePath(QStringLiteral("report"));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home.path());
    environment.insert(QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(ZV_BENCH_PLUGINS));
    environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("firstpage"));
    environment.insert(QStringLiteral("ZV_BENCH_REPORT"), report);
    environment.insert(QStringLiteral("ZV_BENCH_IDLE"), QString::number(idle));

    QProcess process;
    process.setProcessEnvironment(environment);
    process.setStandardOutputFile(home.filePath(QStringLiteral("output")));
    process.setStandardErrorFile(QProcess::nullDevice());
    const qint64 before = std::chrono::steady_clock::now().time_since_epoch().count();
    process.start(program, arguments);
    if (!process.waitForFinished(60000) || process.exitCode() != 0)
        qFatal("%s failed", qPrintable(program));

    QFile file(report);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s did not show its first page", qPrintable(program));
    const QList<QByteArray> numbers = file.readAll().split(' ');
    return {double(numbers.value(0).toLongLong() - before) / 1e6, numbers.value(1).toDouble(),
            numbers.value(2).toDouble(), numbers.value(3).toDouble()};
}

void timeStarts(const QString &program, const QString &bare)
{
    Measure time{"start to first page shown", "ms", 1.10};
    Measure cpu{"processor time of that", "ms", 0};
    Measure timeOverEmpty{"start to first page shown; the bare page empty", "ms", 0};
    Measure memoryOverEmpty{"peak memory by then; the bare page empty", "MB", 1.10};
    for (int turn = -1; turn < startTurns; ++turn) {
        const Start ours = start(program, {}, 0);
        const Start samePage = start(bare, {}, 0);
        const Start emptyPage = start(bare, {QStringLiteral("--empty")}, 0);
        if (turn < 0)
            continue; // the first time, everything is read from the disk
        time.add(ours.untilFirstPage, samePage.untilFirstPage);
        cpu.add(ours.cpuTime, samePage.cpuTime);
        timeOverEmpty.add(ours.untilFirstPage, emptyPage.untilFirstPage);
        memoryOverEmpty.add(ours.peakMemory / 1024, emptyPage.peakMemory / 1024);
    }
    time.report();
    cpu.report();
    timeOverEmpty.report();
    memoryOverEmpty.report();
}

void timeIdling(const QString &program, const QString &bare)
{
    Measure idle{"idle connect page, processor time in 5 s", "ms", 1.10};
    for (int turn = 0; turn < idleTurns; ++turn) {
        const double ours = start(program, {}, idleTime).idleCpu;
        idle.add(ours, start(bare, {}, idleTime).idleCpu);
    }
    idle.report();
}
} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    if (argc != 3)
        qFatal("usage: bench_start PROGRAM BAREWIZARD");
    const QString program = QString::fromLocal8Bit(argv[1]);
    const QString bare = QString::fromLocal8Bit(argv[2]);
    timeStarts(program, bare);
    timeIdling(program, bare);
    return 0;
}
