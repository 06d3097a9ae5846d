#pragma once

#include <functional>
#include <memory>

#include <QMutex>
#include <QObject>
#include <QThread>

#include "simulator/linefaults.h"
#include "simulator/simulatedtolvar.h"
#include "simulator/usbbridge.h"

class PtyPump;
class FakeUsbBus;

/// A bridge that can be plugged into a bus. A separate thread serves its far end, so code in this
/// process may block while it uses the tty. Use it from the bus's thread, and destroy it before the bus.
class PluggedPort : public QObject
{
    Q_OBJECT

public:
    ~PluggedPort() override;

    /// Plugs the bridge in, as the bus's next tty name or as \a ttyName. Returns false if it is already
    /// plugged in.
    bool plug(const QByteArray &ttyName = QByteArray());
    /// Unplugs the bridge. Does nothing if it is not plugged in.
    void unplug();
    /// Unplugs the bridge and plugs it in again, as the next tty name.
    bool replug();
    /// Applies \a faults to its line from now on.
    void setFaults(const LineFaults &faults);
    /// The number of bytes moved since plug(), in both directions together.
    qsizetype passed() const;
    /// Receives everything that has been written to the tty so far. After a program has ended, that includes
    /// the last bytes it wrote.
    void receivePending();
    bool isPlugged() const { return _isPlugged; }
    /// The name of the tty, such as "ttyUSB0". It is kept after unplug() and empty before the first plug().
    QByteArray ttyName() const { return _ttyName; }

    /// Waits until \a holds returns true, and processes this thread's events meanwhile. \a holds is checked
    /// after each changed(). Returns false after \a milliseconds.
    bool waitUntil(const std::function<bool()> &holds, int milliseconds = 5000);

Q_SIGNALS:
    /// Emitted when something has arrived or changed. Conditions that waitUntil() checks may be true now.
    void changed();
    /// Emitted when the line faults have unplugged the bridge.
    void pulledOut();

protected:
    PluggedPort(FakeUsbBus &bus, const UsbBridge &bridge);

    /// Ends the thread. The objects that live in it may be destroyed afterwards.
    void stop();
    /// The object in the thread that serves the far end of the tty.
    PtyPump *pump() const { return _pump.get(); }
    /// Runs \a step in the thread and waits for it to return.
    void inThread(const std::function<void()> &step);
    QThread *farThread() { return &_thread; }

private:
    Q_DISABLE_COPY_MOVE(PluggedPort)

    /// What an unplug does to the device behind the port. Runs in the thread.
    virtual void losePower() {}

    FakeUsbBus &_bus;
    const UsbBridge _bridge;
    QByteArray _ttyName;
    bool _isPlugged = false;
    std::unique_ptr<PtyPump> _pump;
    QThread _thread;
};

/// The simulated device behind a bridge. Its state survives unplug() and plug() as far as that of the real
/// device does.
class PluggedTolvar : public PluggedPort
{
    Q_OBJECT

public:
    explicit PluggedTolvar(FakeUsbBus &bus, const DeviceConfig &config = DeviceConfig(),
                           const UsbBridge &bridge = UsbBridge::ftdi());
    ~PluggedTolvar() override;

    /// What the device has received so far and its current configuration.
    TolvarState state() const { return _tolvar.state(); }
    /// Changes the device's configuration. The change applies from the next command on.
    void reconfigure(const std::function<void(DeviceConfig &)> &change) { _tolvar.reconfigure(change); }
    /// Returns true if no byte is in transit in either direction and the device is idle.
    bool isAtRest();
    /// Waits for a state and processes this thread's events meanwhile. Returns false after \a milliseconds.
    bool waitFor(const std::function<bool(const TolvarState &)> &holds, int milliseconds = 5000);

Q_SIGNALS:
    /// Emitted for each part of the conversation, for display. Emitted in this object's thread.
    void conversation(SimulatedTolvar::Speech what, const QByteArray &text);

private:
    void losePower() override;

    SimulatedTolvar _tolvar;
};

/// A bridge without a simulated device: it never replies and records what it receives.
class ForeignPort : public PluggedPort
{
    Q_OBJECT

public:
    explicit ForeignPort(FakeUsbBus &bus, const UsbBridge &bridge = UsbBridge::foreignFtdi());
    ~ForeignPort() override;

    /// All bytes that were written to it.
    QByteArray received() const;

private:
    void record(const QByteArray &bytes);

    mutable QMutex _guard;
    QByteArray _received;
};
