#include "serial/qextserialport.h"

#include <algorithm>
#include <cstring>

#include <QSet>

#include "serial/linesettings.h"
#include "serial/serialline.h"

// Every port object of the process. Callers drop port objects without destroying them. This set keeps the
// objects reachable until the process ends, for leak checkers and for analysing core dumps.
static QSet<QextSerialPort *> &allPorts()
{
    static auto *const ports = new QSet<QextSerialPort *>;
    return *ports;
}

// The maximum number of received bytes that an object keeps until they are read: a minute and a half of the
// device's line. Users of a port read all received bytes each time; only a dropped object is not read.
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
    LineSettings onlyThis; // another user of the line may have changed the other settings
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
        return false; // already open
    close();          // it may be open and dead
    QString openError;
    _line = SerialLine::acquire(_name, this, &openError);
    if (!_line) {
        setErrorString(openError);
        return false;
    }
    // Unbuffered: this class buffers received bytes itself, and written bytes must not be buffered.
    QIODevice::open(mode | Unbuffered);
    _line->apply(*_settings);
    if (_line)
        return true;
    const QString reason = errorString(); // the port was removed in the meantime
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
        _line->release(this);
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

void QextSerialPort::appendReceived(const QByteArray &bytes)
{
    _received += bytes.left(maxUnread - _received.size());
}

void QextSerialPort::notifyReadyRead()
{
    // A user that acquired the line after the bytes arrived, or that has read them already, has nothing to
    // read.
    if (!_received.isEmpty())
        Q_EMIT readyRead();
}

void QextSerialPort::lineClosed(const QString &reason)
{
    setErrorString(reason);
    _line = nullptr;
    _received.clear();
}
