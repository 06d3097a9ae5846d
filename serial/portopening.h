#pragma once

#include <QString>

class QSerialPort;

/// Opens \a port for reading and writing, locked against other programs. Returns why that is refused, such as
/// "Permission denied; the port belongs to the group "dialout""; empty when the port is open. A port that is
/// refused for its permissions or its locks is not touched: opening and closing it would switch its DTR on
/// and off.
QString openPort(QSerialPort &port);
