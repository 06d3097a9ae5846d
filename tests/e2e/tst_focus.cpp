#include <QTest>

#include "tests/e2e/scenario.h"
#include "tests/support/filecontents.h"

using namespace onscreen;

namespace
{
constexpr QLatin1String wizardTitle("ZV Tolvar Setup v2.3");
constexpr QLatin1String consoleTitle("Console Log");

/// Presses Enter and the space bar, as an impatient user does. Returns whether the keys opened no console and
/// did not end the program.
bool pressesInVain(Scenario &s)
{
    return s.screen.pressKey("Return") && s.screen.pressKey("space") &&
           !s.screen.find(window(consoleTitle)).has_value() && s.screen.isRunning();
}

/// Presses \a key once \a name has the focus.
bool pressesFocused(Scenario &s, const QString &name, const QString &key)
{
    return s.screen.waitFor(button(name).enabled().focused()) && s.screen.pressKey(key);
}

/// Presses Tab until \a widget has the focus.
bool tabsTo(Scenario &s, const WidgetQuery &widget)
{
    for (int presses = 0; presses < 12 && !s.screen.find(widget.focused()); ++presses) {
        if (!s.screen.pressKey("Tab"))
            return false;
    }
    return s.screen.waitFor(widget.focused());
}

/// Goes to the end of the first scan, with Enter alone.
bool entersTheNetworks(Scenario &s)
{
    return pressesFocused(s, "Continue", "Return") && s.screen.waitFor(label("Found Device")) &&
           pressesFocused(s, "Continue", "Return") && s.screen.waitFor(label("Found Networks:")) &&
           s.user.seesTheNetworks();
}

/// Continues from there to the test page, with this passphrase for the device's current network.
bool entersTheTest(Scenario &s, const QString &passphrase)
{
    return tabsTo(s, field().beside("Passphrase")) && s.screen.typeText(passphrase) && pressesInVain(s) &&
           s.screen.pressKey("BackSpace") && tabsTo(s, button("Continue")) && s.screen.pressKey("Return") &&
           s.screen.waitFor(label("Testing Network Settings"));
}
} // namespace

/// Tests the keyboard focus in the real program: it moves to the next useful widget, and Enter never opens
/// the console.
class TestFocus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTypicalRunByEnterSpaceAndTab();
    void nothingIsPressedWhileATestRuns();
    void afterAFailedTestEnterGoesBack();
    void aPressDuringASaveSavesAgain();
    void lookingForNetworksAgainLeavesTheNetworkFieldAlone();
    void theLogButtonKeepsTheFocus();
    void aFoundDeviceTakesNoFocusFromTheConsole();
    void anUnplugLeavesNothingToPress();
};

void TestFocus::theTypicalRunByEnterSpaceAndTab()
{
    Scenario s;
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.user.seesTheSearch());
    ZV_STEP(s, pressesInVain(s));
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, entersTheNetworks(s));
    ZV_STEP(s, s.screen.waitFor(list().focused()));
    ZV_STEP(s, s.screen.pressKey("Return"));
    QVERIFY(!s.screen.find(window(consoleTitle)));
    // When the focus moves from a button back to a field, Qt looks for the button that Enter presses from the
    // field.
    ZV_STEP(s, tabsTo(s, button("Console")));
    ZV_STEP(s, s.screen.pressKey("shift+Tab"));
    ZV_STEP(s, s.screen.waitFor(field().beside("Passphrase").focused()));
    ZV_STEP(s, s.screen.pressKey("Return"));
    QVERIFY(!s.screen.find(window(consoleTitle)));
    ZV_STEP(s, entersTheTest(s, "correct horse battery"));
    ZV_STEP(s, pressesFocused(s, "Save network configuration", "space"));
    ZV_STEP(s, s.user.sees("Configuration saved\n"));
    ZV_STEP(s, pressesFocused(s, "Done", "Return"));
    ZV_STEP(s, s.screen.waitForEnd());
    QCOMPARE(s.receivedSinceStatus(), typicalLines("Workshop", "correct horse battery"));
}

