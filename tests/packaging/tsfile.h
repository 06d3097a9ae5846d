#pragma once

#include <QList>
#include <QString>

/// One text of a translation source file (.ts).
struct TsText {
    QString context;
    QString source;
    QString comment;
    QString translation;
    QString state; ///< such as "unfinished"; empty when it is finished

    /// Returns the lookup key of the text.
    QString key() const { return context + QLatin1Char('|') + source + QLatin1Char('|') + comment; }
};

/// The parts of a translation source file that the tests need.
struct TsFile {
    QString language;
    QString sourceLanguage;
    QList<TsText> texts;

    /// Returns the translation of \a source in \a context, whatever its comment is; null if there is none.
    QString translation(const QString &context, const QString &source) const;
};

/// Reads the translation source file at \a path; a file that cannot be read has no texts.
TsFile readTsFile(const QString &path);
