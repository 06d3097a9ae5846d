#pragma once

#include <memory>

#include <QHash>
#include <QObject>

#include "serial/qextportinfo.h"

/// Tells of ports that come and go from start() on. How it gets to know is its kind's affair; that a port
/// which goes is told of with everything it came with, and that its line is closed by then, is the same for
/// all kinds.
class PortWatcher : public QObject
{
    Q_OBJECT

public:
    /// The kind that the system does best with.
    static std::unique_ptr<PortWatcher> create();

    /// Notes the ports present now and begins; false when the system gives no notice.
    bool start();

Q_SIGNALS:
    void arrived(const QextPortInfo &info);
    void gone(const QextPortInfo &info);

protected:
    PortWatcher() = default;

    /// A port of this name may have come: told of when it is listed and not known yet.
    void lookFor(const QString &portName);
    /// The port of this name has gone: told of when it was known.
    void forget(const QString &portName);
    /// Compares the ports known with those listed now, and tells of each difference.
    void compare();

private:
    virtual bool begin() = 0;
    void add(const QextPortInfo &info);

    QHash<QString, QextPortInfo> _known; // sysfs has forgotten a port when its removal arrives
};
