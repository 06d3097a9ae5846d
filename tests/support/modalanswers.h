#pragma once

#include <functional>

#include <QList>
#include <QObject>
#include <QTimer>

class QDialog;

/// Answers the modal dialogs that open while it lives, one answer a dialog, in their order. A dialog more
/// than there are answers is rejected and counted.
class ModalAnswers : public QObject
{
    Q_OBJECT

public:
    /// What is done with a dialog; it is left to the answer to close it.
    using Answer = std::function<void(QDialog *)>;

    explicit ModalAnswers(QList<Answer> answers);

    /// Dialogs that have opened so far, those without an answer too.
    int opened() const { return _opened; }
    /// Answers that no dialog has asked for yet.
    qsizetype left() const { return _answers.size(); }

private:
    void look();

    QList<Answer> _answers;
    QTimer _timer;
    int _opened = 0;
};
