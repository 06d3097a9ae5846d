#pragma once

#include <memory>

#include <QHash>
#include <QObject>
#include <QSet>

#include "serial/qextportinfo.h"

/// Tells of serial ports that come and go. It knows the ports that were present when it was armed and those
/// that have come since, so a port that has gone is described as it was while it was there.
class PortWatcher : public QObject
{
    Q_OBJECT

public:
    /// The process's watcher, armed; all who hold it share it. Being one, it closes a port's line once for
    /// each removal, and not again when the name is in use by the next port.
    static std::shared_ptr<PortWatcher> shared();

    /// To be called when the line of a port has closed and none of its users asked for it. The port has gone,
    /// or another one has taken its name, or it was never away: a second later it is reported removed, and as
    /// arrived when it is listed, unless that has been reported by then.
    static void lineClosed(const QString &portName);

    /// Starts to watch; false when the system can't tell.
    virtual bool arm() = 0;

Q_SIGNALS:
    /// A port that was not there has come.
    void arrived(const QextPortInfo &info);
    /// A port has gone. Its line is closed.
    void removed(const QextPortInfo &info);

protected:
    explicit PortWatcher(QObject *parent)
        : QObject(parent)
    {
    }

    /// Takes the ports listed now as known, without telling of them.
    void rememberPresent();
    /// Tells of the port when it is listed, and not known in these words already.
    void portCame(const QString &portName);
    /// Tells of the port when it was known.
    void portWent(const QString &portName);
    /// Tells of all that has come or gone unnoticed.
    void catchUp();

private:
    Q_DISABLE_COPY_MOVE(PortWatcher)

    void onLineClosed(const QString &portName);

    QHash<QString, QextPortInfo> _known; // by port name
    QSet<QString> _closed;               // those of them whose line has closed by itself
};
