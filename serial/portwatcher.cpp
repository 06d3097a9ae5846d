#include "serial/portwatcher.h"

#include <algorithm>

#ifdef ZV_HAVE_UDEV
#include "serial/portwatcher_udev.h"
#else
#include "serial/portwatcher_poll.h"
#endif
#include "serial/qextserialenumerator.h"
#include "serial/serialline.h"

std::unique_ptr<PortWatcher> PortWatcher::create()
{
#ifdef ZV_HAVE_UDEV
    return std::make_unique<UdevPortWatcher>();
#else
    return std::make_unique<PollingPortWatcher>();
#endif
}

bool PortWatcher::start()
{
    // Listening begins first: a port that comes in between is then known twice, not missed.
    const bool begun = begin();
    const QList<QextPortInfo> present = QextSerialEnumerator::getPorts();
    for (const QextPortInfo &info : present)
        _known.insert(info.portName, info);
    return begun;
}

void PortWatcher::lookFor(const QString &portName)
{
    const QList<QextPortInfo> present = QextSerialEnumerator::getPorts();
    for (const QextPortInfo &info : present) {
        if (info.portName == portName && !_known.contains(portName))
            add(info);
    }
}

void PortWatcher::forget(const QString &portName)
{
    SerialLine::portGone(portName);
    if (!_known.contains(portName))
        return;
    const QextPortInfo info = _known.take(portName);
    Q_EMIT gone(info);
}

void PortWatcher::compare()
{
    const QList<QextPortInfo> present = QextSerialEnumerator::getPorts();
    const QList<QString> known = _known.keys();
    for (const QString &portName : known) {
        const auto isIt = [&](const QextPortInfo &info) { return info.portName == portName; };
        if (std::none_of(present.cbegin(), present.cend(), isIt))
            forget(portName);
    }
    for (const QextPortInfo &info : present) {
        if (!_known.contains(info.portName))
            add(info);
    }
}

void PortWatcher::add(const QextPortInfo &info)
{
    _known.insert(info.portName, info);
    Q_EMIT arrived(info);
}
