#pragma once

#include <memory>

#include <QByteArray>
#include <QObject>

class QSocketNotifier;

/// Moves bytes between the far end of a tty and whoever listens, in the thread it lives in.
class PortPump : public QObject
{
    Q_OBJECT

public:
    PortPump();
    ~PortPump() override;

public Q_SLOTS:
    /// Starts moving bytes at the far end \a descriptor, which stays its owner's.
    void attach(int descriptor);
    /// Stops, before the descriptor goes. What has not been sent by then is lost.
    void detach();
    /// Sends bytes to the tty, as soon as it takes them; drops them when detached.
    void send(const QByteArray &bytes);
    /// Moves what is there to be moved now.
    void pump();

Q_SIGNALS:
    void received(const QByteArray &bytes);

private:
    Q_DISABLE_COPY_MOVE(PortPump)

    void write();

    int _descriptor = -1;
    int _heldOpen = -1;
    QByteArray _unsent;
    std::unique_ptr<QSocketNotifier> _readable;
    std::unique_ptr<QSocketNotifier> _writable;
};
