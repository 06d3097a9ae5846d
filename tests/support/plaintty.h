#pragma once

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <QByteArray>

/// A tty, given by its name such as "ttyUSB0", that is opened in blocking mode and used by system calls only.
class PlainTty
{
public:
    explicit PlainTty(const QByteArray &name)
        : descriptor(open(("/dev/" + name).constData(), O_RDWR | O_NOCTTY))
    {
    }
    ~PlainTty() { close(descriptor); }
    Q_DISABLE_COPY_MOVE(PlainTty)

    bool write(const QByteArray &bytes) const
    {
        return ::write(descriptor, bytes.constData(), static_cast<size_t>(bytes.size())) == bytes.size();
    }

    /// Blocks until there is something to read, and returns the result of one read. Returns an empty array if
    /// nothing arrives for five seconds or the line has hung up.
    QByteArray readOnce() const
    {
        pollfd readable{descriptor, POLLIN, 0};
        char piece[512];
        const ssize_t count = poll(&readable, 1, 5000) > 0 ? read(descriptor, piece, sizeof piece) : 0;
        return count > 0 ? QByteArray(piece, count) : QByteArray();
    }

    /// Blocks, without an event loop, until the received bytes end with \a end or nothing more arrives.
    QByteArray readUntil(const QByteArray &end) const
    {
        QByteArray bytes;
        while (!bytes.endsWith(end)) {
            const QByteArray piece = readOnce();
            if (piece.isEmpty())
                break;
            bytes += piece;
        }
        return bytes;
    }

    bool isHungUp() const
    {
        pollfd line{descriptor, POLLIN, 0};
        return poll(&line, 1, 0) > 0 && (line.revents & POLLHUP);
    }

    const int descriptor;
};
