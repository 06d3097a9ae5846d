#pragma once

#include <functional>

#include <QMetaMethod>
#include <QString>

#include "app/zvtolvarsetupwizard.h"
#include "device/zvtolvar.h"
#include "tests/support/zvtolvarinspector.h"

/// A controller that tells who connects to it.
class WatchedTolvar : public ZVTolvar
{
public:
    using ZVTolvar::ZVTolvar;

    /// Called with a signal's signature when one more connection to it has just been made.
    std::function<void(const QString &)> connected;

protected:
    void connectNotify(const QMetaMethod &signal) override
    {
        if (connected)
            connected(QString::fromLatin1(signal.methodSignature()));
    }
};

/// A real wizard with its real controller, without a device: documents come from the test, and commands stay
/// in the queue.
class WizardFixture
{
public:
    WizardFixture();
    /// Closes the wizard's window first, as a user does before the program ends it.
    ~WizardFixture() { wizard.hide(); }

    ZVTolvarSetupWizard wizard;
    WatchedTolvar &tolvar; ///< the one that the pages use
    const ZVTolvarInspector inside;

    /// Lets the device report \a children inside a status document.
    void status(const QString &children) const;
    /// Lets the device reply with a whole document at once, as the link hands it on.
    void reply(const QString &document) const { tolvar.onResponseReceived(document); }
    /// Lets the device finish the scan in progress with these "scan" elements.
    void finishScan(const QString &children = QString()) const;
    /// Lets the device finish the test in progress with this result code.
    void finishTest(const QString &result) const;

    /// Walks from the start page to page \a id by the wizard's own routing, as a known device on firmware
    /// A060; fails the test when it doesn't arrive.
    void goTo(int id);
    /// Has the current page entered once more, by the page before it.
    void goBackAndEnterAgain();
    /// The wizard's page of this class.
    template <typename Page>
    Page *page() const
    {
        return wizard.template findChild<Page *>();
    }
    /// The widget of this name on the current page.
    template <typename Widget>
    Widget *widget(const char *name) const
    {
        return wizard.currentPage()->template findChild<Widget *>(QLatin1String(name));
    }
    /// How many connections a signal has, as "networkChanged(QString)", of "the controller" or of what has
    /// this name in the wizard; -1 when there is no such signal.
    int listeners(const QByteArray &sender, const QByteArray &signal) const;
    /// Whether the wizard lets the user go on.
    bool canGoOn() const;
    /// Whether the wizard lets the user finish.
    bool canFinish() const;

private:
    void feed(const QString &bytes) const;
};
