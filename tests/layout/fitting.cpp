#include "tests/layout/fitting.h"

#include <cmath>

#include <QAbstractButton>
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
constexpr double minContrast = 4.5;
constexpr int maximumHeight = 1000;

QString nameOf(const QWidget *widget)
{
    return widget->objectName().isEmpty() ? QString::fromLatin1(widget->metaObject()->className())
                                          : widget->objectName();
}

/// The width of the widest line of a label. Text without spaces cannot be wrapped.
int widestLine(const QLabel *label)
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

double brightness(QRgb colour)
{
    const auto linear = [](int part) {
        const double value = part / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
}

/// Checks the widgets of a window one by one.
class Inspection
{
public:
    explicit Inspection(const QImage &image)
        : _image(image)
    {
    }

    void inspect(const QWidget *widget)
    {
        if (const auto *label = qobject_cast<const QLabel *>(widget))
            inspectLabel(label);
        else if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
            inspectButton(button);
        else if (const auto *field = qobject_cast<const QLineEdit *>(widget))
            inspectField(field);
        else if (const auto *list = qobject_cast<const QListView *>(widget))
            inspectList(list);
    }
    void require(bool holds, const QWidget *widget, const QString &otherwise, const QString &text = QString())
    {
        if (!holds)
            found += QStringLiteral("%1 %2: \"%3\"").arg(nameOf(widget), otherwise, text.simplified());
    }

    QStringList found;

private:
    void requireWidth(const QWidget *widget, int has, int needs, const QString &text)
    {
        require(has >= needs, widget, QStringLiteral("not wide enough: %1 of %2 pixels").arg(has).arg(needs),
                text);
    }
    void requireHeight(const QWidget *widget, int has, int needs, const QString &text)
    {
        require(has >= needs, widget, QStringLiteral("not high enough: %1 of %2 pixels").arg(has).arg(needs),
                text);
    }
    void requireSize(const QWidget *widget, const QString &text)
    {
        requireWidth(widget, widget->width(), widget->sizeHint().width(), text);
        requireHeight(widget, widget->height(), widget->sizeHint().height(), text);
    }

    void inspectLabel(const QLabel *label)
    {
        if (label->text().isEmpty())
            return;
        if (label->wordWrap()) {
            requireHeight(label, label->height(), label->heightForWidth(label->width()), label->text());
            requireWidth(label, label->contentsRect().width(), widestLine(label), label->text());
        } else {
            requireSize(label, label->text());
        }
        requireContrast(label, QPalette::WindowText, label->text());
        if (label->text().contains(QLatin1String("<a ")))
            requireContrast(label, QPalette::Link, label->text());
    }

    void inspectButton(const QAbstractButton *button)
    {
        if (button->text().isEmpty())
            return;
        requireSize(button, button->text());
        requireContrast(button, button->foregroundRole(), button->text());
    }

    void inspectField(const QLineEdit *field)
    {
        requireHeight(field, field->height(), field->sizeHint().height(), field->text());
        if (!field->text().isEmpty()) // a text field scrolls
            return requireContrast(field, QPalette::Text, field->text());
        QStyleOptionFrame option;
        option.initFrom(field);
        option.lineWidth = field->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, field);
        const QRect contents = field->style()->subElementRect(QStyle::SE_LineEditContents, &option, field);
        requireWidth(field, contents.width() - 4,
                     field->fontMetrics().horizontalAdvance(field->placeholderText()),
                     field->placeholderText());
    }

    void inspectList(const QListView *list)
    {
        for (int row = 0; row < list->model()->rowCount(); ++row) {
            const QModelIndex index = list->model()->index(row, 0);
            const QString text = index.data().toString();
            const QRect place = list->visualRect(index);
            const QRect wrapped = list->fontMetrics().boundingRect(QRect(0, 0, place.width(), maximumHeight),
                                                                   Qt::TextWordWrap, text);
            requireWidth(list, place.width(), wrapped.width(), text);
            requireHeight(list, place.height(), wrapped.height(), text);
            require(place.left() >= 0 && place.right() <= list->viewport()->width(), list,
                    QStringLiteral("a row extends beyond the list"), text);
        }
        requireContrast(list, QPalette::Text, {});
    }

    /// Returns the most frequent colour of a widget's area, which is the background of most of its text.
    /// A few characters may have another background: check these on the contact sheets.
    QRgb backgroundOf(const QWidget *widget) const
    {
        const double scale = _image.devicePixelRatio();
        const QRect place(widget->mapTo(widget->window(), QPoint()) * scale, widget->size() * scale);
        const QRect inner = place.adjusted(3, 3, -3, -3).intersected(_image.rect());
        QHash<QRgb, int> counts;
        QRgb most = 0; // invisible: no image contains it
        for (int y = inner.top(); y <= inner.bottom(); y += 2)
            for (int x = inner.left(); x <= inner.right(); x += 2) {
                const QRgb colour = _image.pixel(x, y) & 0xfff8f8f8; // images and buttons have shading
                if (++counts[colour] > counts.value(most))
                    most = colour;
            }
        return most;
    }
    void requireContrast(const QWidget *widget, QPalette::ColorRole role, const QString &text)
    {
        if (!widget->isEnabled()) // its contrast is lower on purpose
            return;
        const double one = brightness(widget->palette().color(role).rgb());
        const double other = brightness(backgroundOf(widget));
        const double contrast = (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
        require(contrast >= minContrast, widget,
                QStringLiteral("contrast with the background too low: %1").arg(contrast, 0, 'f', 1), text);
    }

    const QImage &_image;
};

bool isContentWidget(const QWidget *widget)
{
    return qobject_cast<const QLabel *>(widget) || qobject_cast<const QAbstractButton *>(widget) ||
           qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QListView *>(widget) ||
           qobject_cast<const QTextEdit *>(widget) || qobject_cast<const QProgressBar *>(widget);
}
} // namespace

QStringList layoutIssues(const QWidget *window, const QImage &image)
{
    if (qobject_cast<const QFileDialog *>(window)) // mostly provided by the desktop
        return {};

    Inspection inspection(image);
    inspection.require(window->width() <= smallScreen.width() && window->height() <= smallScreen.height(),
                       window, QStringLiteral("larger than a screen"), window->windowTitle());
    QList<const QWidget *> shown;
    const auto children = window->findChildren<QWidget *>();
    for (const QWidget *child : children) {
        if (child->window() != window || !child->isVisible() ||
            child->objectName().startsWith("qt_scrollarea"))
            continue;
        inspection.require(child->parentWidget()->rect().contains(child->geometry()), child,
                           QStringLiteral("outside of its parent"));
        if (!isContentWidget(child))
            continue;
        inspection.inspect(child);
        for (const QWidget *other : std::as_const(shown))
            inspection.require(child->parentWidget() != other->parentWidget() ||
                                   !child->geometry().intersects(other->geometry()),
                               child, "overlaps " + nameOf(other));
        shown += child;
    }
    return inspection.found;
}
