#include "serial/portwatcher_poll.h"

namespace
{
using namespace std::chrono_literals;
constexpr auto Interval =
    1000ms; // soon enough for a person with a plug in the hand, rare enough to cost nothing
} // namespace

PollingPortWatcher::PollingPortWatcher()
{
    _timer.setInterval(Interval);
    connect(&_timer, &QTimer::timeout, this, &PollingPortWatcher::compare);
}

bool PollingPortWatcher::begin()
{
    _timer.start();
    return true;
}
