#pragma once

#include <QList>
#include <QRect>
#include <QString>

/// What a person would call a thing on the screen.
enum class WidgetKind { Window, Label, Button, CheckBox, TextField, TextView, List, Row, ProgressBar, Other };

/// The word for \a kind in messages, for example "button".
QString nameOf(WidgetKind kind);

/// One thing on the screen as it was when it was read; it does not follow later changes.
struct Widget {
    WidgetKind kind = WidgetKind::Other;
    QString name;          ///< what a screen reader says, such as a label's text or a window's title
    QString text;          ///< what a text field or text view holds, the name of anything else
    QRect rect;            ///< in screen coordinates, without the window manager's frame
    bool enabled = false;  ///< it can be used
    bool showing = false;  ///< it is on the screen; only rows scrolled out of sight are listed without it
    bool checked = false;  ///< of a check box
    bool focused = false;  ///< it has the keyboard
    bool selected = false; ///< of a row
    bool active = false;   ///< of a window: it has the keyboard's attention
    int parent = -1;       ///< index in its Screen of what it is in; -1 for a window
    int window = -1;       ///< index in its Screen of the window it is in; a window names itself
    QString object;        ///< where it is on the accessibility bus

    /// One line for messages: kind, name and whatever is remarkable about it.
    QString description() const;
};

/// Everything of one program that is on the screen, the windows first, each thing after what it is in.
using Screen = QList<Widget>;

/// \a screen as an indented list, one line a widget.
QString describe(const Screen &screen);
