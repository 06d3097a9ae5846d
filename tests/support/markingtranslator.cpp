#include "tests/support/markingtranslator.h"

#include <utility>

#include <QCoreApplication>

MarkingTranslator::MarkingTranslator()
{
    // Its destructor, the base class's, takes it out again.
    QCoreApplication::installTranslator(this);
}

QString MarkingTranslator::translate(const char *context, const char *sourceText, const char *disambiguation,
                                     int) const
{
    QString marked = QString::fromUtf8(context) + QLatin1Char('|') + QString::fromUtf8(disambiguation) +
                     QLatin1Char('|') + QString::fromUtf8(sourceText);
    _asked += marked;
    return marked;
}

QStringList MarkingTranslator::asked(const QString &context) const
{
    QStringList inContext;
    for (const QString &marked : std::as_const(_asked)) {
        if (marked.startsWith(context + QLatin1Char('|')))
            inContext += marked;
    }
    return inContext;
}
