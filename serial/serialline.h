#pragma once

#include <memory>
#include <optional>

#include <QList>
#include <QObject>
#include <QPointer>
#include <QSerialPort>

class QextSerialPort;

/// How a line is to be set up. What is not set is left as the system has it.
struct SerialSettings {
    std::optional<qint32> baudRate; ///< bits a second
    std::optional<QSerialPort::FlowControl> flowControl;
    std::optional<QSerialPort::Parity> parity;
    std::optional<QSerialPort::DataBits> dataBits;
    std::optional<QSerialPort::StopBits> stopBits;
    std::optional<bool> dtr;
    std::optional<bool> rts;
};

/// One open line of the process, shared by the port objects on it. The system gives a port to one opener
/// only, even within a process, so the line owns the system's port and hands what it reads to each of them.
class SerialLine : public QObject
{
    Q_OBJECT

public:
    ~SerialLine() override;

    /// The line of this name, opened when it isn't yet; null when the system refuses, which one critical
    /// message names. The same refusal is not named again until the port has opened or gone.
    static std::shared_ptr<SerialLine> open(const QString &portName, const SerialSettings &settings);
    /// Closes and forgets the line of this name, if there is one: its port has gone.
    static void portGone(const QString &portName);

    /// Sets the line up anew. A setting that the port can't do is left out.
    void apply(const SerialSettings &settings);
    void join(QextSerialPort *port);
    void leave(QextSerialPort *port);
    /// Hands the bytes to the system before it returns: how many it took, -1 when the line is dead.
    qint64 write(const char *data, qint64 size);

private:
    explicit SerialLine(const QString &portName);
    Q_DISABLE_COPY_MOVE(SerialLine)

    void deliver();
    void onError(QSerialPort::SerialPortError error);
    void die();

    QSerialPort _port;
    QList<QPointer<QextSerialPort>> _members;
};
