#pragma once

#include "tests/support/widget.h"

#include <functional>
#include <optional>

/// Describes a widget on the screen in the words of a user: `button("Continue").enabled()`,
/// `field().beside("Passphrase")`, `row("home").in("ZV Tolvar Setup v2.3")`. Names must match exactly and as
/// a whole, spaces included.
class WidgetQuery
{
public:
    explicit WidgetQuery(WidgetKind kind, std::optional<QString> name = {});

    // Which widget is meant:

    /// Only the nearest one to the right of the label \a label; if its row has none, the nearest one below
    /// it.
    WidgetQuery beside(const QString &label) const;
    /// In the window titled \a title. The default is the program's active window.
    WidgetQuery in(const QString &title) const;

    // Which state it must have:

    /// Only if its contents are exactly \a text.
    WidgetQuery withText(const QString &text) const;
    WidgetQuery enabled() const;
    WidgetQuery disabled() const;
    WidgetQuery focused() const;
    WidgetQuery selected() const;
    /// For a window: only if it has the keyboard focus.
    WidgetQuery active() const;

    /// The indexes in \a screen of all matches, from top to bottom.
    QList<int> allIn(const Screen &screen) const;
    /// Returns false if the query is for the active window and \a screen has none: a missing match then means
    /// nothing.
    bool appliesTo(const Screen &screen) const;
    /// The query in words, for messages.
    QString description() const;

private:
    /// A state that the widget must have.
    struct Condition {
        QString words;
        std::function<bool(const Widget &)> holds;
    };

    WidgetQuery with(const Condition &condition) const;
    int windowIn(const Screen &screen) const;
    QList<int> nearestTo(const QString &label, int window, const QList<int> &candidates,
                         const Screen &screen) const;

    WidgetKind _kind;
    std::optional<QString> _name;
    std::optional<QString> _label;
    std::optional<QString> _window;
    QList<Condition> _conditions;
};

/// The functions with which a query begins.
namespace onscreen
{
WidgetQuery window(const QString &title);
WidgetQuery label(const QString &text);
WidgetQuery button(const QString &text);
WidgetQuery field();
WidgetQuery list();
WidgetQuery row();
WidgetQuery row(const QString &text);
WidgetQuery progressBar(const QString &name);
} // namespace onscreen
