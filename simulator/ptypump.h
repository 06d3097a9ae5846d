#pragma once

#include <atomic>
#include <memory>

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include "simulator/linefaults.h"

class QSocketNotifier;

/// Moves bytes between the far end of a tty and the receivers of its signals. It works in the thread it lives
/// in.
class PtyPump : public QObject
{
    Q_OBJECT

public:
    PtyPump();
    ~PtyPump() override;

    /// The number of bytes moved since attach(), in both directions together. Thread-safe.
    qsizetype passed() const { return _passed; }
    /// Returns true if everything that was sent has been read. Call it from the object's own thread only.
    bool isAtRest() const { return _descriptor < 0 || (_unsent.isEmpty() && !isUnread()); }

public Q_SLOTS:
    /// Applies \a faults to the line from now on.
    void setFaults(const LineFaults &faults);
    /// Starts to move bytes at the far end \a descriptor. The caller keeps the ownership of the descriptor.
    void attach(int descriptor);
    /// Stops. Call it before the descriptor is closed. Bytes that have not been sent yet are lost.
    void detach();
    /// Sends bytes to the tty as soon as it accepts them; drops them if no descriptor is attached.
    void send(const QByteArray &bytes);
    /// Moves the bytes that can be moved now.
    void pump();

Q_SIGNALS:
    void received(const QByteArray &bytes);
    /// Emitted when the number of bytes that the faults allow has been moved. The pump is detached from \a
    /// descriptor.
    void lineBroken(int descriptor);

private:
    Q_DISABLE_COPY_MOVE(PtyPump)

    /// Returns how many of \a wanted bytes may still pass.
    qsizetype allowed(qsizetype wanted) const;
    void count(qsizetype bytes);
    void breakLine();
    void write();
    bool isUnread() const;

    int _descriptor = -1;
    int _heldOpen = -1; // the near end of the pty
    LineFaults _faults;
    std::atomic<qsizetype> _passed = 0;
    qsizetype _sent = 0; // passed to send() since attach()
    QByteArray _unsent;
    std::unique_ptr<QSocketNotifier> _readable;
    QTimer _drainPoll;
    int _drainChecksLeft = 0; // checks left for the last byte to be read before the line breaks
    QTimer _pause; // until the tty accepts more, the last byte has been read, or all bytes to be merged have
                   // arrived
};
