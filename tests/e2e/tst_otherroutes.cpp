#include <QDate>
#include <QFile>
#include <QTest>

#include "tests/e2e/scenario.h"
#include "tests/support/filecontents.h"

using namespace onscreen;

namespace
{
constexpr QLatin1String wizardTitle("ZV Tolvar Setup v2.3");

/// Starts the program with the device plugged in and waits until it is found.
bool findsTheDevice(Scenario &s)
{
    return s.tolvar.plug() && s.start() && s.user.seesTheDevice();
}

/// Continues to the choose-network page and waits for the scan.
bool scans(Scenario &s)
{
    return findsTheDevice(s) && s.user.goesToTheNetworks() && s.user.seesTheNetworks();
}

/// Continues, and makes the device test a network with a wrong passphrase.
bool triesAWrongPassphrase(Scenario &s)
{
    return scans(s) && s.user.picks("Workshop") && s.user.typesPassphrase("wrong  one") && s.user.goesOn() &&
           s.user.sees("The network was found, but the passphrase was invalid\n");
}
} // namespace

/// Tests the other routes through the real program: warnings, failures, the log, the dialogs.
class TestOtherRoutes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aWepNetworkIsWarnedAbout();
    void aWrongPassphraseCanBeSavedAnyway();
    void anUnknownSsidCanBeSavedAnyway();
    void aSystemErrorLeavesCancelAlone();
    void theLogIsSavedToTheByte_data();
    void theLogIsSavedToTheByte();
    void theLogIsRefusedOnA059();
    void theDetailsOfANetwork();
    void theConsoleShowsWhatTheDeviceSays();
    void anOpenConsoleHoldsTheProgramUpNoLonger();
    void anSsidGoesBackByteForByteAsItCame_data();
    void anSsidGoesBackByteForByteAsItCame();
    void refreshingScansAgain();
    void refreshingAfterATestSavesWhatWasTried();
    void unpluggedOnAnyPageNothingBreaks_data();
    void unpluggedOnAnyPageNothingBreaks();
    void garbageOnTheLineIsNoHindrance();
};

void TestOtherRoutes::aWepNetworkIsWarnedAbout()
{
    Scenario s;
    ZV_STEP(s, scans(s));
    ZV_STEP(s, s.user.picks("Old Barn"));
    ZV_STEP(s, s.user.typesPassphrase("0123456789"));
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.user.sees("Warning - Selected Network is configured for WEP security"));
    ZV_STEP(s, s.user.goesBack());
    ZV_STEP(s, s.screen.waitFor(field().beside("Network").withText("Old Barn")));
    ZV_STEP(s, s.screen.waitFor(field().beside("Passphrase").withText("0123456789")));
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.user.sees("Warning - Selected Network is configured for WEP security"));
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.user.sees("Successfully tested connection to network\n"));
    ZV_STEP(s, s.user.saves());
    ZV_STEP(s, s.user.finishes());
    QCOMPARE(s.receivedSinceStatus(), typicalLines("Old Barn", "0123456789"));
    QCOMPARE(s.deviceState().saved.network, QByteArray("Old Barn"));
}

void TestOtherRoutes::aWrongPassphraseCanBeSavedAnyway()
{
    Scenario s;
    ZV_STEP(s, triesAWrongPassphrase(s));
    ZV_STEP(s, s.screen.waitFor(button("Done").disabled()));
    ZV_STEP(s, s.user.saves("Save network configuration anyway?"));
    ZV_STEP(s, s.screen.waitFor(button("Save network configuration anyway?").enabled()));
    ZV_STEP(s, s.user.finishes());
    QCOMPARE(s.receivedSinceStatus(), typicalLines("Workshop", "wrong  one"));
    QCOMPARE(s.deviceState().saved.passphrase, QByteArray("wrong  one"));
    QCOMPARE(s.screen.exitCode(), 0);
}

