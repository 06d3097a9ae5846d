#pragma once

#include <functional>
#include <utility>

#include <QHash>
#include <QObject>
#include <QStringList>

class QWidget;

/// Notes in their order what a page does to the things on it: a widget that is shown, hidden, enabled,
/// disabled, checked or unchecked, a field's text, and, before the next of these, the texts of labels and
/// buttons that have changed meanwhile.
///
///     label says "Not found"
///     pushButton is enabled
class StepRecorder : public QObject
{
    Q_OBJECT

public:
    explicit StepRecorder(QWidget *page);

    /// Notes something that isn't to be seen on the page, between the other steps.
    void note(const QString &step);
    /// Has each step from here on followed by ", " and what \a state tells at that moment.
    void tellAlso(std::function<QString()> state) { _state = std::move(state); }
    /// The steps so far, forgotten from here on.
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
