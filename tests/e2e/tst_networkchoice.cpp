#include <QTest>

#include "tests/e2e/scenario.h"

using namespace onscreen;

namespace
{
/// Starts the program with the device plugged in and waits for the networks of the first scan.
bool seesTheNetworks(Scenario &s)
{
    return s.tolvar.plug() && s.start() && s.user.seesTheDevice() && s.user.goesToTheNetworks() &&
           s.user.seesTheNetworks();
}

/// Moves the focus to the list.
bool entersTheList(Scenario &s)
{
    for (int presses = 0; presses < 12 && !s.screen.find(list().focused()); ++presses) {
        if (!s.screen.pressKey("Tab"))
            return false;
    }
    return s.screen.waitFor(list().focused());
}

/// Waits until \a network is highlighted and is the one in the Network field.
bool hasChosen(Scenario &s, const QString &network)
{
    return s.screen.waitFor(row(network).selected()) &&
           s.screen.waitFor(field().beside("Network").withText(network));
}
} // namespace

/// Tests the real program's list of networks: the highlighted network is the one that the device tests.
class TestNetworkChoice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void enteringTheListSelectsNothing();
    void arrowKeysChooseANetwork();
    void spaceChoosesTheRowThatTabEnters();
    void typingTheFirstLettersChoosesANetwork();
    void aPressThatSlipsToAnotherRowChoosesThatRow();
    void aNonAsciiNameIsChosenByKeyboard();
    void arrowKeysChooseNothingDuringAScan();
    void arrowKeysChooseANetworkAfterTheSecondEntry();
    void aDoubleClickOpensOneDialog();
    void anUnplugClearsTheChoice();
};

void TestNetworkChoice::enteringTheListSelectsNothing()
{
    Scenario s;
    ZV_STEP(s, seesTheNetworks(s));
    ZV_STEP(s, entersTheList(s));
    QVERIFY(!s.screen.find(row().selected()));
    QCOMPARE(s.screen.text(field().beside("Network")), QStringLiteral("Workshop"));
}

void TestNetworkChoice::arrowKeysChooseANetwork()
{
    Scenario s;
    ZV_STEP(s, seesTheNetworks(s));
    const QStringList networks = s.screen.names(row());
    ZV_STEP(s, entersTheList(s));
    for (const QString &network : networks) {
        ZV_STEP(s, s.screen.pressKey("Down"));
        ZV_STEP(s, hasChosen(s, network));
    }
    ZV_STEP(s, s.screen.pressKey("Home"));
    ZV_STEP(s, hasChosen(s, networks.constFirst()));
    ZV_STEP(s, s.screen.pressKey("End"));
    ZV_STEP(s, hasChosen(s, networks.constLast()));
    ZV_STEP(s, s.screen.pressKey("Up"));
    ZV_STEP(s, hasChosen(s, networks.at(networks.size() - 2)));
}

void TestNetworkChoice::spaceChoosesTheRowThatTabEnters()
{
    DeviceConfig setup; // no names that begin with a space: the list would continue to one of them
    setup.air.removeIf([](const TolvarNetwork &network) { return network.ssid.startsWith(' '); });
    Scenario s(setup);
    ZV_STEP(s, seesTheNetworks(s));
    const QStringList networks = s.screen.names(row());
    ZV_STEP(s, s.screen.click(field().beside("Passphrase")));
    ZV_STEP(s, entersTheList(s));
    QVERIFY(!s.screen.find(row().selected()));
    ZV_STEP(s, s.screen.pressKey("space"));
    ZV_STEP(s, hasChosen(s, networks.constFirst()));
}

void TestNetworkChoice::typingTheFirstLettersChoosesANetwork()
{
    Scenario s;
    ZV_STEP(s, seesTheNetworks(s));
    ZV_STEP(s, entersTheList(s));
    ZV_STEP(s, s.screen.typeText("old"));
    ZV_STEP(s, hasChosen(s, "Old Barn"));
}

