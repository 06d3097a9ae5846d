#pragma once

#include <QString>

/// The parts of a user's desktop that change the program's appearance: colours, font, language. The scale
/// factor belongs to the process (QT_SCALE_FACTOR).
struct Appearance {
    QString theme;    ///< "light", "dark" or "contrast"
    QString language; ///< "en", or the language of a translation file
    int points;       ///< the size of the desktop's font

    /// Such as "dark ar 11 pt x1.5".
    QString description() const;
    /// Returns whether a font is installed that can draw the language.
    bool canBeDrawn() const;
};

/// Applies the appearance to the whole application, for windows that are created from here on.
void apply(const Appearance &appearance);
