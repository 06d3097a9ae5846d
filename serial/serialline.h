#pragma once

#include <QList>
#include <QObject>
#include <QSerialPort>
#include <QTimer>

#include "serial/hangupwatch.h"

class QextSerialPort;
struct LineSettings;

/// One open line of the process, shared by all QextSerialPort objects that have its port open. It exists from
/// the first acquire() to the last release(), or until the port is gone.
class SerialLine : public QObject
{
    Q_OBJECT

public:
    /// Adds \a user to the line of the port, and opens the line if it is not open yet. Returns nullptr if the
    /// system refuses: \a openError then gives the reason, which is also logged in a critical message.
    static SerialLine *acquire(const QString &portName, QextSerialPort *user, QString *openError);
    /// The port was removed: closes and forgets its line, if there is one.
    static void portRemoved(const QString &portName);

    ~SerialLine() override;

    /// Removes \a user from the line; the last one closes it.
    void release(QextSerialPort *user);
    /// Applies \a settings to the open line, for all its users.
    void apply(const LineSettings &settings);
    /// Passes the bytes to the system before it returns. Returns how many the system took: fewer than \a size
    /// if it takes none for a second, -1 if the line is gone.
    qint64 write(const char *data, qint64 size);

private:
    Q_DISABLE_COPY_MOVE(SerialLine)

    explicit SerialLine(const QString &portName);
    void onReceived();
    void onError(QSerialPort::SerialPortError error);
    void notifyUsers();
    void pauseReading();
    void resumeReading();
    void setReading(bool on);
    void onHungUp();
    /// Closes the line although none of its users requested it. Logs one critical message and notifies the
    /// port watcher.
    void closeUnrequested(const QString &reason);
    void close(const QString &reason = QString());
    void closePort(const QString &reason = QString());

    QSerialPort _port;
    HangUpWatch _hangUpWatch;
    QList<QextSerialPort *> _users;
    QTimer _readRetry;
    bool _stuck = false; // the last write timed out
};
