#include <algorithm>

#include <QTest>

#include "tests/e2e/scenario.h"
#include "tests/support/accessibleevents.h"

using namespace onscreen;

namespace
{
constexpr QLatin1String found("***** A Tolvar has been found *****");
constexpr QLatin1String success("Successfully tested connection to network\n");
constexpr QLatin1String wrongPassphrase("The network was found, but the passphrase was invalid\n");
constexpr QLatin1String saved("Configuration saved\n");
constexpr QLatin1String wepWarning("Warning - Selected Network is configured for WEP security");

/// Presses Enter and the space bar. Returns whether the keys neither opened the console nor ended the
/// program.
bool enterAndSpaceAreHarmless(Scenario &s)
{
    return s.screen.pressKey("Return") && s.screen.pressKey("space") &&
           !s.screen.find(window("Console Log")).has_value() && s.screen.isRunning();
}

/// Goes to the end of the first scan, with Enter alone.
bool enterNetworks(Scenario &s)
{
    return s.robot.pressFocused("Continue") && s.robot.waitForText("Found Device") &&
           s.robot.pressFocused("Continue") && s.robot.waitForText("Found Networks:") &&
           s.robot.waitForNetworks();
}

/// Replaces the content of the field that a screen reader calls \a name.
bool type(Scenario &s, const QString &name, const QString &text)
{
    return s.robot.tabTo(WidgetQuery(WidgetKind::TextField, name)) && s.screen.pressKey("ctrl+a") &&
           s.screen.typeText(text);
}

bool press(Scenario &s, const QString &name)
{
    return s.robot.tabTo(button(name)) && s.screen.pressKey("space");
}

/// Returns the widgets that Tab reaches, beginning with the one named \a first. Widgets of other kinds than
/// these have no focus.
QList<Widget> tabOrder(Scenario &s, const QString &first)
{
    QList<Widget> order;
    for (int presses = 0; presses < 24; ++presses) { // twice as many as any page has
        std::optional<Widget> focus;
        for (const WidgetKind kind : {WidgetKind::Button, WidgetKind::TextField, WidgetKind::List}) {
            if (const auto widget = s.screen.find(WidgetQuery(kind).focused()))
                focus = widget;
        }
        if (focus && !order.isEmpty() && focus->name == first)
            break;
        if (focus && (!order.isEmpty() || focus->name == first))
            order += *focus;
        s.screen.pressKey("Tab");
    }
    return order;
}

/// Returns the tab order of the current page if it differs from \a expected or from the reading order; empty
/// if it does not.
QString wrongTabOrder(Scenario &s, const QStringList &expected)
{
    const QList<Widget> order = tabOrder(s, expected.constFirst());
    QStringList names;
    for (const Widget &widget : order)
        names += widget.name;
    if (names != expected)
        return "the keyboard goes to: " + names.join(", ");
    for (int i = 1; i < order.size(); ++i) {
        const QRect &previous = order.at(i - 1).rect;
        const QRect &next = order.at(i).rect;
        const bool isBeside = next.top() <= previous.bottom() && next.bottom() >= previous.top();
        if (isBeside ? next.left() <= previous.right() : next.top() <= previous.bottom())
            return "back to " + names.at(i) + " from " + names.at(i - 1);
    }
    return {};
}

/// Returns whether the screen reader got \a expected, in this order. From Qt 6.8 on, the program announces
/// exactly that. Before 6.8, Qt does not send alerts on this bus, and a screen reader is notified that labels
/// have new texts.
bool isAnnounced(const AccessibleEvents &events, const QStringList &expected)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    return events.announcements() == expected;
#else
    qsizetype from = 0;
    for (const QString &text : expected) {
        const qsizetype at = events.changedNames().indexOf(text, from);
        if (at < 0)
            return false;
        from = at + 1;
    }
    return true;
#endif
}
} // namespace

/// Tests the real program with the keyboard alone, and what it presents to a screen reader.
class TestAccessibility : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTypicalRunWithEnterSpaceAndTab();
    void theTabOrderIsTheReadingOrder();
    void aKeyPressDuringASaveSavesAgain();
    void anAmpersandInANetworkNameIsNoMnemonic();
    void theRunIsAnnounced();
};

void TestAccessibility::theTypicalRunWithEnterSpaceAndTab()
{
    Scenario s;
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.robot.waitForSearch());
    ZV_STEP(s, enterAndSpaceAreHarmless(s));
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, enterNetworks(s));
    ZV_STEP(s, s.screen.waitFor(list().focused()));
    ZV_STEP(s, s.screen.pressKey("Return"));
    QVERIFY(!s.screen.find(window("Console Log")));
    // When the focus moves from a button back to a field, Qt looks for the button that Enter presses from the
    // field.
    ZV_STEP(s, s.robot.tabTo(button("Console")));
    ZV_STEP(s, s.screen.pressKey("shift+Tab"));
    ZV_STEP(s, s.screen.waitFor(field().beside("Passphrase").focused()));
    ZV_STEP(s, enterAndSpaceAreHarmless(s));
    ZV_STEP(s, type(s, "Passphrase", "correct horse battery"));
    ZV_STEP(s, s.screen.pressKey("Return"));
    QVERIFY(!s.screen.find(window("Console Log")));
    ZV_STEP(s, s.robot.tabTo(button("Continue")));
    ZV_STEP(s, s.screen.pressKey("Return"));
    ZV_STEP(s, s.robot.pressFocused("Save network configuration", "space"));
    ZV_STEP(s, s.robot.waitForText(saved));
    ZV_STEP(s, s.robot.pressFocused("Done"));
    ZV_STEP(s, s.screen.waitForEnd());
    QCOMPARE(s.receivedSinceStatus(), typicalLines("Workshop", "correct horse battery"));
}

