#include "serial/portwatcher.h"

#include <chrono>

#include <QCoreApplication>
#include <QPointer>
#include <QTimer>

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
    if (watcher->start())
        return watcher;
#endif
    watcher = std::make_unique<PollingPortWatcher>(application);
    watcher->start();
    return watcher;
}

// The shared watcher, as long as it has a holder.
static std::weak_ptr<PortWatcher> &currentWatcher()
{
    static std::weak_ptr<PortWatcher> current;
    return current;
}

std::shared_ptr<PortWatcher> PortWatcher::shared()
{
    std::shared_ptr<PortWatcher> watcher = currentWatcher().lock();
    if (!watcher) {
        // The last holder may release the watcher in a slot of its signals, or after the application has
        // destroyed it.
        PortWatcher *fresh = makeWatcher().release();
        watcher.reset(fresh, [alive = QPointer<PortWatcher>(fresh)](PortWatcher *) {
            if (alive)
                alive->deleteLater();
        });
        currentWatcher() = watcher;
    }
    return watcher;
}

void PortWatcher::lineClosed(const QString &portName)
{
    if (const std::shared_ptr<PortWatcher> watcher = currentWatcher().lock())
        watcher->onLineClosed(portName);
}

void PortWatcher::onLineClosed(const QString &portName)
{
    if (!_known.contains(portName))
        return;
    _closed.insert(portName);
    // Not immediately: a port that is being unplugged hangs up while it is still listed.
    QTimer::singleShot(std::chrono::seconds(1), this, [this, portName] {
        if (!_closed.contains(portName))
            return;
        onPortRemoved(portName);
        onPortAdded(portName);
    });
}

void PortWatcher::rememberPresent()
{
    const QList<QextPortInfo> ports = QextSerialEnumerator::getPorts();
    for (const QextPortInfo &info : ports)
        _known.insert(info.portName, info);
}

void PortWatcher::onPortAdded(const QString &portName)
{
    // The list is authoritative: it excludes ports with no device behind them, and all reports describe a
    // port as the list does.
    const QList<QextPortInfo> ports = QextSerialEnumerator::getPorts();
    for (const QextPortInfo &info : ports) {
        if (info.portName != portName)
            continue;
        if (_known.value(portName) == info && !_closed.contains(portName))
            return;
        onPortRemoved(portName); // another device took its place unnoticed
        _known.insert(portName, info);
        Q_EMIT arrived(info);
        return;
    }
}

void PortWatcher::onPortRemoved(const QString &portName)
{
    if (!_known.contains(portName))
        return;
    const QextPortInfo info = _known.take(portName);
    _closed.remove(portName);
    SerialLine::portRemoved(portName);
    Q_EMIT removed(info);
}

void PortWatcher::resync()
{
    QHash<QString, QextPortInfo> present;
    const QList<QextPortInfo> ports = QextSerialEnumerator::getPorts();
    for (const QextPortInfo &info : ports)
        present.insert(info.portName, info);

    const QStringList known = _known.keys();
    for (const QString &name : known) {
        if (!present.contains(name))
            onPortRemoved(name);
    }
    for (const QextPortInfo &info : ports) {
        if (_known.value(info.portName) != info)
            onPortAdded(info.portName);
    }
}
