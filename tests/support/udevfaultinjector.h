#pragma once

/// Simulates udev failures in this process.
namespace UdevFaultInjector
{

enum Failure {
    None,
    NoContext,   ///< udev is not available
    NoMonitor,   ///< no monitor can be created
    NoFilter,    ///< the kernel accepts no filter
    NoReceiving, ///< the socket cannot receive
    NoAction,    ///< events do not contain an action
    EventsLost   ///< the socket's buffer overflowed: the events are lost, and udev reports that
};

/// Simulates \a failure from now on.
void fail(Failure failure);

/// The number of events of which the program has read the action since the last fail().
int timesTold();

/// The number of times that the program has looked up a device by its name since the last fail().
int timesAsked();

} // namespace UdevFaultInjector
