#pragma once

#include <functional>
#include <utility>

#include <QHash>
#include <QObject>
#include <QStringList>

class QWidget;

/// Records in order how a page changes its widgets: a widget is shown, hidden, enabled, disabled, checked or
/// unchecked, or the text of a field changes. Before each of these, it records the texts of labels and
/// buttons that have changed since.
///
///     label says "Not found"
///     pushButton is enabled
class WidgetChangeRecorder : public QObject
{
    Q_OBJECT

public:
    explicit WidgetChangeRecorder(QWidget *page);

    /// Records something that is not visible on the page, between the other steps.
    void note(const QString &step);
    /// From now on, appends ", " and the result of \a state to each step.
    void tellAlso(std::function<QString()> state) { _state = std::move(state); }
    /// Returns the steps so far and clears them.
    QStringList take();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void noteChangedTexts();
    void add(const QString &step) { _steps += _state ? step + ", " + _state() : step; }

    QWidget *_page;
    QHash<const QWidget *, QString> _texts;
    QStringList _steps;
    std::function<QString()> _state;
};
