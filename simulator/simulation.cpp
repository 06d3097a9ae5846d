#include "simulator/simulation.h"

#include <cstdio>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include "simulator/unixsignals.h"

Simulation::Simulation(const SimOptions &options)
    : _options(options)
    , _printer(options.isVerbose)
    , _bus(options.firstTty)
    , _tolvar(_bus, options.config, options.bridge)
    , _foreignFtdi(_bus, UsbBridge::foreignFtdi())
    , _foreignCh340(_bus, UsbBridge::foreignCh340())
{
    connect(&_tolvar, &PluggedTolvar::conversation, this,
            [this](SimulatedTolvar::Speech what, const QByteArray &text) { _printer.print(what, text); });
    _program.setProcessChannelMode(QProcess::ForwardedChannels);
    _program.setInputChannelMode(QProcess::ForwardedInputChannel);
}

Simulation::~Simulation() = default;

void Simulation::plugIn()
{
    if (_tolvar.plug())
        _printer.printNote(QStringLiteral("plugged in as %1").arg(QLatin1String(_tolvar.ttyName())));
}

void Simulation::onSignal(int number)
{
    if (number == SIGUSR1) {
        if (_tolvar.isPlugged())
            _tolvar.unplug();
        else
            plugIn();
    } else if (!_wasAskedToEnd) {
        _wasAskedToEnd = true;
        _program.terminate();
    } else {
        _program.kill();
    }
}

int Simulation::run()
{
    UnixSignals signalHandler({SIGINT, SIGTERM, SIGUSR1});
    connect(&signalHandler, &UnixSignals::arrived, this, &Simulation::onSignal);

    if (_options.hasForeign) {
        _foreignFtdi.plug();
        _foreignCh340.plug();
    }
    if (_options.plugAfter == 0)
        plugIn();
    else
        QTimer::singleShot(_options.plugAfter, this, &Simulation::plugIn);

    if (!runProgram())
        return 2;
    waitForPendingInput();
    printDeviceState();
    if (!isAsExpected())
        return 1;
    constexpr int endedBySignal = 128; // as in a shell's exit status
    return (_program.exitStatus() == QProcess::CrashExit ? endedBySignal : 0) + _program.exitCode();
}

bool Simulation::runProgram()
{
    QEventLoop loop;
    connect(&_program, &QProcess::finished, &loop, &QEventLoop::quit);
    connect(&_program, &QProcess::errorOccurred, &loop, [&loop](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            loop.quit();
    });
    _program.start(_options.program.first(), _options.program.mid(1));
    if (_program.state() != QProcess::NotRunning)
        loop.exec();
    if (_program.error() == QProcess::FailedToStart) {
        fprintf(stderr, "tolvarsim: cannot run %s: %s\n", qPrintable(_options.program.first()),
                qPrintable(_program.errorString()));
        return false;
    }
    return true;
}

// The program's last bytes may still be in transit, and the device may still be working on an earlier
// command.
void Simulation::waitForPendingInput()
{
    constexpr int workTimeoutMs = 10 * 60 * 1000;
    _tolvar.receivePending();
    _tolvar.waitFor([](const TolvarState &state) { return !state.isWorking; }, workTimeoutMs);
    QCoreApplication::processEvents(); // prints the rest of the conversation
}

void Simulation::printDeviceState()
{
    const TolvarState state = _tolvar.state();
    const TolvarConfiguration &saved = state.saved;
    const bool isStatic = saved.useStaticIP == "Y";
    _printer.printNote(QStringLiteral("the device holds:"));
    _printer.printNote(QStringLiteral("  network     \"%1\"").arg(readable(saved.network)));
    _printer.printNote(QStringLiteral("  passphrase  \"%1\"").arg(readable(saved.passphrase)));
    _printer.printNote(QStringLiteral("  antenna     %1").arg(readable(saved.antenna)));
    _printer.printNote(QStringLiteral("  static IP   %1")
                           .arg(isStatic ? readable(saved.ipAddress) : QStringLiteral("none")));
    _printer.printNote(state.exited ? QStringLiteral("it has left setup mode")
                                    : QStringLiteral("it has not left setup mode"));
}

bool Simulation::isAsExpected() const
{
    const TolvarState state = _tolvar.state();
    QStringList mismatches;
    const auto check = [&mismatches](const char *what, const std::optional<QByteArray> &expected,
                                     const QByteArray &actual) {
        if (expected && *expected != actual)
            mismatches += QStringLiteral("the %1 is \"%2\", not \"%3\"")
                              .arg(QLatin1String(what), readable(actual), readable(*expected));
    };
    check("saved network", _options.expectedSsid, state.saved.network);
    check("saved passphrase", _options.expectedPassphrase, state.saved.passphrase);
    if (_options.mustExit && !state.exited)
        mismatches += QStringLiteral("\"exit\" has not been received");
    if (!mismatches.isEmpty())
        fprintf(stderr, "tolvarsim: unexpected final state: %s\n",
                qPrintable(mismatches.join(QStringLiteral("; "))));
    return mismatches.isEmpty();
}
