#pragma once

#include <functional>
#include <utility>

#include <QObject>
#include <QStringList>

class QAbstractButton;
class QLineEdit;
class QWizard;
class QWizardPage;

/// What somebody at the wizard wants.
struct WalkWishes {
    QString ssid;
    QString passphrase;
    QString logPath; ///< where the device's log is to go; empty: it is not asked for
};

/// Somebody at the wizard, inside its program, who walks through the typical run by mouse and keys as far as
/// it goes. Knows the wizard by what stands in its windows alone, so any program with one will do.
class WizardWalk : public QObject
{
    Q_OBJECT

public:
    WizardWalk(QWizard &wizard, const WalkWishes &wishes);

    /// People are slower than a device that answers: nothing is done while \a isBusy.
    void waitWhile(std::function<bool()> isBusy) { _isBusy = std::move(isBusy); }
    /// Walks on, whenever the wizard allows it, from the event loop.
    void start();
    /// Stays where it is.
    void stop() { _isWalking = false; }
    /// Whether the wizard has been finished.
    bool isDone() const { return _isDone; }
    /// The texts of the message boxes that came up, and were dismissed.
    QStringList messages() const { return _messages; }
    /// The object names of the pages seen, each time one was entered.
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
    bool _hasAsked = false; // on this page, for what it is there for
    bool _isActing = false; // a dialog has come up in the middle of it
    bool _isWalking = false;
    bool _isDone = false;
};
