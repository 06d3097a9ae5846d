#pragma once

#include <QList>
#include <QObject>
#include <QSerialPort>
#include <QTimer>

#include "serial/hangupwatch.h"

class QextSerialPort;
struct LineSettings;

/// One open line of the process, shared by all QextSerialPort objects that have its port open. It lives from
/// the first that joins to the last that leaves, or until the port is gone.
class SerialLine : public QObject
{
    Q_OBJECT

public:
    /// Puts \a user on the line of the port, opening it when nobody has yet. nullptr when the system refuses:
    /// \a refusal then says why, and a critical message has said so.
    static SerialLine *join(const QString &portName, QextSerialPort *user, QString *refusal);
    /// The port has gone: closes and forgets its line, if there is one.
    static void portGone(const QString &portName);

    ~SerialLine() override;

    /// Takes \a user off the line; the last one closes it.
    void leave(QextSerialPort *user);
    void apply(const LineSettings &settings);
    /// Has handed the bytes to the system when it returns; -1 when the line is gone.
    qint64 write(const char *data, qint64 size);

private:
    Q_DISABLE_COPY_MOVE(SerialLine)

    explicit SerialLine(const QString &portName);
    void onReceived();
    void onError(QSerialPort::SerialPortError error);
    void tellUsers();
    void pauseReading();
    void resumeReading();
    void setReading(bool on);
    void onHungUp();
    /// Closes the line though none of its users asked for it, which one critical message says.
    void closeBy(const QString &reason);
    void close(const QString &reason = QString());
    void letGo(const QString &reason = QString());

    QSerialPort _port;
    HangUpWatch _hangUpWatch;
    QList<QextSerialPort *> _users;
    QTimer _readRetry;
    bool _stuck = false; // the last write gave up waiting
};
