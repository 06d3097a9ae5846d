#include "tests/faults/wizardwalk.h"

#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTest>
#include <QTimer>
#include <QWizard>

namespace
{
constexpr int lookPause = 5; // milliseconds; users are slower
}

WizardWalk::WizardWalk(QWizard &wizard, const WalkWishes &wishes)
    : _wizard(wizard)
    , _wishes(wishes)
{
    // Called after the wizard's own connections: the device has received its commands by then.
    connect(&_wizard, &QDialog::finished, this, [this](int result) {
        stop();
        _isDone = result == QDialog::Accepted;
        Q_EMIT done();
    });
}

void WizardWalk::start()
{
    if (!std::exchange(_isWalking, true))
        lookLater();
}

void WizardWalk::lookLater()
{
    // Not one shared timer: it would be blocked while its own slot runs a dialog.
    QTimer::singleShot(lookPause, this, &WizardWalk::look);
}

void WizardWalk::look()
{
    if (!_isWalking)
        return;
    lookLater();
    if (answerDialog() || _isActing || (_isBusy && _isBusy()))
        return;
    QWizardPage *page = _wizard.currentPage();
    if (!page)
        return;
    if (page != _page) {
        _page = page;
        _pages += page->objectName();
        _hasAsked = false;
    }
    const QScopedValueRollback<bool> acting(_isActing, true);
    actOn(*page);
}

bool WizardWalk::answerDialog()
{
    QWidget *dialog = QApplication::activeModalWidget();
    if (auto *box = qobject_cast<QMessageBox *>(dialog)) {
        if (QAbstractButton *replace = box->button(QMessageBox::Yes)) { // "Replace the file?"
            click(replace);
            return true;
        }
        _messages += box->text();
        box->accept();
    } else if (auto *files = qobject_cast<QFileDialog *>(dialog)) {
        // Typed and confirmed immediately: QFileDialog::accept() is protected.
        files->selectFile(_wishes.logPath);
        QMetaObject::invokeMethod(files, "accept");
    }
    return dialog;
}

void WizardWalk::actOn(QWizardPage &page)
{
    if (auto *logButton = page.findChild<QPushButton *>(QStringLiteral("pushButton_viewLog"));
        logButton && !_wishes.logPath.isEmpty()) {
        if (!std::exchange(_hasAsked, true))
            click(logButton);
        else if (logButton->isEnabled() || !_messages.isEmpty())
            goOn();
        return;
    }
    if (page.findChild<QListView *>(QStringLiteral("networkListView"))) {
        chooseNetwork(page);
        return;
    }
    if (auto *saveButton = page.findChild<QPushButton *>(QStringLiteral("pushButton"))) {
        if (saveButton->isEnabled() && !std::exchange(_hasAsked, true))
            click(saveButton);
        click(_wizard.button(QWizard::FinishButton));
        return;
    }
    goOn();
}

void WizardWalk::chooseNetwork(QWizardPage &page)
{
    if (!page.findChild<QPushButton *>(QStringLiteral("refreshButton"))->isEnabled())
        return;
    auto *name = page.findChild<QLineEdit *>(QStringLiteral("input_NetworkName"));
    auto *list = page.findChild<QListView *>(QStringLiteral("networkListView"));
    const QModelIndexList found =
        list->model()->match(list->model()->index(0, 0), Qt::DisplayRole, _wishes.ssid, 1,
                             Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (!found.isEmpty()) {
        list->scrollTo(found.constFirst());
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualRect(found.constFirst()).center());
    } else if (name->text() != _wishes.ssid) {
        type(name, _wishes.ssid);
    }
    type(page.findChild<QLineEdit *>(QStringLiteral("input_Password")), _wishes.passphrase);
    goOn();
}

void WizardWalk::type(QLineEdit *field, const QString &text)
{
    field->setFocus();
    field->selectAll();
    // Not QTest::keyClicks(), which aborts at a character outside ASCII.
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, field, Qt::Key_unknown, QString(character), Qt::NoModifier);
}

void WizardWalk::click(QAbstractButton *button)
{
    if (button->isEnabled() && button->isVisible())
        QTest::mouseClick(button, Qt::LeftButton);
}

void WizardWalk::goOn()
{
    click(_wizard.button(QWizard::NextButton));
}
