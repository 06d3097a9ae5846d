#include <QTest>

#include "tests/e2e/scenario.h"
#include "tests/support/filecontents.h"

using namespace onscreen;

/// Tests the other routes through the real program: warnings, failures, the device's log, the console.
class TestOtherRoutes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aWepNetworkIsWarnedAbout();
    void aNetworkThatFailsTheTestCanBeSaved_data();
    void aNetworkThatFailsTheTestCanBeSaved();
    void aSystemErrorLeavesOnlyCancel();
    void theLogIsSavedByteForByte();
    void theConsoleShowsReceivedDataAndClosesWithTheWizard();
};

void TestOtherRoutes::aWepNetworkIsWarnedAbout()
{
    const QString warning = "Warning - Selected Network is configured for WEP security";
    Scenario s;
    ZV_STEP(s, s.findNetworks());
    ZV_STEP(s, s.robot.chooseNetwork("Old Barn"));
    ZV_STEP(s, s.robot.typePassphrase("0123456789"));
    ZV_STEP(s, s.robot.continueToNext());
    ZV_STEP(s, s.robot.waitForText(warning));
    ZV_STEP(s, s.robot.goBack());
    ZV_STEP(s, s.screen.waitFor(field().beside("Network").withText("Old Barn")));
    ZV_STEP(s, s.screen.waitFor(field().beside("Passphrase").withText("0123456789")));
    ZV_STEP(s, s.robot.continueToNext());
    ZV_STEP(s, s.robot.waitForText(warning));
    ZV_STEP(s, s.robot.continueToNext());
    ZV_STEP(s, s.robot.waitForSuccess());
    ZV_STEP(s, s.robot.save());
    ZV_STEP(s, s.robot.finish());
    QCOMPARE(s.receivedSinceStatus(), typicalLines("Old Barn", "0123456789"));
    QCOMPARE(s.deviceState().saved.network, QByteArray("Old Barn"));
}

void TestOtherRoutes::aNetworkThatFailsTheTestCanBeSaved_data()
{
    QTest::addColumn<QByteArray>("network");
    QTest::addColumn<QByteArray>("passphrase");
    QTest::addColumn<QString>("verdict");
    QTest::newRow("wrong passphrase") << QByteArray("Workshop") << QByteArray("wrong  one")
                                      << "The network was found, but the passphrase was invalid\n";
    QTest::newRow("unknown SSID") << QByteArray(" Far  away ") << QByteArray("x")
                                  << "The network was not found\n";
}

void TestOtherRoutes::aNetworkThatFailsTheTestCanBeSaved()
{
    QFETCH(QByteArray, network);
    QFETCH(QByteArray, passphrase);
    QFETCH(QString, verdict);
    Scenario s;
    ZV_STEP(s, s.findNetworks());
    ZV_STEP(s, s.robot.typeNetwork(network));
    ZV_STEP(s, s.robot.typePassphrase(passphrase));
    ZV_STEP(s, s.robot.continueToNext());
    ZV_STEP(s, s.robot.waitForText(verdict));
    ZV_STEP(s, s.screen.waitFor(button("Done").disabled()));
    ZV_STEP(s, s.robot.save("Save network configuration anyway?"));
    ZV_STEP(s, s.screen.waitFor(button("Save network configuration anyway?").enabled()));
    ZV_STEP(s, s.robot.finish());
    QCOMPARE(s.receivedSinceStatus(), typicalLines(network, passphrase));
    QCOMPARE(s.deviceState().saved.network, network);
    QCOMPARE(s.deviceState().saved.passphrase, passphrase);
    QCOMPARE(s.screen.exitCode(), 0);
}