void TestOtherRoutes::anUnknownSsidCanBeSavedAnyway()
{
    Scenario s;
    ZV_STEP(s, scans(s));
    ZV_STEP(s, s.user.typesNetwork(" Far  away "));
    ZV_STEP(s, s.user.typesPassphrase("x"));
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.user.sees("The network was not found\n"));
    ZV_STEP(s, s.user.saves("Save network configuration anyway?"));
    ZV_STEP(s, s.user.finishes());
    QCOMPARE(s.receivedSinceStatus(), typicalLines(" Far  away ", "x"));
    QCOMPARE(s.deviceState().saved.network, QByteArray(" Far  away "));
}

void TestOtherRoutes::aSystemErrorLeavesCancelAlone()
{
    DeviceConfig setup;
    setup.faults.systemErrorOnTest = true;
    Scenario s(setup);
    ZV_STEP(s, scans(s));
    ZV_STEP(s, s.user.picks("Workshop"));
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s,
            s.user.sees("There was an unexpected system error. Please power off and then power on the Tolvar "
                        "and restart this utility\n"));
    ZV_STEP(s, s.screen.waitFor(button("Save Network Configuration").disabled()));
    ZV_STEP(s, s.screen.waitFor(button("Done").disabled()));
    ZV_STEP(s, s.screen.click(button("Cancel")));
    ZV_STEP(s, s.screen.waitForEnd());
    QCOMPARE(s.received().constLast(), QByteArray("exit")); // Cancel also ends the device's session
    QCOMPARE(s.deviceState().saved.passphrase, QByteArray("correct horse battery"));
}

void TestOtherRoutes::theLogIsSavedToTheByte_data()
{
    QTest::addColumn<bool>("pluggedInLater");
    QTest::newRow("from a device present at the start") << false;
    QTest::newRow("from a device plugged in later, whose replies both controllers see") << true;
}

void TestOtherRoutes::theLogIsSavedToTheByte()
{
    QFETCH(bool, pluggedInLater);
    DeviceConfig setup;
    setup.logText =
        "first line\n\n  \"quoted\" & <marked up> > done\n\ttab\n" + QByteArray(5000, 'x') + "\nlast";
    Scenario s(setup);
    if (pluggedInLater) {
        ZV_STEP(s, s.start());
        ZV_STEP(s, s.user.seesTheSearch());
        QVERIFY(s.tolvar.plug());
        ZV_STEP(s, s.user.seesTheDevice());
    } else {
        ZV_STEP(s, findsTheDevice(s));
    }
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.screen.click(button("Get Tolvar Log File")));
    const QString path = s.inHome("my log.txt");
    ZV_STEP(s, s.screen.saveAs(path));
    ZV_STEP(s, s.user.sees("Log file written to: " + path));
    ZV_STEP(s, s.screen.waitFor(button("Get Tolvar Log File").enabled()));
    QCOMPARE(contents(path), setup.logText);
    QVERIFY(s.sessionLog().contains("D:Opening file: \"" + path.toUtf8() + "\" \n"));

    // The run continues normally.
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.user.seesTheNetworks());
    QCOMPARE(s.receivedSinceStatus(),
             QList<QByteArray>({"get_log_file", "setuarttrace y", "save", "scan", "setuarttrace n"}));
}

void TestOtherRoutes::theLogIsRefusedOnA059()
{
    DeviceConfig setup;
    setup.firmwareVersion = "A059";
    Scenario s(setup);
    ZV_STEP(s, findsTheDevice(s));
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.screen.click(button("Get Tolvar Log File")));
    ZV_STEP(s, s.user.sees("Tolvar Log file only available on Firmware A060 or later"));
    ZV_STEP(s, s.screen.click(button("OK")));
    ZV_STEP(s, s.screen.waitFor(button("Get Tolvar Log File").enabled().in(wizardTitle)));
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.user.seesTheNetworks());
    QVERIFY(!s.received().contains("get_log_file"));
}

