#include <QTest>

#include "tests/e2e/scenario.h"
#include "tests/support/xdisplay.h"

using namespace onscreen;

namespace
{
/// A device with an open network: the user only presses buttons, and the pointer is never over a widget that
/// changes its shape.
DeviceConfig openNetwork()
{
    DeviceConfig setup;
    setup.configuration.network = "Library";
    return setup;
}

/// Watches the pointer's image from its construction on.
class PointerWatch
{
public:
    PointerWatch()
        : _before(_display.pointerImage())
    {
        _display.watchPointer();
    }

    /// Returns whether the pointer has had another image since the last call, however briefly.
    bool hasChanged() { return _display.hasPointerChanged(); }
    bool looksAsBefore() const { return _display.pointerImage() == _before; }

private:
    XDisplay _display;
    QImage _before;
};
} // namespace

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
    Scenario s(openNetwork());
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.user.seesTheDevice());
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.screen.waitFor(label("Found Device")));
    // Each button, and what the page shows once everything is sent.
    const std::pair<QString, WidgetQuery> steps[] = {
        {"Continue", button("Look for Networks...").enabled()},
        {"Look for Networks...", button("Look for Networks...").enabled()},
        {"Continue", label("Successfully tested connection to network\n")},
        {"Save network configuration", button("Done").enabled()},
    };
    for (const auto &[press, sent] : steps) {
        PointerWatch pointer;
        ZV_STEP(s, s.screen.click(button(press).enabled()));
        QTRY_VERIFY2(pointer.hasChanged(), qPrintable("a wait cursor was expected after: " + press));
        ZV_STEP(s, s.screen.waitFor(sent));
        QTRY_VERIFY(pointer.looksAsBefore());
    }
}

void TestWaitCursor::thePointerDoesNotWaitForTheDevice()
{
    DeviceConfig slow = openNetwork();
    slow.delays.scan = 60000; // longer than the test takes
    Scenario s(slow);
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.user.seesTheDevice());
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.screen.waitFor(label("Found Device")));
    const PointerWatch pointer;
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.screen.waitFor(button("Look for Networks...").disabled()));
    QTRY_VERIFY(pointer.looksAsBefore());
    ZV_STEP(s, s.screen.waitFor(button("Look for Networks...").disabled()));
}

QTEST_GUILESS_MAIN(TestWaitCursor)
#include "tst_waitcursor.moc"
