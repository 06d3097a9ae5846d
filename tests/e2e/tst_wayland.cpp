#include <QTest>

#include "tests/e2e/scenario.h"
#include "tests/support/filecontents.h"

/// Tests the real program on a Wayland compositor, through the actions that it offers to assistive
/// technologies.
class TestWayland : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTypicalRunSucceeds();
};

void TestWayland::theTypicalRunSucceeds()
{
    const QByteArray ssid = "The name with thirty-two letters";
    const QByteArray passphrase = "as long as it may be";
    Scenario s;
    s.screen.setEnvironment("WAYLAND_DEBUG", "1"); // libwayland writes the protocol to standard error
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    const QByteArray environment =
        '\0' + contents(QStringLiteral("/proc/%1/environ").arg(s.screen.processId()));
    QVERIFY(environment.contains(QByteArrayLiteral("\0WAYLAND_DISPLAY=")));
    QVERIFY(!environment.contains(QByteArrayLiteral("\0DISPLAY=")));
    QTRY_VERIFY(s.screen.errorOutput().contains(".set_title(\"ZV Tolvar Setup v2.3\")"));
    ZV_STEP(s, s.robot.complete(ssid, passphrase));
    QCOMPARE(s.screen.exitCode(), 0);
    QCOMPARE(s.receivedSinceStatus(), typicalLines(ssid, passphrase));
    QCOMPARE(s.deviceState().saved.network, ssid);
    QCOMPARE(s.deviceState().saved.passphrase, passphrase);
    QVERIFY(s.deviceState().exited);
}

QTEST_GUILESS_MAIN(TestWayland)
#include "tst_wayland.moc"
