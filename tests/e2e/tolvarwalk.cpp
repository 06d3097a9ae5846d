#include <cstdio>

#include <QCoreApplication>
#include <QDir>

#include "tests/e2e/wizarduser.h"
#include "tests/support/programdriver.h"

using namespace onscreen;

// tolvarwalk PROGRAM FOLDER SSID PASSPHRASE
//
// Walks through every page of the program, as a user would, and saves an image of each in FOLDER. The exit
// status is 0 when every step succeeded.

namespace
{
/// Runs a step, prints it, and saves an image of it.
class Walk
{
public:
    Walk(ProgramDriver &screen, const QDir &folder)
        : _screen(screen)
        , _folder(folder)
    {
    }

    bool step(const char *what, bool done)
    {
        if (done)
            std::printf("[walk] %s\n", what);
        else
            std::fprintf(stderr, "[walk] could not go on: %s\n%s\n", what, qPrintable(_screen.failure()));
        std::fflush(stdout);
        return done;
    }

    bool picture(const QString &name, const QString &title = QStringLiteral("ZV Tolvar Setup v2.3"))
    {
        const QString path =
            _folder.filePath(QStringLiteral("%1-%2.png").arg(++_count, 2, 10, QLatin1Char('0')).arg(name));
        if (_screen.screenshot(path, title))
            return true;
        std::fprintf(stderr, "[walk] no picture: %s\n", qPrintable(path));
        return false;
    }

private:
    ProgramDriver &_screen;
    const QDir _folder;
    int _count = 0;
};

bool walkThrough(ProgramDriver &screen, const QDir &folder, const QString &ssid, const QString &passphrase)
{
    WizardUser user(screen);
    Walk walk(screen, folder);
    const QString details = QStringLiteral("Network Details");
    const QString console = QStringLiteral("Console Log");
    const auto wepWarning = QStringLiteral("Warning - Selected Network is configured for WEP security");

    return walk.step("The wizard looks for a Tolvar.",
                     screen.waitFor(label("Identifying ZV Tolvar")) && walk.picture("connect-searching")) &&
           walk.step("It has found one.", user.seesTheDevice() && walk.picture("connect-found")) &&
           walk.step("Continue: what the Tolvar reports.",
                     user.goesOn() && screen.waitFor(label("Found Device")) && walk.picture("device")) &&
           walk.step("Continue: the Tolvar scans for networks.",
                     user.goesOn() && screen.waitFor(label("Found Networks:")) && walk.picture("scanning")) &&
           walk.step("It has found some.", user.seesTheNetworks() && walk.picture("networks")) &&
           walk.step("A look at a network's details.",
                     user.picks("Old Barn") && screen.click(button("View Network Details...")) &&
                         screen.waitFor(window(details)) && walk.picture("details", details) &&
                         screen.click(button("OK")) && screen.waitUntilGone(window(details))) &&
           walk.step("That one has WEP: Continue leads to a warning.",
                     user.goesOn() && user.sees(wepWarning) && walk.picture("wep-warning")) &&
           walk.step("Go Back, and take a better one.", user.goesBack() && user.picks(ssid) &&
                                                            user.typesPassphrase(passphrase) &&
                                                            walk.picture("network-chosen")) &&
           walk.step("Continue: the Tolvar tries to join it.",
                     user.goesOn() && screen.waitFor(label("Testing Network Settings")) &&
                         walk.picture("testing")) &&
           walk.step("It could.",
                     user.sees("Successfully tested connection to network\n") && walk.picture("tested")) &&
           walk.step("The configuration is saved.", user.saves() && walk.picture("saved")) &&
           walk.step("A look at the console.",
                     screen.click(button("Console")) && screen.waitFor(window(console)) &&
                         walk.picture("console", console) && screen.closeWindow(console)) &&
           walk.step("Done.", user.finishes());
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
    if (!folder.mkpath(".")) {
        std::fprintf(stderr, "tolvarwalk: can't make the folder %s\n", qPrintable(folder.path()));
        return 2;
    }

    ProgramDriver screen;
    if (!screen.start(arguments.at(1))) {
        std::fprintf(stderr, "[walk] %s\n", qPrintable(screen.failure()));
        return 1;
    }
    if (!walkThrough(screen, folder, arguments.at(3), arguments.at(4))) {
        screen.leaveEvidence(folder.filePath("failure"));
        return 1;
    }
    return screen.exitCode();
}
