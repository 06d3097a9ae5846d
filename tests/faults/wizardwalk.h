#pragma once

#include <functional>
#include <utility>

#include <QObject>
#include <QStringList>

class QAbstractButton;
class QLineEdit;
class QWizard;
class QWizardPage;

/// The values that the simulated user chooses.
struct WalkWishes {
    QString ssid;
    QString passphrase;
    QString logPath; ///< the file for the device's log; empty: no log is requested
};

/// A simulated user inside the wizard's program, who walks through the typical run with mouse and keys as far
/// as possible. It knows the wizard only by the content of its windows, so it works in any program with a
/// wizard.
class WizardWalk : public QObject
{
    Q_OBJECT

public:
    WizardWalk(QWizard &wizard, const WalkWishes &wishes);

    /// Users are slower than a device that answers: nothing is done while \a isBusy returns true.
    void waitWhile(std::function<bool()> isBusy) { _isBusy = std::move(isBusy); }
    /// Continues, whenever the wizard allows it, from the event loop.
    void start();
    /// Stops at the current page.
    void stop() { _isWalking = false; }
    /// Returns whether the wizard has been finished.
    bool isDone() const { return _isDone; }
    /// Returns the texts of the message boxes that were shown and dismissed.
    QStringList messages() const { return _messages; }
    /// Returns the object names of the visited pages, in order; a page that is entered again is listed again.
    QStringList pages() const { return _pages; }

Q_SIGNALS:
    void done();

private:
    void lookLater();
    void look();
    bool answerDialog();
    void actOn(QWizardPage &page);
    void chooseNetwork(QWizardPage &page);
    void type(QLineEdit *field, const QString &text);
    void click(QAbstractButton *button);
    void goOn();

    QWizard &_wizard;
    const WalkWishes _wishes;
    std::function<bool()> _isBusy;
    QWizardPage *_page = nullptr;
    QStringList _pages;
    QStringList _messages;
    bool _hasAsked = false; // on this page, the action that the page is for
    bool _isActing = false; // a dialog opened during the action
    bool _isWalking = false;
    bool _isDone = false;
};
