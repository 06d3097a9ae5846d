#include "serial/qextserialport.h"

#include <cstring>

#include "serial/serialline.h"

namespace
{
constexpr QSerialPort::Parity parities[] = {QSerialPort::NoParity, QSerialPort::OddParity,
                                            QSerialPort::EvenParity, QSerialPort::MarkParity,
                                            QSerialPort::SpaceParity};
constexpr QSerialPort::StopBits stopBitCounts[] = {QSerialPort::OneStop, QSerialPort::OneAndHalfStop,
                                                   QSerialPort::TwoStop};
constexpr QSerialPort::FlowControl flowControls[] = {QSerialPort::NoFlowControl, QSerialPort::HardwareControl,
                                                     QSerialPort::SoftwareControl};
} // namespace

QextSerialPort::QextSerialPort(const QString &name, QueryMode, QObject *parent)
    : QIODevice(parent)
    , _name(name)
    , _settings(std::make_unique<SerialSettings>())
{
}

QextSerialPort::~QextSerialPort()
{
    close();
}

void QextSerialPort::setBaudRate(BaudRateType rate)
{
    change(&SerialSettings::baudRate, qint32(rate));
}

void QextSerialPort::setFlowControl(FlowType flow)
{
    change(&SerialSettings::flowControl, flowControls[flow]);
}

void QextSerialPort::setParity(ParityType parity)
{
    change(&SerialSettings::parity, parities[parity]);
}

void QextSerialPort::setDataBits(DataBitsType bits)
{
    change(&SerialSettings::dataBits, static_cast<QSerialPort::DataBits>(bits));
}

void QextSerialPort::setStopBits(StopBitsType bits)
{
    change(&SerialSettings::stopBits, stopBitCounts[bits]);
}

void QextSerialPort::setDtr(bool set)
{
    change(&SerialSettings::dtr, set);
}

void QextSerialPort::setRts(bool set)
{
    change(&SerialSettings::rts, set);
}

template <typename Field, typename Value>
void QextSerialPort::change(Field SerialSettings::*field, Value value)
{
    (*_settings).*field = value;
    if (_line) {
        SerialSettings one;
        one.*field = value;
        _line->apply(one);
    }
}

bool QextSerialPort::open(OpenMode mode)
{
    if (isOpen())
        return false;
    _line = SerialLine::open(_name, *_settings);
    if (!_line)
        return false;
    _line->join(this);
    // Unbuffered: received bytes wait in a buffer of our own, and written ones must not wait at all.
    return QIODevice::open(mode | QIODevice::Unbuffered);
}

void QextSerialPort::close()
{
    if (!isOpen())
        return;
    QIODevice::close();
    _line->leave(this);
    _line.reset();
    _received.clear();
}

qint64 QextSerialPort::bytesAvailable() const
{
    return _received.size() + QIODevice::bytesAvailable();
}

qint64 QextSerialPort::readData(char *data, qint64 maxSize)
{
    const qint64 count = qMin<qint64>(maxSize, _received.size());
    std::memcpy(data, _received.constData(), static_cast<size_t>(count));
    _received.remove(0, static_cast<int>(count));
    return count;
}

qint64 QextSerialPort::writeData(const char *data, qint64 maxSize)
{
    return _line->write(data, maxSize);
}
