#pragma once

#include <map>

#include <QByteArray>

#include "simulator/usbbridge.h"

struct _UMockdevTestbed;

/// The USB ports and ttys of a computer, mocked by umockdev for this process and its children: a console, and
/// the bridges that are plugged in. Only one bus may exist at a time, and only under umockdev-wrapper. It
/// must outlive every serial port that is open on it. Use it from one thread.
class FakeUsbBus
{
public:
    /// Numbers its ttys from ttyUSB<\a firstTty>. Without an argument, it uses takeTtyNumber().
    explicit FakeUsbBus(int firstTty = -1);
    /// Unplugs everything that is still plugged in.
    ~FakeUsbBus();

    /// Returns true if the process runs under umockdev-wrapper.
    static bool isPossible();

    /// Returns a tty number that no other process uses and that this process uses only once. Lock files of
    /// serial ports are real: ttys with the same name conflict, and a tty of an earlier bus may still be
    /// locked.
    static int takeTtyNumber();

    /// Plugs a bridge into the next free USB port and announces it. Returns the name of the tty. Each call
    /// makes a new name, as the kernel does while the old tty is still open. \a ttyName requests a name, such
    /// as that of an earlier tty.
    QByteArray plug(const UsbBridge &bridge, const QByteArray &ttyName = QByteArray());
    /// Unplugs a bridge: an open tty hangs up, its devices are removed and the removal is announced. Unknown
    /// names are ignored.
    void unplug(const QByteArray &ttyName);
    /// The raw far end of a plugged tty; -1 for an unknown one. The bus owns it, and unplug() closes it.
    int descriptor(const QByteArray &ttyName) const;
    /// Hangs up an open tty, given its far end, before unplug(). The kernel also does this before udev
    /// reports the removal. Thread-safe.
    static void hangUp(int descriptor);

protected:
    /// Adds a tty and the devices that it belongs to. unplug() removes them.
    void add(const QByteArray &ttyName, const UsbRecord &record);
    /// The path of the tty's device in sysfs.
    QByteArray sysfsPath(const QByteArray &ttyName) const;
    _UMockdevTestbed *testbed() const { return _testbed; }

private:
    Q_DISABLE_COPY_MOVE(FakeUsbBus)

    struct Plugged {
        UsbRecord record;
        int socket = 0;      // 0: not a bridge
        int descriptor = -1; // -1: the tty cannot be opened
    };
    int freeSocket() const;

    _UMockdevTestbed *_testbed;
    std::map<QByteArray, Plugged> _plugged;
    int _nextTty;         // negative: use takeTtyNumber()
    int _nextAddress = 2; // the root hub has address 1
};
