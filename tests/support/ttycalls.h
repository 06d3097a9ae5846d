#pragma once

#include <functional>

#include <QList>
#include <QStringList>

#include <termios.h>

/// What this process asks of its ttys, seen on the way to the system. A pseudo-terminal has no modem lines
/// and always has 8 data bits and no parity, so what was asked for does not show on it afterwards.
namespace TtyCalls
{

/// Forgets what was asked so far, and pretends nothing any more.
void clear();
/// The settings last asked for, with tcsetattr().
termios lastSettings();
/// The modem lines switched on and off so far: a line's bit (TIOCM_DTR) for on, its negative for off.
QList<int> modemLines();
/// How often settings have been asked for since clear().
int timesSet();
/// Has \a call called when the settings are asked for the \a number -th time from here on, before the system
/// is.
void beforeSettings(int number, std::function<void()> call);
/// What was asked to be other than it is so far, in order: "baud rate", "flow control", "parity", "data
/// bits", "stop bits", "DTR", "RTS".
QStringList order();

/// How often \a node has been opened since clear().
int openings(const QByteArray &node);
/// Has the system refuse, or give again, permission to open the bridges' ttys. Root can't be refused
/// otherwise.
void refuseOpening(bool refuse);
/// Has the ttys keep the data bits, parity and stop bits that are asked for from here on, as any line does
/// but a pseudo-terminal's.
void keepFrame();
/// Has the ttys say, the first \a times that they are asked since clear(), that they hold a byte to be read.
void pretendUnread(int times);
/// How often a tty was asked for that since clear().
int questionsForUnread();
/// Has each read of the open tty \a node fail with \a error from here on; 0 is the end of the file.
void failReading(const QByteArray &node, int error);
/// How many reads have failed so.
int failedReads();
/// Has each question whether a tty has hung up fail from here on: the system gives no answer.
void failHangUpQuestions();
/// Has the ttys say that a serial controller of this \a type is behind them, one of PORT_... in
/// linux/serial.h.
void pretendController(int type);

} // namespace TtyCalls
