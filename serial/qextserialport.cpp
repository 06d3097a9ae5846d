#include "serial/qextserialport.h"

#include <algorithm>
#include <cstring>

#include <QSet>

#include "serial/linesettings.h"
#include "serial/serialline.h"

// Every port object of the process. Its users drop port objects without destroying them; here they stay
// reachable until the process ends, for leak checkers and for whoever looks at a core dump.
static QSet<QextSerialPort *> &allPorts()
{
    static auto *const ports = new QSet<QextSerialPort *>;
    return *ports;
}

// How many received bytes an object keeps until they are read: a minute and a half of the device's line.
// Whoever uses a port reads what has come each time; only an object that was dropped is not read.
static constexpr qsizetype maxUnread = 1 << 20;

QextSerialPort::QextSerialPort(const QString &name, QueryMode, QObject *parent)
    : QIODevice(parent)
    , _name(name)
    , _settings(std::make_unique<LineSettings>())
{
    allPorts().insert(this);
}

QextSerialPort::~QextSerialPort()
{
    QextSerialPort::close();
    allPorts().remove(this);
}

template <typename Setting, typename Value>
void QextSerialPort::change(Setting LineSettings::*setting, Value value)
{
    (*_settings).*setting = value;
    if (!_line)
        return;
    LineSettings onlyThis; // the others may have been changed since by somebody else on the line
    onlyThis.*setting = value;
    _line->apply(onlyThis);
}

void QextSerialPort::setBaudRate(BaudRateType rate)
{
    change(&LineSettings::baudRate, rate);
}
void QextSerialPort::setFlowControl(FlowType flow)
{
    change(&LineSettings::flowControl, flow);
}
void QextSerialPort::setParity(ParityType parity)
{
    change(&LineSettings::parity, parity);
}
void QextSerialPort::setDataBits(DataBitsType bits)
{
    change(&LineSettings::dataBits, bits);
}
void QextSerialPort::setStopBits(StopBitsType bits)
{
    change(&LineSettings::stopBits, bits);
}
void QextSerialPort::setDtr(bool set)
{
    change(&LineSettings::dtr, set);
}
void QextSerialPort::setRts(bool set)
{
    change(&LineSettings::rts, set);
}

bool QextSerialPort::open(OpenMode mode)
{
    if (_line)
        return false; // open already
    close();          // it may be open and dead
    QString refusal;
    _line = SerialLine::join(_name, this, &refusal);
    if (!_line) {
        setErrorString(refusal);
        return false;
    }
    // Unbuffered: the received bytes have their buffer here, and written ones must have none.
    QIODevice::open(mode | Unbuffered);
    _line->apply(*_settings);
    if (_line)
        return true;
    const QString reason = errorString(); // the port went away meanwhile
    QIODevice::close();
    setErrorString(reason);
    return false;
}

void QextSerialPort::close()
{
    if (!isOpen())
        return;
    QIODevice::close();
    if (_line)
        _line->leave(this);
    lineClosed({});
}

qint64 QextSerialPort::bytesAvailable() const
{
    return _received.size() + QIODevice::bytesAvailable();
}

bool QextSerialPort::canReadLine() const
{
    return _received.contains('\n') || QIODevice::canReadLine();
}

qint64 QextSerialPort::readData(char *data, qint64 maxSize)
{
    if (_received.isEmpty())
        return _line ? 0 : -1;
    const auto count = std::min<qsizetype>(_received.size(), maxSize);
    std::memcpy(data, _received.constData(), static_cast<size_t>(count));
    _received.remove(0, count);
    return count;
}

qint64 QextSerialPort::writeData(const char *data, qint64 maxSize)
{
    return _line ? _line->write(data, maxSize) : -1;
}

void QextSerialPort::take(const QByteArray &bytes)
{
    _received += bytes.left(maxUnread - _received.size());
}

void QextSerialPort::tell()
{
    // Nothing is left for who has just joined, and for who has read it all meanwhile.
    if (!_received.isEmpty())
        Q_EMIT readyRead();
}

void QextSerialPort::lineClosed(const QString &reason)
{
    setErrorString(reason);
    _line = nullptr;
    _received.clear();
}
