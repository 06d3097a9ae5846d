#pragma once

#include <QString>

/// Checks the lock file "LCK..ttyUSB0" that another program may have created for a port, and removes it if
/// that program has ended. Returns why the port must not be opened: the program runs, or may just have
/// created the file, or the file cannot be read or removed. Empty if the port may be opened.
///
/// QSerialPort checks the file as well, but it takes over the file of a running program if the file is half a
/// minute old or not in Qt's own format.
QString lockFileObstacle(const QString &portName);
