#include "tests/layout/fitting.h"

#include <cmath>

#include <QAbstractButton>
#include <QDialog>
#include <QFileDialog>
#include <QHash>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QProgressBar>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QTextDocument>
#include <QTextEdit>

namespace
{
// The smallest screen of current computers.
constexpr QSize smallScreen{1366, 768};
// The required contrast of text for people with low vision, as a ratio of luminance.
constexpr double leastContrast = 4.5;
constexpr int maximumHeight = 1000;

QString pixels(int has, int needs)
{
    return QStringLiteral("%1 of %2 pixels").arg(has).arg(needs);
}

/// Collects the findings for a widget.
class Inspection
{
public:
    explicit Inspection(const QImage &picture)
        : _picture(picture)
    {
    }

    QList<LayoutIssue> found;

    void look(const QWidget *widget)
    {
        if (const auto *label = qobject_cast<const QLabel *>(widget))
            lookAtLabel(label);
        else if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
            lookAtButton(button);
        else if (const auto *field = qobject_cast<const QLineEdit *>(widget))
            lookAtField(field);
        else if (const auto *list = qobject_cast<const QListView *>(widget))
            lookAtList(list);
    }

    void lookAtSize(const QWidget *window)
    {
        if (window->width() > smallScreen.width() || window->height() > smallScreen.height())
            tell(window,
                 QStringLiteral("larger than a screen: %1 x %2").arg(window->width()).arg(window->height()),
                 window->windowTitle());
    }
    void lookAtPlace(const QWidget *widget)
    {
        if (!widget->parentWidget()->rect().contains(widget->geometry()))
            tell(widget, QStringLiteral("outside of its parent"), {});
    }
    void lookForOverlap(const QWidget *one, const QWidget *other)
    {
        if (one->parentWidget() == other->parentWidget() && one->geometry().intersects(other->geometry()))
            tell(one, QStringLiteral("over ") + nameOf(other), {});
    }

private:
    static QString nameOf(const QWidget *widget)
    {
        return widget->objectName().isEmpty() ? QString::fromLatin1(widget->metaObject()->className())
                                              : widget->objectName();
    }
    void tell(const QWidget *widget, const QString &what, const QString &text)
    {
        found += {nameOf(widget), what, text.simplified()};
    }
    void tellWidth(const QWidget *widget, int has, int needs, const QString &text)
    {
        if (has < needs)
            tell(widget, QStringLiteral("too narrow: ") + pixels(has, needs), text);
    }
    void tellHeight(const QWidget *widget, int has, int needs, const QString &text)
    {
        if (has < needs)
            tell(widget, QStringLiteral("too low: ") + pixels(has, needs), text);
    }

    void lookAtLabel(const QLabel *label)
    {
        if (label->text().isEmpty())
            return;
        if (label->wordWrap()) {
            tellHeight(label, label->height(), label->heightForWidth(label->width()), label->text());
            tellWidth(label, label->contentsRect().width(), widestWord(label), label->text());
        } else {
            tellWidth(label, label->width(), label->sizeHint().width(), label->text());
            tellHeight(label, label->height(), label->sizeHint().height(), label->text());
        }
        lookAtContrast(label, QPalette::WindowText, label->text());
        if (label->text().contains(QLatin1String("<a ")))
            lookAtContrast(label, QPalette::Link, label->text());
    }
    /// Text without spaces cannot be wrapped.
    static int widestWord(const QLabel *label)
    {
        QTextDocument document;
        document.setDefaultFont(label->font());
        document.setDocumentMargin(0);
        if (label->textFormat() == Qt::PlainText || !Qt::mightBeRichText(label->text()))
            document.setPlainText(label->text());
        else
            document.setHtml(label->text());
        document.setTextWidth(label->contentsRect().width());
        return static_cast<int>(std::ceil(document.idealWidth()));
    }

    void lookAtButton(const QAbstractButton *button)
    {
        if (button->text().isEmpty())
            return;
        tellWidth(button, button->width(), button->sizeHint().width(), button->text());
        tellHeight(button, button->height(), button->sizeHint().height(), button->text());
        lookAtContrast(button, button->foregroundRole(), button->text());
    }

