#pragma once

#include <QApplication>

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
