#include "tests/support/widgetquery.h"

#include <algorithm>
#include <utility>

WidgetQuery::WidgetQuery(WidgetKind kind, std::optional<QString> name)
    : _kind(kind)
    , _name(std::move(name))
{
}

WidgetQuery WidgetQuery::beside(const QString &label) const
{
    WidgetQuery query = *this;
    query._label = label;
    return query;
}

WidgetQuery WidgetQuery::in(const QString &title) const
{
    WidgetQuery query = *this;
    query._window = title;
    return query;
}

WidgetQuery WidgetQuery::with(const Condition &condition) const
{
    WidgetQuery query = *this;
    query._conditions << condition;
    return query;
}

WidgetQuery WidgetQuery::withText(const QString &text) const
{
    return with(
        {QStringLiteral("text \"%1\"").arg(text), [text](const Widget &w) { return w.text == text; }});
}

// clang-format off
WidgetQuery WidgetQuery::enabled() const { return with({QStringLiteral("enabled"), [](const Widget &w) { return w.enabled; }}); }
WidgetQuery WidgetQuery::disabled() const { return with({QStringLiteral("disabled"), [](const Widget &w) { return !w.enabled; }}); }
WidgetQuery WidgetQuery::focused() const { return with({QStringLiteral("focused"), [](const Widget &w) { return w.focused; }}); }
WidgetQuery WidgetQuery::selected() const { return with({QStringLiteral("selected"), [](const Widget &w) { return w.selected; }}); }
WidgetQuery WidgetQuery::active() const { return with({QStringLiteral("active"), [](const Widget &w) { return w.active; }}); }
// clang-format on

/// The window to search, the frontmost one if several match; -1 if there is none.
int WidgetQuery::windowIn(const Screen &screen) const
{
    int found = -1;
    for (int i = 0; i < screen.size() && screen.at(i).parent < 0; ++i) {
        if (_window ? screen.at(i).name == *_window : screen.at(i).active)
            found = i;
    }
    return found;
}

bool WidgetQuery::appliesTo(const Screen &screen) const
{
    return _kind == WidgetKind::Window || _window || windowIn(screen) >= 0;
}

QList<int> WidgetQuery::allIn(const Screen &screen) const
{
    const int window = windowIn(screen);
    QList<int> found;
    for (int i = 0; i < screen.size(); ++i) {
        // The search for a window covers all windows; other widgets must be in the window of the query.
        const Widget &widget = screen.at(i);
        if ((_kind == WidgetKind::Window || widget.window == window) && widget.kind == _kind &&
            widget.name == _name.value_or(widget.name))
            found << i;
    }
    // Rows keep the order of their list, which may run in columns.
    if (_kind != WidgetKind::Row) {
        std::stable_sort(found.begin(), found.end(), [&screen](int a, int b) {
            const QPoint first = screen.at(a).rect.topLeft();
            const QPoint second = screen.at(b).rect.topLeft();
            return std::pair(first.y(), first.x()) < std::pair(second.y(), second.x());
        });
    }
    if (_label)
        found = nearestTo(*_label, window, found, screen);
    // This filter comes last: otherwise, a field could become the nearest one only because of its state.
    found.removeIf([&](int i) {
        return !std::all_of(_conditions.cbegin(), _conditions.cend(),
                            [&](const Condition &condition) { return condition.holds(screen.at(i)); });
    });
    return found;
}

QList<int> WidgetQuery::nearestTo(const QString &label, int window, const QList<int> &candidates,
                                  const Screen &screen) const
{
    constexpr int far =
        1 << 20; // larger than any screen: everything in the label's row is nearer than everything below
    int nearest = -1;
    int shortest = 2 * far;
    for (int i = 0; i < screen.size(); ++i) {
        const Widget &anchor = screen.at(i);
        if (anchor.window != window || anchor.kind != WidgetKind::Label || anchor.name != label)
            continue;
        for (int candidate : candidates) {
            const QRect rect = screen.at(candidate).rect;
            const bool inRow =
                rect.top() <= anchor.rect.center().y() && rect.bottom() >= anchor.rect.center().y();
            const bool inColumn = rect.left() <= anchor.rect.right() && rect.right() >= anchor.rect.left();
            const int across = rect.left() - anchor.rect.right();
            const int down = rect.top() - anchor.rect.bottom();
            const int distance = inRow && across > 0 ? across : inColumn && down > 0 ? far + down : 2 * far;
            if (distance < shortest) {
                shortest = distance;
                nearest = candidate;
            }
        }
    }
    return nearest < 0 ? QList<int>() : QList<int>{nearest};
}

QString WidgetQuery::description() const
{
    QString words = nameOf(_kind);
    if (_name)
        words += QStringLiteral(" \"%1\"").arg(*_name);
    if (_label)
        words += QStringLiteral(" beside \"%1\"").arg(*_label);
    for (const Condition &condition : _conditions)
        words += QStringLiteral(" (%1)").arg(condition.words);
    if (_kind != WidgetKind::Window)
        words += _window ? QStringLiteral(" in the window \"%1\"").arg(*_window)
                         : QStringLiteral(" in the active window");
    return words;
}

// clang-format off
namespace onscreen
{
WidgetQuery window(const QString &title) { return WidgetQuery(WidgetKind::Window, title); }
WidgetQuery label(const QString &text) { return WidgetQuery(WidgetKind::Label, text); }
WidgetQuery button(const QString &text) { return WidgetQuery(WidgetKind::Button, text); }
WidgetQuery field() { return WidgetQuery(WidgetKind::TextField); }
WidgetQuery list() { return WidgetQuery(WidgetKind::List); }
WidgetQuery row() { return WidgetQuery(WidgetKind::Row); }
WidgetQuery row(const QString &text) { return WidgetQuery(WidgetKind::Row, text); }
WidgetQuery progressBar(const QString &name) { return WidgetQuery(WidgetKind::ProgressBar, name); }
} // namespace onscreen
// clang-format on