void TestOtherRoutes::aSystemErrorLeavesOnlyCancel()
{
    DeviceConfig config;
    config.faults.systemErrorOnTest = true;
    Scenario s(config);
    ZV_STEP(s, s.findNetworks());
    ZV_STEP(s, s.robot.typePassphrase("x"));
    ZV_STEP(s, s.robot.continueToNext());
    ZV_STEP(s, s.robot.waitForText("There was an unexpected system error. Please power off and then power on "
                                   "the Tolvar and restart this utility\n"));
    ZV_STEP(s, s.screen.waitFor(button("Save Network Configuration").disabled()));
    ZV_STEP(s, s.screen.waitFor(button("Done").disabled()));
    ZV_STEP(s, s.screen.click(button("Cancel")));
    ZV_STEP(s, s.screen.waitForEnd());
    QCOMPARE(s.received().constLast(), QByteArray("exit")); // Cancel also ends the device's session
    QCOMPARE(s.deviceState().saved.passphrase, QByteArray("correct horse battery"));
}

// The device is plugged in after the start, so both controllers receive its replies.
void TestOtherRoutes::theLogIsSavedByteForByte()
{
    DeviceConfig config;
    config.logText =
        "first line\n\n  \"quoted\" & <marked up> > done\n\ttab\n" + QByteArray(5000, 'x') + "\nlast";
    Scenario s(config);
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.robot.waitForSearch());
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.robot.waitForDevice());
    ZV_STEP(s, s.robot.continueToNext());
    ZV_STEP(s, s.screen.click(button("Get Tolvar Log File")));
    const QString path = s.inHome("my log.txt");
    ZV_STEP(s, s.screen.saveAs(path));
    ZV_STEP(s, s.robot.waitForText("Log file written to: " + path));
    ZV_STEP(s, s.screen.waitFor(button("Get Tolvar Log File").enabled().focused()));
    QCOMPARE(contents(path), config.logText);
    QVERIFY(s.sessionLog().contains("D:Opening file: \"" + path.toUtf8() + "\" \n"));
    ZV_STEP(s, s.robot.continueToNext());
    ZV_STEP(s, s.robot.waitForNetworks());
    QCOMPARE(s.received().count("get"), 2); // both controllers send it
    QCOMPARE(s.receivedSinceStatus(),
             QList<QByteArray>({"get_log_file", "setuarttrace y", "save", "scan", "setuarttrace n"}));
}

void TestOtherRoutes::theConsoleShowsReceivedDataAndClosesWithTheWizard()
{
    const QString wizard = "ZV Tolvar Setup v2.3";
    const WidgetQuery console = WidgetQuery(WidgetKind::TextView, "Console Log").in("Console Log");
    Scenario s;
    const auto isShown = [&](const QString &text) {
        return s.screen.waitUntil([&] { return s.screen.text(console).contains(text); }, text);
    };
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.screen.click(button("Console")));
    ZV_STEP(s, s.screen.waitFor(window("Console Log").active()));
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.screen.waitFor(label("***** A Tolvar has been found *****").in(wizard)));
    ZV_STEP(s, s.screen.waitFor(button("Continue").enabled().in(wizard)));
    ZV_STEP(s, s.screen.waitFor(window("Console Log").active())); // the device takes no focus from it
    ZV_STEP(s, isShown("<name>TOLVAR-4711</name>"));
    const QString shown = s.screen.text(console);
    QVERIFY2(!shown.contains("_commState") && !shown.contains("->IN_PROMPT"),
             "no debug messages are expected in the console");

    ZV_STEP(s, s.screen.activateWindow(wizard));
    ZV_STEP(s, s.screen.waitFor(button("Continue").focused()));
    ZV_STEP(s, s.robot.continueToNetworks());
    ZV_STEP(s, s.robot.waitForNetworks());
    ZV_STEP(s, isShown("<scan_results>"));
    ZV_STEP(s, s.screen.closeWindow(wizard));
    ZV_STEP(s, s.screen.waitForEnd());
    QCOMPARE(s.screen.exitCode(), 0);
    QCOMPARE(s.received().constLast(), QByteArray("exit"));
}

QTEST_GUILESS_MAIN(TestOtherRoutes)
#include "tst_otherroutes.moc"
