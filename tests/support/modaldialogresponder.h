#pragma once

#include <functional>

#include <QList>
#include <QObject>
#include <QTimer>

class QDialog;

/// Answers the modal dialogs that open while it lives, one answer for each dialog, in order. Dialogs without
/// an answer are rejected and counted.
class ModalDialogResponder : public QObject
{
    Q_OBJECT

public:
    /// What to do with a dialog; the answer itself must close it.
    using Answer = std::function<void(QDialog *)>;

    explicit ModalDialogResponder(QList<Answer> answers);

    /// The number of dialogs that have opened so far, including those without an answer.
    int opened() const { return _opened; }
    /// The number of answers that have not been used yet.
    qsizetype left() const { return _answers.size(); }

private:
    void look();

    QList<Answer> _answers;
    QTimer _timer;
    int _opened = 0;
};
