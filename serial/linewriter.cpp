#include "serial/linewriter.h"

#include <QSerialPort>

#ifdef Q_OS_UNIX
#include <cerrno>

#include <QElapsedTimer>
#include <QThread>

#include <unistd.h>
#endif

qint64 writeByPort(QSerialPort &port, const char *data, qint64 size, int patienceMs)
{
    if (port.write(data, size) < 0)
        return -1;
    port.flush();
    while (port.bytesToWrite() > 0 && port.waitForBytesWritten(patienceMs)) {
    }
    // What a stuck device does not take stays with Qt and goes out when it does: there is no taking back.
    const bool gone = port.bytesToWrite() > 0 && port.error() != QSerialPort::TimeoutError;
    return gone ? -1 : size;
}

#ifdef Q_OS_UNIX

// Straight to the descriptor: Qt's port would keep what the system does not take at once, and reports a full
// buffer with the same error as a line that is gone.
static qint64 writeByDescriptor(int descriptor, const char *data, qint64 size, int patienceMs)
{
    qint64 taken = 0;
    QElapsedTimer sinceProgress;
    sinceProgress.start();
    while (taken < size) {
        const ssize_t count = ::write(descriptor, data + taken, static_cast<size_t>(size - taken));
        if (count > 0) {
            taken += count;
            sinceProgress.start();
        } else if (count < 0 && errno != EAGAIN && errno != EINTR) {
            return -1;
        } else if (sinceProgress.hasExpired(patienceMs)) {
            break;
        } else {
            QThread::msleep(1); // not poll(): it waits until the buffer is nearly empty
        }
    }
    return taken;
}

qint64 writeThrough(QSerialPort &port, const char *data, qint64 size, int patienceMs)
{
    return writeByDescriptor(port.handle(), data, size, patienceMs);
}

#else

qint64 writeThrough(QSerialPort &port, const char *data, qint64 size, int patienceMs)
{
    return writeByPort(port, data, size, patienceMs);
}

#endif
