#pragma once

#include <QAccessible>
#include <QImage>
#include <QLabel>
#include <QPainter>

/// The part of \a image that is not white.
inline QRect inkOf(const QImage &image)
{
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != qRgb(255, 255, 255))
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

/// What \a label draws, on white and without its background.
inline QImage drawnBy(QLabel &label)
{
    QImage image(label.size(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    label.render(&painter, {}, {}, {});
    return image;
}

/// Returns true if \a label draws \a text literally, including each '&' and '<'. The check is independent of
/// QLabel: a painter draws the text again in the label's font, colour and width.
inline bool isDrawnLiterally(QLabel &label, const QString &text)
{
    const QImage drawn = drawnBy(label);
    QImage expected(drawn.size(), drawn.format());
    expected.fill(Qt::white);
    QPainter painter(&expected);
    painter.setFont(label.font());
    painter.setPen(label.palette().color(label.foregroundRole()));
    const int indent = std::max(label.indent(), 0);
    const int wrap = label.wordWrap() ? Qt::TextWordWrap : 0;
    painter.drawText(label.contentsRect().adjusted(indent, 0, 0, 0), int(label.alignment()) | wrap, text);
    painter.end();
    return !inkOf(expected).isEmpty() && drawn.copy(inkOf(drawn)) == expected.copy(inkOf(expected));
}

/// The distance in pixels between what \a label draws and the edge at which text of \a direction begins.
inline int distanceFromLeadingEdge(QLabel &label, Qt::LayoutDirection direction)
{
    const QRect ink = inkOf(drawnBy(label));
    return direction == Qt::LeftToRight ? ink.left() : label.width() - 1 - ink.right();
}

/// What a screen reader reads out for \a widget.
inline QString announced(QWidget &widget)
{
    return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name);
}
