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
/// one line, each receives every byte into its own buffer, and any of them may write. The buffer holds 1 MiB:
/// an object that is no longer read loses what comes after that.
///
/// When the port is removed or hangs up, the objects that had it open remain valid and open, but every
/// operation fails: nothing more is received or notified, there is nothing to read, and a write fails.
/// errorString() gives the reason, which is also logged in one critical message.
class QextSerialPort : public QIODevice
{
    Q_OBJECT

public:
    /// Only event-driven reading exists: readyRead() reports received bytes.
    enum QueryMode { EventDriven };

    /// A closed port named \a name, in the form of QextPortInfo::portName.
    explicit QextSerialPort(const QString &name, QueryMode mode = EventDriven, QObject *parent = nullptr);
    ~QextSerialPort() override;

    /// The line's settings. Settings that are made before open() are applied by open(); on an open port they
    /// are applied at once. A setting that the port does not support is skipped silently.
    void setBaudRate(BaudRateType rate);
    void setFlowControl(FlowType flow);
    void setParity(ParityType parity);
    void setDataBits(DataBitsType bits);
    void setStopBits(StopBitsType bits);
    void setDtr(bool set = true);
    void setRts(bool set = true);

    /// Opens the port. Returns false if this object has it open already, or if the system refuses; then one
    /// critical message and errorString() give the reason. The same error is not logged again until the port
    /// has opened or was removed.
    bool open(OpenMode mode) override;
    /// Releases the line; the last user closes it. Received bytes that were not read are lost.
    void close() override;

    bool isSequential() const override { return true; }
    /// The number of received bytes not read yet.
    qint64 bytesAvailable() const override;
    /// Whether the received bytes contain a line end.
    bool canReadLine() const override;
    /// Whether the port was removed or hung up while this object had it open.
    bool isDead() const { return isOpen() && !_line; }

protected:
    /// Reads from the received bytes; -1 if there are none and the line is gone.
    qint64 readData(char *data, qint64 maxSize) override;
    /// Passes the bytes to the system before it returns. Returns fewer than requested if the system takes
    /// none for a second, -1 if the line is gone.
    qint64 writeData(const char *data, qint64 maxSize) override;

private:
    Q_DISABLE_COPY_MOVE(QextSerialPort)
    friend class SerialLine;

    template <typename Setting, typename Value>
    void change(Setting LineSettings::*setting, Value value);

    // The line calls these functions: bytes were received, users are to be notified of them, the line was
    // closed.
    void appendReceived(const QByteArray &bytes);
    void notifyReadyRead();
    void lineClosed(const QString &reason);

    const QString _name;
    const std::unique_ptr<LineSettings> _settings;
    SerialLine *_line = nullptr; // null when closed, and when dead
    QByteArray _received;
};
