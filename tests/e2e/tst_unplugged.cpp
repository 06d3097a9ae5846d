#include <QTest>

#include "tests/e2e/scenario.h"
#include "tests/support/accessibleevents.h"

using namespace onscreen;

namespace
{
constexpr QLatin1String save("Save network configuration");

/// The device joins without a passphrase, so that a run needs only the Enter key.
DeviceConfig openNetwork()
{
    DeviceConfig setup;
    setup.configuration.network = "Library";
    return setup;
}

/// Waits until \a name has the focus and presses Enter there.
bool presses(Scenario &s, const QString &name)
{
    return s.screen.waitFor(button(name).enabled().focused()) && s.screen.pressKey("Return");
}

bool isFound(Scenario &s)
{
    return s.tolvar.plug() && s.start() && s.user.seesTheDevice() &&
           s.screen.waitFor(button("Continue").focused());
}

bool isReported(Scenario &s)
{
    return isFound(s) && presses(s, "Continue") && s.screen.waitFor(label("Found Device")) &&
           s.screen.waitFor(button("Continue").focused());
}

bool sendsItsLog(Scenario &s)
{
    s.tolvar.reconfigure([](DeviceConfig &setup) { setup.faults.deafTo = {"get_log_file"}; });
    const QString path = s.inHome("log.txt");
    return isReported(s) && s.screen.click(button("Get Tolvar Log File")) && s.screen.saveAs(path) &&
           s.screen.waitFor(label("Writing log file to: " + path)) && s.deviceGets("get_log_file");
}

bool scans(Scenario &s)
{
    return isReported(s) && presses(s, "Continue") && s.screen.waitFor(label("Found Networks:")) &&
           s.deviceGets("scan");
}

bool scansForLong(Scenario &s)
{
    s.tolvar.reconfigure(
        [](DeviceConfig &setup) { setup.delays.scan = 60000; }); // longer than the test takes
    return scans(s);
}

/// The user is about to continue with the device's current network.
bool hasScanned(Scenario &s)
{
    if (!scans(s) || !s.user.seesTheNetworks())
        return false;
    for (int presses = 0; presses < 12 && !s.screen.find(button("Continue").focused()); ++presses) {
        if (!s.screen.pressKey("Tab"))
            return false;
    }
    return s.screen.waitFor(button("Continue").focused());
}

/// The user types a passphrase.
bool isBeingConfigured(Scenario &s)
{
    return scans(s) && s.user.seesTheNetworks() && s.user.typesPassphrase("half of it");
}

bool tests(Scenario &s)
{
    return hasScanned(s) && presses(s, "Continue") && s.screen.waitFor(label("Testing Network Settings")) &&
           s.deviceGets("test");
}

bool testsForLong(Scenario &s)
{
    s.tolvar.reconfigure(
        [](DeviceConfig &setup) { setup.delays.test = 60000; }); // longer than the test takes
    return tests(s);
}

bool hasJoined(Scenario &s)
{
    return tests(s) && s.screen.waitFor(button(save).focused());
}

bool hasNotJoined(Scenario &s)
{
    s.tolvar.reconfigure([](DeviceConfig &setup) { setup.air = {}; });
    return tests(s) && s.user.sees("The network was not found\n") &&
           s.screen.waitFor(button("Go Back").focused());
}

bool hasFailed(Scenario &s)
{
    s.tolvar.reconfigure([](DeviceConfig &setup) { setup.faults.systemErrorOnTest = true; });
    return tests(s) &&
           s.screen.waitFor(WidgetQuery(WidgetKind::Label).startingWith("There was an unexpected"));
}

bool isSaving(Scenario &s)
{
    // Waits for the first line of a save. The window does not respond meanwhile, so the test does not wait
    // for it after the key.
    const XDisplay display;
    XInput hands(display, [] {});
    return hasJoined(s) && hands.pressKey("Return") && s.deviceGets("ant_select");
}

bool hasSaved(Scenario &s)
{
    return hasJoined(s) && presses(s, save) && s.screen.waitFor(button("Done").focused());
}

/// Returns the name of the widget that has the focus, or "nothing" if it is not an interactive widget.
QString focus(Scenario &s)
{
    for (const WidgetKind kind : {WidgetKind::Button, WidgetKind::CheckBox, WidgetKind::TextField,
                                  WidgetKind::TextView, WidgetKind::List, WidgetKind::Row}) {
        if (const std::optional<Widget> widget = s.screen.find(WidgetQuery(kind).focused()))
            return widget->name;
    }
    return QStringLiteral("nothing");
}
} // namespace

