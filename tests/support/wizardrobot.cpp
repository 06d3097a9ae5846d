#include "tests/support/wizardrobot.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QScopedValueRollback>
#include <QTest>
#include <QTimer>

#include "pages/pageid.h"

namespace
{
constexpr int pollInterval = 5; // milliseconds; users are slower
}

WizardRobot::WizardRobot(QWizard &wizard)
    : _wizard(wizard)
{
    // Called after the wizard's own connections: the device has received its commands by then.
    connect(&_wizard, &QDialog::finished, this, [this](int result) {
        stop();
        _isDone = result == QDialog::Accepted;
        Q_EMIT done();
    });
}

bool WizardRobot::isUsable(QWizard::WizardButton button) const
{
    return _wizard.button(button)->isVisible() && _wizard.button(button)->isEnabled();
}

void WizardRobot::click(QAbstractButton *button)
{
    if (!button->isVisible() || !button->isEnabled())
        qFatal("cannot click \"%s\"", qPrintable(button->text()));
    QTest::mouseClick(button, Qt::LeftButton);
}

void WizardRobot::clickSave()
{
    click(widget<QAbstractButton>("pushButton"));
}

void WizardRobot::clickDownloadLog()
{
    click(widget<QAbstractButton>("pushButton_viewLog"));
}

bool WizardRobot::selectNetwork(const QString &ssid)
{
    auto *list = widget<QListView>("networkListView");
    const QModelIndexList found = list->model()->match(list->model()->index(0, 0), Qt::DisplayRole, ssid, 1,
                                                       Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (found.isEmpty())
        return false;
    list->scrollTo(found.constFirst());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(found.constFirst()).center());
    return true;
}

void WizardRobot::typeNetwork(const QString &ssid)
{
    type(widget<QLineEdit>("input_NetworkName"), ssid);
}

void WizardRobot::typePassphrase(const QString &passphrase)
{
    type(widget<QLineEdit>("input_Password"), passphrase);
}

void WizardRobot::type(QLineEdit *field, const QString &text)
{
    field->setFocus();
    field->selectAll();
    // Not QTest::keyClicks(), which aborts at a character outside ASCII.
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, field, Qt::Key_unknown, QString(character), Qt::NoModifier);
}

void WizardRobot::enterFile(QDialog *dialog, const QString &path)
{
    auto *files = qobject_cast<QFileDialog *>(dialog);
    // Qt starts in the folder of the last use, which may no longer exist.
    files->setDirectory(QFileInfo(path).path());
    files->selectFile(path);
}

bool WizardRobot::goTo(int id, const std::function<void()> &beforeLeaving)
{
    while (_wizard.currentId() != id) {
        const int before = _wizard.currentId();
        beforeLeaving();
        _wizard.next();
        if (_wizard.currentId() == before)
            return false;
    }
    return true;
}

void WizardRobot::start(const UserInput &userInput)
{
    _userInput = userInput;
    if (!std::exchange(_isWalking, true))
        pollLater();
}

void WizardRobot::pollLater()
{
    // Not one shared timer: it would be blocked while its own slot runs a dialog.
    QTimer::singleShot(pollInterval, this, &WizardRobot::poll);
}

void WizardRobot::poll()
{
    if (!_isWalking)
        return;
    pollLater();
    if (answerDialog() || _isActing || _isBusy())
        return;
    if (std::exchange(_page, _wizard.currentId()) != _wizard.currentId())
        _hasActed = false;
    const QScopedValueRollback<bool> acting(_isActing, true);
    takeStep();
}

bool WizardRobot::answerDialog()
{
    auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
    if (auto *box = qobject_cast<QMessageBox *>(dialog)) {
        if (QAbstractButton *replace = box->button(QMessageBox::Yes)) { // "Replace the file?"
            click(replace);
            return true;
        }
        _messages += box->text();
        box->accept();
    } else if (dialog) {
        enterFile(dialog, _userInput.logPath);
        dialog->accept();
    }
    return dialog;
}

void WizardRobot::takeStep()
{
    switch (_wizard.currentId()) {
    case TolvarFoundPageId:
        takeStepOnFoundPage();
        break;
    case ChooseNetworkPageId:
        takeStepOnChoosePage();
        break;
    case TestNetworkPageId:
        takeStepOnTestPage();
        break;
    default:
        continueIfPossible();
    }
}

void WizardRobot::continueIfPossible()
{
    if (canContinue())
        clickContinue();
}

void WizardRobot::takeStepOnFoundPage()
{
    if (!_userInput.logPath.isEmpty() && !std::exchange(_hasActed, true))
        clickDownloadLog();
    else if (_userInput.logPath.isEmpty() || !_messages.isEmpty() ||
             widget<QAbstractButton>("pushButton_viewLog")->isEnabled())
        continueIfPossible();
}

void WizardRobot::takeStepOnChoosePage()
{
    if (!widget<QAbstractButton>("refreshButton")->isEnabled()) // a scan is in progress
        return;
    if (!selectNetwork(_userInput.ssid))
        typeNetwork(_userInput.ssid);
    typePassphrase(_userInput.passphrase);
    continueIfPossible();
}

void WizardRobot::takeStepOnTestPage()
{
    if (widget<QAbstractButton>("pushButton")->isEnabled() && !std::exchange(_hasActed, true))
        clickSave();
    if (canFinish())
        clickDone();
}
