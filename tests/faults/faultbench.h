#pragma once

#include <functional>

#include <QStringList>

#include "app/zvtolvarsetupwizard.h"
#include "simulator/pluggedport.h"
#include "simulator/usbtestbed.h"
#include "tests/faults/wizardwalk.h"

class ZVTolvar;

/// A device whose conversation is as short as can be: one network, short values.
TolvarSetup tersestTolvar();

/// The wizard on a computer of its own, with a device on a line that can go wrong, and somebody at it.
/// Messages are kept to be shown with a failure.
class FaultBench
{
public:
    explicit FaultBench(const TolvarSetup &setup = tersestTolvar(),
                        const WalkWishes &wishes = {QStringLiteral("B"), QStringLiteral("b"), QString()});
    ~FaultBench();

    /// Waits, with events going on, until \a holds; false after two minutes.
    bool waitFor(const std::function<bool()> &holds) const;
    /// Waits until the run is done or nothing has been said on the line for a while.
    void waitUntilQuiet() const;
    /// Whether a controller of \a wizard has something to say or to hear yet.
    static bool isTalking(const ZVTolvarSetupWizard &wizard);
    /// The same of this wizard, or whether anything has been on the line since the last call: a status reply
    /// that is still due shows in no controller, and it would end a scan that is started meanwhile.
    bool isTalking();
    /// Whether both of the wizard's controllers have let go of the port.
    bool isForgotten() const;
    /// What the page in sight and the controller should show right after an unplugging, and don't; empty when
    /// all is as it should be.
    QString wrongAfterUnplug() const;
    /// Plugs the device in again, as \a ttyName or under the next name, goes back to the first page and walks
    /// through. Gives what went wrong, empty when the device holds what was wished for.
    QString walkAgain(const QByteArray &ttyName = QByteArray());
    /// Has \a heard called with each message too.
    static void listen(std::function<void(QtMsgType, const QString &)> heard);
    /// The last messages of the wizard and its controllers.
    static QString lastMessages();

    const WalkWishes wishes;
    UsbTestbed bed;
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
