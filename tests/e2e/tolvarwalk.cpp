#include <cstdio>

#include <QCoreApplication>
#include <QDir>

#include "tests/e2e/programrobot.h"
#include "tests/support/programdriver.h"

using namespace onscreen;

// tolvarwalk PROGRAM FOLDER SSID PASSPHRASE
//
// Walks through every page of the program, as a user would, and saves an image of each in FOLDER. The exit
// status is 0 when every step succeeded.

namespace
{
bool walkThrough(ProgramDriver &screen, const QDir &folder, const QString &ssid, const QString &passphrase)
{
    ProgramRobot robot(screen);
    const QString details = QStringLiteral("Network Details");
    const QString console = QStringLiteral("Console Log");
    int count = 0;

    const auto step = [](const char *what, bool done) {
        if (done)
            std::printf("[walk] %s\n", what);
        else
            std::fprintf(stderr, "[walk] step failed: %s\n", what);
        std::fflush(stdout);
        return done;
    };
    const auto screenshotOf = [&](const char *name,
                                  const QString &title = QStringLiteral("ZV Tolvar Setup v2.3")) {
        const QString file = QStringLiteral("%1-%2.png").arg(++count, 2, 10, QLatin1Char('0')).arg(name);
        return screen.screenshot(folder.filePath(file), title);
    };

    return step("The wizard looks for a Tolvar.",
                robot.waitForText("Identifying ZV Tolvar") && screenshotOf("connect-searching")) &&
           step("A Tolvar is found.", robot.waitForDevice() && screenshotOf("connect-found")) &&
           step("Continue: the status of the Tolvar.",
                robot.continueToNext() && robot.waitForText("Found Device") && screenshotOf("device")) &&
           step("Continue: the Tolvar scans for networks.",
                robot.continueToNext() && robot.waitForText("Found Networks:") && screenshotOf("scanning")) &&
           step("Networks are found.", robot.waitForNetworks() && screenshotOf("networks")) &&
           step("View the details of a network.",
                robot.chooseNetwork("Old Barn") && screen.click(button("View Network Details...")) &&
                    screen.waitFor(window(details)) && screenshotOf("details", details) &&
                    screen.click(button("OK")) && screen.waitUntilGone(window(details))) &&
           step("Continue with a WEP network: a warning.",
                robot.continueToNext() &&
                    robot.waitForText("Warning - Selected Network is configured for WEP security") &&
                    screenshotOf("wep-warning")) &&
           step("Go back and choose another network.", robot.goBack() && robot.chooseNetwork(ssid) &&
                                                           robot.typePassphrase(passphrase) &&
                                                           screenshotOf("network-chosen")) &&
           step("Continue: the Tolvar tests the network.",
                robot.continueToNext() && robot.waitForText("Testing Network Settings") &&
                    screenshotOf("testing")) &&
           step("The test succeeds.", robot.waitForSuccess() && screenshotOf("tested")) &&
           step("The configuration is saved.", robot.save() && screenshotOf("saved")) &&
           step("View the console.", screen.click(button("Console")) && screen.waitFor(window(console)) &&
                                         screenshotOf("console", console) && screen.closeWindow(console)) &&
           step("Done.", robot.finish());
}
} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 5) {
        std::fprintf(stderr, "usage: tolvarwalk PROGRAM FOLDER SSID PASSPHRASE\n");
        return 2;
    }
    const QDir folder(arguments.at(2));
    ProgramDriver screen;
    if (!folder.mkpath(".") || !screen.start(arguments.at(1)) ||
        !walkThrough(screen, folder, arguments.at(3), arguments.at(4))) {
        std::fprintf(stderr, "[walk] %s\n", qPrintable(screen.failure()));
        screen.saveDiagnostics(folder.filePath("failure"));
        return 1;
    }
    return screen.exitCode();
}
