#pragma once

#include <functional>
#include <utility>

#include <QApplication>
#include <QDialog>
#include <QList>
#include <QTimer>

/// Answers the modal dialogs that open while it lives, one answer for each dialog, in order. Dialogs without
/// an answer are rejected and counted.
class ModalDialogResponder : public QObject
{
public:
    /// What to do with a dialog; the answer itself must close it.
    using Answer = std::function<void(QDialog *)>;

    explicit ModalDialogResponder(QList<Answer> answers)
        : _answers(std::move(answers))
    {
        connect(&_timer, &QTimer::timeout, this, &ModalDialogResponder::poll);
        _timer.start(0);
    }

    /// The number of dialogs that have opened so far, including those without an answer.
    int opened() const { return _opened; }
    /// The number of answers that have not been used yet.
    qsizetype left() const { return _answers.size(); }

private:
    void poll()
    {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        ++_opened;
        if (_answers.isEmpty())
            dialog->reject();
        else
            _answers.takeFirst()(dialog);
    }

    QList<Answer> _answers;
    QTimer _timer;
    int _opened = 0;
};
