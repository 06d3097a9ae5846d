#pragma once

#include <QString>

/// What a user's desktop makes of the program: colours, font, language. The scale is the process's own
/// (QT_SCALE_FACTOR).
struct Look {
    QString theme;    ///< "light", "dark" or "contrast"
    QString language; ///< "en", or that of a catalogue
    int points;       ///< of the desktop's font

    /// Such as "dark ar 11 pt x1.5".
    QString inWords() const;
    /// Whether a font is there that can draw the language.
    bool canBeDrawn() const;
};

/// Has the whole application look so, windows that are made from here on.
void putOn(const Look &look);
