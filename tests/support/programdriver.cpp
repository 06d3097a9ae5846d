#include "tests/support/programdriver.h"

#include <QEventLoop>
#include <QTimer>

#include <algorithm>

using namespace std::chrono_literals;

bool ProgramDriver::fail(const QString &message)
{
    _failure = message;
    return false;
}

void ProgramDriver::pause(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

/// What the program shows now; null while it does not reply.
std::optional<Screen> ProgramDriver::readScreen()
{
    std::optional<Screen> now = _tree->read(_process.processId());
    if (!now || now->isEmpty() || !isOnWayland())
        return now;
    // Without a keyboard no window is ever active. The window that opened last counts as the active one.
    const auto isWindow = [](const Widget &widget) { return widget.parent < 0; };
    std::find_if(now->rbegin(), now->rend(), isWindow)->active = true;
    return now;
}

Screen ProgramDriver::screen()
{
    return isRunning() ? readScreen().value_or(Screen()) : Screen();
}

bool ProgramDriver::waitUntil(const std::function<bool()> &condition, const QString &expectation,
                              std::chrono::milliseconds timeout)
{
    if (!_tree)
        return fail(QStringLiteral("Expected: %1. But no program was started.").arg(expectation));
    const auto begin = std::chrono::steady_clock::now();
    _focusSeen = begin;
    while (true) {
        // The order matters: a condition that became true before the program ended or the timeout still
        // counts.
        const bool wasRunning = isRunning();
        const auto elapsed = std::chrono::steady_clock::now() - begin;
        if (condition())
            return true;
        if (!wasRunning)
            return fail(QStringLiteral("Expected: %1. But the program does not run.").arg(expectation));
        if (elapsed >= timeout)
            return fail(QStringLiteral("Expected: %1. After %2 ms the screen shows instead:\n%3")
                            .arg(expectation)
                            .arg(timeout.count())
                            .arg(describeScreen()));
        restoreKeyboardFocus();
        // The program needs much time to report its screen, so a long wait checks less often.
        pause(std::clamp(std::chrono::duration_cast<std::chrono::milliseconds>(elapsed / 4), 20ms, 250ms));
    }
}

bool ProgramDriver::waitUntil(const std::function<bool()> &condition, const QString &expectation)
{
    return waitUntil(condition, expectation, _timeout);
}

std::optional<Widget> ProgramDriver::find(const WidgetQuery &query)
{
    const Screen now = screen();
    const QList<int> found = query.allIn(now);
    return found.isEmpty() ? std::nullopt : std::optional(now.at(found.constFirst()));
}

std::optional<Widget> ProgramDriver::await(const WidgetQuery &query)
{
    std::optional<Widget> found;
    waitUntil([&] { return (found = find(query)).has_value(); }, query.description());
    return found;
}

bool ProgramDriver::waitFor(const WidgetQuery &query)
{
    return await(query).has_value();
}

bool ProgramDriver::waitUntilGone(const WidgetQuery &query)
{
    const auto isGone = [&] {
        if (!isRunning())
            return true;
        // An unreadable screen does not mean that the widget is gone.
        const std::optional<Screen> now = readScreen();
        return now && query.appliesTo(*now) && query.allIn(*now).isEmpty();
    };
    return waitUntil(isGone, QStringLiteral("no ") + query.description());
}

QStringList ProgramDriver::names(const WidgetQuery &query)
{
    const Screen now = screen();
    QStringList result;
    for (int i : query.allIn(now))
        result << now.at(i).name;
    return result;
}

QString ProgramDriver::text(const WidgetQuery &query)
{
    const std::optional<Widget> found = await(query);
    return found ? found->text : QString();
}

std::optional<XWindow> ProgramDriver::windowTitled(const QString &title) const
{
    std::optional<XWindow> found; // the topmost, if there are several
    for (const XWindow &window : _display->windowsOf(_process.processId())) {
        if (window.title == title)
            found = window;
    }
    return found;
}
