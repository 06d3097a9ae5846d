#include <algorithm>

#include <QTest>

#include "tests/e2e/scenario.h"

using namespace onscreen;

namespace
{
/// The kinds of widgets that can have the focus.
constexpr WidgetKind places[] = {WidgetKind::Button, WidgetKind::CheckBox, WidgetKind::TextField,
                                 WidgetKind::TextView, WidgetKind::List};
constexpr int wayAround = 12; // more than any page has

/// A user without a mouse.
class KeyboardUser
{
public:
    explicit KeyboardUser(ProgramDriver &screen)
        : _screen(screen)
    {
    }

    /// Returns the widget that has the focus.
    std::optional<Widget> focus() const
    {
        for (const WidgetKind kind : places) {
            if (std::optional<Widget> widget = _screen.find(WidgetQuery(kind).focused()))
                return widget;
        }
        return {};
    }

    /// Presses Tab until \a widget has the focus.
    bool goesTo(const WidgetQuery &widget)
    {
        if (!_screen.waitFor(widget.enabled()))
            return false;
        for (int presses = 0; presses < wayAround && !_screen.find(widget.focused()); ++presses) {
            if (!_screen.pressKey("Tab"))
                return false;
        }
        return _screen.waitFor(widget.focused());
    }

    bool presses(const QString &name) { return goesTo(button(name)) && _screen.pressKey("space"); }

    /// Replaces the content of the field that a screen reader calls \a name.
    bool types(const QString &name, const QString &text)
    {
        return goesTo(WidgetQuery(WidgetKind::TextField, name)) && _screen.pressKey("ctrl+a") &&
               _screen.typeText(text) && _screen.pressKey("Tab");
    }

    /// Goes once around from the current focus; returns what a screen reader says at each press of Tab.
    QList<Widget> goesAround()
    {
        QList<Widget> seen;
        for (int presses = 0; presses < wayAround; ++presses) {
            const std::optional<Widget> widget = focus();
            if (!widget && seen.isEmpty() && _screen.pressKey("Tab"))
                continue; // the starting widget is gone
            if (!widget || (!seen.isEmpty() && widget->rect == seen.constFirst().rect))
                break;
            seen.append(*widget);
            if (!_screen.pressKey("Tab"))
                break;
        }
        return seen;
    }

private:
    ProgramDriver &_screen;
};

QStringList namesOf(const QList<Widget> &widgets)
{
    QStringList names;
    for (const Widget &widget : widgets)
        names.append(widget.name);
    return names;
}

/// Returns whether a user who reads line by line reads \a second after \a first.
bool readsOn(const QRect &first, const QRect &second)
{
    const bool besideIt = second.top() <= first.bottom() && second.bottom() >= first.top();
    return besideIt ? second.left() > first.right() : second.top() > first.bottom();
}

/// Returns the kinds of the widgets on the current page for which a screen reader has no name.
QStringList namelessOn(ProgramDriver &screen)
{
    QStringList found;
    for (const WidgetKind kind : {WidgetKind::Button, WidgetKind::CheckBox, WidgetKind::TextField,
                                  WidgetKind::TextView, WidgetKind::List, WidgetKind::ProgressBar}) {
        for (const QString &name : screen.names(WidgetQuery(kind))) {
            if (name.trimmed().isEmpty())
                found.append(nameOf(kind));
        }
    }
    return found;
}

/// Returns the tab order of the current page where it differs from \a expected or from the reading order;
/// empty if it does not.
QString strayFrom(KeyboardUser &user, const QStringList &expected)
{
    QList<Widget> visited = user.goesAround();
    const auto first = std::find_if(visited.begin(), visited.end(), [&](const Widget &widget) {
        return widget.name == expected.constFirst();
    });
    std::rotate(visited.begin(), first, visited.end()); // the focus may have been anywhere
    if (namesOf(visited) != expected)
        return "the keyboard goes to: " + namesOf(visited).join(", ");
    for (int i = 1; i < visited.size(); ++i) {
        if (!readsOn(visited.at(i - 1).rect, visited.at(i).rect))
            return "back to " + visited.at(i).name + " from " + visited.at(i - 1).name;
    }
    return {};
}
} // namespace

/// Tests the real program with the keyboard alone and as a screen reader presents it.
class TestKeyboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTypicalRun();
    void tabFollowsTheEye();
    void everythingHasAName();
    void whatWorksHasANameToo();
    void anAmpersandInANetworksNameIsNoMnemonic_data();
    void anAmpersandInANetworksNameIsNoMnemonic();
};

void TestKeyboard::theTypicalRun()
{
    Scenario s;
    KeyboardUser user(s.screen);
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.user.seesTheDevice());
    ZV_STEP(s, user.presses("Continue"));
    ZV_STEP(s, s.screen.waitFor(label("Found Device")));
    ZV_STEP(s, user.presses("Continue"));
    ZV_STEP(s, s.user.seesTheNetworks());
    ZV_STEP(s, user.types("Network", "Old Barn"));
    ZV_STEP(s, user.types("Passphrase", "0123456789"));
    ZV_STEP(s, user.presses("Continue"));
    ZV_STEP(s, s.user.sees("Warning - Selected Network is configured for WEP security"));
    ZV_STEP(s, user.presses("Continue"));
    ZV_STEP(s, user.presses("Save network configuration"));
    ZV_STEP(s, s.user.sees("Configuration saved\n"));
    ZV_STEP(s, user.presses("Done"));
    ZV_STEP(s, s.screen.waitForEnd());
    const TolvarState state = s.deviceState();
    QCOMPARE(state.saved.network, QByteArray("Old Barn"));
    QCOMPARE(state.saved.passphrase, QByteArray("0123456789"));
}

