#include "tests/support/modalanswers.h"

#include <utility>

#include <QApplication>
#include <QDialog>

ModalAnswers::ModalAnswers(QList<Answer> answers)
    : _answers(std::move(answers))
{
    connect(&_timer, &QTimer::timeout, this, &ModalAnswers::look);
    _timer.start(0);
}

void ModalAnswers::look()
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
