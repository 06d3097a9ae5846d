#pragma once

#include <memory>

#include <QObject>

class QSocketNotifier;

/// Watches an open port for a hang-up of its other end. QSerialPort reports it in some versions only: other
/// versions read the end of the file forever and report nothing.
class HangUpWatch : public QObject
{
    Q_OBJECT

public:
    HangUpWatch();
    ~HangUpWatch() override;

    /// Watches the port that is open under \a descriptor until stop(); does nothing if the system cannot
    /// watch it.
    void start(int descriptor);
    /// Stops watching; call this before the descriptor is closed.
    void stop();

Q_SIGNALS:
    /// The other end is gone, and everything that it sent has been read. If unread bytes are still reported
    /// after 100 checks, the signal is emitted nevertheless.
    void hungUp();

private:
    Q_DISABLE_COPY_MOVE(HangUpWatch)

    void checkForHangUp();

    int _port = -1;
    int _watch = -1;      // readable only after the port has hung up
    int _drainChecks = 0; // how often unread bytes were reported after the hang-up
    std::unique_ptr<QSocketNotifier> _notifier;
};