void TestFocus::nothingIsPressedWhileATestRuns()
{
    DeviceConfig slow;
    slow.delays.test = 60000; // longer than the test takes
    Scenario s(slow);
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    ZV_STEP(s, entersTheNetworks(s));
    ZV_STEP(s, entersTheTest(s, "x"));
    ZV_STEP(s, pressesInVain(s));
    ZV_STEP(s, s.screen.waitFor(label("Testing Network Settings")));
    s.tolvar.unplug();
    ZV_STEP(s, s.screen.waitUntil([&s] { return s.sessionLog().contains("****Device REMOVED"); },
                                  "the removal in the session log"));
    ZV_STEP(s, pressesInVain(s));
    ZV_STEP(s, s.screen.waitFor(label("Testing Network Settings")));
}

void TestFocus::aPressDuringASaveSavesAgain()
{
    Scenario s;
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    ZV_STEP(s, entersTheNetworks(s));
    ZV_STEP(s, entersTheTest(s, "correct horse battery"));
    ZV_STEP(s, s.screen.waitFor(button("Save network configuration").enabled().focused()));
    const XDisplay display;
    XInput hands(display, [] {}); // key presses do not wait for the program
    QVERIFY(hands.pressKey("space"));
    QVERIFY(s.deviceGets("ant_select")); // the first line of a save
    QVERIFY(hands.pressKey("space"));
    ZV_STEP(s, pressesFocused(s, "Done", "space"));
    ZV_STEP(s, s.screen.waitForEnd());
    QCOMPARE(s.receivedSinceStatus().count("save"), 3);
}

void TestFocus::afterAFailedTestEnterGoesBack()
{
    Scenario s;
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    ZV_STEP(s, entersTheNetworks(s));
    ZV_STEP(s, entersTheTest(s, "wrong"));
    ZV_STEP(s, s.user.sees("The network was found, but the passphrase was invalid\n"));
    ZV_STEP(s, pressesFocused(s, "Go Back", "Return"));
    ZV_STEP(s, s.screen.waitFor(field().beside("Passphrase").withText("wrong")));
}

void TestFocus::lookingForNetworksAgainLeavesTheNetworkFieldAlone()
{
    Scenario s;
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    ZV_STEP(s, entersTheNetworks(s));
    s.tolvar.reconfigure([](DeviceConfig &setup) { setup.delays.scan = 60000; });
    ZV_STEP(s, tabsTo(s, button("Look for Networks...")));
    ZV_STEP(s, s.screen.pressKey("space"));
    ZV_STEP(s, s.screen.waitFor(button("Look for Networks...").disabled()));
    ZV_STEP(s, s.screen.waitFor(list().focused()));
    ZV_STEP(s, s.screen.typeText("x"));
    QCOMPARE(s.screen.text(field().beside("Network")), QStringLiteral("Workshop"));
}

void TestFocus::theLogButtonKeepsTheFocus()
{
    Scenario s;
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    ZV_STEP(s, pressesFocused(s, "Continue", "Return"));
    ZV_STEP(s, tabsTo(s, button("Get Tolvar Log File")));
    ZV_STEP(s, s.screen.pressKey("Return"));
    const QString path = s.inHome("log.txt");
    ZV_STEP(s, s.screen.saveAs(path));
    ZV_STEP(s, s.user.sees("Log file written to: " + path));
    ZV_STEP(s, s.screen.waitFor(button("Get Tolvar Log File").enabled().focused()));
    QVERIFY(!contents(path).isEmpty());
}

void TestFocus::aFoundDeviceTakesNoFocusFromTheConsole()
{
    Scenario s;
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.screen.click(button("Console")));
    ZV_STEP(s, s.screen.waitFor(window(consoleTitle).active()));
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.screen.waitFor(label("***** A Tolvar has been found *****").in(wizardTitle)));
    ZV_STEP(s, s.screen.waitFor(button("Continue").enabled().in(wizardTitle)));
    ZV_STEP(s, s.screen.waitFor(window(consoleTitle).active()));
    ZV_STEP(s, s.screen.activateWindow(wizardTitle));
    ZV_STEP(s, s.screen.waitFor(button("Continue").focused()));
}

void TestFocus::anUnplugLeavesNothingToPress()
{
    Scenario s;
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.screen.waitFor(button("Continue").focused()));
    s.tolvar.unplug();
    ZV_STEP(s, s.user.seesTheSearch());
    ZV_STEP(s, pressesInVain(s));
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, pressesFocused(s, "Continue", "Return"));
    ZV_STEP(s, s.screen.waitFor(label("Found Device")));
}

QTEST_GUILESS_MAIN(TestFocus)
#include "tst_focus.moc"
