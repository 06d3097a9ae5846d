#pragma once

#include <QTemporaryDir>

#include "simulator/fakeusbbus.h"
#include "simulator/pluggedport.h"
#include "tests/e2e/programrobot.h"
#include "tests/support/programdriver.h"

/// For a Qt Test function: runs a step with a Scenario's robot or driver, and on failure reports the driver's
/// message.
#define ZV_STEP(scenario, step)                                                                              \
    do {                                                                                                     \
        if (!(step))                                                                                         \
            QFAIL(qPrintable(QStringLiteral(#step ": ") + (scenario).screen.failure()));                     \
    } while (false)

/// A run of the real program on its own simulated computer: a fresh home folder, a fresh fake USB bus, a
/// simulated Tolvar that can be plugged in, and a robot that uses the program. When the test fails, it saves
/// the screen and the output.
class Scenario
{
public:
    explicit Scenario(const DeviceConfig &config = DeviceConfig(),
                      const UsbBridge &bridge = UsbBridge::ftdi());
    ~Scenario();

    /// Starts the program.
    bool start();
    /// Plugs the device in, starts the program and waits until it has found the device.
    bool findDevice();
    /// Calls findDevice(), continues to the choose-network page and waits for the end of the scan.
    bool findNetworks();
    /// Returns the current content of the session log in the home folder.
    QByteArray sessionLog() const;
    /// Unplugs the device and waits until the program has noticed it.
    bool unplug();
    /// Returns the path of a file in the home folder.
    QString inHome(const QString &name) const { return _home.filePath(name); }

    /// Returns the settings of the device and what it has received, once the program's last output has
    /// arrived.
    TolvarState deviceState();
    /// Returns the lines of deviceState().
    QList<QByteArray> received();
    /// Returns the lines received since the device was last woken: those after the last "get".
    QList<QByteArray> receivedSinceStatus();
    /// Waits until the device has received a line that begins with \a word.
    bool deviceGets(const QByteArray &word);

private:
    QTemporaryDir _home;
    QStringList _conversation;

public:
    FakeUsbBus bus;
    PluggedTolvar tolvar;
    ProgramDriver screen;
    ProgramRobot robot;
};

/// Returns the lines that the device receives, from its status on, in a run that ends with Done.
QList<QByteArray> typicalLines(const QByteArray &ssid, const QByteArray &passphrase);

/// A device that joins its network without a passphrase, so that a run needs only the Enter key.
DeviceConfig openNetwork();

/// One message of the session log: its prefix, such as 'D', and its text, which may span several lines.
struct LogMessage {
    char level;
    QByteArray text;
};
QList<LogMessage> messagesOf(const QByteArray &log);
