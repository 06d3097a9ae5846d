#pragma once

#include <QString>

/// Looks at the lock file "LCK..ttyUSB0" that another program may have made for a port, and removes it when
/// that program has ended. Returns why the port must not be opened: the program runs, or may just have made
/// the file, or the file can't be read or removed. Empty when nothing is in the way.
///
/// Qt's port looks at the file as well, but takes over that of a running program when the file is half a
/// minute old or not in Qt's own format.
QString lockFileObstacle(const QString &portName);