void TestOtherRoutes::theDetailsOfANetwork()
{
    Scenario s;
    ZV_STEP(s, scans(s));
    ZV_STEP(s, s.screen.doubleClick(row("Old Barn"),
                                    [&s] { return s.screen.find(window("Network Details")).has_value(); }));
    for (const char *value : {"Old Barn", "11", "WEP", "WEP40", "-71"})
        ZV_STEP(s, s.screen.waitFor(label(value)));
    ZV_STEP(s, s.screen.click(button("OK")));
    ZV_STEP(s, s.screen.waitUntilGone(window("Network Details")));

    ZV_STEP(s, s.user.typesNetwork("Far away"));
    ZV_STEP(s, s.screen.click(button("View Network Details...")));
    ZV_STEP(s, s.screen.waitFor(label("Not Found").in("Network Details")));
    ZV_STEP(s, s.screen.pressKey("Escape"));
    ZV_STEP(s, s.screen.waitUntilGone(window("Network Details")));
    QCOMPARE(s.sessionLog().count("D:View Details Button Clicked \n"), 2);
    QCOMPARE(s.sessionLog().count("D: OK \n"), 1);
}

void TestOtherRoutes::theConsoleShowsWhatTheDeviceSays()
{
    Scenario s;
    ZV_STEP(s, findsTheDevice(s));
    ZV_STEP(s, s.screen.click(button("Console")));
    ZV_STEP(s, s.screen.waitFor(window("Console Log")));
    const QString shown = s.screen.text(textView().in("Console Log"));
    QVERIFY2(shown.contains("<name>TOLVAR-4711</name>"), qPrintable(shown));
    QVERIFY2(shown.contains(">"), qPrintable(shown));
    QVERIFY2(!shown.contains("_commState") && !shown.contains("->IN_PROMPT"), "debug messages are not shown");

    // The wizard remains usable beside the console, and the console continues.
    ZV_STEP(s, s.screen.activateWindow(wizardTitle));
    ZV_STEP(s, s.user.goesToTheNetworks());
    ZV_STEP(s, s.user.seesTheNetworks());
    ZV_STEP(s, s.screen.waitUntil(
                   [&s] { return s.screen.text(textView().in("Console Log")).contains("<scan_results>"); },
                   "the scan's reply in the console view"));
}

void TestOtherRoutes::anOpenConsoleHoldsTheProgramUpNoLonger()
{
    Scenario s;
    ZV_STEP(s, findsTheDevice(s));
    ZV_STEP(s, s.screen.click(button("Console")));
    ZV_STEP(s, s.screen.waitFor(window("Console Log")));
    ZV_STEP(s, s.screen.closeWindow(wizardTitle));
    ZV_STEP(s, s.screen.waitForEnd());
    QCOMPARE(s.screen.exitCode(), 0);
    QCOMPARE(s.received().constLast(), QByteArray("exit"));
}

void TestOtherRoutes::anSsidGoesBackByteForByteAsItCame_data()
{
    QTest::addColumn<QByteArray>("ssid");
    QTest::newRow("UTF-8") << QByteArray("Caf\xC3\xA9 Br\xC3\xBC"
                                         "cke");
    QByteArray controls = "x";
    for (char byte = 1; byte < 0x20; ++byte) {
        if (!QByteArray("\x02\x03\t\n\r").contains(byte))
            controls += byte;
    }
    QTest::newRow("control bytes") << controls + "y";
}

void TestOtherRoutes::anSsidGoesBackByteForByteAsItCame()
{
    QFETCH(QByteArray, ssid);
    DeviceConfig setup;
    TolvarNetwork odd;
    odd.ssid = ssid;
    odd.passphrase = "Milchkaffee";
    odd.security = "WPA2";
    TolvarNetwork before;
    before.ssid = "Before";
    TolvarNetwork behind;
    behind.ssid = "Behind";
    setup.air = {before, odd, behind};
    Scenario s(setup);
    ZV_STEP(s, scans(s));
    QStringList names = s.screen.names(row());
    names.sort();
    QCOMPARE(names, QStringList({"Before", "Behind", QString::fromLatin1(ssid)}));
    ZV_STEP(s, s.user.picks(QString::fromLatin1(ssid)));
    ZV_STEP(s, s.user.typesPassphrase("Milchkaffee"));
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.user.sees("Successfully tested connection to network\n"));
    ZV_STEP(s, s.user.saves());
    ZV_STEP(s, s.user.finishes());
    QCOMPARE(s.receivedSinceStatus(), typicalLines(ssid, "Milchkaffee"));
    QCOMPARE(s.deviceState().saved.network, ssid);
}

