#pragma once

#include <QList>
#include <QString>

class QImage;
class QWidget;

/// A text or widget that a user cannot read, or not well.
struct LayoutIssue {
    QString widget; ///< its name in the form, else its class
    QString what;   ///< what is wrong, with numbers
    QString text;   ///< the text of the widget
};

/// Returns the texts of a window that do not fit or have too little contrast to their background, and the
/// widgets that extend beyond their parent or overlap another widget. \a picture is an image of the window in
/// its current state.
QList<LayoutIssue> misfitsIn(const QWidget *window, const QImage &picture);