void TestNetworkChoice::aPressThatSlipsToAnotherRowChoosesThatRow()
{
    Scenario s;
    ZV_STEP(s, seesTheNetworks(s));
    ZV_STEP(s, s.screen.drag(row("Library"), row("Old Barn")));
    ZV_STEP(s, hasChosen(s, "Old Barn"));
    ZV_STEP(s, s.user.typesPassphrase("0123456789"));
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.user.sees("Warning - Selected Network is configured for WEP security"));
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.user.sees("Successfully tested connection to network\n"));
    ZV_STEP(s, s.user.saves());
    QCOMPARE(s.deviceState().saved.network, QByteArray("Old Barn"));
}

void TestNetworkChoice::aNonAsciiNameIsChosenByKeyboard()
{
    const QByteArray ssid = "Caf\xC3\xA9 Br\xC3\xBC"
                            "cke";
    const QString shown = QString::fromLatin1(ssid); // each byte is one character
    Scenario s;
    ZV_STEP(s, seesTheNetworks(s));
    ZV_STEP(s, entersTheList(s));
    ZV_STEP(s, s.screen.typeText("c"));
    ZV_STEP(s, hasChosen(s, shown));
    ZV_STEP(s, s.user.typesPassphrase("Milchkaffee"));
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.user.sees("Successfully tested connection to network\n"));
    ZV_STEP(s, s.user.saves());
    QCOMPARE(s.deviceState().saved.network, ssid);
}

void TestNetworkChoice::arrowKeysChooseNothingDuringAScan()
{
    DeviceConfig slow;
    slow.delays.scan = 60000; // longer than the test takes
    Scenario s(slow);
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.user.seesTheDevice());
    ZV_STEP(s, s.user.goesToTheNetworks());
    ZV_STEP(s, entersTheList(s));
    ZV_STEP(s, s.screen.pressKey("End"));
    ZV_STEP(s, s.screen.waitFor(row("Please Wait....").selected()));
    QCOMPARE(s.screen.text(field().beside("Network")), QStringLiteral("Workshop"));
}

void TestNetworkChoice::arrowKeysChooseANetworkAfterTheSecondEntry()
{
    Scenario s;
    ZV_STEP(s, seesTheNetworks(s));
    ZV_STEP(s, s.user.goesBack());
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.screen.waitFor(label("Found Networks:")));
    ZV_STEP(s, s.user.seesTheNetworks());
    ZV_STEP(s, entersTheList(s));
    ZV_STEP(s, s.screen.typeText("old"));
    ZV_STEP(s, hasChosen(s, "Old Barn"));
}

void TestNetworkChoice::aDoubleClickOpensOneDialog()
{
    Scenario s;
    ZV_STEP(s, seesTheNetworks(s));
    ZV_STEP(s, s.screen.doubleClick(row("Old Barn"),
                                    [&s] { return s.screen.find(window("Network Details")).has_value(); }));
    ZV_STEP(s, s.screen.waitFor(label("Old Barn").in("Network Details")));
    ZV_STEP(s, s.screen.pressKey("Escape"));
    ZV_STEP(s, s.screen.waitUntilGone(window("Network Details")));
    ZV_STEP(s, hasChosen(s, "Old Barn"));
    QCOMPARE(s.sessionLog().count("D:View Details Button Clicked \n"), 1);
}

void TestNetworkChoice::anUnplugClearsTheChoice()
{
    Scenario s;
    ZV_STEP(s, seesTheNetworks(s));
    ZV_STEP(s, entersTheList(s));
    ZV_STEP(s, s.screen.typeText("old"));
    ZV_STEP(s, hasChosen(s, "Old Barn"));
    s.tolvar.unplug();
    ZV_STEP(s, s.screen.waitUntilGone(row()));
    ZV_STEP(s, s.screen.waitFor(field().beside("Network").withText("")));
    ZV_STEP(s, s.screen.pressKey("Down"));
    ZV_STEP(s, s.screen.waitFor(button("Continue").disabled()));
}

QTEST_GUILESS_MAIN(TestNetworkChoice)
#include "tst_networkchoice.moc"
