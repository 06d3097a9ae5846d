#include <QTest>

#include "tests/e2e/scenario.h"

using namespace onscreen;

/// Tests the pointer over the real program's window while it sends commands and the window cannot respond.
class TestWaitCursor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePointerWaitsWhileCommandsAreSent();
    void thePointerDoesNotWaitForTheDevice();
};

void TestWaitCursor::thePointerWaitsWhileCommandsAreSent()
{
    Scenario s(openNetwork()); // without text fields to click: they change the pointer as well
    ZV_STEP(s, s.findDevice());
    ZV_STEP(s, s.robot.continueToNext());
    ZV_STEP(s, s.robot.waitForText("Found Device"));
    // Each button, and what the page shows once everything is sent.
    const std::pair<QString, WidgetQuery> steps[] = {
        {"Continue", button("Look for Networks...").enabled()},
        {"Look for Networks...", button("Look for Networks...").enabled()},
        {"Continue", label("Successfully tested connection to network\n")},
        {"Save network configuration", button("Done").enabled()},
    };
    for (const auto &[press, sent] : steps) {
        XDisplay display;
        const QImage before = display.pointerImage();
        display.watchPointer();
        ZV_STEP(s, s.screen.click(button(press)));
        QTRY_VERIFY2(display.hasPointerChanged(), qPrintable("expected a wait cursor after: " + press));
        ZV_STEP(s, s.screen.waitFor(sent));
        QTRY_COMPARE(display.pointerImage(), before);
    }
}

void TestWaitCursor::thePointerDoesNotWaitForTheDevice()
{
    DeviceConfig slow = openNetwork();
    slow.delays.scan = 60000; // longer than the test takes
    Scenario s(slow);
    ZV_STEP(s, s.findDevice());
    ZV_STEP(s, s.robot.continueToNext());
    ZV_STEP(s, s.robot.waitForText("Found Device"));
    const XDisplay display;
    const QImage before = display.pointerImage();
    ZV_STEP(s, s.robot.continueToNext());
    ZV_STEP(s, s.screen.waitFor(button("Look for Networks...").disabled()));
    QTRY_COMPARE(display.pointerImage(), before);
    ZV_STEP(s, s.screen.waitFor(button("Look for Networks...").disabled()));
}

QTEST_GUILESS_MAIN(TestWaitCursor)
#include "tst_waitcursor.moc"
