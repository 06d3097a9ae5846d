// benchtable ROWS [JSON]: prints the results of the benchmarks as a table, and writes all of them as one JSON
// document. Exits with status 1 when a result misses its limit.

#include <cstdio>

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{
QList<QJsonObject> rowsOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s can't be read", qPrintable(path));
    QList<QJsonObject> rows;
    while (!file.atEnd())
        rows += QJsonDocument::fromJson(file.readLine()).object();
    return rows;
}

QString number(double value)
{
    return QString::number(value, 'f', value < 10 ? 2 : value < 1000 ? 1 : 0);
}

/// A value with its unit, or an empty string.
QString amount(const QJsonObject &row, const QString &key)
{
    if (!row.contains(key))
        return {};
    return number(row[key][u"median"].toDouble()) + QLatin1Char(' ') + row[u"unit"].toString();
}

QString ratio(const QJsonObject &row)
{
    const QJsonValue ratio = row[u"ratio"];
    if (ratio.isUndefined())
        return {};
    return QStringLiteral("%1 (%2-%3)")
        .arg(number(ratio[u"median"].toDouble()), number(ratio[u"least"].toDouble()),
             number(ratio[u"greatest"].toDouble()));
}

void print(const QString &measure, const QString &ours, const QString &against, const QString &ratio,
           const QString &bar, const QString &verdict)
{
    const QString line = measure.leftJustified(58) + ours.rightJustified(12) + against.rightJustified(12) +
                         ratio.rightJustified(20) + bar.rightJustified(7) + QStringLiteral("  ") + verdict;
    std::puts(qPrintable(line.trimmed()));
}

/// Prints the row; returns whether it has a limit and misses it.
bool printRow(const QJsonObject &row)
{
    const bool hasBar = row.contains(u"bar");
    const bool missed = hasBar && !row[u"met"].toBool();
    print(row[u"measure"].toString(), amount(row, QStringLiteral("ours")),
          amount(row, QStringLiteral("against")), ratio(row),
          hasBar ? number(row[u"bar"].toDouble()) : QString(),
          missed   ? QStringLiteral("MISSED")
          : hasBar ? QStringLiteral("met")
                   : QString());
    return missed;
}
} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 2 || arguments.size() > 3)
        qFatal("usage: benchtable ROWS [JSON]");

    const QList<QJsonObject> rows = rowsOf(arguments.at(1));
    print(QStringLiteral("measure"), QStringLiteral("ours"), QStringLiteral("against"),
          QStringLiteral("ratio"), QStringLiteral("bar"), QString());
    int missed = 0;
    QJsonArray document;
    for (const QJsonObject &row : rows) {
        missed += printRow(row);
        document += row;
    }

    if (arguments.size() == 3) {
        QFile json(arguments.at(2));
        if (!json.open(QIODevice::WriteOnly) || json.write(QJsonDocument(document).toJson()) < 0)
            qFatal("%s can't be written", qPrintable(json.fileName()));
    }
    return missed > 0 || rows.isEmpty();
}
