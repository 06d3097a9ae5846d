#pragma once

#include <map>

#include <QByteArray>

#include "simulator/usbbridge.h"

struct _UMockdevTestbed;

/// A computer's USB sockets and ttys, mocked by umockdev for this process and its children. One at a time; it
/// must outlive every serial port that is open on it. It is used from one thread.
class UsbTestbed
{
public:
    /// Numbers its ttys on from ttyUSB<\a firstTty>; without one, from numbers no other process and no
    /// earlier bed of this one uses. Lock files of serial ports are real, so two beds with the same numbers
    /// get in each other's way.
    explicit UsbTestbed(int firstTty = -1);
    /// Unplugs what is still plugged in.
    ~UsbTestbed();

    /// Whether the process runs under umockdev-wrapper, without which there is no bed.
    static bool isPossible();

    /// A number for a tty that no other process takes, and this one only once. Lock files of serial ports are
    /// real, so ttys of one name get in each other's way; and one of an earlier bed may still be locked.
    static int takeTtyNumber();

    /// Plugs a bridge into the next free socket under the next tty name, and announces it. Gives the tty
    /// name, empty when umockdev refuses. Every plugging makes a new name, as while the old tty is still held
    /// open; unless \a ttyName says which, such as one that was unplugged before.
    QByteArray plug(const UsbBridge &bridge, const QByteArray &ttyName = QByteArray());
    /// Pulls it out: an open tty hangs up, its devices go and their going is announced. Unknown names are
    /// ignored.
    void unplug(const QByteArray &ttyName);
    /// The far end of a plugged tty, raw, -1 for an unknown one. It belongs to the bed and dies with
    /// unplug().
    int descriptor(const QByteArray &ttyName) const;
    /// Has an open tty hang up, by its far end, ahead of unplug(): as the kernel does it, before udev tells.
    /// Any thread.
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
    int _nextTty;         // negative: takeTtyNumber()
    int _nextAddress = 2; // the root hub has 1
};
