#pragma once

#include <QString>

#include "app/zvtolvarsetupwizard.h"
#include "tests/support/zvtolvarinspector.h"

/// A real wizard with its real controller, without a device: documents come from the test, and commands stay
/// in the queue.
class WizardFixture
{
public:
    WizardFixture();
    /// Closes the wizard's window first, as a user does before the program ends it.
    ~WizardFixture() { wizard.hide(); }

    ZVTolvarSetupWizard wizard;
    ZVTolvar &tolvar;
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
    /// How many connections the controller's signal has, named by SIGNAL().
    int listeners(const char *signal) const;
    /// Whether the wizard lets the user go on.
    bool canGoOn() const;
    /// Whether the wizard lets the user finish.
    bool canFinish() const;

private:
    void feed(const QString &bytes) const;
};
