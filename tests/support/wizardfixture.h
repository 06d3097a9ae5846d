#pragma once

#include <QString>

#include "app/zvtolvarsetupwizard.h"
#include "device/zvtolvar.h"
#include "tests/support/wizardrobot.h"
#include "tests/support/zvtolvartestpeer.h"

/// A real wizard with its real controller and no device: the test supplies the documents, and commands stay
/// in the queue.
class WizardFixture
{
public:
    WizardFixture();
    /// Closes the wizard window first, as happens when the user closes it before the program ends.
    ~WizardFixture() { wizard.hide(); }

    ZVTolvarSetupWizard wizard;
    ZVTolvar &tolvar; ///< the controller that the pages use
    const ZVTolvarTestPeer inside;
    WizardRobot robot{wizard};

    /// Simulates a status document from the device with \a children.
    void status(const QString &children) const { reply("<puckdata>" + children + "</puckdata>"); }
    /// Simulates a whole document from the device, delivered at once as by the link.
    void reply(const QString &document) const { tolvar.onResponseReceived(document); }
    /// Simulates the end of the current scan or test with a whole document, byte by byte.
    void finish(const QString &document) const;
    /// Simulates the end of the current scan with these "scan" elements.
    void finishScan(const QString &children = QString()) const
    {
        finish("<scan_results>" + children + "</scan_results>");
    }
    /// Simulates the end of the current test with this result code.
    void finishTest(const QString &result) const
    {
        finish("<networktest_results><status result=\"" + result + "\"/></networktest_results>");
    }

    /// Goes from the start page to page \a id by the wizard's own page order, as with a known device on
    /// firmware A060. The test fails if the page is not reached.
    void goTo(int id);
    /// Goes back one page and enters the current page again.
    void goBackAndEnterAgain();
    /// The widget with this name on the current page.
    template <typename Widget>
    Widget *widget(const char *name) const
    {
        return wizard.currentPage()->template findChild<Widget *>(QLatin1String(name));
    }
    /// Returns true if the Next button is enabled.
    bool canContinue() const { return robot.canContinue(); }
    /// Returns true if the Finish button is enabled.
    bool canFinish() const { return robot.canFinish(); }
};
