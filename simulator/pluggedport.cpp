#include "simulator/pluggedport.h"

#include <QEventLoop>
#include <QMutexLocker>
#include <QTimer>

#include "simulator/fakeusbbus.h"
#include "simulator/ptypump.h"

PluggedPort::PluggedPort(FakeUsbBus &bus, const UsbBridge &bridge)
    : _bus(bus)
    , _bridge(bridge)
    , _pump(std::make_unique<PtyPump>())
{
    _thread.setObjectName(QStringLiteral("far end"));
    _pump->moveToThread(&_thread);
    // The tty hangs up at once, even while this object's thread is busy. That thread reports the removal of
    // the port afterwards.
    connect(_pump.get(), &PtyPump::lineBroken, _pump.get(), &FakeUsbBus::hangUp);
    connect(_pump.get(), &PtyPump::lineBroken, this, [this] {
        unplug();
        Q_EMIT pulledOut();
    });
    _thread.start();
}

PluggedPort::~PluggedPort()
{
    stop();
}

void PluggedPort::stop()
{
    if (_isPlugged) {
        inThread([this] { _pump->detach(); });
        _bus.unplug(_ttyName);
        _isPlugged = false;
    }
    _thread.quit();
    _thread.wait();
}

void PluggedPort::inThread(const std::function<void()> &step)
{
    QMetaObject::invokeMethod(_pump.get(), step, Qt::BlockingQueuedConnection);
}

bool PluggedPort::plug(const QByteArray &ttyName)
{
    if (_isPlugged)
        return false;
    _ttyName = _bus.plug(_bridge, ttyName);
    _isPlugged = true;
    inThread([this] { _pump->attach(_bus.descriptor(_ttyName)); });
    return true;
}

void PluggedPort::unplug()
{
    if (!_isPlugged)
        return;
    inThread([this] {
        _pump->detach();
        losePower();
    });
    _bus.unplug(_ttyName);
    _isPlugged = false;
}

bool PluggedPort::replug()
{
    unplug();
    return plug();
}

void PluggedPort::setFaults(const LineFaults &faults)
{
    inThread([this, &faults] { _pump->setFaults(faults); });
}

qsizetype PluggedPort::passed() const
{
    return _pump->passed();
}

void PluggedPort::receivePending()
{
    inThread([this] { _pump->pump(); });
}

bool PluggedPort::waitUntil(const std::function<bool()> &holds, int milliseconds)
{
    QEventLoop loop;
    connect(this, &PluggedPort::changed, &loop, &QEventLoop::quit);
    QTimer timeout;
    timeout.setSingleShot(true);
    timeout.setTimerType(Qt::PreciseTimer); // a coarse timer may expire early
    connect(&timeout, &QTimer::timeout, &loop, &QEventLoop::quit);
    timeout.start(milliseconds);
    while (!holds()) {
        if (!timeout.isActive())
            return false;
        loop.exec();
    }
    return true;
}

PluggedTolvar::PluggedTolvar(FakeUsbBus &bus, const DeviceConfig &config, const UsbBridge &bridge)
    : PluggedPort(bus, bridge)
    , _tolvar(config)
{
    connect(pump(), &PtyPump::received, &_tolvar, &SimulatedTolvar::receive);
    connect(&_tolvar, &SimulatedTolvar::transmit, pump(), &PtyPump::send);
    connect(&_tolvar, &SimulatedTolvar::changed, this, &PluggedPort::changed);
    connect(&_tolvar, &SimulatedTolvar::conversation, this, &PluggedTolvar::conversation);
    _tolvar.moveToThread(farThread());
}

PluggedTolvar::~PluggedTolvar()
{
    stop();
}

void PluggedTolvar::losePower()
{
    _tolvar.losePower();
}

bool PluggedTolvar::isAtRest()
{
    bool atRest = false;
    inThread([this, &atRest] {
        pump()->pump();
        atRest = _tolvar.isAtRest() && pump()->isAtRest();
    });
    return atRest;
}

bool PluggedTolvar::waitFor(const std::function<bool(const TolvarState &)> &holds, int milliseconds)
{
    return waitUntil([&] { return holds(state()); }, milliseconds);
}

ForeignPort::ForeignPort(FakeUsbBus &bus, const UsbBridge &bridge)
    : PluggedPort(bus, bridge)
{
    connect(pump(), &PtyPump::received, this, &ForeignPort::record, Qt::DirectConnection);
}

void ForeignPort::record(const QByteArray &bytes)
{
    {
        const QMutexLocker lock(&_guard);
        _received += bytes;
    }
    Q_EMIT changed();
}

ForeignPort::~ForeignPort()
{
    stop();
}

QByteArray ForeignPort::received() const
{
    const QMutexLocker lock(&_guard);
    return _received;
}
