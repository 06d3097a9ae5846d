#pragma once

#include <QString>

class QSerialPort;

/// Opens \a port for reading and writing, and locks it against other programs. Returns the open error, such
/// as "Permission denied; the port belongs to the group "dialout""; empty if the port is open. A port that
/// cannot be opened because of its permissions or locks is not touched: opening and closing it would switch
/// its DTR on and off.
QString openPort(QSerialPort &port);
