// tolvarsim: runs a program on a computer that has a simulated ZV Tolvar plugged in.

#include <cstdio>
#include <unistd.h>

#include <QCoreApplication>
#include <QStandardPaths>

#include "simulator/fakeusbbus.h"
#include "simulator/simoptions.h"
#include "simulator/simulation.h"

namespace
{
constexpr int usageError = 2;

int fail(const QString &sentence)
{
    fprintf(stderr, "tolvarsim: %s\n", qPrintable(sentence));
    return usageError;
}

// umockdev works by preloading a library, which must happen when the process starts. The process therefore
// restarts itself under umockdev-wrapper.
void startOverUnderWrapper(char **argv)
{
    constexpr const char *onlyOnce = "TOLVARSIM_STARTED_OVER";
    const QByteArray wrapper =
        QStandardPaths::findExecutable(QStringLiteral("umockdev-wrapper")).toLocal8Bit();
    if (wrapper.isEmpty() || qEnvironmentVariableIsSet(onlyOnce))
        return;
    qputenv(onlyOnce, "1");
    QByteArray self = QCoreApplication::applicationFilePath().toLocal8Bit();
    QList<char *> arguments = {const_cast<char *>(wrapper.constData()), self.data()};
    for (char **argument = argv + 1; *argument; ++argument)
        arguments += *argument;
    arguments += nullptr;
    execv(wrapper.constData(), arguments.data());
}
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tolvarsim"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ZV_VERSION));

    QString problem;
    const std::optional<SimOptions> options = readOptions(QCoreApplication::arguments(), problem);
    if (!options)
        return fail(problem);
    if (!FakeUsbBus::isPossible()) {
        startOverUnderWrapper(argv);
        return fail(
            QStringLiteral("umockdev-wrapper, from the package umockdev, is missing or does not work."));
    }
    return Simulation(*options).run();
}
