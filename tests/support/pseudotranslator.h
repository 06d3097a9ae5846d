#pragma once

#include <QCoreApplication>
#include <QStringList>
#include <QTranslator>

/// A translator that, while it lives, translates every string to "context|comment|text", so that the shown
/// text contains the arguments of the request. A string that is not translated contains no "|".
class PseudoTranslator : public QTranslator
{
public:
    // The destructor of the base class removes it again.
    PseudoTranslator() { QCoreApplication::installTranslator(this); }

    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *sourceText, const char *disambiguation,
                      int) const override
    {
        _requested += QStringLiteral("%1|%2|%3").arg(context, disambiguation, sourceText);
        return _requested.constLast();
    }

    /// The strings requested in \a context so far, in the form in which translate() returned them.
    QStringList requested(const QString &context) const
    {
        QStringList inContext;
        for (const QString &marked : _requested) {
            if (marked.startsWith(context + QLatin1Char('|')))
                inContext += marked;
        }
        return inContext;
    }

private:
    mutable QStringList _requested;
};
