#include "tests/support/programdriver.h"

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;
using onscreen::button;
using onscreen::field;
using onscreen::window;

/// Waits until the program has processed all input so far. What is read from its screen afterwards reflects
/// that input.
void ProgramDriver::settle()
{
    const auto end = std::chrono::steady_clock::now() + _timeout;
    // If there is no answer, the next step fails with a better message than this function could give.
    const auto awaitAnswer = [&](const std::function<bool()> &answer) {
        while (isRunning() && !answer() && std::chrono::steady_clock::now() < end)
            pause(2ms);
    };
    _display->pingManager();
    awaitAnswer([this] { return _display->isManagerPingAnswered(); });
    const XWindow active = _display->activeWindow();
    if (active.pid != _process.processId())
        return;
    _display->ping(active.id);
    awaitAnswer([this] { return _display->isPingAnswered(); });
}

/// If a message box and the dialog below it close together, the window manager may leave the keyboard focus
/// with no window. A user then clicks into the program's window. This function does the same if the state
/// persists.
void ProgramDriver::restoreKeyboardFocus()
{
    if (!_display)
        return;
    const auto now = std::chrono::steady_clock::now();
    if (_display->activeWindowId() != 0)
        _focusSeen = now;
    if (now - _focusSeen < 500ms)
        return;
    const QList<XWindow> windows = _display->windowsOf(_process.processId());
    if (!windows.isEmpty())
        _display->activate(windows.last().id);
    _focusSeen = now;
}

/// Whether a click at \a point would not reach \a window.
bool ProgramDriver::isCovered(const Widget &window, const QPoint &point) const
{
    const unsigned long frame = _display->frameAt(point);
    const QList<XWindow> windows = _display->windowsOf(_process.processId());
    return std::none_of(windows.cbegin(), windows.cend(),
                        [&](const XWindow &own) { return own.rect == window.rect && own.frame == frame; });
}

/// Why the widget of \a query cannot be clicked yet; empty if it can.
QString ProgramDriver::obstacleOf(const WidgetQuery &query)
{
    const Screen now = screen();
    const QList<int> found = query.allIn(now);
    if (found.isEmpty())
        return QStringLiteral("does not exist");
    const Widget &widget = now.at(found.constFirst());
    const QRect previous = std::exchange(_lastRect, widget.rect);
    if (!widget.enabled)
        return QStringLiteral("is disabled");
    if (previous != widget.rect)
        return QStringLiteral("is still moving");
    if (isCovered(now.at(widget.window), widget.rect.center()))
        return QStringLiteral("is covered by another window");
    return {};
}

/// Moves the pointer to the widget of \a query, once it can be clicked there.
bool ProgramDriver::pointAt(const WidgetQuery &query)
{
    if (lacksInput())
        return false;
    QString obstacle;
    _lastRect = QRect();
    const auto canBeClicked = [&] { return (obstacle = obstacleOf(query)).isEmpty(); };
    if (!waitUntil(canBeClicked, QStringLiteral("a click on ") + query.description()))
        return fail(QStringLiteral("It %1. %2").arg(obstacle, _failure));
    _input->movePointer(_lastRect.center());
    return true;
}

/// Waits until \a query matches an enabled widget and \a action succeeds with it.
bool ProgramDriver::act(const WidgetQuery &query, const std::function<bool(const Widget &)> &action)
{
    const auto isDone = [&] {
        const std::optional<Widget> widget = find(query.enabled());
        return widget && action(*widget);
    };
    return waitUntil(isDone, QStringLiteral("an action of ") + query.description());
}

bool ProgramDriver::click(const WidgetQuery &query)
{
    if (isOnWayland())
        return act(query, [this](const Widget &widget) { return _tree->act(widget); });
    if (!pointAt(query))
        return false;
    _input->click();
    settle();
    return true;
}

/// Repeats \a step until \a happens, as a user does who sees that nothing has happened.
bool ProgramDriver::repeat(const std::function<bool()> &step, const std::function<bool()> &happens,
                           const QString &expectation)
{
    for (int times = 0; times < 3; ++times) {
        if (!step())
            return happens();
        if (waitUntil(happens, expectation, 5s))
            return true;
    }
    return false;
}

bool ProgramDriver::doubleClick(const WidgetQuery &query, const std::function<bool()> &happens)
{
    const auto clickTwice = [&] {
        if (!pointAt(query))
            return false;
        _input->doubleClick();
        settle();
        return true;
    };
    return repeat(clickTwice, happens,
                  QStringLiteral("the effect of a double click on %1").arg(query.description()));
}

bool ProgramDriver::drag(const WidgetQuery &from, const WidgetQuery &to)
{
    if (!pointAt(from))
        return false;
    _input->press();
    const bool isThere = pointAt(to);
    _input->release();
    settle();
    return isThere;
}

bool ProgramDriver::waitForKeyboard()
{
    if (lacksInput())
        return false;
    return waitUntil([this] { return _display->activeWindow().pid == _process.processId(); },
                     QStringLiteral("a window of the program that has the focus"));
}

bool ProgramDriver::typeText(const QString &text)
{
    if (!waitForKeyboard())
        return false;
    if (!_input->typeText(text))
        return fail(QStringLiteral("No unused key is left to type \"%1\" with").arg(text));
    settle();
    return true;
}

bool ProgramDriver::pressKey(const QString &name)
{
    if (!waitForKeyboard())
        return false;
    if (!_input->pressKey(name))
        return fail(QStringLiteral("There is no key \"%1\"").arg(name));
    settle();
    return true;
}

bool ProgramDriver::fill(const WidgetQuery &field, const QString &text)
{
    if (isOnWayland())
        return act(field, [&](const Widget &widget) { return _tree->setText(widget, text); }) &&
               waitFor(field.withText(text));
    return click(field) && waitFor(field.focused()) && pressKey(QStringLiteral("ctrl+a")) &&
           (text.isEmpty() ? pressKey(QStringLiteral("Delete")) : typeText(text)) &&
           waitFor(field.withText(text));
}

bool ProgramDriver::saveAs(const QString &path)
{
    if (lacksInput())
        return false;
    const WidgetQuery save = button(QStringLiteral("Save"));
    if (!waitFor(save) || !fill(field().beside("File name:"), path))
        return false;
    const unsigned long dialog = _display->activeWindowId();
    // A completion list of similar files may open at any moment and take the click.
    return repeat([&] { return click(save); }, [&] { return _display->activeWindowId() != dialog; },
                  QStringLiteral("the end of the save dialog"));
}

/// The window with that title, once both the program and the window manager have it; null if it does not
/// appear.
std::optional<XWindow> ProgramDriver::awaitWindow(const QString &title)
{
    if (lacksInput())
        return {};
    std::optional<XWindow> found;
    const auto isManaged = [&] { return (found = windowTitled(title)).has_value(); };
    if (waitFor(window(title)))
        waitUntil(isManaged, QStringLiteral("the window \"%1\" at the window manager").arg(title));
    return found;
}

bool ProgramDriver::activateWindow(const QString &title)
{
    const auto found = awaitWindow(title);
    if (!found)
        return false;
    _display->activate(found->id);
    return waitFor(window(title).active());
}

bool ProgramDriver::closeWindow(const QString &title)
{
    const auto found = awaitWindow(title);
    if (!found)
        return false;
    _display->close(found->id);
    return waitUntilGone(window(title));
}
