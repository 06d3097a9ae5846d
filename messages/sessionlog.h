#pragma once

#include <QtGlobal>

class QTextEdit;
class QTextStream;

/// The session log: a stream to "zvinstall.log" in the user's home folder after openSessionLog() has run;
/// before that it has no device. It contains everything the program does, including the passphrase in plain
/// text. It is destroyed at process exit; later messages go to standard output only.
extern QTextStream theSessionLog;

/// The console view's text browser, to which warnings and more severe messages are copied; null while there
/// is none.
extern QTextEdit *theConsoleWindow;

/// Whether debug messages are also copied to the console view. kept: never set (docs/compatibility.md).
extern bool theTraceDebugFlag;

/// Starts the session log, overwriting an earlier one; only its owner can read and write it. If the file
/// cannot be opened, nothing is written to the log and no error is reported.
void openSessionLog();

/// Installs a handler that treats every message of the program as zvMessageOutput() does, whatever Qt's
/// logging rules say.
void installMessageHandler();

/// Writes one message to the session log with its level's prefix, to standard output, and to the console
/// view. \a msg is in the local 8-bit encoding. While the disk is full, lines are dropped, except the first
/// one, which is written when there is space again.
void zvMessageOutput(QtMsgType type, const char *msg);
