#include "tests/support/modaldialogresponder.h"

#include <utility>

#include <QApplication>
#include <QDialog>

ModalDialogResponder::ModalDialogResponder(QList<Answer> answers)
    : _answers(std::move(answers))
{
    connect(&_timer, &QTimer::timeout, this, &ModalDialogResponder::look);
    _timer.start(0);
}

void ModalDialogResponder::look()
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
