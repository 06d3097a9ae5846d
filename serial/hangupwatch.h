#pragma once

#include <memory>

#include <QObject>

class QSocketNotifier;

/// Watches an open port for its other end going away. Qt's own port tells of that in some versions only: in
/// others it reads the end of the file for ever, and says nothing.
class HangUpWatch : public QObject
{
    Q_OBJECT

public:
    HangUpWatch();
    ~HangUpWatch() override;

    /// Begins, for the port that is open under \a descriptor until stop(); nothing where the system can't.
    void start(int descriptor);
    /// Ends; to be called before the descriptor is closed.
    void stop();

Q_SIGNALS:
    /// The other end is gone, and what it sent before has been read.
    void hungUp();

private:
    Q_DISABLE_COPY_MOVE(HangUpWatch)

    void look();

    int _port = -1;
    int _watch = -1; // readable once the port has hung up, and for nothing else
    int _looks = 0;
    std::unique_ptr<QSocketNotifier> _notifier;
};
