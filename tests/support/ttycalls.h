#pragma once

#include <QList>

#include <termios.h>

/// What this process asks of its ttys, seen on the way to the system. A pseudo-terminal has no modem lines
/// and always has 8 data bits and no parity, so what was asked for does not show on it afterwards.
namespace TtyCalls
{

/// Forgets what was asked so far.
void clear();
/// The settings last asked for, with tcsetattr().
termios lastSettings();
/// The modem lines switched on and off so far: a line's bit (TIOCM_DTR) for on, its negative for off.
QList<int> modemLines();

} // namespace TtyCalls
