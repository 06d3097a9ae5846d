#include <QTest>

#include "tests/e2e/scenario.h"

using namespace onscreen;

namespace
{
/// Waits until \a network is highlighted and is the one in the Network field.
bool isChosen(Scenario &s, const QString &network)
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
    void keysChooseANetwork();
    void aPressThatSlipsToAnotherRowChoosesThatRow();
    void theDetailsAreOfTheChosenOrTypedNetwork();
    void anSsidIsSentAsItWasReceived();
    void lookingForNetworksAgainReplacesTheListAndSavesWhatWasTested();
};

void TestNetworkChoice::keysChooseANetwork()
{
    DeviceConfig config; // no names that begin with a space: the list would continue to one of them
    config.air.removeIf([](const TolvarNetwork &network) { return network.ssid.startsWith(' '); });
    Scenario s(config);
    ZV_STEP(s, s.findNetworks());
    const QStringList networks = s.screen.names(row());
    ZV_STEP(s, s.robot.tabTo(field().beside("Passphrase")));
    ZV_STEP(s, s.robot.tabTo(list()));
    QVERIFY(!s.screen.find(row().selected()));
    QCOMPARE(s.screen.text(field().beside("Network")), QStringLiteral("Workshop"));
    const std::pair<QString, QString> choices[] = {
        {"space", networks.constFirst()},
        {"Down", networks.at(1)},
        {"End", networks.constLast()},
        {"Home", networks.constFirst()},
    };
    for (const auto &[key, network] : choices) {
        ZV_STEP(s, s.screen.pressKey(key));
        ZV_STEP(s, isChosen(s, network));
    }
}

void TestNetworkChoice::aPressThatSlipsToAnotherRowChoosesThatRow()
{
    Scenario s;
    ZV_STEP(s, s.findNetworks());
    ZV_STEP(s, s.screen.drag(row("Library"), row("Old Barn")));
    ZV_STEP(s, isChosen(s, "Old Barn"));
    ZV_STEP(s, s.robot.continueToNext());
    ZV_STEP(s, s.robot.waitForText("Warning - Selected Network is configured for WEP security"));
}

void TestNetworkChoice::theDetailsAreOfTheChosenOrTypedNetwork()
{
    const QString details = "Network Details";
    Scenario s;
    ZV_STEP(s, s.findNetworks());
    ZV_STEP(
        s, s.screen.doubleClick(row("Old Barn"), [&] { return s.screen.find(window(details)).has_value(); }));
    for (const char *value : {"Old Barn", "11", "WEP", "WEP40", "-71"})
        ZV_STEP(s, s.screen.waitFor(label(value).in(details)));
    ZV_STEP(s, s.screen.click(button("OK")));
    ZV_STEP(s, s.screen.waitUntilGone(window(details)));
    ZV_STEP(s, isChosen(s, "Old Barn"));

    ZV_STEP(s, s.robot.typeNetwork("Far away"));
    ZV_STEP(s, s.screen.click(button("View Network Details...")));
    ZV_STEP(s, s.screen.waitFor(label("Not Found").in(details)));
    ZV_STEP(s, s.screen.pressKey("Escape"));
    ZV_STEP(s, s.screen.waitUntilGone(window(details)));
    QCOMPARE(s.sessionLog().count("D:View Details Button Clicked \n"), 2);
    QCOMPARE(s.sessionLog().count("D: OK \n"), 1);
}

void TestNetworkChoice::anSsidIsSentAsItWasReceived()
{
    TolvarNetwork odd;
    odd.ssid = "Caf\xC3\xA9 ";
    for (char byte = 1; byte < 0x20; ++byte) {
        if (!QByteArray("\x02\x03\t\n\r").contains(byte))
            odd.ssid += byte;
    }
    odd.ssid += 'y';
    odd.passphrase = "Milchkaffee";
    odd.security = "WPA2";
    TolvarNetwork other;
    other.ssid = "Other";
    DeviceConfig config;
    config.air = {other, odd};
    Scenario s(config);
    ZV_STEP(s, s.findNetworks());
    ZV_STEP(s, s.robot.tabTo(list()));
    ZV_STEP(s, s.screen.typeText("c"));
    ZV_STEP(s, isChosen(s, QString::fromLatin1(odd.ssid))); // each byte is one character
    ZV_STEP(s, s.robot.typePassphrase("Milchkaffee"));
    ZV_STEP(s, s.robot.continueToNext());
    ZV_STEP(s, s.robot.waitForSuccess());
    ZV_STEP(s, s.robot.save());
    ZV_STEP(s, s.robot.finish());
    QCOMPARE(s.receivedSinceStatus(), typicalLines(odd.ssid, "Milchkaffee"));
    QCOMPARE(s.deviceState().saved.network, odd.ssid);
}

// The device saves the last values that it was given, and each scan makes it save.
void TestNetworkChoice::lookingForNetworksAgainReplacesTheListAndSavesWhatWasTested()
{
    Scenario s;
    ZV_STEP(s, s.findNetworks());
    ZV_STEP(s, s.robot.typePassphrase("wrong  one"));
    ZV_STEP(s, s.robot.continueToNext());
    ZV_STEP(s, s.robot.pressFocused("Go Back"));
    ZV_STEP(s, s.screen.waitFor(field().beside("Passphrase").withText("wrong  one")));
    QCOMPARE(s.deviceState().saved.passphrase, QByteArray("correct horse battery"));
    s.tolvar.reconfigure([](DeviceConfig &config) {
        config.air = {config.air.constFirst()};
        config.air.first().ssid = "Just switched on";
    });
    ZV_STEP(s, s.screen.click(button("Look for Networks...")));
    ZV_STEP(s, s.screen.waitFor(row("Just switched on")));
    ZV_STEP(s, s.robot.waitForNetworks());
    QCOMPARE(s.screen.names(row()), QStringList{"Just switched on"});
    ZV_STEP(s, s.screen.click(button("Cancel")));
    ZV_STEP(s, s.screen.waitForEnd());
    QCOMPARE(s.deviceState().saved.passphrase, QByteArray("wrong  one"));
    QCOMPARE(s.receivedSinceStatus(),
             QList<QByteArray>({"setuarttrace y", "save", "scan", "setuarttrace n", "setssid Workshop",
                                "setpass wrong  one", "test", "setuarttrace y", "save", "scan",
                                "setuarttrace n", "exit"}));
}

QTEST_GUILESS_MAIN(TestNetworkChoice)
#include "tst_networkchoice.moc"
