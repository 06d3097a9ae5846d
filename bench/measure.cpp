#include "bench/measure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{
double median(QList<double> samples)
{
    std::sort(samples.begin(), samples.end());
    const qsizetype middle = samples.size() / 2;
    return samples.size() % 2 ? samples.at(middle) : (samples.at(middle - 1) + samples.at(middle)) / 2;
}

QJsonObject summary(const QList<double> &samples)
{
    const auto [least, greatest] = std::minmax_element(samples.cbegin(), samples.cend());
    return {{"median", median(samples)}, {"least", *least}, {"greatest", *greatest}};
}
} // namespace

double milliseconds(const std::function<void()> &step)
{
    using namespace std::chrono;
    const auto start = steady_clock::now();
    step();
    return duration<double, std::milli>(steady_clock::now() - start).count();
}

double processorMilliseconds(const std::function<void()> &step)
{
    const std::clock_t start = std::clock();
    step();
    return double(std::clock() - start) * 1e3 / CLOCKS_PER_SEC;
}

void Measure::add(double our, double other)
{
    ours += our;
    against += other;
}

void Measure::timeByTurns(int turns, const std::function<void()> &our, const std::function<void()> &other)
{
    our();
    other();
    for (int turn = 0; turn < turns; ++turn) {
        const double ourTime = processorMilliseconds(our);
        add(ourTime, processorMilliseconds(other));
    }
}

void Measure::report() const
{
    QJsonObject row{{"measure", name}, {"unit", unit}, {"turns", ours.size()}, {"ours", summary(ours)}};
    if (!against.isEmpty()) {
        QList<double> ratios; // the two samples of a turn were taken under the same machine load
        for (qsizetype turn = 0; turn < ours.size(); ++turn)
            ratios += ours.at(turn) / against.at(turn);
        row["against"] = summary(against);
        row["ratio"] = summary(ratios);
        if (limit > 0) {
            row["limit"] = limit;
            row["met"] = median(ratios) <= limit;
        }
    }
    const QByteArray line = QJsonDocument(row).toJson(QJsonDocument::Compact) + '\n';
    std::fputs(line.constData(), stderr);
    QFile rows(qEnvironmentVariable("ZV_BENCH_ROWS"));
    if (rows.fileName().isEmpty())
        return;
    if (!rows.open(QIODevice::Append) || rows.write(line) != line.size())
        qFatal("cannot write %s", qPrintable(rows.fileName()));
}

QList<QByteArray> sessionLogLines()
{
    QFile log(QDir::homePath() + QStringLiteral("/zvinstall.log"));
    if (!log.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(log.fileName()));
    QList<QByteArray> lines = log.readAll().split('\n');
    lines.removeLast(); // nothing follows the end of the last line
    return lines;
}

void writePlainLines(const QList<QByteArray> &lines)
{
    static const QString path = QDir::homePath() + QStringLiteral("/plain.log");
    static std::FILE *const file = std::fopen(qPrintable(path), "w");
    if (!file)
        qFatal("cannot write %s", qPrintable(path));
    for (const QByteArray &line : lines) {
        const auto size = static_cast<std::size_t>(line.size());
        std::fwrite(line.constData(), 1, size, file);
        std::fputc('\n', file);
        std::fflush(file);
        std::fwrite(line.constData() + 2, 1, size - 2, stdout);
        std::fputc('\n', stdout);
        std::fflush(stdout);
    }
}
