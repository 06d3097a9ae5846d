#include "serial/portwatcher.h"

#include <QCoreApplication>
#include <QPointer>

#include "serial/portwatcher_poll.h"
#include "serial/qextserialenumerator.h"
#include "serial/serialline.h"

#ifdef ZV_PORTS_BY_UDEV
#include "serial/portwatcher_udev.h"
#endif

static std::unique_ptr<PortWatcher> makeWatcher()
{
    QObject *application = QCoreApplication::instance();
    std::unique_ptr<PortWatcher> watcher;
#ifdef ZV_PORTS_BY_UDEV
    watcher = std::make_unique<UdevPortWatcher>(application);
    if (watcher->arm())
        return watcher;
#endif
    watcher = std::make_unique<PollingPortWatcher>(application);
    watcher->arm();
    return watcher;
}

std::shared_ptr<PortWatcher> PortWatcher::shared()
{
    static std::weak_ptr<PortWatcher> current;
    std::shared_ptr<PortWatcher> watcher = current.lock();
    if (!watcher) {
        // Its last holder may let go inside one of its signals, or after the application has taken it along.
        PortWatcher *fresh = makeWatcher().release();
        watcher.reset(fresh, [alive = QPointer<PortWatcher>(fresh)](PortWatcher *) {
            if (alive)
                alive->deleteLater();
        });
        current = watcher;
    }
    return watcher;
}

void PortWatcher::rememberPresent()
{
    const QList<QextPortInfo> ports = QextSerialEnumerator::getPorts();
    for (const QextPortInfo &info : ports)
        _known.insert(info.portName, info);
}

void PortWatcher::portCame(const QString &portName)
{
    // The list is the measure: it leaves out ports with no device behind them, and its words for a port are
    // those that everybody gets.
    const QList<QextPortInfo> ports = QextSerialEnumerator::getPorts();
    for (const QextPortInfo &info : ports) {
        if (info.portName != portName)
            continue;
        if (_known.value(portName) == info)
            return;
        portWent(portName); // another device took its place unnoticed
        _known.insert(portName, info);
        Q_EMIT arrived(info);
        return;
    }
}

void PortWatcher::portWent(const QString &portName)
{
    if (!_known.contains(portName))
        return;
    const QextPortInfo info = _known.take(portName);
    SerialLine::portGone(portName);
    Q_EMIT removed(info);
}

void PortWatcher::catchUp()
{
    QHash<QString, QextPortInfo> present;
    const QList<QextPortInfo> ports = QextSerialEnumerator::getPorts();
    for (const QextPortInfo &info : ports)
        present.insert(info.portName, info);

    const QStringList known = _known.keys();
    for (const QString &name : known) {
        if (!present.contains(name))
            portWent(name);
    }
    for (const QextPortInfo &info : ports) {
        if (_known.value(info.portName) != info)
            portCame(info.portName);
    }
}
