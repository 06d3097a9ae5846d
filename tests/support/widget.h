#pragma once

#include <QList>
#include <QRect>
#include <QString>

/// The kinds of widgets, in the words of a user.
enum class WidgetKind { Window, Label, Button, TextField, TextView, List, Row, ProgressBar, Other };

/// The word for \a kind in messages, for example "button".
QString nameOf(WidgetKind kind);

/// One widget at the time when it was read; later changes do not affect it.
struct Widget {
    WidgetKind kind = WidgetKind::Other;
    QString name;          ///< what a screen reader reads out, such as a label's text or a window's title
    QString text;          ///< the contents of a text field or text view; for other widgets, the name
    QRect rect;            ///< in screen coordinates, without the window manager's frame
    bool enabled = false;  ///< it can be used
    bool focused = false;  ///< it has the keyboard focus
    bool selected = false; ///< of a row
    bool active = false;   ///< of a window: it has the keyboard focus
    int parent = -1;       ///< index of its parent in its Screen; -1 for a window
    int window = -1;       ///< index of its window in its Screen; for a window, its own index
    QString object;        ///< its location on the accessibility bus

    /// One line for messages: kind, name and any unusual state.
    QString description() const;
};

/// All widgets of one program that are on the screen: windows first, each widget after its parent.
using Screen = QList<Widget>;

/// \a screen as an indented list with one line for each widget.
QString describe(const Screen &screen);
