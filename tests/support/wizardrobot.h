#pragma once

#include <functional>
#include <utility>

#include <QStringList>
#include <QWizard>

class QDialog;
class QLineEdit;

/// What the user enters in a typical run.
struct UserInput {
    QString ssid;
    QString passphrase;
    QString logPath; ///< the file for the device's log; empty: no log is requested
};

/// The page object of the wizard, for use in the wizard's own process. It finds widgets by name and uses
/// mouse and keys as far as possible, with or without a device. A program calls the steps one by one, or
/// start() for a typical run. The run takes its steps from the event loop, because dialogs are nested event
/// loops.
class WizardRobot : public QObject
{
    Q_OBJECT

public:
    explicit WizardRobot(QWizard &wizard);

    /// The widget with this name on the current page. Ends the program if there is none.
    template <typename Widget>
    Widget *widget(const char *name) const
    {
        auto *found = _wizard.currentPage()->findChild<Widget *>(QLatin1String(name));
        if (!found)
            qFatal("there is no %s on page %d", name, _wizard.currentId());
        return found;
    }
    bool canContinue() const { return isUsable(QWizard::NextButton); }
    bool canFinish() const { return isUsable(QWizard::FinishButton); }

    /// These click a button. The program ends if the button cannot be used.
    void clickContinue() { click(_wizard.button(QWizard::NextButton)); }
    void clickGoBack() { click(_wizard.button(QWizard::BackButton)); }
    void clickDone() { click(_wizard.button(QWizard::FinishButton)); }
    void clickSave();
    void clickDownloadLog();
    /// Selects the network in the list. Returns false if the list does not contain it.
    bool selectNetwork(const QString &ssid);
    void typeNetwork(const QString &ssid);
    void typePassphrase(const QString &passphrase);
    /// Enters a path into a file dialog.
    static void enterFile(QDialog *dialog, const QString &path);
    /// Goes on to page \a id, even if a page is not complete. Calls \a beforeLeaving on each page. Returns
    /// false if a page does not let the user go on.
    bool goTo(
        int id, const std::function<void()> &beforeLeaving = [] {});

    /// Goes through the wizard with \a userInput. Takes each step as soon as it is possible.
    void start(const UserInput &userInput);
    /// Stops at the current page.
    void stop() { _isWalking = false; }
    /// The run that start() begins pauses while \a isBusy returns true: a user is slower than a device that
    /// replies.
    void waitWhile(std::function<bool()> isBusy) { _isBusy = std::move(isBusy); }
    /// Returns whether the wizard has been finished.
    bool isDone() const { return _isDone; }
    /// The texts of the message boxes that start() has dismissed.
    QStringList messages() const { return _messages; }

Q_SIGNALS:
    void done();

private:
    bool isUsable(QWizard::WizardButton button) const;
    static void click(QAbstractButton *button);
    static void type(QLineEdit *field, const QString &text);
    void pollLater();
    void poll();
    bool answerDialog();
    void takeStep();
    void continueIfPossible();
    void takeStepOnFoundPage();
    void takeStepOnChoosePage();
    void takeStepOnTestPage();

    QWizard &_wizard;
    UserInput _userInput;
    std::function<bool()> _isBusy = [] { return false; };
    QStringList _messages;
    int _page = -1;
    bool _hasActed = false; // the log was requested or the settings saved on this page
    bool _isActing = false; // a dialog opened during the action
    bool _isWalking = false;
    bool _isDone = false;
};
