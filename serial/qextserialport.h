#pragma once

#include <memory>

#include <QByteArray>
#include <QIODevice>

class SerialLine;
struct SerialSettings;

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
/// one line, each gets every received byte into a buffer of its own, and any may write.
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

    /// Opens the port; false when the system refuses, which one critical message names. The same refusal is
    /// not named again until the port has opened or gone.
    bool open(OpenMode mode) override;
    /// Leaves the line; the last to leave closes it.
    void close() override;

    bool isSequential() const override { return true; }
    /// Received bytes not read yet.
    qint64 bytesAvailable() const override;

protected:
    qint64 readData(char *data, qint64 maxSize) override;
    /// Has handed the bytes to the system when it returns; -1 when the line is gone.
    qint64 writeData(const char *data, qint64 maxSize) override;

private:
    Q_DISABLE_COPY_MOVE(QextSerialPort)
    friend class SerialLine; // fills the buffer

    template <typename Field, typename Value>
    void change(Field SerialSettings::*field, Value value);

    const QString _name;
    const std::unique_ptr<SerialSettings> _settings;
    std::shared_ptr<SerialLine> _line; // while open; it may be dead
    QByteArray _received;
};
