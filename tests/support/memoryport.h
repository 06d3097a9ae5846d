#pragma once

#include <algorithm>
#include <cstring>

#include "serial/qextserialport.h"

/// A port that reads received bytes from memory and records written ones. It makes no system call and never
/// blocks.
class MemoryPort : public QextSerialPort
{
public:
    MemoryPort()
        : QextSerialPort(QStringLiteral("memory"))
    {
        setOpenMode(ReadWrite | Unbuffered);
    }

    /// Sets the data to read from now on. It is not copied: it must remain valid until it has been read.
    void setUnread(const char *bytes, qint64 size) { _unread = QByteArrayView(bytes, size); }
    qint64 bytesAvailable() const override { return _unread.size(); }

    QByteArray written;

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        const qint64 count = std::min<qint64>(_unread.size(), maxSize);
        std::memcpy(data, _unread.data(), static_cast<std::size_t>(count));
        _unread = _unread.sliced(count);
        return count;
    }
    qint64 writeData(const char *data, qint64 size) override
    {
        written.append(data, size);
        return size;
    }

private:
    QByteArrayView _unread;
};
