// soak ROUNDS: one process goes through the typical run, an unplugging and a replugging ROUNDS times. Prints
// the effect on the memory and the descriptors of that process. Run it under umockdev-wrapper.
//
// The measured process is a child process, which has the wizard and a simulated user; this process has the
// device.

#include <malloc.h>

#include <cstdio>
#include <cstring>
#include <memory>

#include <QApplication>
#include <QPixmapCache>
#include <QProcess>
#include <QSocketNotifier>
#include <QTemporaryDir>

#include "messages/sessionlog.h"
#include "tests/faults/faultfixture.h"
#include "tests/support/descriptors.h"

namespace
{
constexpr int timeoutMs = 120000;      // for a cycle that takes four seconds
constexpr const char *mark = "soak: "; // before each report

/// Runs the program, except that each cycle begins with a new wizard. Between two cycles it reports on
/// standard error and waits for a line.
int runWizardProcess(const UserInput &userInput)
{
    openSessionLog();
    installMessageHandler();
    std::unique_ptr<ZVTolvarSetupWizard> wizard;
    std::unique_ptr<WizardRobot> robot;
    const auto begin = [&] {
        robot.reset();
        wizard.reset();
        // Qt's pixmap cache, which has a limit: every file dialog and every style's icon fills it again.
        QPixmapCache::clear();
        std::fprintf(stderr, "%s%13zu %12lld\n", mark, mallinfo2().uordblks / 1024,
                     static_cast<long long>(openDescriptors().size()));
        wizard = std::make_unique<ZVTolvarSetupWizard>();
        robot = std::make_unique<WizardRobot>(*wizard);
        QObject::connect(robot.get(), &WizardRobot::done, robot.get(),
                         [] { std::fprintf(stderr, "%sdone\n", mark); });
        robot->waitWhile([&wizard] { return FaultFixture::isBusy(*wizard); });
        wizard->show();
        wizard->activateWindow();
        robot->start(userInput);
    };
    QSocketNotifier input(0, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &input, [&] {
        if (std::getchar() == EOF)
            QCoreApplication::quit();
        else
            begin();
    });
    begin();
    QApplication::setQuitOnLastWindowClosed(false);
    return QApplication::exec();
}

/// Returns the resident memory of a process, in KiB.
long residentMemory(qint64 pid)
{
    QFile statm(QStringLiteral("/proc/%1/statm").arg(pid));
    constexpr long pageSize = 4; // KiB
    return statm.open(QIODevice::ReadOnly) ? statm.readAll().split(' ').value(1).toLong() * pageSize : -1;
}

/// Returns the next report of the measured process; empty on a timeout.
QByteArray nextReport(QProcess &program)
{
    program.setReadChannel(QProcess::StandardError);
    for (;;) {
        while (!program.canReadLine()) {
            if (!program.waitForReadyRead(timeoutMs))
                return {};
        }
        const QByteArray line = program.readLine();
        if (line.startsWith(mark))
            return line.mid(static_cast<int>(std::strlen(mark))).chopped(1);
        std::fputs(line.constData(), stderr); // a message from Qt or a sanitizer
    }
}

/// Plugs the device in for the measured process, cycle by cycle.
int soak(int cycles)
{
    const QTemporaryDir home;
    FakeUsbBus bus;
    PluggedTolvar tolvar(bus);
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home.path());
    program.setProcessEnvironment(environment);
    program.setStandardOutputFile(QProcess::nullDevice());
    program.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("--wizard-process"), home.filePath(QStringLiteral("log.txt"))});

    std::printf("%6s %13s %13s %12s %13s %9s\n", "cycle", "resident KiB", "heap KiB", "descriptors",
                "bytes handled", "failures");
    nextReport(program);
    qint64 bytes = 0;
    int failures = 0;
    const int step = std::max(1, cycles / 20);
    for (int cycle = 1; cycle <= cycles && program.state() != QProcess::NotRunning; ++cycle) {
        const bool isDone = tolvar.plug() && nextReport(program) == "done";
        tolvar.receivePending();
        const TolvarState state = tolvar.state();
        if (!isDone || !state.exited || state.saved.network != "Library" ||
            state.saved.passphrase != "two words") {
            ++failures;
            std::printf("cycle %d failed\n", cycle);
        }
        bytes += tolvar.passed();
        tolvar.unplug();
        program.write("\n");
        const QByteArray heapAndDescriptors = nextReport(program);
        if (cycle % step == 0 || cycle == 1)
            std::printf("%6d %13ld %s %13lld %9d\n", cycle, residentMemory(program.processId()),
                        heapAndDescriptors.constData(), static_cast<long long>(bytes), failures);
        std::fflush(stdout);
    }
    program.closeWriteChannel();
    program.waitForFinished(timeoutMs);
    return failures > 0 || program.exitCode() != 0;
}
} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--wizard-process"))
        return runWizardProcess({QStringLiteral("Library"), QStringLiteral("two words"), arguments.value(2)});
    const int cycles = arguments.value(1).toInt();
    if (cycles <= 0 || !FakeUsbBus::isPossible()) {
        std::fprintf(stderr, "usage: umockdev-wrapper soak ROUNDS\n");
        return 2;
    }
    return soak(cycles);
}
