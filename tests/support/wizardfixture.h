#pragma once

#include <functional>

#include <QMetaMethod>
#include <QString>

#include "app/zvtolvarsetupwizard.h"
#include "device/zvtolvar.h"
#include "tests/support/wizardrobot.h"
#include "tests/support/zvtolvartestpeer.h"

/// A controller that reports the connections to its signals.
class ConnectionSpy : public ZVTolvar
{
public:
    using ZVTolvar::ZVTolvar;

    /// Called with the signature of a signal after a connection to it has been made.
    std::function<void(const QString &)> connected;

protected:
    void connectNotify(const QMetaMethod &signal) override
    {
        if (connected)
            connected(QString::fromLatin1(signal.methodSignature()));
    }
};

/// A real wizard with its real controller and no device: the test supplies the documents, and commands stay
/// in the queue.
class WizardFixture
{
public:
    WizardFixture();
    /// Closes the wizard window first, as happens when the user closes it before the program ends.
    ~WizardFixture() { wizard.hide(); }

    ZVTolvarSetupWizard wizard;
    ConnectionSpy &tolvar; ///< the controller that the pages use
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
    /// The wizard's page of this class.
    template <typename Page>
    Page *page() const
    {
        return wizard.template findChild<Page *>();
    }
    /// The widget with this name on the current page.
    template <typename Widget>
    Widget *widget(const char *name) const
    {
        return wizard.currentPage()->template findChild<Widget *>(QLatin1String(name));
    }
    /// The number of connections of a signal, such as "networkChanged(QString)", of "the controller" or of
    /// the object with this name in the wizard; -1 if there is no such signal.
    int listeners(const QByteArray &sender, const QByteArray &signal) const;
    /// Returns true if the Next button is enabled.
    bool canGoOn() const { return robot.canContinue(); }
    /// Returns true if the Finish button is enabled.
    bool canFinish() const { return robot.canFinish(); }
};
