// bench_start PROGRAM BAREWIZARD: how long the program takes to show its first page, the memory that takes,
// and what the page costs while it waits for a device; each beside the bare wizard.

#include <chrono>

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "bench/measure.h"

namespace
{
constexpr int startTurns = 9;
constexpr int idleTurns = 1;
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
        qFatal("%s did not end well", qPrintable(program));

    QFile file(report);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s showed no first page", qPrintable(program));
    const QList<QByteArray> numbers = file.readAll().split(' ');
    return {double(numbers.value(0).toLongLong() - before) / 1e6, numbers.value(1).toDouble(),
            numbers.value(2).toDouble(), numbers.value(3).toDouble()};
}

void timeStart(const QString &program, const QString &bare, const QStringList &arguments, const QString &page)
{
    Measure time{"start to first page shown; bare wizard with " + page, "ms", 1.10, {}, {}};
    Measure cpu{"processor time of that", "ms", 0, {}, {}};
    Measure memory{"peak memory by then; bare wizard with " + page, "MB", 1.10, {}, {}};
    start(program, {}, 0);
    start(bare, arguments, 0);
    for (int turn = 0; turn < startTurns; ++turn) {
        const Start ours = start(program, {}, 0);
        const Start other = start(bare, arguments, 0);
        time.add(ours.untilFirstPage, other.untilFirstPage);
        cpu.add(ours.cpuTime, other.cpuTime);
        memory.add(ours.peakMemory / 1024, other.peakMemory / 1024);
    }
    tell(time);
    tell(cpu);
    tell(memory);
}
} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    if (argc != 3)
        qFatal("usage: bench_start PROGRAM BAREWIZARD");
    const QString program = QString::fromLocal8Bit(argv[1]);
    const QString bare = QString::fromLocal8Bit(argv[2]);

    timeStart(program, bare, {}, "the same first page");
    timeStart(program, bare, {"--empty"}, "an empty page");

    Measure idle{"idle connect page, processor time in 5 s", "ms", 1.10, {}, {}};
    for (int turn = 0; turn < idleTurns; ++turn) {
        const Start ours = start(program, {}, idleTime);
        idle.add(ours.idleCpu, start(bare, {}, idleTime).idleCpu);
    }
    tell(idle);
    return 0;
}
