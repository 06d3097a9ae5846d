#pragma once

#include <functional>
#include <memory>

#include <QMutex>
#include <QObject>
#include <QThread>

#include "simulator/linefaults.h"
#include "simulator/simulatedtolvar.h"
#include "simulator/usbbridge.h"

class PortPump;
class UsbTestbed;

/// A bridge that can be plugged into a test bed, with its far end served in a thread of its own: whoever
/// talks to it from this process may block as it likes. Used from the bed's thread, and gone before the bed.
class PluggedPort : public QObject
{
    Q_OBJECT

public:
    ~PluggedPort() override;

    /// Plugs it in, under the bed's next tty name or \a ttyName; false when it is in already or the bed
    /// refuses.
    bool plug(const QByteArray &ttyName = QByteArray());
    /// Pulls it out; nothing when it is not in.
    void unplug();
    /// Out and in again, under the next tty name.
    bool replug();
    /// Has its line go wrong so, from here on.
    void setFaults(const LineFaults &faults);
    /// How many bytes have passed since plug(), in both directions together.
    qsizetype passed() const;
    /// Takes what has been written to the tty until now; all of a program's last words, once it has ended.
    void catchUp();
    bool isPlugged() const { return _isPlugged; }
    /// The tty's name, such as "ttyUSB0", kept after unplug(); empty before the first plug().
    QByteArray ttyName() const { return _ttyName; }

    /// Waits, with this thread's events going on, until \a holds is true, which is looked at with each
    /// changed(); false when \a milliseconds have passed.
    bool waitUntil(const std::function<bool()> &holds, int milliseconds = 5000);

Q_SIGNALS:
    /// Something has come or changed: what is waited for may hold now.
    void changed();
    /// It has been pulled out as its faults ask for.
    void pulledOut();

protected:
    PluggedPort(UsbTestbed &bed, const UsbBridge &bridge);

    /// Ends the thread; what lives in it may be destroyed then.
    void stop();
    /// The thread's far end of the tty.
    PortPump *pump() const { return _pump.get(); }
    /// Runs \a step in the thread and waits for it.
    void inThread(const std::function<void()> &step);
    QThread *farThread() { return &_thread; }

private:
    Q_DISABLE_COPY_MOVE(PluggedPort)

    /// What being pulled out does to what hangs on the port; runs in the thread.
    virtual void losePower() {}

    UsbTestbed &_bed;
    const UsbBridge _bridge;
    QByteArray _ttyName;
    bool _isPlugged = false;
    std::unique_ptr<PortPump> _pump;
    QThread _thread;
};

/// The simulated device behind a bridge. It keeps its state over unplug() and plug(), as far as the device
/// does.
class PluggedTolvar : public PluggedPort
{
    Q_OBJECT

public:
    explicit PluggedTolvar(UsbTestbed &bed, const TolvarSetup &setup = TolvarSetup(),
                           const UsbBridge &bridge = UsbBridge::ftdi());
    ~PluggedTolvar() override;

    /// What the device has received and holds now.
    TolvarState state() const { return _tolvar.state(); }
    /// Changes what the device is made of, from the next command on.
    void alter(const std::function<void(TolvarSetup &)> &change) { _tolvar.alter(change); }
    /// Whether no byte is on its way in either direction and the device works on nothing.
    bool isAtRest();
    /// Waits, with this thread's events going on, for a state; false when \a milliseconds have passed.
    bool waitFor(const std::function<bool(const TolvarState &)> &holds, int milliseconds = 5000);

Q_SIGNALS:
    /// A piece of the conversation, to be shown to people; arrives in this object's thread.
    void conversation(SimulatedTolvar::Speech what, const QByteArray &text);

private:
    void losePower() override;

    SimulatedTolvar _tolvar;
};

/// A bridge with nothing of ours behind it: it never answers and keeps what it gets.
class ForeignPort : public PluggedPort
{
    Q_OBJECT

public:
    explicit ForeignPort(UsbTestbed &bed, const UsbBridge &bridge = UsbBridge::foreignFtdi());
    ~ForeignPort() override;

    /// Every byte that was written to it.
    QByteArray received() const;

private:
    void take(const QByteArray &bytes);

    mutable QMutex _guard;
    QByteArray _received;
};
