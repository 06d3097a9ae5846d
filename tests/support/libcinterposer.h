#pragma once

#include <functional>
#include <optional>
#include <utility>

#include <QList>
#include <QStringList>

#include <termios.h>

/// Records the requests that this process sends to its ttys, and makes some of them fail. A pseudo-terminal
/// has no modem lines and always has 8 data bits and no parity, so it does not show what was requested.
class LibcInterposer
{
public:
    /// Clears the record and ends all simulated behaviour.
    static void clear() { record() = {}; }
    /// The settings of the last tcsetattr().
    static termios lastSettings() { return record().lastSettings; }
    /// The modem lines switched on and off so far: the line's bit (TIOCM_DTR) for on, its negative for off.
    static QList<int> modemLines() { return record().modemLines; }
    /// The number of tcsetattr() calls since clear().
    static int timesSet() { return record().timesSet; }
    /// Calls \a call at the \a number -th tcsetattr() from now on, before the system receives it.
    static void beforeSettings(int number, std::function<void()> call)
    {
        record().settingsUntilCall = number;
        record().call = std::move(call);
    }
    /// Calls \a call once, at the next flock(), before the system receives it.
    static void beforeLocking(std::function<void()> call) { record().lockingCall = std::move(call); }
    /// The settings that requests have changed so far, in order: "baud rate", "flow control", "parity", "data
    /// bits", "stop bits", "DTR", "RTS".
    static QStringList order() { return record().order; }

    /// The number of times that \a node has been opened since clear().
    static int openings(const QByteArray &node) { return static_cast<int>(record().opened.count(node)); }
    /// From now on, denies permission to open the files whose paths start with \a path. The system itself
    /// never denies it to root.
    static void failOpening(const QByteArray &path) { record().forbiddenPath = path; }
    /// From now on, the ttys keep the requested data bits, parity and stop bits, as every line except a
    /// pseudo-terminal does.
    static void keepFrame() { record().keepsFrame = true; }
    /// From clear() on, the first \a times queries for the number of unread bytes report one byte.
    static void simulateUnread(int times) { record().simulatedUnread = times; }
    /// The number of queries for the number of unread bytes since clear().
    static int unreadQueries() { return record().unreadQueryCount; }
    /// From now on, each read of the open tty \a node fails with \a error; 0 is the end of the file.
    static void failReading(const QByteArray &node, int error)
    {
        record().unreadableNode = node;
        record().readError = error;
    }
    /// The number of reads that have failed in this way.
    static int failedReads() { return record().failedReads; }
    /// From now on, each poll() that checks whether a tty has hung up fails.
    static void failHangUpChecks() { record().failsHangUpChecks = true; }
    /// Makes the ttys report a serial controller of this \a type, one of PORT_... in linux/serial.h.
    static void simulateController(int type) { record().controller = type; }

    /// What the replaced functions record, and the behaviour that they simulate.
    struct Record {
        termios lastSettings = {};
        int timesSet = 0;
        int settingsUntilCall = 0;
        std::function<void()> call;
        std::function<void()> lockingCall;
        QList<int> modemLines;
        QStringList order;
        QList<QByteArray> opened;
        QByteArray forbiddenPath;
        bool keepsFrame = false;
        int simulatedUnread = 0;
        int unreadQueryCount = 0;
        std::optional<int> controller;
        QByteArray unreadableNode;
        int readError = 0;
        int failedReads = 0;
        bool failsHangUpChecks = false;
    };
    static Record &record();
};
