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
#include <QEventLoop>
#include <QPixmapCache>
#include <QProcess>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QTimer>

#include "app/zvtolvarsetupwizard.h"
#include "messages/sessionlog.h"
#include "tests/faults/faultfixture.h"
#include "tests/support/descriptors.h"

namespace
{
constexpr int patience = 120000;       // milliseconds, for a round that takes four seconds
constexpr const char *mark = "soak: "; // before each report
constexpr const char *ssid = "Library";
constexpr const char *passphrase = "two words";

/// Runs the program, except that each round begins with a new wizard. Between two rounds it reports on
/// standard error and waits for a line.
int sitAtTheWizard(const QString &logPath)
{
    openSessionLog();
    installMessageHandler();
    const WizardWishes wishes{QString::fromLatin1(ssid), QString::fromLatin1(passphrase), logPath};
    std::unique_ptr<ZVTolvarSetupWizard> wizard;
    std::unique_ptr<WizardRobot> robot;
    const auto begin = [&] {
        robot.reset();
        wizard.reset();
        // Qt's pixmap cache, which has a limit: every file dialog and every style's icon fills it again.
        QPixmapCache::clear();
        std::fprintf(stderr, "%s%zu %zu\n", mark, mallinfo2().uordblks,
                     static_cast<std::size_t>(openDescriptors().size()));
        wizard = std::make_unique<ZVTolvarSetupWizard>();
        robot = std::make_unique<WizardRobot>(*wizard);
        QObject::connect(robot.get(), &WizardRobot::done, robot.get(),
                         [] { std::fprintf(stderr, "%sdone\n", mark); });
        robot->waitWhile([&wizard] { return FaultFixture::isTalking(*wizard); });
        wizard->show();
        wizard->activateWindow();
        robot->start(wishes);
    };
    QSocketNotifier told(0, QSocketNotifier::Read);
    QObject::connect(&told, &QSocketNotifier::activated, &told, [&] {
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
    if (!statm.open(QIODevice::ReadOnly))
        return -1;
    constexpr long pageSize = 4; // KiB
    return statm.readAll().split(' ').value(1).toLong() * pageSize;
}

/// Plugs the device in for the other process, round by round.
class Soak
{
public:
    explicit Soak(int rounds)
        : _rounds(rounds)
        , _tolvar(_bus)
    {
    }

    int run();

private:
    QByteArray nextReport();
    bool goThrough();
    void print(int round, const QByteArray &figures) const;

    const int _rounds;
    const QTemporaryDir _home;
    FakeUsbBus _bus;
    PluggedTolvar _tolvar;
    QProcess _program;
    qint64 _bytes = 0;
    int _failures = 0;
};

/// Returns the next report of the other process; empty on a timeout.
QByteArray Soak::nextReport()
{
    QEventLoop loop;
    QObject::connect(&_program, &QProcess::readyReadStandardError, &loop, &QEventLoop::quit);
    QObject::connect(&_program, &QProcess::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(patience, &loop, [&loop] { loop.exit(1); });
    _program.setReadChannel(QProcess::StandardError);
    for (;;) {
        while (_program.canReadLine()) {
            const QByteArray line = _program.readLine();
            if (line.startsWith(mark))
                return line.mid(static_cast<int>(std::strlen(mark))).trimmed();
            std::fputs(line.constData(), stderr); // a message from Qt or a sanitizer
        }
        if (_program.state() == QProcess::NotRunning || loop.exec() != 0)
            return {};
    }
}

/// Runs one round, from plugging in to unplugging; returns whether the device has the expected settings.
bool Soak::goThrough()
{
    if (!_tolvar.plug() || nextReport() != "done")
        return false;
    _tolvar.catchUp();
    const TolvarState state = _tolvar.state();
    const bool isRight = state.exited && state.saved.network == ssid && state.saved.passphrase == passphrase;
    _bytes += _tolvar.passed();
    _tolvar.unplug();
    return isRight;
}

void Soak::print(int round, const QByteArray &figures) const
{
    const QList<QByteArray> heapAndDescriptors = figures.split(' ');
    std::printf("%6d %13ld %13ld %12s %13lld %9d\n", round, residentMemory(_program.processId()),
                heapAndDescriptors.value(0).toLong() / 1024, heapAndDescriptors.value(1).constData(),
                static_cast<long long>(_bytes), _failures);
    std::fflush(stdout);
}

int Soak::run()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), _home.path());
    _program.setProcessEnvironment(environment);
    _program.setStandardOutputFile(QProcess::nullDevice());
    _program.start(QCoreApplication::applicationFilePath(),
                   {QStringLiteral("--at-the-wizard"), _home.filePath(QStringLiteral("log.txt"))});

    std::printf("%6s %13s %13s %12s %13s %9s\n", "round", "resident KiB", "heap KiB", "descriptors",
                "bytes handled", "failures");
    QByteArray figures = nextReport();
    const int step = std::max(1, _rounds / 20);
    for (int round = 1; round <= _rounds; ++round) {
        if (!goThrough()) {
            ++_failures;
            std::printf("round %d failed\n", round);
            if (_program.state() == QProcess::NotRunning)
                return 1;
        }
        _program.write("\n");
        figures = nextReport();
        if (round % step == 0 || round == 1)
            print(round, figures);
    }
    _program.closeWriteChannel();
    _program.waitForFinished(patience);
    return _failures > 0 || _program.exitCode() != 0;
}
} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--at-the-wizard"))
        return sitAtTheWizard(arguments.value(2));
    const int rounds = arguments.value(1).toInt();
    if (rounds <= 0 || !FakeUsbBus::isPossible()) {
        std::fprintf(stderr, "usage: umockdev-wrapper soak ROUNDS\n");
        return 2;
    }
    return Soak(rounds).run();
}
