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
    const auto end = std::chrono::steady_clock::now() + _patience;
    // If there is no answer, the next step fails with a better message than this function could give.
    const auto awaitAnswer = [&](const std::function<bool()> &answer) {
        while (isRunning() && !answer() && std::chrono::steady_clock::now() < end)
            pause(2ms);
    };
    _display->askManager();
    awaitAnswer([this] { return _display->hasManagerAnswered(); });
    const XWindow active = _display->activeWindow();
    if (active.pid != _process.processId())
        return;
    _display->ping(active.id);
    awaitAnswer([this] { return _display->isPingAnswered(); });
}

/// If a message box and the dialog below it close together, the window manager may leave the keyboard focus
/// with no window. A user then clicks into the program's window. This function does the same if the state
/// persists.
void ProgramDriver::fetchLostKeyboard()
{
    if (!_display)
        return;
    const auto now = std::chrono::steady_clock::now();
    const QList<XWindow> windows = _display->windowsOf(_process.processId());
    if (!isRunning() || windows.isEmpty() || _display->activeWindow().id != 0)
        _keyboardSeen = now;
    if (now - _keyboardSeen < 500ms)
        return;
    _display->activate(windows.last().id);
    _keyboardSeen = now;
}

/// Why a click at \a point would not reach \a window; empty if it would.
QString ProgramDriver::coverOf(const Widget &window, const QPoint &point) const
{
    const unsigned long frame = _display->frameAt(point);
    for (const XWindow &own : _display->windowsOf(_process.processId())) {
        if (own.rect == window.rect && own.frame == frame)
            return {};
    }
    return QStringLiteral("is covered by another window");
}

/// Turns the wheel over \a list if \a row cannot be clicked yet.
bool ProgramDriver::bringIntoSight(const Widget &row, const Widget &list)
{
    const QRect visible = row.rect & list.rect;
    if (row.showing && visible.width() > 10 && visible.height() > row.rect.height() / 2)
        return true;
    const bool isAhead = row.rect.top() >= list.rect.bottom() || row.rect.left() >= list.rect.right();
    _input->movePointer(list.rect.center());
    _input->turnWheel(isAhead ? 1 : -1);
    settle();
    return false;
}

/// The point at which to click for \a query. If there is none yet, returns null and sets \a obstacle to the
/// reason.
std::optional<QPoint> ProgramDriver::clickablePoint(const WidgetQuery &query, QString *obstacle)
{
    const Screen now = screen();
    const QList<int> found = query.allIn(now);
    if (found.isEmpty()) {
        *obstacle = QStringLiteral("is not there");
        return {};
    }
    const Widget &widget = now.at(found.constFirst());
    const QRect previous = std::exchange(_lastRect, widget.rect);
    const bool isRow = widget.kind == WidgetKind::Row;
    const QRect area = isRow ? widget.rect & now.at(widget.parent).rect : widget.rect;
    // A check box accepts clicks only on its box and its text.
    const QPoint point = widget.kind == WidgetKind::CheckBox
                             ? QPoint(area.left() + qMin(area.width(), area.height()) / 2, area.center().y())
                             : area.center();
    if (!widget.enabled && !query.wantsDisabled())
        *obstacle = QStringLiteral("is disabled");
    else if (isRow && !bringIntoSight(widget, now.at(widget.parent)))
        *obstacle = QStringLiteral("can't be scrolled to");
    else if (previous != widget.rect)
        *obstacle = QStringLiteral("does not stand still");
    else
        *obstacle = coverOf(now.at(widget.window), point);
    return obstacle->isEmpty() ? std::optional(point) : std::nullopt;
}

