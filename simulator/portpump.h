#pragma once

#include <atomic>
#include <memory>

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include "simulator/linefaults.h"

class QSocketNotifier;

/// Moves bytes between the far end of a tty and whoever listens, in the thread it lives in.
class PortPump : public QObject
{
    Q_OBJECT

public:
    PortPump();
    ~PortPump() override;

    /// How many bytes have passed since attach(), in both directions together. Any thread.
    qsizetype passed() const { return _passed; }
    /// Whether everything that was sent has been read. From its own thread.
    bool isAtRest() const { return _descriptor < 0 || (_unsent.isEmpty() && !isUnread()); }

public Q_SLOTS:
    /// Has the line go wrong so, from here on.
    void setFaults(const LineFaults &faults);
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
    /// As many bytes have passed as the faults allow. It is detached from \a descriptor.
    void brokeOff(int descriptor);

private:
    Q_DISABLE_COPY_MOVE(PortPump)

    /// How many of \a wanted bytes may pass yet.
    qsizetype allowed(qsizetype wanted) const;
    void count(qsizetype bytes);
    void breakOff();
    void write();
    bool isUnread() const;

    int _descriptor = -1;
    int _heldOpen = -1;
    LineFaults _faults;
    std::atomic<qsizetype> _passed = 0;
    qsizetype _sent = 0; // handed to send() since attach()
    QByteArray _unsent;
    std::unique_ptr<QSocketNotifier> _readable;
    QTimer _lastLook;
    int _looks = 0; // left, for the last byte to be read before the line breaks off
    QTimer _pause;  // until the tty takes more, or has been read, or all has come that shall be read at once
};
