#pragma once

#include <memory>

#include <QList>
#include <QObject>

#include "serial/qextportinfo.h"

class PortWatcher;

/// Lists the computer's serial ports and tells of those that come and go.
class QextSerialEnumerator : public QObject
{
    Q_OBJECT

public:
    explicit QextSerialEnumerator(QObject *parent = nullptr);
    ~QextSerialEnumerator() override;

    /// The ports present now, in the system's order; empty when there is none.
    static QList<QextPortInfo> getPorts();

    /// Starts telling of arrivals and removals, from the event loop. Ports already present are not told of.
    /// Where the system can't notify, the list of ports is compared once a second instead.
    void setUpNotifications();

Q_SIGNALS:
    /// A port has come.
    void deviceDiscovered(const QextPortInfo &info);
    /// A port has gone; its ids are those it came with. Its line is closed by then.
    void deviceRemoved(const QextPortInfo &info);

private:
    Q_DISABLE_COPY_MOVE(QextSerialEnumerator)

    std::shared_ptr<PortWatcher> _watcher;
};
