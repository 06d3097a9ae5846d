#include <QFile>
#include <QTest>

#include "tests/e2e/scenario.h"

using namespace onscreen;

/// Tests the real program on a Wayland compositor, through the actions that it offers to assistive
/// technologies.
class TestWayland : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTypicalRun();
};

namespace
{
/// Returns the names of the program's environment variables.
QList<QByteArray> variablesOf(qint64 pid)
{
    QFile environment(QStringLiteral("/proc/%1/environ").arg(pid));
    QList<QByteArray> names;
    if (environment.open(QIODevice::ReadOnly)) {
        const QList<QByteArray> variables = environment.readAll().split('\0');
        for (const QByteArray &variable : variables)
            names += variable.left(variable.indexOf('='));
    }
    return names;
}
} // namespace

void TestWayland::theTypicalRun()
{
    const QByteArray ssid = "The name with thirty-two letters";
    const QByteArray passphrase = "as long as it may be";
    Scenario s;
    s.screen.setEnvironment("WAYLAND_DEBUG", "1"); // libwayland writes the protocol to standard error
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.user.seesTheDevice());
    QVERIFY(variablesOf(s.screen.processId()).contains("WAYLAND_DISPLAY"));
    QVERIFY(!variablesOf(s.screen.processId()).contains("DISPLAY"));
    QTRY_VERIFY(s.screen.errorOutput().contains(".set_title(\"ZV Tolvar Setup v2.3\")"));
    ZV_STEP(s, s.user.goesToTheNetworks());
    ZV_STEP(s, s.user.seesTheNetworks());
    ZV_STEP(s, s.user.picks(ssid));
    ZV_STEP(s, s.user.typesPassphrase(passphrase));
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.user.sees("Successfully tested connection to network\n"));
    ZV_STEP(s, s.user.saves());
    ZV_STEP(s, s.user.finishes());
    QCOMPARE(s.screen.exitCode(), 0);
    QCOMPARE(s.receivedSinceStatus(), typicalLines(ssid, passphrase));
    QCOMPARE(s.deviceState().saved.network, ssid);
    QCOMPARE(s.deviceState().saved.passphrase, passphrase);
    QVERIFY(s.deviceState().exited);
}

QTEST_GUILESS_MAIN(TestWayland)
#include "tst_wayland.moc"
