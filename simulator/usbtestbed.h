#pragma once

#include <map>

#include <QByteArray>

#include "simulator/usbbridge.h"

struct _UMockdevTestbed;

/// The USB ports and ttys of a computer, mocked by umockdev for this process and its children. Only one test
/// bed may exist at a time. It must outlive every serial port that is open on it. Use it from one thread.
class UsbTestbed
{
public:
    /// Numbers its ttys from ttyUSB<\a firstTty>. Without an argument, it uses numbers that no other process
    /// and no earlier test bed of this process uses. Lock files of serial ports are real, so two test beds
    /// with the same numbers conflict.
    explicit UsbTestbed(int firstTty = -1);
    /// Unplugs all bridges that are still plugged in.
    ~UsbTestbed();

    /// Returns true if the process runs under umockdev-wrapper. A test bed needs it.
    static bool isPossible();

    /// Returns a tty number that no other process uses and that this process uses only once. Lock files of
    /// serial ports are real: ttys with the same name conflict, and a tty of an earlier test bed may still be
    /// locked.
    static int takeTtyNumber();

    /// Plugs a bridge into the next free USB port and announces it. Returns the tty name, or an empty one if
    /// umockdev rejects it. Each call makes a new tty name, as the kernel does while the old tty is still
    /// open. \a ttyName requests a name, such as that of an earlier tty.
    QByteArray plug(const UsbBridge &bridge, const QByteArray &ttyName = QByteArray());
    /// Unplugs a bridge: an open tty hangs up, its devices are removed and the removal is announced. Unknown
    /// names are ignored.
    void unplug(const QByteArray &ttyName);
    /// The raw far end of a plugged tty; -1 for an unknown one. The test bed owns it, and unplug() closes it.
    int descriptor(const QByteArray &ttyName) const;
    /// Hangs up an open tty, given its far end, before unplug(). The kernel also does this before udev
    /// reports the removal. Thread-safe.
    static void hangUp(int descriptor);

private:
    Q_DISABLE_COPY_MOVE(UsbTestbed)

    struct Plugged {
        UsbRecord record;
        int socket;
        int descriptor;
    };
    QByteArray nextName();
    int freeSocket() const;

    _UMockdevTestbed *_bed;
    std::map<QByteArray, Plugged> _plugged;
    int _nextTty;         // negative: use takeTtyNumber()
    int _nextAddress = 2; // the root hub has address 1
};