void TestAccessibility::theTabOrderIsTheReadingOrder()
{
    Scenario s;
    ZV_STEP(s, s.findDevice());
    QCOMPARE(wrongTabOrder(s, {"Console", "Cancel", "Continue"}), QString());
    ZV_STEP(s, press(s, "Continue"));
    ZV_STEP(s, s.robot.waitForText("Found Device"));
    QCOMPARE(wrongTabOrder(s, {"Get Tolvar Log File", "Console", "Cancel", "Go Back", "Continue"}),
             QString());
    ZV_STEP(s, press(s, "Continue"));
    ZV_STEP(s, s.robot.waitForNetworks());
    QCOMPARE(wrongTabOrder(s, {"Found Networks:", "Look for Networks...", "View Network Details...",
                               "Network", "Passphrase", "Console", "Cancel", "Go Back", "Continue"}),
             QString());
    ZV_STEP(s, type(s, "Network", "Old Barn"));
    ZV_STEP(s, type(s, "Passphrase", "0123456789"));
    ZV_STEP(s, press(s, "Continue"));
    ZV_STEP(s, s.robot.waitForText(wepWarning));
    QCOMPARE(wrongTabOrder(s, {"Console", "Cancel", "Go Back", "Continue"}), QString());
    ZV_STEP(s, press(s, "Continue"));
    ZV_STEP(s, s.screen.waitFor(button("Save network configuration").enabled()));
    QCOMPARE(wrongTabOrder(s, {"Save network configuration", "Console", "Cancel", "Go Back"}), QString());
    ZV_STEP(s, press(s, "Save network configuration"));
    ZV_STEP(s, s.screen.waitFor(button("Done").enabled().focused()));
    QCOMPARE(wrongTabOrder(s, {"Save network configuration", "Console", "Cancel", "Go Back", "Done"}),
             QString());
    QCOMPARE(s.deviceState().saved.network, QByteArray("Old Barn"));
}

void TestAccessibility::aKeyPressDuringASaveSavesAgain()
{
    Scenario s(openNetwork());
    ZV_STEP(s, s.findNetworks());
    ZV_STEP(s, s.robot.continueToNext());
    ZV_STEP(s, s.screen.waitFor(button("Save network configuration").enabled().focused()));
    const XDisplay display;
    XInput input(display); // does not wait for the program, unlike the driver
    QVERIFY(input.pressKey("space"));
    // At once, because the save takes only half a second. Qt would take the same key for auto-repeat.
    QVERIFY(input.pressKey("Return"));
    ZV_STEP(s, s.robot.pressFocused("Done", "space"));
    ZV_STEP(s, s.screen.waitForEnd());
    QCOMPARE(s.receivedSinceStatus().count("save"), 3);
}

void TestAccessibility::anAmpersandInANetworkNameIsNoMnemonic()
{
    const QString network = "B&Cafe"; // Alt+C opens the console
    DeviceConfig slow;
    slow.configuration.network = network.toLatin1();
    slow.delays.test = 60000; // longer than the test takes
    Scenario s(slow);
    ZV_STEP(s, s.findDevice());
    ZV_STEP(s, s.robot.continueToNext());
    ZV_STEP(s, s.robot.waitForText(network));
    ZV_STEP(s, s.robot.continueToNext());
    ZV_STEP(s, s.robot.continueToNext());
    ZV_STEP(s, s.robot.waitForText("Please wait while ZV Tolvar tests the connection to network: " + network +
                                   "\n"));
    ZV_STEP(s, s.screen.pressKey("alt+c"));
    ZV_STEP(s, s.screen.waitFor(window("Console Log").active()));
}

void TestAccessibility::theRunIsAnnounced()
{
    const AccessibleEvents events; // created before the program, which checks whether a screen reader runs
    QVERIFY(events.isListening());
    Scenario s;
    ZV_STEP(s, s.findNetworks());
    QTRY_VERIFY(isAnnounced(events, {found}));
    for (const char *passphrase : {"wrong", "wrong again"}) {
        ZV_STEP(s, s.robot.typePassphrase(passphrase));
        ZV_STEP(s, s.robot.continueToNext());
        ZV_STEP(s, s.robot.waitForText(wrongPassphrase));
        ZV_STEP(s, s.robot.goBack());
        ZV_STEP(s, s.robot.waitForNetworks());
    }
    ZV_STEP(s, s.robot.typePassphrase("correct horse battery"));
    ZV_STEP(s, s.robot.continueToNext());
    ZV_STEP(s, s.robot.waitForSuccess());
    ZV_STEP(s, s.robot.save());
    QTRY_VERIFY(isAnnounced(events, {found, wrongPassphrase, wrongPassphrase, success, saved}));
    ZV_STEP(s, s.robot.finish());
    QVERIFY(isAnnounced(events, {found, wrongPassphrase, wrongPassphrase, success, saved}));
}

QTEST_GUILESS_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
