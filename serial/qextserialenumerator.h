#pragma once

#include <memory>

#include <QList>
#include <QObject>

#include "serial/qextportinfo.h"

class PortWatcher;

/// Lists the computer's serial ports and reports those that are added or removed.
class QextSerialEnumerator : public QObject
{
    Q_OBJECT

public:
    explicit QextSerialEnumerator(QObject *parent = nullptr);
    ~QextSerialEnumerator() override;

    /// The ports present now, in the system's order; empty if there is none.
    static QList<QextPortInfo> getPorts();

    /// Starts to report added and removed ports, from the event loop. Ports already present are not reported.
    /// If the system cannot notify, the list of ports is compared once a second instead.
    void setUpNotifications();

Q_SIGNALS:
    /// A port was added.
    void deviceDiscovered(const QextPortInfo &info);
    /// A port was removed; its ids are those it was added with. Its line is already closed.
    void deviceRemoved(const QextPortInfo &info);

private:
    Q_DISABLE_COPY_MOVE(QextSerialEnumerator)

    std::shared_ptr<PortWatcher> _watcher;
};
