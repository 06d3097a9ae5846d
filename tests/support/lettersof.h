#pragma once

#include <QApplication>

/// The program's letters have another size while this lives.
class LettersOf
{
public:
    explicit LettersOf(int points)
    {
        QFont font = _before;
        font.setPointSize(points);
        QApplication::setFont(font);
    }
    ~LettersOf() { QApplication::setFont(_before); }

private:
    Q_DISABLE_COPY_MOVE(LettersOf)

    const QFont _before = QApplication::font();
};
