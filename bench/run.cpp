// bench_run: sets up a device, from the start of the wizard to its end, with user input that follows without
// a pause. The time is compared with the sum of the fixed delays and the device's own time. Runs under
// umockdev-wrapper.

#include <QAbstractButton>
#include <QApplication>
#include <QEventLoop>
#include <QLabel>

#include "app/zvtolvarsetupwizard.h"
#include "bench/measure.h"
#include "device/zvtolvar.h"
#include "messages/sessionlog.h"
#include "simulator/fakeusbbus.h"
#include "simulator/pluggedport.h"
#include "tests/support/wizardrobot.h"

namespace
{
constexpr int turns = 5;

// The time that the wizard waits for a device, in milliseconds.
constexpr double openDelay = 1000;
constexpr double wakeUpDelay = 500;
constexpr double bytePause = 10;
constexpr int wakeUpBytes = 3; // "C\r\n", which is not paced
constexpr int statusBytes = 5; // "get\r\n"

// The device's own delays, in milliseconds. The pause after the last byte passes while the device is already
// working.
constexpr TolvarDelays device{20, 1000, 1000};
constexpr double workAfterPause(int delay)
{
    return delay - bytePause;
}

const char ssid[] = "The name with thirty-two letters";
const char passphrase[] = "as long as it may be";

/// Processes events until \a holds returns true; checks it on each \a signal.
template <typename Signal, typename Condition>
void await(const ZVTolvar *tolvar, Signal signal, Condition holds)
{
    QEventLoop loop;
    QObject::connect(tolvar, signal, &loop, &QEventLoop::quit);
    while (!holds())
        loop.exec();
}

/// Runs the wizard from its first page until the device is found. The time to show the wizard counts too.
void find(ZVTolvarSetupWizard &wizard, const WizardRobot &robot)
{
    wizard.show();
    await(wizard._tolvar, &ZVTolvar::systemIDChanged, [&] { return !wizard._tolvar->systemID().isEmpty(); });
    if (robot.widget<QLabel>("label_progress")->text() !=
        QLatin1String("***** A Tolvar has been found *****"))
        qFatal("the page does not report that the device is found");
}

/// Continues from there to the end of the wizard. \a prompts is the number of prompts that the device has
/// shown.
void setUp(const ZVTolvar *tolvar, WizardRobot &robot, const int &prompts)
{
    // A user who continues before the status has its prompt gets no scan: during a scan, prompts are ignored.
    await(tolvar, &ZVTolvar::readyForCommand, [&] { return prompts == 2; });
    robot.clickContinue();
    robot.clickContinue();
    await(tolvar, &ZVTolvar::scanFinished, [&] { return !tolvar->scanning(); });
    robot.selectNetwork(QLatin1String(ssid));
    robot.typePassphrase(QLatin1String(passphrase));
    robot.clickContinue();
    const auto *save = robot.widget<QAbstractButton>("pushButton");
    await(tolvar, &ZVTolvar::networkTestFinished, [&] { return save->isEnabled(); });
    robot.clickSave();
    robot.clickDone();
}

/// Fails unless the device has the expected settings and received nothing twice.
void verify(const TolvarState &state)
{
    if (state.saved.network != ssid || state.saved.passphrase != passphrase || !state.exited ||
        state.sessions != 1 || state.lineTexts().count("get") != 1)
        qFatal("the device does not have the expected settings, or has received more than expected");
}

void runOnce(FakeUsbBus &bus, Measure &finding, Measure &whole)
{
    DeviceConfig config;
    config.delays = device;
    PluggedTolvar tolvar(bus, config);
    if (!tolvar.plug())
        qFatal("cannot plug the device in");
    {
        ZVTolvarSetupWizard wizard;
        int prompts = 0;
        QObject::connect(wizard._tolvar, &ZVTolvar::readyForCommand, wizard._tolvar, [&] { ++prompts; });
        WizardRobot robot(wizard);
        const double found = milliseconds([&] { find(wizard, robot); });
        const double rest = milliseconds([&] { setUp(wizard._tolvar, robot, prompts); });

        tolvar.receivePending();
        const TolvarState state = tolvar.state();
        verify(state);
        const double awake = openDelay + wakeUpDelay + device.prompt;
        const double work =
            workAfterPause(device.prompt) + workAfterPause(device.scan) + workAfterPause(device.test);
        finding.add(found, awake + bytePause * statusBytes);
        whole.add(found + rest, awake + bytePause * double(state.bytes.size() - wakeUpBytes) + work);
    }
    tolvar.unplug();
    QCoreApplication::processEvents(); // the line closes
}
} // namespace

int main(int argc, char *argv[])
{
    const QApplication app(argc, argv);
    if (!FakeUsbBus::isPossible())
        qFatal("run it as: umockdev-wrapper bench_run");
    openSessionLog();
    installMessageHandler();

    Measure finding{"first page to \"A Tolvar has been found\"", "ms", 1.03};
    Measure whole{"a typical run, input back to back", "ms", 1.05};
    FakeUsbBus bus;
    for (int turn = 0; turn < turns; ++turn)
        runOnce(bus, finding, whole);
    finding.report();
    whole.report();
    return 0;
}
