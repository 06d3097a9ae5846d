#include "tests/support/widgetquery.h"

#include <QStringList>

#include <algorithm>
#include <utility>

namespace
{

/// Returns \a query with \a change applied.
template <typename Change>
WidgetQuery changed(WidgetQuery query, Change change)
{
    change(query);
    return query;
}

} // namespace

WidgetQuery::WidgetQuery(WidgetKind kind, std::optional<QString> name)
    : _kind(kind)
    , _name(std::move(name))
{
}

// clang-format off
WidgetQuery WidgetQuery::startingWith(const QString &start) const { return changed(*this, [&](auto &q) { q._start = start; }); }
WidgetQuery WidgetQuery::withText(const QString &text) const { return changed(*this, [&](auto &q) { q._text = text; }); }
WidgetQuery WidgetQuery::beside(const QString &label) const { return changed(*this, [&](auto &q) { q._label = label; }); }
WidgetQuery WidgetQuery::number(int number) const { return changed(*this, [&](auto &q) { q._number = number; }); }
WidgetQuery WidgetQuery::in(const QString &title) const { return changed(*this, [&](auto &q) { q._window = title; }); }
WidgetQuery WidgetQuery::enabled() const { return changed(*this, [](auto &q) { q._enabled = true; }); }
WidgetQuery WidgetQuery::disabled() const { return changed(*this, [](auto &q) { q._enabled = false; }); }
WidgetQuery WidgetQuery::checked() const { return changed(*this, [](auto &q) { q._checked = true; }); }
WidgetQuery WidgetQuery::unchecked() const { return changed(*this, [](auto &q) { q._checked = false; }); }
WidgetQuery WidgetQuery::focused() const { return changed(*this, [](auto &q) { q._focused = true; }); }
WidgetQuery WidgetQuery::selected() const { return changed(*this, [](auto &q) { q._selected = true; }); }
WidgetQuery WidgetQuery::active() const { return changed(*this, [](auto &q) { q._active = true; }); }
// clang-format on

bool WidgetQuery::isMeant(const Widget &widget) const
{
    return widget.kind == _kind && widget.name == _name.value_or(widget.name) &&
           widget.name.startsWith(_start.value_or(QString()));
}

bool WidgetQuery::isAsWanted(const Widget &widget) const
{
    return widget.text == _text.value_or(widget.text) &&
           widget.enabled == _enabled.value_or(widget.enabled) &&
           widget.checked == _checked.value_or(widget.checked) &&
           widget.focused == _focused.value_or(widget.focused) &&
           widget.selected == _selected.value_or(widget.selected) &&
           widget.active == _active.value_or(widget.active);
}

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

bool WidgetQuery::canTellFrom(const Screen &screen) const
{
    return _kind == WidgetKind::Window || _window || windowIn(screen) >= 0;
}

QList<int> WidgetQuery::allIn(const Screen &screen) const
{
    const int window = windowIn(screen);
    QList<int> found;
    for (int i = 0; i < screen.size(); ++i) {
        // The search for a window covers all windows; other widgets must be in the window of the query.
        if ((_kind == WidgetKind::Window || screen.at(i).window == window) && isMeant(screen.at(i)))
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
    if (_number)
        found = found.mid(*_number - 1, 1);
    // This filter comes last: otherwise, a field could become the nearest one only because of its state.
    const auto isOtherwise = [&](int i) { return !isAsWanted(screen.at(i)); };
    found.removeIf(isOtherwise);
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
    const auto add = [&words](const char *format, const std::optional<QString> &value) {
        if (value)
            words += QString::fromLatin1(format).arg(*value);
    };
    add(" \"%1\"", _name);
    add(" starting with \"%1\"", _start);
    add(" holding \"%1\"", _text);
    add(" beside \"%1\"", _label);
    if (_number)
        words += QStringLiteral(" number %1").arg(*_number);
    QStringList states;
    const auto addState = [&states](std::optional<bool> state, const char *yes, const char *no) {
        if (state)
            states << QString::fromLatin1(*state ? yes : no);
    };
    addState(_enabled, "enabled", "disabled");
    addState(_checked, "checked", "unchecked");
    addState(_focused, "focused", "not focused");
    addState(_selected, "selected", "not selected");
    addState(_active, "active", "not active");
    if (!states.isEmpty())
        words += QStringLiteral(" (%1)").arg(states.join(QStringLiteral(", ")));
    if (_kind != WidgetKind::Window)
        words += _window ? QStringLiteral(" in the window \"%1\"").arg(*_window)
                         : QStringLiteral(" in the active window");
    return words;
}

// clang-format off
namespace onscreen
{
WidgetQuery window(const QString &title) { return WidgetQuery(WidgetKind::Window, title); }
WidgetQuery label() { return WidgetQuery(WidgetKind::Label); }
WidgetQuery label(const QString &text) { return WidgetQuery(WidgetKind::Label, text); }
WidgetQuery button(const QString &text) { return WidgetQuery(WidgetKind::Button, text); }
WidgetQuery checkBox(const QString &text) { return WidgetQuery(WidgetKind::CheckBox, text); }
WidgetQuery field() { return WidgetQuery(WidgetKind::TextField); }
WidgetQuery textView() { return WidgetQuery(WidgetKind::TextView); }
WidgetQuery list() { return WidgetQuery(WidgetKind::List); }
WidgetQuery row() { return WidgetQuery(WidgetKind::Row); }
WidgetQuery row(const QString &text) { return WidgetQuery(WidgetKind::Row, text); }
WidgetQuery progressBar() { return WidgetQuery(WidgetKind::ProgressBar); }
} // namespace onscreen
// clang-format on
