#pragma once

#include <QStringList>
#include <QTranslator>

/// A catalogue, while it lives, that has every text: it hands each back as "context|comment|text", so that
/// what is shown tells how it was asked for. A text that isn't translated stands without the bars.
class MarkingTranslator : public QTranslator
{
    Q_OBJECT

public:
    MarkingTranslator();

    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *sourceText, const char *disambiguation,
                      int n) const override;

    /// What was asked for in \a context so far, marked as it was handed back.
    QStringList asked(const QString &context) const;

private:
    mutable QStringList _asked;
};
