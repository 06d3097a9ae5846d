#pragma once

#include <QTemporaryDir>

#include "simulator/pluggedport.h"
#include "simulator/usbtestbed.h"
#include "tests/e2e/wizarduser.h"
#include "tests/support/programdriver.h"

/// In a Qt Test function: takes a step with a Scenario's user or driver, and fails with the driver's words.
#define ZV_STEP(scenario, step)                                                                              \
    do {                                                                                                     \
        if (!(step))                                                                                         \
            QFAIL(qPrintable(QStringLiteral(#step ": ") + (scenario).screen.failure()));                     \
    } while (false)

/// A run of the real program on a computer of its own: a fresh home folder, a fresh USB test bed, a simulated
/// Tolvar that can be plugged in, and a user at the screen. When the test fails it leaves what was seen and
/// said.
class Scenario
{
public:
    explicit Scenario(const TolvarSetup &setup = TolvarSetup(), const UsbBridge &bridge = UsbBridge::ftdi());
    ~Scenario();

    /// Starts the program.
    bool start();
    /// The session log so far, as it stands in the home folder.
    QByteArray sessionLog() const;
    /// A file in the home folder.
    QString inHome(const QString &name) const { return _home.filePath(name); }

    /// What the device holds and has received, once the program's last words have arrived.
    TolvarState deviceState();
    /// The lines it has received by then.
    QList<QByteArray> received();
    /// The lines received since the device was woken last: from the last "get" on, that one left out.
    QList<QByteArray> receivedSinceStatus();
    /// Waits until the device has received a line that begins with \a word.
    bool deviceGets(const QByteArray &word);

private:
    QTemporaryDir _home;
    QStringList _conversation;

public:
    UsbTestbed bed;
    PluggedTolvar tolvar;
    ProgramDriver screen;
    WizardUser user;
};

/// What the device receives, from its status on, in a run that ends with Done.
QList<QByteArray> typicalLines(const QByteArray &ssid, const QByteArray &passphrase);