void TestOtherRoutes::refreshingScansAgain()
{
    Scenario s;
    ZV_STEP(s, scans(s));
    s.tolvar.reconfigure([](DeviceConfig &setup) {
        TolvarNetwork fresh;
        fresh.ssid = "Just switched on";
        setup.air = {fresh};
    });
    ZV_STEP(s, s.screen.click(button("Look for Networks...")));
    ZV_STEP(s, s.screen.waitFor(row("Just switched on")));
    ZV_STEP(s, s.user.seesTheNetworks());
    QCOMPARE(s.screen.names(row()), QStringList{"Just switched on"});
    QCOMPARE(s.receivedSinceStatus(),
             QList<QByteArray>({"setuarttrace y", "save", "scan", "setuarttrace n", "setuarttrace y", "save",
                                "scan", "setuarttrace n"}));
}

void TestOtherRoutes::refreshingAfterATestSavesWhatWasTried()
{
    // The device saves the last values that it was given, and each scan makes it save.
    Scenario s;
    ZV_STEP(s, triesAWrongPassphrase(s));
    QCOMPARE(s.deviceState().saved.passphrase, QByteArray("correct horse battery"));
    ZV_STEP(s, s.user.goesBack());
    ZV_STEP(s, s.screen.click(button("Look for Networks...")));
    ZV_STEP(s, s.user.seesTheNetworks());
    ZV_STEP(s, s.screen.click(button("Cancel")));
    ZV_STEP(s, s.screen.waitForEnd());
    QCOMPARE(s.deviceState().saved.passphrase, QByteArray("wrong  one"));
}

void TestOtherRoutes::unpluggedOnAnyPageNothingBreaks_data()
{
    QTest::addColumn<int>("pagesOn");
    QTest::newRow("on the found page") << 1;
    QTest::newRow("on the choose-network page") << 2;
    QTest::newRow("on the test page, its verdict shown") << 3;
}

void TestOtherRoutes::unpluggedOnAnyPageNothingBreaks()
{
    QFETCH(int, pagesOn);
    Scenario s;
    ZV_STEP(s, findsTheDevice(s));
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.user.sees("Found Device"));
    if (pagesOn > 1) {
        ZV_STEP(s, s.user.goesOn());
        ZV_STEP(s, s.user.seesTheNetworks());
    }
    if (pagesOn > 2) {
        ZV_STEP(s, s.user.typesPassphrase("correct horse battery"));
        ZV_STEP(s, s.user.goesOn());
        ZV_STEP(s, s.user.sees("Successfully tested connection to network\n"));
    }
    s.tolvar.unplug();
    ZV_STEP(s, s.screen.waitUntil([&s] { return s.sessionLog().contains("D:****Device REMOVED: \n"); },
                                  "the removal in the session log"));
    QVERIFY(s.tolvar.plug());
    // The device is found again, whatever page is shown, and reports its status.
    ZV_STEP(
        s, s.screen.waitUntil([&s] { return s.received().count("get") >= 3; }, "its status asked for again"));
    for (int page = pagesOn; page > 0; --page)
        ZV_STEP(s, s.user.goesBack());
    ZV_STEP(s, s.user.seesTheDevice());
    ZV_STEP(s, s.screen.click(button("Cancel")));
    ZV_STEP(s, s.screen.waitForEnd());
    QCOMPARE(s.screen.exitCode(), 0);
    QCOMPARE(s.received().constLast(), QByteArray("exit"));
}

void TestOtherRoutes::garbageOnTheLineIsNoHindrance()
{
    DeviceConfig setup;
    setup.faults.garbageBeforeReplies = QByteArray("\xFF\x00 ~~ <puckdata> \x03 \x04 & > >", 27);
    Scenario s(setup);
    ZV_STEP(s, scans(s));
    ZV_STEP(s, s.user.picks("Workshop"));
    ZV_STEP(s, s.user.typesPassphrase("correct horse battery"));
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.user.sees("Successfully tested connection to network\n"));
    ZV_STEP(s, s.user.saves());
    ZV_STEP(s, s.user.finishes());
    QCOMPARE(s.receivedSinceStatus(), typicalLines("Workshop", "correct horse battery"));
}

QTEST_GUILESS_MAIN(TestOtherRoutes)
#include "tst_otherroutes.moc"
