#include "serial/linewriter.h"

#include <QSerialPort>

#ifdef Q_OS_UNIX
#include <cerrno>

#include <QElapsedTimer>
#include <QThread>

#include <unistd.h>
#endif

qint64 writeByPort(QSerialPort &port, const char *data, qint64 size, int writeTimeoutMs)
{
    if (port.write(data, size) < 0)
        return -1;
    port.flush();
    while (port.bytesToWrite() > 0 && port.waitForBytesWritten(writeTimeoutMs)) {
    }
    // Qt keeps the bytes that a stuck device does not take, and sends them later. They cannot be taken back.
    const bool gone = port.bytesToWrite() > 0 && port.error() != QSerialPort::TimeoutError;
    return gone ? -1 : size;
}

#ifdef Q_OS_UNIX

// Writes directly to the descriptor. QSerialPort would buffer what the system does not take at once, and it
// reports a full buffer with the same error as a lost line.
static qint64 writeByDescriptor(int descriptor, const char *data, qint64 size, int writeTimeoutMs)
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
        } else if (sinceProgress.hasExpired(writeTimeoutMs)) {
            break;
        } else {
            QThread::msleep(1); // not poll(), which waits until the buffer is nearly empty
        }
    }
    return taken;
}

qint64 writeThrough(QSerialPort &port, const char *data, qint64 size, int writeTimeoutMs)
{
    return writeByDescriptor(port.handle(), data, size, writeTimeoutMs);
}

#else

qint64 writeThrough(QSerialPort &port, const char *data, qint64 size, int writeTimeoutMs)
{
    return writeByPort(port, data, size, writeTimeoutMs);
}

#endif
