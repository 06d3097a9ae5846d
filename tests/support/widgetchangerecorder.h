#pragma once

#include <functional>
#include <utility>

#include <QAbstractButton>
#include <QEvent>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QStringList>

/// Records in order how a page changes its widgets: a widget is shown, hidden, enabled, disabled, checked or
/// unchecked, or the text of a field changes. Before each of these, it records the texts of labels and
/// buttons that have changed since.
///
///     label says "Not found"
///     pushButton is enabled
class WidgetChangeRecorder : public QObject
{
public:
    explicit WidgetChangeRecorder(QWidget *page)
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

    /// Records something that is not visible on the page, between the other steps.
    void note(const QString &step)
    {
        noteChangedTexts();
        add(step);
    }
    /// From now on, appends ", " and the result of \a state to each step.
    void tellAlso(std::function<QString()> state) { _state = std::move(state); }
    /// Returns the steps so far and clears them.
    QStringList take()
    {
        noteChangedTexts();
        return std::exchange(_steps, {});
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const auto *widget = static_cast<const QWidget *>(watched);
        const bool isShown = event->type() == QEvent::ShowToParent;
        if (event->type() == QEvent::EnabledChange)
            note(widget->objectName() + (widget->isEnabled() ? " is enabled" : " is disabled"));
        // On a page that is not shown itself, newer versions of Qt also show its other widgets.
        else if ((isShown || event->type() == QEvent::HideToParent) &&
                 widget->testAttribute(Qt::WA_WState_ExplicitShowHide))
            note(widget->objectName() + (isShown ? " is shown" : " is hidden"));
        return QObject::eventFilter(watched, event);
    }

private:
    /// The text of a label or a button; null for other widgets.
    static QString textOf(const QWidget *widget)
    {
        if (const auto *label = qobject_cast<const QLabel *>(widget))
            return label->text();
        const auto *button = qobject_cast<const QAbstractButton *>(widget);
        return button ? button->text() : QString();
    }
    static QString says(const QWidget *widget, const QString &text)
    {
        return widget->objectName() + " says \"" + text + '"';
    }

    void add(const QString &step) { _steps += _state ? step + ", " + _state() : step; }
    void noteChangedTexts()
    {
        const auto widgets = _page->findChildren<QWidget *>();
        for (const QWidget *widget : widgets) {
            const QString text = textOf(widget);
            if (_texts.contains(widget) && std::exchange(_texts[widget], text) != text)
                add(says(widget, text));
        }
    }

    QWidget *_page;
    QHash<const QWidget *, QString> _texts;
    QStringList _steps;
    std::function<QString()> _state;
};
