#include "bench/plainlines.h"

#include <QDir>
#include <QFile>

PlainLines::PlainLines(const QString &path)
    : _file(std::fopen(qPrintable(path), "w"))
{
    if (!_file)
        qFatal("%s can't be written", qPrintable(path));
}

PlainLines::~PlainLines()
{
    std::fclose(_file);
}

void PlainLines::write(const QList<QByteArray> &lines)
{
    for (const QByteArray &line : lines) {
        const auto size = static_cast<std::size_t>(line.size());
        std::fwrite(line.constData(), 1, size, _file);
        std::fputc('\n', _file);
        std::fflush(_file);
        std::fwrite(line.constData() + 2, 1, size - 2, stdout);
        std::fputc('\n', stdout);
        std::fflush(stdout);
    }
}

QList<QByteArray> sessionLogLines()
{
    QFile log(QDir::homePath() + QStringLiteral("/zvinstall.log"));
    if (!log.open(QIODevice::ReadOnly))
        qFatal("%s can't be read", qPrintable(log.fileName()));
    QList<QByteArray> lines = log.readAll().split('\n');
    lines.removeLast(); // nothing follows the end of the last line
    return lines;
}
