#pragma once

#include <QStringList>
#include <QTranslator>

/// A translator that, while it lives, translates every string to "context|comment|text", so that the shown
/// text contains the arguments of the request. A string that is not translated has no bars.
class PseudoTranslator : public QTranslator
{
    Q_OBJECT

public:
    PseudoTranslator();

    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *sourceText, const char *disambiguation,
                      int n) const override;

    /// The strings requested in \a context so far, in the marked form in which they were returned.
    QStringList asked(const QString &context) const;

private:
    mutable QStringList _asked;
};