void TestKeyboard::tabFollowsTheEye()
{
    Scenario s;
    KeyboardUser user(s.screen);
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.user.seesTheDevice());
    QCOMPARE(strayFrom(user, {"Console", "Cancel", "Continue"}), QString());
    ZV_STEP(s, user.presses("Continue"));
    ZV_STEP(s, s.screen.waitFor(label("Found Device")));
    QCOMPARE(strayFrom(user, {"Get Tolvar Log File", "Console", "Cancel", "Go Back", "Continue"}), QString());
    ZV_STEP(s, user.presses("Continue"));
    ZV_STEP(s, s.user.seesTheNetworks());
    QCOMPARE(strayFrom(user, {"Found Networks:", "Look for Networks...", "View Network Details...", "Network",
                              "Passphrase", "Console", "Cancel", "Go Back", "Continue"}),
             QString());
    ZV_STEP(s, user.types("Network", "Old Barn"));
    ZV_STEP(s, user.types("Passphrase", "0123456789"));
    ZV_STEP(s, user.presses("Continue"));
    ZV_STEP(s, s.user.sees("Warning - Selected Network is configured for WEP security"));
    QCOMPARE(strayFrom(user, {"Console", "Cancel", "Go Back", "Continue"}), QString());
    ZV_STEP(s, user.presses("Continue"));
    ZV_STEP(s, s.screen.waitFor(button("Save network configuration").enabled()));
    QCOMPARE(strayFrom(user, {"Save network configuration", "Console", "Cancel", "Go Back"}), QString());
    ZV_STEP(s, user.presses("Save network configuration"));
    ZV_STEP(s, s.screen.waitFor(button("Done").enabled().focused()));
    QCOMPARE(strayFrom(user, {"Save network configuration", "Console", "Cancel", "Go Back", "Done"}),
             QString());
}

void TestKeyboard::everythingHasAName()
{
    Scenario s;
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.user.seesTheSearch());
    QCOMPARE(s.screen.names(progressBar()), QStringList{"Identifying ZV Tolvar"});
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.user.seesTheDevice());
    QCOMPARE(namelessOn(s.screen), QStringList());
    ZV_STEP(s, s.user.goesToTheNetworks());
    ZV_STEP(s, s.user.seesTheNetworks());
    QCOMPARE(s.screen.names(list()), QStringList{"Found Networks:"});
    QCOMPARE(s.screen.names(field()), QStringList({"Network", "Passphrase"}));
    QCOMPARE(namelessOn(s.screen), QStringList());
    ZV_STEP(s, s.screen.click(button("View Network Details...")));
    ZV_STEP(s, s.screen.waitFor(window("Network Details").active()));
    QCOMPARE(namelessOn(s.screen), QStringList());
    ZV_STEP(s, s.screen.pressKey("Escape"));
    ZV_STEP(s, s.screen.waitUntilGone(window("Network Details")));
    ZV_STEP(s, s.screen.click(button("Console")));
    ZV_STEP(s, s.screen.waitFor(window("Console Log").active()));
    QCOMPARE(s.screen.names(textView()), QStringList{"Console Log"});
}

void TestKeyboard::whatWorksHasANameToo()
{
    DeviceConfig slow;
    slow.delays.scan = 60000; // longer than the test takes
    Scenario s(slow);
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.user.seesTheDevice());
    ZV_STEP(s, s.user.goesToTheNetworks());
    ZV_STEP(s, s.screen.waitFor(progressBar()));
    QCOMPARE(s.screen.names(progressBar()), QStringList{"Look for Networks..."});

    slow.delays.scan = 0;
    slow.delays.test = 60000;
    Scenario tests(slow);
    QVERIFY(tests.tolvar.plug());
    ZV_STEP(tests, tests.start());
    ZV_STEP(tests, tests.user.seesTheDevice());
    ZV_STEP(tests, tests.user.goesToTheNetworks());
    ZV_STEP(tests, tests.user.seesTheNetworks());
    ZV_STEP(tests, tests.user.goesOn());
    ZV_STEP(tests,
            tests.user.sees("Please wait while ZV Tolvar tests the connection to network: Workshop\n"));
    QCOMPARE(tests.screen.names(progressBar()), QStringList{"Testing Network Settings"});
}

void TestKeyboard::anAmpersandInANetworksNameIsNoMnemonic_data()
{
    QTest::addColumn<QString>("network");
    QTest::newRow("before the letter of no button") << "AT&T WiFi";
    QTest::newRow("before the letter of the console button") << "B&Cafe";
}

void TestKeyboard::anAmpersandInANetworksNameIsNoMnemonic()
{
    QFETCH(QString, network);
    DeviceConfig slow;
    slow.configuration.network = network.toLatin1();
    slow.delays.test = 60000; // longer than the test takes
    Scenario s(slow);
    QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    ZV_STEP(s, s.user.seesTheDevice());
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.screen.waitFor(label(network)));
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.user.seesTheNetworks());
    ZV_STEP(s, s.user.goesOn());
    ZV_STEP(s, s.user.sees("Please wait while ZV Tolvar tests the connection to network: " + network + "\n"));
    ZV_STEP(s, s.screen.pressKey("alt+c"));
    ZV_STEP(s, s.screen.waitFor(window("Console Log").active()));
}

QTEST_GUILESS_MAIN(TestKeyboard)
#include "tst_keyboard.moc"
