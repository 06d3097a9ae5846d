#pragma once

#include <functional>

#include <QList>
#include <QStringList>

#include <termios.h>

/// Records the requests that this process sends to its ttys. A pseudo-terminal has no modem lines and always
/// has 8 data bits and no parity, so it does not show what was requested.
namespace LibcInterposer
{

/// Clears the record and ends all simulated behaviour.
void clear();
/// The settings of the last tcsetattr().
termios lastSettings();
/// The modem lines switched on and off so far: the line's bit (TIOCM_DTR) for on, its negative for off.
QList<int> modemLines();
/// The number of tcsetattr() calls since clear().
int timesSet();
/// Calls \a call at the \a number -th tcsetattr() from now on, before the system receives it.
void beforeSettings(int number, std::function<void()> call);
/// The settings that requests have changed so far, in order: "baud rate", "flow control", "parity", "data
/// bits", "stop bits", "DTR", "RTS".
QStringList order();

/// The number of times that \a node has been opened since clear().
int openings(const QByteArray &node);
/// Denies or restores permission to open the ttys of the bridges. The system itself never denies it to root.
void refuseOpening(bool refuse);
/// From now on, the ttys keep the requested data bits, parity and stop bits, as every line except a
/// pseudo-terminal does.
void keepFrame();
/// The first \a times that the ttys are asked since clear(), they report one byte to read.
void pretendUnread(int times);
/// The number of times that a tty has been asked for that since clear().
int questionsForUnread();
/// From now on, each read of the open tty \a node fails with \a error; 0 is the end of the file.
void failReading(const QByteArray &node, int error);
/// The number of reads that have failed in this way.
int failedReads();
/// From now on, each check whether a tty has hung up fails: the system does not reply.
void failHangUpQuestions();
/// Makes the ttys report a serial controller of this \a type, one of PORT_... in linux/serial.h.
void pretendController(int type);

} // namespace LibcInterposer
