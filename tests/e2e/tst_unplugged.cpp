#include <QTest>

#include "tests/e2e/scenario.h"

using namespace onscreen;

namespace
{
bool findDevice(Scenario &s)
{
    return s.findDevice() && s.screen.waitFor(button("Continue").focused());
}

bool startLogDownload(Scenario &s)
{
    s.tolvar.reconfigure([](DeviceConfig &config) { config.faults.deafTo = {"get_log_file"}; });
    const QString path = s.inHome("log.txt");
    return findDevice(s) && s.robot.continueToNext() && s.screen.click(button("Get Tolvar Log File")) &&
           s.screen.saveAs(path) && s.robot.waitForText("Writing log file to: " + path) &&
           s.deviceGets("get_log_file");
}

bool startScan(Scenario &s)
{
    s.tolvar.reconfigure(
        [](DeviceConfig &config) { config.delays.scan = 60000; }); // longer than the test takes
    return findDevice(s) && s.robot.continueToNetworks() &&
           s.screen.waitFor(progressBar("Look for Networks...")) && s.deviceGets("scan");
}

bool startTest(Scenario &s)
{
    s.tolvar.reconfigure(
        [](DeviceConfig &config) { config.delays.test = 60000; }); // longer than the test takes
    return s.findNetworks() && s.robot.continueToNext() &&
           s.screen.waitFor(progressBar("Testing Network Settings")) && s.deviceGets("test");
}

bool startSave(Scenario &s)
{
    // Waits for the first line of a save. The window does not respond meanwhile, so the test does not wait
    // for it after the key.
    const XDisplay display;
    XInput input(display);
    return s.findNetworks() && s.robot.continueToNext() &&
           s.screen.waitFor(button("Save network configuration").enabled().focused()) &&
           input.pressKey("Return") && s.deviceGets("ant_select");
}

/// Returns the name of the widget that has the focus, or "nothing" if it is not an interactive widget.
QString focus(Scenario &s)
{
    for (const WidgetKind kind :
         {WidgetKind::Button, WidgetKind::TextField, WidgetKind::List, WidgetKind::Row}) {
        if (const std::optional<Widget> widget = s.screen.find(WidgetQuery(kind).focused()))
            return widget->name;
    }
    return QStringLiteral("nothing");
}
} // namespace

/// Brings the program into the state in which the device is unplugged. Returns false if it fails.
using Step = bool (*)(Scenario &);
Q_DECLARE_METATYPE(Step)

/// Tests unplugging and replugging the device in each state of the real program.
class TestUnplugged : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theProgramRemainsUsable_data();
    void theProgramRemainsUsable();
};

void TestUnplugged::theProgramRemainsUsable_data()
{
    QTest::addColumn<Step>("reachState");
    QTest::addColumn<QString>("focused"); // after the unplugging
    QTest::addColumn<int>("pagesBack");   // to the connect page
    QTest::newRow("when the device is found") << Step(findDevice) << "nothing" << 0;
    QTest::newRow("while the device sends its log") << Step(startLogDownload) << "nothing" << 1;
    QTest::newRow("during a scan") << Step(startScan) << "Found Networks:" << 2;
    QTest::newRow("during a test") << Step(startTest) << "nothing" << 3;
    QTest::newRow("during a save") << Step(startSave) << "Save network configuration" << 3;
}

void TestUnplugged::theProgramRemainsUsable()
{
    QFETCH(Step, reachState);
    QFETCH(QString, focused);
    QFETCH(int, pagesBack);
    Scenario s(openNetwork());
    ZV_STEP(s, reachState(s));
    ZV_STEP(s, s.unplug());
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

    QVERIFY(s.tolvar.plug());
    for (int page = 0; page < pagesBack; ++page)
        ZV_STEP(s, s.robot.goBack());
    ZV_STEP(s, s.robot.waitForDevice());
    ZV_STEP(s, s.screen.click(button("Cancel")));
    ZV_STEP(s, s.screen.waitForEnd());
    QCOMPARE(s.screen.exitCode(), 0);
    QCOMPARE(s.received().constLast(), QByteArray("exit"));
}

QTEST_GUILESS_MAIN(TestUnplugged)
#include "tst_unplugged.moc"
