#include "bench/measure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>

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
    return {{QStringLiteral("median"), median(samples)},
            {QStringLiteral("least"), *least},
            {QStringLiteral("greatest"), *greatest}};
}

/// The two samples of a turn were taken one right after the other, under the same machine load.
QList<double> ratios(const Measure &measure)
{
    QList<double> ratios;
    for (qsizetype turn = 0; turn < measure.ours.size(); ++turn)
        ratios += measure.ours.at(turn) / measure.against.at(turn);
    return ratios;
}

QJsonObject row(const Measure &measure)
{
    QJsonObject row{{QStringLiteral("measure"), measure.name},
                    {QStringLiteral("unit"), measure.unit},
                    {QStringLiteral("turns"), measure.ours.size()},
                    {QStringLiteral("ours"), summary(measure.ours)}};
    if (measure.against.isEmpty())
        return row;
    row.insert(QStringLiteral("against"), summary(measure.against));
    row.insert(QStringLiteral("ratio"), summary(ratios(measure)));
    if (measure.bar > 0) {
        row.insert(QStringLiteral("bar"), measure.bar);
        row.insert(QStringLiteral("met"), median(ratios(measure)) <= measure.bar);
    }
    return row;
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

void timeByTurns(Measure &measure, int turns, const std::function<void()> &ours,
                 const std::function<void()> &against)
{
    ours();
    against();
    for (int turn = 0; turn < turns; ++turn) {
        const double our = processorMilliseconds(ours);
        measure.add(our, processorMilliseconds(against));
    }
}

void tell(const Measure &measure)
{
    const QByteArray line = QJsonDocument(row(measure)).toJson(QJsonDocument::Compact) + '\n';
    std::fputs(line.constData(), stderr);
    QFile rows(qEnvironmentVariable("ZV_BENCH_ROWS"));
    if (rows.fileName().isEmpty())
        return;
    if (!rows.open(QIODevice::Append) || rows.write(line) != line.size())
        qFatal("%s can't be written", qPrintable(rows.fileName()));
}