using Step = bool (*)(Scenario &);
Q_DECLARE_METATYPE(Step)

/// Tests unplugging the device in each state of the real program.
class TestUnplugged : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFocusIsSaneAndNothingIsAnnounced_data();
    void theFocusIsSaneAndNothingIsAnnounced();
};

void TestUnplugged::theFocusIsSaneAndNothingIsAnnounced_data()
{
    QTest::addColumn<Step>("isReached");
    QTest::addColumn<int>("announcements"); // until the unplugging
    QTest::addColumn<QString>("focused");   // after the unplugging
    QTest::newRow("when it is found") << Step(isFound) << 1 << "nothing";
    QTest::newRow("when it has reported") << Step(isReported) << 1 << "Continue";
    QTest::newRow("while it sends its log") << Step(sendsItsLog) << 1 << "nothing";
    QTest::newRow("during a scan") << Step(scansForLong) << 1 << "Found Networks:";
    QTest::newRow("after a scan") << Step(hasScanned) << 1 << "nothing";
    QTest::newRow("while the user types") << Step(isBeingConfigured) << 1 << "Passphrase";
    QTest::newRow("during a test") << Step(testsForLong) << 1 << "nothing";
    QTest::newRow("after a successful test") << Step(hasJoined) << 2 << QString(save);
    QTest::newRow("after a failed test") << Step(hasNotJoined) << 2 << "Go Back";
    QTest::newRow("after a system error") << Step(hasFailed) << 2 << "nothing";
    QTest::newRow("during a save") << Step(isSaving) << 2 << QString(save);
    QTest::newRow("after a save") << Step(hasSaved) << 3 << "Done";
}

void TestUnplugged::theFocusIsSaneAndNothingIsAnnounced()
{
    QFETCH(Step, isReached);
    QFETCH(int, announcements);
    QFETCH(QString, focused);
    const AccessibleEvents events; // created before the program, which checks whether a screen reader runs
    QVERIFY(events.isListening());
#if QT_VERSION < QT_VERSION_CHECK(6, 8, 0)
    announcements = 0; // Qt sends none on this bus
#endif
    Scenario s(openNetwork());
    ZV_STEP(s, isReached(s));
    QTRY_COMPARE(events.announcements().size(), announcements);
    s.tolvar.unplug();
    ZV_STEP(s, s.screen.waitUntil([&] { return s.sessionLog().contains("****Device REMOVED"); },
                                  "the removal in the session log"));
    QCOMPARE(focus(s), focused);
    if (focused == "nothing") {
        ZV_STEP(s, s.screen.pressKey("Return"));
        ZV_STEP(s, s.screen.pressKey("space"));
        QVERIFY(!s.screen.find(window("Console Log")));
    }
    // Tab reaches a usable widget from anywhere.
    ZV_STEP(s, s.screen.pressKey("Tab"));
    QVERIFY(focus(s) != focused);
    QVERIFY(focus(s) != "nothing");
    ZV_STEP(s, s.screen.click(button("Cancel")));
    ZV_STEP(s, s.screen.waitForEnd());
    QCOMPARE(events.announcements().size(), announcements);
}

QTEST_GUILESS_MAIN(TestUnplugged)
#include "tst_unplugged.moc"
