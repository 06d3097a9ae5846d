#pragma once

#include <memory>

#include <QByteArray>
#include <QIODevice>

class SerialLine;
struct LineSettings;

enum BaudRateType {
    BAUD9600 = 9600,
    BAUD19200 = 19200,
    BAUD38400 = 38400,
    BAUD57600 = 57600,
    BAUD115200 = 115200
};
enum DataBitsType { DATA_5 = 5, DATA_6 = 6, DATA_7 = 7, DATA_8 = 8 };
enum ParityType { PAR_NONE, PAR_ODD, PAR_EVEN, PAR_MARK, PAR_SPACE };
enum StopBitsType { STOP_1, STOP_1_5, STOP_2 };
enum FlowType { FLOW_OFF, FLOW_HARDWARE, FLOW_XONXOFF };

/// One user's view of a serial port. Several objects of the process may have the same port open: they share
/// one line, each gets every received byte into a buffer of its own, and any may write. The buffer holds 1
/// MiB: an object that is not read any more loses what comes after that.
///
/// When the port goes away the objects that had it open stay valid and open, but dead: nothing more is
/// received or told of, there is nothing to read, and a write fails. errorString() says why, and one critical
/// message has said so.
class QextSerialPort : public QIODevice
{
    Q_OBJECT

public:
    /// Only event-driven reading exists: readyRead() tells of received bytes.
    enum QueryMode { EventDriven };

    /// A closed port named \a name, as QextPortInfo::portName has it.
    explicit QextSerialPort(const QString &name, QueryMode mode = EventDriven, QObject *parent = nullptr);
    ~QextSerialPort() override;

    /// The line's settings. Made before open() they take effect there; on an open port at once. A setting
    /// that the port can't do is left out silently.
    void setBaudRate(BaudRateType rate);
    void setFlowControl(FlowType flow);
    void setParity(ParityType parity);
    void setDataBits(DataBitsType bits);
    void setStopBits(StopBitsType bits);
    void setDtr(bool set = true);
    void setRts(bool set = true);

    /// Opens the port; false when the system refuses, which one critical message and errorString() name. The
    /// same refusal is not named again until the port has opened or gone.
    bool open(OpenMode mode) override;
    /// Leaves the line; the last to leave closes it. What was received and not read is lost.
    void close() override;

    bool isSequential() const override { return true; }
    /// Received bytes not read yet.
    qint64 bytesAvailable() const override;
    /// Whether the received bytes hold a line end.
    bool canReadLine() const override;
    /// Whether the port went away while this object had it open.
    bool isDead() const { return isOpen() && !_line; }

protected:
    /// Takes from the received bytes; -1 when there are none and the line is gone.
    qint64 readData(char *data, qint64 maxSize) override;
    /// Has handed the bytes to the system when it returns: fewer than asked for when the system takes none
    /// for a second, -1 when the line is gone.
    qint64 writeData(const char *data, qint64 maxSize) override;

private:
    Q_DISABLE_COPY_MOVE(QextSerialPort)
    friend class SerialLine;

    template <typename Setting, typename Value>
    void change(Setting LineSettings::*setting, Value value);

    // The line's side: bytes have come, their time to be told of has come, the line has been closed.
    void take(const QByteArray &bytes);
    void tell();
    void lineClosed(const QString &reason);

    const QString _name;
    const std::unique_ptr<LineSettings> _settings;
    SerialLine *_line = nullptr; // null when closed, and when dead
    QByteArray _received;
};
