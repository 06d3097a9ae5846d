#pragma once

#include <memory>

#include <QHash>
#include <QObject>
#include <QSet>

#include "serial/qextportinfo.h"

/// Reports serial ports that are added or removed. It stores the ports that were present when it started
/// and those added since, so it describes a removed port as it was when it was present.
class PortWatcher : public QObject
{
    Q_OBJECT

public:
    /// The process's running watcher, which all holders share. Because there is only one, it closes a port's
    /// line once for each removal, and not again when the next port uses the name.
    static std::shared_ptr<PortWatcher> shared();

    /// Call this when the line of a port has closed and none of its users requested it: the port was removed,
    /// another port has taken its name, or the port hung up without being removed. A second later the port is
    /// reported as removed, and as added if it is listed, unless its removal was reported in the meantime.
    static void lineClosed(const QString &portName);

    /// Starts to watch; false if the system cannot notify.
    virtual bool start() = 0;

Q_SIGNALS:
    /// A port was added.
    void arrived(const QextPortInfo &info);
    /// A port was removed. Its line is closed.
    void removed(const QextPortInfo &info);

protected:
    explicit PortWatcher(QObject *parent)
        : QObject(parent)
    {
    }

    /// Stores the ports listed now as known, without reporting them.
    void rememberPresent();
    /// Reports the port as added if it is listed, and not already known with the same description.
    void onPortAdded(const QString &portName);
    /// Reports the port as removed if it was known.
    void onPortRemoved(const QString &portName);
    /// Reports all ports that were added or removed unnoticed.
    void resync();

private:
    Q_DISABLE_COPY_MOVE(PortWatcher)

    void onLineClosed(const QString &portName);

    QHash<QString, QextPortInfo> _known; // by port name
    QSet<QString> _closed;               // known ports whose line has closed by itself
};
