#pragma once

#include <functional>

#include <QStringList>

#include "app/zvtolvarsetupwizard.h"
#include "simulator/fakeusbbus.h"
#include "simulator/pluggedport.h"
#include "tests/faults/wizardwalk.h"

class ZVTolvar;

/// Returns a device with the shortest possible conversation: one network, short values.
DeviceConfig tersestTolvar();

/// The wizard on its own simulated computer, with a device on a line that can fail, and a simulated user.
/// Messages are kept, so that a failure can show them.
class FaultFixture
{
public:
    explicit FaultFixture(const DeviceConfig &setup = tersestTolvar(),
                          const WalkWishes &wishes = {QStringLiteral("B"), QStringLiteral("b"), QString()});
    ~FaultFixture();

    /// Processes events until \a holds returns true; returns false after two minutes.
    bool waitFor(const std::function<bool()> &holds) const;
    /// Waits until the run is done or no data has been sent on the line for a while.
    void waitUntilQuiet() const;
    /// Returns whether a controller of \a wizard still has something to send or to receive.
    static bool isTalking(const ZVTolvarSetupWizard &wizard);
    /// Does the same for this wizard, or returns whether the line has carried data since the last call. A
    /// status reply that is still due does not show in any controller, and it would end a scan that is
    /// started meanwhile.
    bool isTalking();
    /// Returns whether both of the wizard's controllers have released the port.
    bool isForgotten() const;
    /// Returns what the current page and the controller should show right after an unplugging but do not
    /// show; empty when everything is correct.
    QString wrongAfterUnplug() const;
    /// Plugs the device in again, as \a ttyName or under the next name, goes back to the first page and walks
    /// through the wizard. Returns what went wrong; empty when the device has the expected settings.
    QString walkAgain(const QByteArray &ttyName = QByteArray());
    /// Calls \a heard with each message too.
    static void listen(std::function<void(QtMsgType, const QString &)> heard);
    /// Returns the last messages of the wizard and its controllers.
    static QString lastMessages();

    const WalkWishes wishes;
    FakeUsbBus bed;
    PluggedTolvar tolvar;
    ZVTolvarSetupWizard wizard;
    WizardWalk walk;

private:
    QString shown(const char *label) const;

    qsizetype _passedAtRest = -1; // bytes, at the last call of isTalking(); -1 when the line was not at rest
    bool _wasIdentified = false;
    bool _isScanning = false;
    QString _verdict;
};
