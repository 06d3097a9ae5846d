#pragma once

class QString;
class QSerialPort;

/// Why the system doesn't open \a port, in one line for the user: the port's name, the system's reason, and
/// for a refused permission the group that may open it.
QString portRefusal(const QSerialPort &port);