/// Moves the pointer to the widget of \a query, once it can be clicked there.
bool ProgramDriver::pointAt(const WidgetQuery &query)
{
    if (lacksInput())
        return false;
    std::optional<QPoint> point;
    QString obstacle;
    _lastRect = QRect();
    const auto canBeClicked = [&] { return (point = clickablePoint(query, &obstacle)).has_value(); };
    if (!waitUntil(canBeClicked, QStringLiteral("a click on ") + query.description()))
        return fail(QStringLiteral("It %1. %2").arg(obstacle, _failure));
    _input->movePointer(*point);
    // Two clicks at one point would be a double click.
    constexpr auto doubleClickTime = 600ms; // Qt uses 400 ms
    if ((*point - _lastClickPoint).manhattanLength() < 20) {
        const auto since = std::chrono::steady_clock::now() - _lastClick;
        pause(std::max(0ms, doubleClickTime - std::chrono::duration_cast<std::chrono::milliseconds>(since)));
    }
    _lastClickPoint = *point;
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
    _lastClick = std::chrono::steady_clock::now();
    return true;
}

bool ProgramDriver::doubleClick(const WidgetQuery &query, const std::function<bool()> &happens)
{
    const QString expectation = QStringLiteral("what a double click on %1 does").arg(query.description());
    for (int times = 0; times < 3; ++times) {
        if (!pointAt(query))
            return false;
        _input->doubleClick();
        settle();
        _lastClick = std::chrono::steady_clock::now();
        if (waitUntil(happens, expectation, 5s))
            return true;
    }
    return false;
}

bool ProgramDriver::drag(const WidgetQuery &from, const WidgetQuery &to)
{
    if (!pointAt(from))
        return false;
    _input->press();
    const bool isThere = pointAt(to);
    _input->release();
    settle();
    _lastClick = std::chrono::steady_clock::now();
    return isThere;
}

bool ProgramDriver::waitForKeyboard()
{
    if (lacksInput())
        return false;
    return waitUntil([this] { return _display->activeWindow().pid == _process.processId(); },
                     QStringLiteral("a window of the program that has the keyboard"));
}

bool ProgramDriver::typeText(const QString &text)
{
    if (!waitForKeyboard())
        return false;
    if (!_input->typeText(text))
        return fail(QStringLiteral("There is no key left to type \"%1\" with").arg(text));
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
    if (!waitFor(save) || !fill(field().number(1), path))
        return false;
    const unsigned long dialog = _display->activeWindow().id;
    const auto isAnswered = [&] { return _display->activeWindow().id != dialog; };
    // A completion list of similar files may open at any moment and take the click: try again then.
    const auto end = std::chrono::steady_clock::now() + _patience;
    while (std::chrono::steady_clock::now() < end) {
        if (!click(save))
            return isAnswered();
        if (waitUntil(isAnswered, QStringLiteral("the end of the save dialog"), 1s))
            return true;
    }
    return false;
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

bool ProgramDriver::dragWindow(const QString &title, const QPoint &corner)
{
    if (!activateWindow(title))
        return false;
    const auto found = windowTitled(title);
    if (!found)
        return fail(QStringLiteral("The window \"%1\" is gone").arg(title));
    const QPoint handle(found->rect.center().x(), (found->frameRect.top() + found->rect.top()) / 2);
    const QPoint target = handle + corner - found->rect.topLeft();
    // The window manager grabs a window only after some movement, so the loop continues to move until the
    // window has arrived. The window manager reports the new position to the program when the button is
    // released.
    _input->movePointer(handle);
    _input->press();
    const auto hasCome = [&] {
        _input->movePointer(target + QPoint(1, 1));
        _input->movePointer(target);
        const auto now = windowTitled(title);
        return now && now->rect.topLeft() == corner;
    };
    const auto isTold = [&] {
        const auto now = find(window(title).active());
        return now && now->rect.topLeft() == corner;
    };
    const QString expectation = QStringLiteral("the window \"%1\" can be dragged to %2, %3")
                                    .arg(title)
                                    .arg(corner.x())
                                    .arg(corner.y());
    const bool came = waitUntil(hasCome, expectation);
    _input->release();
    return came && waitUntil(isTold, expectation);
}
