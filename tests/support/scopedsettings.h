#pragma once

#include <QApplication>
#include <QLocale>

/// Sets the program's language and layout direction while it lives. Without Qt's own translation for the
/// language, layouts run from left to right in every language.
class ScopedLanguage
{
public:
    ScopedLanguage(const QString &language, Qt::LayoutDirection direction)
    {
        QLocale::setDefault(QLocale(language));
        QApplication::setLayoutDirection(direction);
    }
    ~ScopedLanguage()
    {
        QLocale::setDefault(QLocale::system());
        QApplication::setLayoutDirection(Qt::LayoutDirectionAuto);
    }

private:
    Q_DISABLE_COPY_MOVE(ScopedLanguage)
};

/// Sets another font size for the application while it lives.
class ScopedApplicationFont
{
public:
    explicit ScopedApplicationFont(int points)
    {
        QFont font = _before;
        font.setPointSize(points);
        QApplication::setFont(font);
    }
    ~ScopedApplicationFont() { QApplication::setFont(_before); }

private:
    Q_DISABLE_COPY_MOVE(ScopedApplicationFont)

    const QFont _before = QApplication::font();
};
