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
    /// The other end is gone, and all that it sent before has been read.
    void hungUp();

private:
    Q_DISABLE_COPY_MOVE(HangUpWatch)

    void look();

    int _port = -1;
    int _watch = -1; // readable only after the port has hung up
    int _looks = 0;
    std::unique_ptr<QSocketNotifier> _notifier;
};
