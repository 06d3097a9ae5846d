#include "tests/support/widgetchangerecorder.h"

#include <QAbstractButton>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>

namespace
{
/// The text of a label or a button; null for other widgets.
QString textOf(const QWidget *widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(widget))
        return label->text();
    const auto *button = qobject_cast<const QAbstractButton *>(widget);
    return button ? button->text() : QString();
}

QString says(const QWidget *widget, const QString &text)
{
    return widget->objectName() + " says \"" + text + '"';
}
} // namespace

WidgetChangeRecorder::WidgetChangeRecorder(QWidget *page)
    : _page(page)
{
    const auto widgets = page->findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        if (widget->objectName().isEmpty())
            continue;
        _texts.insert(widget, textOf(widget));
        widget->installEventFilter(this);
        if (const auto *field = qobject_cast<QLineEdit *>(widget)) {
            connect(field, &QLineEdit::textChanged, this,
                    [this, field](const QString &text) { note(says(field, text)); });
        }
        if (const auto *button = qobject_cast<QAbstractButton *>(widget)) {
            connect(button, &QAbstractButton::toggled, this, [this, button](bool on) {
                note(button->objectName() + (on ? " is checked" : " is unchecked"));
            });
        }
    }
}

void WidgetChangeRecorder::note(const QString &step)
{
    noteChangedTexts();
    add(step);
}

QStringList WidgetChangeRecorder::take()
{
    noteChangedTexts();
    return std::exchange(_steps, {});
}

void WidgetChangeRecorder::noteChangedTexts()
{
    const auto widgets = _page->findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        const QString text = textOf(widget);
        if (_texts.contains(widget) && _texts.value(widget) != text) {
            _texts.insert(widget, text);
            add(says(widget, text));
        }
    }
}

bool WidgetChangeRecorder::eventFilter(QObject *watched, QEvent *event)
{
    const auto *widget = static_cast<const QWidget *>(watched);
    switch (event->type()) {
    case QEvent::EnabledChange:
        note(widget->objectName() + (widget->isEnabled() ? " is enabled" : " is disabled"));
        break;
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
        // On a page that is not shown itself, newer versions of Qt also show its other widgets.
        if (widget->testAttribute(Qt::WA_WState_ExplicitShowHide))
            note(widget->objectName() + (event->type() == QEvent::ShowToParent ? " is shown" : " is hidden"));
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
