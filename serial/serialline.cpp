#include "serial/serialline.h"

#include <QHash>

#include "serial/portrefusal.h"
#include "serial/qextserialport.h"

namespace
{
/// How long a full output buffer may hold a write up, ms. At the pace of a console it never fills; a device
/// that has stopped taking bytes must not stop the program.
constexpr int FullBufferPatience = 100;

/// The open lines by name. Never destroyed: port objects may live until the process ends.
QHash<QString, std::weak_ptr<SerialLine>> &lines()
{
    static auto *open = new QHash<QString, std::weak_ptr<SerialLine>>;
    return *open;
}

/// What was said last about a port that doesn't open.
QHash<QString, QString> &refusals()
{
    static auto *said = new QHash<QString, QString>;
    return *said;
}

void complainOnce(const QString &portName, const QString &refusal)
{
    QString &said = refusals()[portName];
    if (said == refusal)
        return;
    said = refusal;
    qCritical("%s", qUtf8Printable(refusal));
}
} // namespace

SerialLine::SerialLine(const QString &portName)
{
    _port.setPortName(portName);
    connect(&_port, &QSerialPort::readyRead, this, &SerialLine::deliver);
    connect(&_port, &QSerialPort::errorOccurred, this, &SerialLine::onError);
}

SerialLine::~SerialLine()
{
    die();
}

std::shared_ptr<SerialLine> SerialLine::open(const QString &portName, const SerialSettings &settings)
{
    std::shared_ptr<SerialLine> line = lines().value(portName).lock();
    if (!line) {
        line.reset(new SerialLine(portName));
        line->apply(settings);
        if (!line->_port.open(QIODevice::ReadWrite)) {
            complainOnce(portName, portRefusal(line->_port));
            return nullptr;
        }
        refusals().remove(portName);
        lines().insert(portName, line);
    }
    line->apply(settings); // again, or for the first time: DTR and RTS can be set on an open port only
    return line;
}

void SerialLine::portGone(const QString &portName)
{
    refusals().remove(portName);
    if (const std::shared_ptr<SerialLine> line = lines().value(portName).lock())
        line->die();
}

void SerialLine::apply(const SerialSettings &settings)
{
    if (settings.baudRate)
        _port.setBaudRate(*settings.baudRate);
    if (settings.flowControl)
        _port.setFlowControl(*settings.flowControl);
    if (settings.parity)
        _port.setParity(*settings.parity);
    if (settings.dataBits)
        _port.setDataBits(*settings.dataBits);
    if (settings.stopBits)
        _port.setStopBits(*settings.stopBits);
    if (!_port.isOpen())
        return;
    if (settings.dtr)
        _port.setDataTerminalReady(*settings.dtr);
    if (settings.rts && _port.flowControl() != QSerialPort::HardwareControl)
        _port.setRequestToSend(*settings.rts);
    _port.clearError(); // what the port can't do is no error of the line: a pty has no DTR
}

void SerialLine::join(QextSerialPort *port)
{
    _members.append(port);
}

void SerialLine::leave(QextSerialPort *port)
{
    // The list may be walked right now: the place stays, empty, until the next delivery.
    for (QPointer<QextSerialPort> &member : _members) {
        if (member == port)
            member.clear();
    }
}

void SerialLine::deliver()
{
    const QByteArray bytes = _port.readAll();
    if (bytes.isEmpty())
        return;
    _members.removeAll(QPointer<QextSerialPort>());

    // Every buffer is filled before the first reader is told: whoever reads first, and whichever of several
    // objects it reads from, finds the bytes.
    const QList<QPointer<QextSerialPort>> members = _members;
    for (QextSerialPort *member : members)
        member->_received.append(bytes);
    for (const QPointer<QextSerialPort> &member : members) {
        if (member && member->isOpen()) // nobody deleted or closed it while others were told
            Q_EMIT member->readyRead();
    }
}

void SerialLine::onError(QSerialPort::SerialPortError error)
{
    // A tty that hangs up reads as an I/O error, or as an end of file for ever after.
    if (error == QSerialPort::ResourceError || error == QSerialPort::ReadError)
        die();
}

void SerialLine::die()
{
    if (!_port.isOpen())
        return;
    lines().remove(_port.portName());
    _port.close();
    for (const QPointer<QextSerialPort> &member : std::as_const(_members)) {
        if (member)
            member->_received = QByteArray();
    }
}

qint64 SerialLine::write(const char *data, qint64 size)
{
    if (!_port.isOpen() || _port.write(data, size) != size)
        return -1;
    _port.flush();
    if (_port.isOpen() && _port.bytesToWrite() > 0)
        _port.waitForBytesWritten(FullBufferPatience);
    if (!_port.isOpen())
        return -1;
    const qint64 left = _port.bytesToWrite();
    if (left > 0)
        _port.clear(QSerialPort::Output);
    return size - left;
}
