#pragma once

#include <algorithm>
#include <cstring>

#include "serial/qextserialport.h"

/// A port that reads received bytes from memory: it needs no line and no system, and nothing waits. Written
/// bytes are dropped.
class MemoryPort : public QextSerialPort
{
public:
    MemoryPort()
        : QextSerialPort(QStringLiteral("memory"))
    {
        setOpenMode(ReadWrite | Unbuffered);
    }

    /// Sets the data to read from now on. The caller keeps its ownership.
    void bring(const char *bytes, qint64 size)
    {
        _bytes = bytes;
        _left = size;
    }

    qint64 bytesAvailable() const override { return _left; }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        const qint64 count = std::min(_left, maxSize);
        std::memcpy(data, _bytes, static_cast<std::size_t>(count));
        _bytes += count;
        _left -= count;
        return count;
    }
    qint64 writeData(const char *, qint64 size) override { return size; }

private:
    const char *_bytes = nullptr;
    qint64 _left = 0;
};
