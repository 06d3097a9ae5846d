#pragma once

/// Simulates udev failures in this process.
class UdevFaultInjector
{
public:
    enum Failure {
        None,
        NoContext,   ///< udev is not available
        NoMonitor,   ///< no monitor can be created
        NoFilter,    ///< the kernel accepts no filter
        NoReceiving, ///< the socket cannot receive
        NoAction     ///< events do not contain an action
    };

    /// Simulates \a failure from now on.
    static void fail(Failure failure) { state() = {failure, 0, 0}; }
    /// The number of events of which the program has read the action since the last fail().
    static int actionReads() { return state().actionReads; }
    /// The number of times that the program has looked up a device by its name since the last fail().
    static int deviceLookups() { return state().deviceLookups; }

    struct State {
        Failure wanted;
        int actionReads;
        int deviceLookups;
    };
    static State &state();
};
