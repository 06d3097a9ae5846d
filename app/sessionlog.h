#pragma once

#include <QtGlobal>

class QTextEdit;
class QTextStream;

/// The session log: a stream onto "zvinstall.log" in the user's home folder once openSessionLog() has run;
/// without a device before. It holds everything the program does, the passphrase in plain text included.
/// It is destroyed at process exit; later messages go to standard output only.
extern QTextStream theSessionLog;

/// The console view's text browser, which warnings and worse are copied to; null while there is none.
extern QTextEdit *theConsoleWindow;

/// Whether debug messages are copied to the console view too. kept: nothing sets it.
extern bool theTraceDebugFlag;

/// Starts the session log anew, readable and writable by its owner alone. When its file can't be opened the
/// log goes nowhere, and nobody is told.
void openSessionLog();

/// Makes zvMessageOutput() the receiver of every message of the program, whatever Qt's logging rules say.
void installMessageHandler();

/// Writes one message to the session log with its level's prefix, to standard output, and to the console
/// view. \a msg is in the local 8-bit encoding. A line that the log's disk has no space for is dropped, but
/// for the first one; the log goes on when there is space again.
void zvMessageOutput(QtMsgType type, const char *msg);
