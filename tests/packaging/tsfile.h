#pragma once

#include <QList>
#include <QString>

/// One text of a catalogue's source (.ts).
struct TsText {
    QString context;
    QString source;
    QString comment;
    QString translation;
    QString state; ///< such as "unfinished"; empty when it is done

    /// What it is looked up by.
    QString key() const { return context + QLatin1Char('|') + source + QLatin1Char('|') + comment; }
};

/// A catalogue's source, as far as tests want it.
struct TsFile {
    QString language;
    QString sourceLanguage;
    QList<TsText> texts;

    /// The translation of \a source in \a context, without regard to its comment; null if there is none.
    QString translation(const QString &context, const QString &source) const;
};

/// Reads the catalogue's source at \a path; what can't be read is without texts.
TsFile readTsFile(const QString &path);
