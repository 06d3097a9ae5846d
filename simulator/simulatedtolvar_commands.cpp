#include "simulator/simulatedtolvar.h"

#include <utility>

#include "simulator/tolvardocuments.h"

namespace
{
/// The result of joining a network, as numbered in the device's reply to "test".
enum JoinResult { Joined = 0, WrongPassphrase = 1, UnknownNetwork = 2, SystemError = 3 };

constexpr const char *joinDescriptions[] = {"joined", "passphrase refused", "no such network",
                                            "radio failure"};

JoinResult tryToJoin(const QList<TolvarNetwork> &air, const TolvarConfiguration &configuration)
{
    JoinResult result = UnknownNetwork;
    for (const TolvarNetwork &network : air) {
        if (network.ssid != configuration.network)
            continue;
        if (network.passphrase.isEmpty() || network.passphrase == configuration.passphrase)
            return Joined;
        result = WrongPassphrase; // another network with that name may accept it
    }
    return result;
}
} // namespace

void SimulatedTolvar::execute(const QByteArray &line)
{
    using Tolvar = SimulatedTolvar;
    struct Command {
        const char *start; // the whole line, or, if it ends in a space, the part before the value
        void (Tolvar::*handler)(const QByteArray &value);
    };
    // clang-format off
    static constexpr Command commands[] = {
        {"get",           &Tolvar::sendStatus},
        {"scan",          &Tolvar::scan},
        {"test",          &Tolvar::test},
        {"get_log_file",  &Tolvar::sendLog},
        {"setuarttrace ", &Tolvar::setTrace},
        {"setssid ",      &Tolvar::setNetwork},
        {"setpass ",      &Tolvar::setPassphrase},
        {"ant_select ",   &Tolvar::setAntenna},
        {"setstaticip ",  &Tolvar::setStaticIP},
        {"save",          &Tolvar::save},
        {"exit",          &Tolvar::leaveSetup},
    };
    // clang-format on

    if (!state().awake) {
        if (line == "C" || line.isEmpty())
            startSession();
        return;
    }
    if (config().faults.deafTo.contains(line.split(' ').first()))
        return;
    for (const Command &command : commands) {
        const QByteArray start = command.start;
        if (start.endsWith(' ') ? line.startsWith(start) : line == start) {
            (this->*command.handler)(line.mid(start.size()));
            return;
        }
    }
    prompt();
}

void SimulatedTolvar::startSession()
{
    change([](TolvarState &state) {
        state.awake = true;
        state.exited = false;
        ++state.sessions;
    });
    Q_EMIT conversation(Note, "console awake");
    prompt();
}

void SimulatedTolvar::sendStatus(const QByteArray &)
{
    const TolvarState now = state();
    reply(TolvarDocuments::status(config(), now.pending, now.testResult));
}

void SimulatedTolvar::sendLog(const QByteArray &)
{
    reply(TolvarDocuments::logFile(config().logText));
}

void SimulatedTolvar::scan(const QByteArray &)
{
    const bool traced = state().pending.uartTrace == "Y";
    if (traced)
        trace("wlan: scan starts");
    runAfter(config().delays.scan, [this, traced] {
        const QList<TolvarNetwork> air = config().air;
        if (traced) {
            for (const TolvarNetwork &network : air)
                trace("wlan: beacon on channel " + network.channel + ", " + network.rssi + " dB");
        }
        reply(TolvarDocuments::scanResults(air));
    });
}

void SimulatedTolvar::test(const QByteArray &)
{
    runAfter(config().delays.test, [this] {
        const DeviceConfig now = config();
        const TolvarConfiguration configuration = state().pending;
        const JoinResult result =
            now.faults.systemErrorOnTest ? SystemError : tryToJoin(now.air, configuration);
        change([result](TolvarState &state) { state.testResult = QByteArray::number(result); });
        reply(TolvarDocuments::testResults(configuration.network, joinDescriptions[result], result));
    });
}

void SimulatedTolvar::setTrace(const QByteArray &value)
{
    if (value == "y" || value == "n")
        change([&value](TolvarState &state) { state.pending.uartTrace = value.toUpper(); });
    prompt();
}

void SimulatedTolvar::setNetwork(const QByteArray &value)
{
    change([&value](TolvarState &state) { state.pending.network = value; });
    prompt();
}

void SimulatedTolvar::setPassphrase(const QByteArray &value)
{
    change([&value](TolvarState &state) { state.pending.passphrase = value; });
    prompt();
}

void SimulatedTolvar::setAntenna(const QByteArray &value)
{
    change([&value](TolvarState &state) { state.pending.antenna = value; });
    prompt();
}

void SimulatedTolvar::setStaticIP(const QByteArray &value)
{
    change([&value](TolvarState &state) {
        if (value == "N") {
            state.pending.useStaticIP = "N";
        } else if (value.startsWith("Y ")) {
            state.pending.useStaticIP = "Y";
            state.pending.ipAddress = value.mid(2);
        }
    });
    prompt();
}

void SimulatedTolvar::save(const QByteArray &)
{
    change([](TolvarState &state) { state.saved = state.pending; });
    prompt();
}

void SimulatedTolvar::leaveSetup(const QByteArray &)
{
    change([](TolvarState &state) {
        state.awake = false;
        state.exited = true;
    });
    Q_EMIT conversation(Note, "left setup mode");
}
