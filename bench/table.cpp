// benchtable ROWS [JSON]: prints the results of the benchmarks as a table, and writes all of them as one JSON
// document. Exits with status 1 when a result exceeds its limit.

#include <cstdio>

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{
QString number(const QJsonValue &value)
{
    const double shown = value.toDouble();
    return QString::number(shown, 'f', shown < 10 ? 2 : shown < 1000 ? 1 : 0);
}

/// A value with its unit, or an empty string.
QString amount(const QJsonObject &row, const QString &key)
{
    return row.contains(key) ? number(row[key][u"median"]) + ' ' + row[u"unit"].toString() : QString();
}

QString ratio(const QJsonValue &ratio)
{
    if (ratio.isUndefined())
        return {};
    return QStringLiteral("%1 (%2-%3)")
        .arg(number(ratio[u"median"]), number(ratio[u"least"]), number(ratio[u"greatest"]));
}

void print(const QString &measure, const QString &ours, const QString &against, const QString &ratio,
           const QString &limit, const QString &verdict)
{
    const QString line = measure.leftJustified(58) + ours.rightJustified(12) + against.rightJustified(12) +
                         ratio.rightJustified(20) + limit.rightJustified(7) + "  " + verdict;
    std::puts(qPrintable(line.trimmed()));
}
} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 2 || arguments.size() > 3)
        qFatal("usage: benchtable ROWS [JSON]");
    QFile rows(arguments.at(1));
    if (!rows.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(rows.fileName()));

    print("measure", "ours", "reference", "ratio", "limit", QString());
    bool allMet = !rows.atEnd();
    QJsonArray document;
    while (!rows.atEnd()) {
        const QJsonObject row = QJsonDocument::fromJson(rows.readLine()).object();
        const bool hasLimit = row.contains(u"limit");
        const bool isMet = row[u"met"].toBool();
        print(row[u"measure"].toString(), amount(row, "ours"), amount(row, "against"), ratio(row[u"ratio"]),
              hasLimit ? number(row[u"limit"]) : QString(),
              hasLimit ? QString(isMet ? "met" : "MISSED") : QString());
        allMet = allMet && (!hasLimit || isMet);
        document += row;
    }

    if (arguments.size() == 3) {
        QFile json(arguments.at(2));
        if (!json.open(QIODevice::WriteOnly) || json.write(QJsonDocument(document).toJson()) < 0)
            qFatal("cannot write %s", qPrintable(json.fileName()));
    }
    return allMet ? 0 : 1;
}
