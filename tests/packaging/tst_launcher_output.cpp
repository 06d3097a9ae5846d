#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QFile>
#include <QTest>

#include "tests/e2e/scenario.h"

using namespace onscreen;

namespace
{
constexpr const char *passphrase = "correct horse battery";

/// Starts the installed launcher with its standard output redirected in shell syntax.
bool start(Scenario &s, const QString &redirection)
{
    return s.tolvar.plug() && s.screen.start("/bin/bash", {"-c", "exec \"$0\" " + redirection, ZV_LAUNCHER});
}
} // namespace

/// Tests where the messages of the installed program go: they contain the passphrase. tst_launcher tests
/// other redirections.
class TestLauncherOutput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSocketGetsNothing();
    void onlyStandardOutputHasThePassphrase();
};

void TestLauncherOutput::aSocketGetsNothing()
{
    Scenario s;
    int ends[2] = {-1, -1};
    QCOMPARE(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    fcntl(ends[0], F_SETFD, FD_CLOEXEC);
    QFile received;
    QVERIFY(received.open(ends[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle));
    const bool isStarted = start(s, QStringLiteral(">&%1 %1>&-").arg(ends[1]));
    close(ends[1]);
    ZV_STEP(s, isStarted);
    ZV_STEP(s, s.robot.complete("Workshop", passphrase));
    QVERIFY2(s.sessionLog().contains(passphrase), "the passphrase is expected in the session log");
    QCOMPARE(received.readAll(), QByteArray()); // up to the end of file: the program has ended
}

void TestLauncherOutput::onlyStandardOutputHasThePassphrase()
{
    Scenario s;
    // Qt writes messages to standard error that occur while the program handles another message, such as when
    // the console shows it. The categories for text layout and painting alone would slow the program down too
    // much.
    s.screen.setEnvironment("QT_LOGGING_RULES", "*=true;qt.text.*=false;qt.widgets.*=false;qt.core.*=false");
    ZV_STEP(s, start(s, QString()));
    ZV_STEP(s, s.screen.click(button("Console")));
    ZV_STEP(s, s.screen.waitFor(window("Console Log").active()));
    ZV_STEP(s, s.screen.activateWindow("ZV Tolvar Setup v2.3"));
    ZV_STEP(s, s.robot.continueToNetworks());
    ZV_STEP(s, s.robot.waitForNetworks());
    // The console covers a part of the wizard, which can be used with keys.
    ZV_STEP(s, s.robot.tabTo(field().beside("Passphrase")));
    ZV_STEP(s, s.screen.typeText(passphrase));
    ZV_STEP(s, s.robot.tabTo(button("Continue")));
    ZV_STEP(s, s.screen.pressKey("Return"));
    ZV_STEP(s, s.robot.pressFocused("Save network configuration"));
    ZV_STEP(s, s.robot.pressFocused("Done"));
    ZV_STEP(s, s.screen.waitForEnd());
    QVERIFY(s.screen.output().contains(QByteArray("--> \"setpass ") + passphrase));
    QVERIFY2(s.screen.output().contains("XCB_KEY_PRESS"), "Qt's messages are expected in the output");
    QVERIFY2(s.screen.errorOutput().contains("qt.qpa."), "Qt's messages are expected in standard error");
    QVERIFY2(!s.screen.errorOutput().contains(passphrase), s.screen.errorOutput().constData());
}

QTEST_GUILESS_MAIN(TestLauncherOutput)
#include "tst_launcher_output.moc"
