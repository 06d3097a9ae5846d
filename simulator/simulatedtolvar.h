#pragma once

#include <functional>

#include <QMutex>
#include <QObject>
#include <QTimer>

#include "simulator/deviceconfig.h"
#include "simulator/linesplitter.h"
#include "simulator/tolvarstate.h"

/// The console of the device: it receives bytes and sends bytes. It sleeps until a "C" or an empty line wakes
/// it. It echoes its input, sends '>' after each command, and puts its documents between 0x02 and 0x03. Lines
/// that arrive during the work on a command are processed afterwards.
///
/// It lives in one thread, which needs an event loop if the console has delays. Functions that are marked as
/// thread-safe may be called from any other thread.
class SimulatedTolvar : public QObject
{
    Q_OBJECT

public:
    /// The kinds of items in a conversation.
    enum Speech {
        HostLine, ///< a line from the host, without its line end
        Reply,    ///< a document, as sent, without the bytes 0x02 and 0x03
        Prompt,   ///< the '>' with its line end
        Trace,    ///< text that is not a document
        Note      ///< what happened to the device, in English
    };
    Q_ENUM(Speech)

    explicit SimulatedTolvar(const DeviceConfig &config = DeviceConfig(), QObject *parent = nullptr);

    /// What it has received so far and its current configuration. Thread-safe.
    TolvarState state() const;
    /// A copy of its current DeviceConfig. Thread-safe.
    DeviceConfig config() const;
    /// Changes the DeviceConfig. The change applies from the next command on. A change of
    /// DeviceConfig::configuration has no effect. Thread-safe.
    void reconfigure(const std::function<void(DeviceConfig &)> &change);

    /// Returns true if it has processed all input and is idle. Call it from the object's own thread only.
    bool isAtRest() const { return _input.isEmpty() && !_work.isActive(); }

public Q_SLOTS:
    /// Receives bytes from the host. Replies are emitted as transmit().
    void receive(const QByteArray &bytes);
    /// Simulates a loss of power: drops unsaved settings and unfinished work, and puts the console to sleep.
    void losePower();

Q_SIGNALS:
    /// Emitted with bytes for the host.
    void transmit(const QByteArray &bytes);
    /// Emitted for each part of the conversation, for display.
    void conversation(SimulatedTolvar::Speech what, const QByteArray &text);
    /// Emitted when state() has changed.
    void changed();

private:
    Q_DISABLE_COPY_MOVE(SimulatedTolvar)

    void recordArrival(const QByteArray &bytes);
    void readInput();
    void execute(const QByteArray &line);
    void startSession();

    void sendStatus(const QByteArray &);
    void scan(const QByteArray &);
    void test(const QByteArray &);
    void sendLog(const QByteArray &);
    void setTrace(const QByteArray &value);
    void setNetwork(const QByteArray &value);
    void setPassphrase(const QByteArray &value);
    void setAntenna(const QByteArray &value);
    void setStaticIP(const QByteArray &value);
    void save(const QByteArray &);
    void leaveSetup(const QByteArray &);

    void reply(QByteArray document);
    void prompt();
    void trace(const QByteArray &text);
    void runAfter(int milliseconds, const std::function<void()> &step);
    void change(const std::function<void(TolvarState &)> &how);

    mutable QMutex _guard; // protects _config and _state
    DeviceConfig _config;
    TolvarState _state;

    LineSplitter _arriving; // splits the recorded bytes into lines, as they arrive
    LineSplitter _reading;  // splits the console's input into lines, when the console processes it
    QByteArray _input;      // arrived, not processed yet
    bool _isReading = false;
    QTimer _work; // active while the console cannot read
    std::function<void()> _nextStep;
};
