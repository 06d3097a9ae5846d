#pragma once

#include <QApplication>
#include <QLocale>

/// The program has another language, and its layouts another direction, while this lives. Without Qt's own
/// strings in the language, layouts run from the left in any language.
class LanguageOf
{
public:
    LanguageOf(const QString &language, Qt::LayoutDirection direction)
    {
        QLocale::setDefault(QLocale(language));
        QApplication::setLayoutDirection(direction);
    }
    ~LanguageOf()
    {
        QLocale::setDefault(QLocale::system());
        QApplication::setLayoutDirection(Qt::LayoutDirectionAuto);
    }

private:
    Q_DISABLE_COPY_MOVE(LanguageOf)
};