    void lookAtField(const QLineEdit *field)
    {
        tellHeight(field, field->height(), field->sizeHint().height(), field->text());
        if (!field->text().isEmpty()) // a text field scrolls
            return lookAtContrast(field, QPalette::Text, field->text());
        QStyleOptionFrame option;
        option.initFrom(field);
        option.lineWidth = field->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, field);
        const int room =
            field->style()->subElementRect(QStyle::SE_LineEditContents, &option, field).width() - 4;
        tellWidth(field, room, field->fontMetrics().horizontalAdvance(field->placeholderText()),
                  field->placeholderText());
    }

    void lookAtList(const QListView *list)
    {
        for (int row = 0; row < list->model()->rowCount(); ++row) {
            const QModelIndex index = list->model()->index(row, 0);
            const QString text = index.data().toString();
            const QRect place = list->visualRect(index);
            const QRect wrapped = list->fontMetrics().boundingRect(QRect(0, 0, place.width(), maximumHeight),
                                                                   Qt::TextWordWrap, text);
            tellWidth(list, place.width(), wrapped.width(), text);
            tellHeight(list, place.height(), wrapped.height(), text);
            if (place.left() < 0 || place.right() > list->viewport()->width())
                tell(list, QStringLiteral("a row goes on beyond the list"), text);
        }
        lookAtContrast(list, QPalette::Text, {});
    }

    static double brightness(QRgb colour)
    {
        const auto linear = [](int part) {
            const double value = part / 255.0;
            return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) +
               0.0722 * linear(qBlue(colour));
    }
    /// Returns the most frequent colour of a widget's area, which is the background of most of its text.
    /// Whether a few letters have another background is for people to check on the contact sheets.
    QRgb behind(const QWidget *widget) const
    {
        const double scale = _picture.devicePixelRatio();
        const QRect place(widget->mapTo(widget->window(), QPoint()) * scale, widget->size() * scale);
        const QRect inner = place.adjusted(3, 3, -3, -3).intersected(_picture.rect());
        QHash<QRgb, int> counts;
        QRgb most = 0; // invisible: no image contains it
        for (int y = inner.top(); y <= inner.bottom(); y += 2)
            for (int x = inner.left(); x <= inner.right(); x += 2) {
                const QRgb colour = _picture.pixel(x, y) & 0xfff8f8f8; // images and buttons have shading
                if (++counts[colour] > counts.value(most))
                    most = colour;
            }
        return most;
    }
    void lookAtContrast(const QWidget *widget, QPalette::ColorRole role, const QString &text)
    {
        if (!widget->isEnabled()) // its contrast is lower on purpose
            return;
        const double one = brightness(widget->palette().color(role).rgb());
        const double other = brightness(behind(widget));
        const double contrast = (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
        if (contrast < leastContrast)
            tell(widget,
                 QStringLiteral("hard to tell from what is behind: contrast %1").arg(contrast, 0, 'f', 1),
                 text);
    }

    const QImage &_picture;
};

bool isShown(const QWidget *widget)
{
    return qobject_cast<const QLabel *>(widget) || qobject_cast<const QAbstractButton *>(widget) ||
           qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QListView *>(widget) ||
           qobject_cast<const QTextEdit *>(widget) || qobject_cast<const QProgressBar *>(widget);
}
} // namespace

QList<LayoutIssue> misfitsIn(const QWidget *window, const QImage &picture)
{
    if (qobject_cast<const QFileDialog *>(window)) // mostly provided by the desktop
        return {};

    Inspection inspection(picture);
    inspection.lookAtSize(window);
    QList<const QWidget *> shown;
    const auto children = window->findChildren<QWidget *>();
    for (const QWidget *child : children) {
        if (child->window() != window || !child->isVisible() ||
            child->objectName().startsWith("qt_scrollarea"))
            continue;
        inspection.lookAtPlace(child);
        if (!isShown(child))
            continue;
        inspection.look(child);
        for (const QWidget *other : std::as_const(shown))
            inspection.lookForOverlap(child, other);
        shown += child;
    }
    return inspection.found;
}
