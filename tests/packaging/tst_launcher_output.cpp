#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QFile>
#include <QTest>

#include "tests/e2e/scenario.h"

using namespace onscreen;

namespace
{
QString passphrase()
{
    return QStringLiteral("as long as it may be");
}

/// Starts the installed launcher with its standard output redirected in shell syntax.
bool startInto(Scenario &s, const QString &redirection)
{
    return s.screen.start("/bin/bash", {"-c", "exec \"$0\" " + redirection, ZV_LAUNCHER});
}

/// Goes through the whole run, once the program is started.
bool walksThrough(Scenario &s)
{
    return s.user.seesTheDevice() && s.user.goesToTheNetworks() && s.user.seesTheNetworks() &&
           s.user.picks("The name with thirty-two letters") && s.user.typesPassphrase(passphrase()) &&
           s.user.goesOn() && s.user.sees("Successfully tested connection to network\n") && s.user.saves() &&
           s.user.finishes();
}

/// A connected pair of sockets; data written to one end is read from the other.
struct SocketPair {
    SocketPair()
    {
        if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0)
            qFatal("the system has no socket left");
        fcntl(ends[0], F_SETFD, FD_CLOEXEC);
    }
    ~SocketPair()
    {
        close(ends[0]);
        closeFarEnd();
    }
    Q_DISABLE_COPY_MOVE(SocketPair)

    void closeFarEnd()
    {
        if (ends[1] >= 0)
            close(ends[1]);
        ends[1] = -1;
    }

    int ends[2] = {-1, -1};
};
} // namespace

/// Tests where the messages of the installed program go: they contain the passphrase.
class TestLauncherOutput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSocketGetsNothing();
    void aPipeGetsTheMessages();
    void aFileGetsTheMessages();
    void standardErrorHoldsNoPassphrase();
};

void TestLauncherOutput::aSocketGetsNothing()
{
    Scenario s;
    QVERIFY(s.tolvar.plug());
    SocketPair sockets;
    ZV_STEP(s, startInto(s, QStringLiteral(">&%1 %1>&-").arg(sockets.ends[1])));
    sockets.closeFarEnd();
    ZV_STEP(s, walksThrough(s));
    QVERIFY2(s.sessionLog().contains(passphrase().toUtf8()), "the session log holds the passphrase");

    QFile received;
    QVERIFY(received.open(sockets.ends[0], QIODevice::ReadOnly));
    QCOMPARE(received.readAll(), QByteArray()); // up to the end of file: the program has ended
}

void TestLauncherOutput::aPipeGetsTheMessages()
{
    Scenario s;
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, startInto(s, QString()));
    ZV_STEP(s, walksThrough(s));
    QVERIFY(s.screen.output().contains("--> \"setpass " + passphrase().toUtf8()));
    QVERIFY2(!s.screen.errorOutput().contains(passphrase().toUtf8()), "standard error holds no passphrase");
}

void TestLauncherOutput::aFileGetsTheMessages()
{
    Scenario s;
    ZV_STEP(s, startInto(s, ">messages"));
    ZV_STEP(s, s.user.seesTheSearch());
    QFile messages(s.inHome("messages"));
    QVERIFY(messages.open(QIODevice::ReadOnly));
    QVERIFY(messages.readAll().contains("List of ports: \n"));
}

void TestLauncherOutput::standardErrorHoldsNoPassphrase()
{
    Scenario s;
    QVERIFY(s.tolvar.plug());
    // Qt writes messages to standard error that occur while the program handles another message, such as when
    // the console shows it. The categories for text layout and painting alone would slow the program down too
    // much.
    s.screen.setEnvironment("QT_LOGGING_RULES", "*=true;qt.text.*=false;qt.widgets.*=false;qt.core.*=false");
    ZV_STEP(s, startInto(s, QString()));
    ZV_STEP(s, s.screen.click(button("Console")));
    ZV_STEP(s, s.screen.dragWindow("Console Log", {600, 840}));
    ZV_STEP(s, s.screen.activateWindow("ZV Tolvar Setup v2.3"));
    ZV_STEP(s, walksThrough(s));
    QVERIFY2(s.screen.output().contains("XCB_KEY_PRESS"), "Qt's messages are switched on");
    QVERIFY2(s.screen.errorOutput().contains("qt.qpa."), "standard error was captured");
    QVERIFY2(!s.screen.errorOutput().contains(passphrase().toUtf8()), s.screen.errorOutput().constData());
}

QTEST_GUILESS_MAIN(TestLauncherOutput)
#include "tst_launcher_output.moc"
