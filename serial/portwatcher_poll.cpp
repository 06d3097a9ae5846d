#include "serial/portwatcher_poll.h"

#include <chrono>

PollingPortWatcher::PollingPortWatcher(QObject *parent)
    : PortWatcher(parent)
{
    _timer.setInterval(std::chrono::seconds(1));
    connect(&_timer, &QTimer::timeout, this, &PollingPortWatcher::resync);
}

bool PollingPortWatcher::start()
{
    rememberPresent();
    _timer.start();
    return true;
}
