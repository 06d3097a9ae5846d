#pragma once

#include <functional>

#include "app/zvtolvarsetupwizard.h"
#include "simulator/fakeusbbus.h"
#include "simulator/pluggedport.h"
#include "tests/support/messagespy.h"
#include "tests/support/wizardrobot.h"

/// Returns a device with the shortest possible conversation: one network, short values.
DeviceConfig tersestTolvar();

/// The wizard on its own simulated computer, with a device on a line that can fail, and a simulated user.
class FaultFixture
{
public:
    explicit FaultFixture(const DeviceConfig &config = tersestTolvar(),
                          const UserInput &input = {QStringLiteral("B"), QStringLiteral("b"), QString()});
    ~FaultFixture();

    /// Processes events until \a holds returns true; returns false after two minutes.
    bool waitFor(const std::function<bool()> &holds) const;
    /// Returns whether a controller of \a wizard still has something to send or to receive.
    static bool isBusy(const ZVTolvarSetupWizard &wizard);
    /// Returns whether a controller of this wizard is busy in this sense, or the line has carried data since
    /// the last call. A status reply that is still to come is not visible in any controller, and would end a
    /// scan that is started before it.
    bool isBusy();
    /// Returns whether both of the wizard's controllers have released the port.
    bool isPortReleased() const;

    // These return what went wrong, with the last messages; empty if nothing did.
    /// Walks through the wizard, from its first page to its end. The device must then have the settings.
    QString walk();
    /// Unplugs the device, unless a line fault has done so. Then none of the device's data may be left in the
    /// wizard.
    QString unplug();
    /// Plugs the device in again on a line without faults, as \a ttyName or under the next name, and walks.
    QString walkAgain(const QByteArray &ttyName = QByteArray());

    const UserInput userInput;
    FakeUsbBus bus;
    PluggedTolvar tolvar;
    MessageSpy messages;
    ZVTolvarSetupWizard wizard;
    WizardRobot robot;

private:
    QString problem(const QString &what) const;

    qsizetype _passedAtRest = -1; // bytes, at the last call of isBusy(); -1 when the line was not at rest
};
