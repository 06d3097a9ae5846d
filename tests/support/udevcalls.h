#pragma once

/// What can go wrong with udev, made to happen in this process.
namespace UdevCalls
{

enum Failure {
    None,
    NoContext,   ///< udev can't be had at all
    NoMonitor,   ///< nobody tells
    NoFilter,    ///< the kernel takes no filter
    NoReceiving, ///< the socket can't be heard
    NoAction,    ///< what is told says not what happened
    EventsLost   ///< more was told than the socket holds: what was told is lost, and udev says so
};

/// Lets \a failure happen from now on.
void fail(Failure failure);

/// How often the program was told of something since the last fail().
int timesTold();

/// How often the program asked about a device by its name since the last fail().
int timesAsked();

} // namespace UdevCalls
