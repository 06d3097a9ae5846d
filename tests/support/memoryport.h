#pragma once

#include <algorithm>
#include <cstring>

#include "serial/qextserialport.h"

/// A port whose received bytes are in memory: no line, no system, nothing to wait for. What is written goes
/// nowhere.
class MemoryPort : public QextSerialPort
{
public:
    MemoryPort()
        : QextSerialPort(QStringLiteral("memory"))
    {
        setOpenMode(ReadWrite | Unbuffered);
    }

    /// What there is to read from now on; stays the caller's.
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
