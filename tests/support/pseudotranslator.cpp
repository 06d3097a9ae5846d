#include "tests/support/pseudotranslator.h"

#include <utility>

#include <QCoreApplication>

PseudoTranslator::PseudoTranslator()
{
    // The destructor of the base class removes it again.
    QCoreApplication::installTranslator(this);
}

QString PseudoTranslator::translate(const char *context, const char *sourceText, const char *disambiguation,
                                    int) const
{
    QString marked = QString::fromUtf8(context) + QLatin1Char('|') + QString::fromUtf8(disambiguation) +
                     QLatin1Char('|') + QString::fromUtf8(sourceText);
    _asked += marked;
    return marked;
}

QStringList PseudoTranslator::asked(const QString &context) const
{
    QStringList inContext;
    for (const QString &marked : std::as_const(_asked)) {
        if (marked.startsWith(context + QLatin1Char('|')))
            inContext += marked;
    }
    return inContext;
}
