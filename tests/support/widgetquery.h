#pragma once

#include "tests/support/widget.h"

#include <optional>

/// Says which thing on the screen is meant, in the words of someone who looks at it:
/// `button("Continue").enabled()`, `field().beside("Passphrase")`, `row("home").in("ZV Tolvar Setup v2.3")`.
/// Names are compared whole and exactly, blanks included.
class WidgetQuery
{
public:
    explicit WidgetQuery(WidgetKind kind, std::optional<QString> name = {});

    // Which thing is meant:

    /// Only where the name begins with \a start.
    WidgetQuery startingWith(const QString &start) const;
    /// Only the nearest to the right of the label named \a label; if its row has none, the nearest below it.
    WidgetQuery beside(const QString &label) const;
    /// Only the \a number th of these from the top, and from the left in one row; the first is 1. Rows of a
    /// list count in the list's order.
    WidgetQuery number(int number) const;
    /// In the window titled \a title. Without this: in the program's active window.
    WidgetQuery in(const QString &title) const;

    // How it has to be:

    /// Only if it holds exactly \a text.
    WidgetQuery withText(const QString &text) const;
    WidgetQuery enabled() const;
    WidgetQuery disabled() const;
    WidgetQuery checked() const;
    WidgetQuery unchecked() const;
    WidgetQuery focused() const;
    WidgetQuery selected() const;
    /// Of a window: only if it has the keyboard.
    WidgetQuery active() const;

    /// Indexes in \a screen of all that fit, from top to bottom.
    QList<int> allIn(const Screen &screen) const;
    /// False if \a screen does not say whether something fits, because the window to look in has yet to show.
    bool canTellFrom(const Screen &screen) const;
    /// Whether the query itself asks for something disabled.
    bool wantsDisabled() const { return _enabled == false; }
    WidgetKind kind() const { return _kind; }
    /// The query in words, for messages.
    QString description() const;

private:
    bool isMeant(const Widget &widget) const;
    bool isAsWanted(const Widget &widget) const;
    int windowIn(const Screen &screen) const;
    QList<int> nearestTo(const QString &label, int window, const QList<int> &candidates,
                         const Screen &screen) const;

    WidgetKind _kind;
    std::optional<QString> _name;
    std::optional<QString> _start;
    std::optional<QString> _text;
    std::optional<QString> _label;
    std::optional<QString> _window;
    std::optional<int> _number;
    std::optional<bool> _enabled;
    std::optional<bool> _checked;
    std::optional<bool> _focused;
    std::optional<bool> _selected;
    std::optional<bool> _active;
};

/// The words a query begins with.
namespace onscreen
{
WidgetQuery window(const QString &title);
WidgetQuery label();
WidgetQuery label(const QString &text);
WidgetQuery button(const QString &text);
WidgetQuery checkBox(const QString &text);
WidgetQuery field();
WidgetQuery textView();
WidgetQuery list();
WidgetQuery row();
WidgetQuery row(const QString &text);
WidgetQuery progressBar();
} // namespace onscreen
