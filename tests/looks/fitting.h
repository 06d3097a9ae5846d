#pragma once

#include <QList>
#include <QString>

class QImage;
class QWidget;

/// Something that a user can't read, or not well.
struct Misfit {
    QString widget; ///< its name in the form, else its class
    QString what;   ///< what is wrong, with figures
    QString text;   ///< what it says
};

/// What of a window's texts doesn't fit or can't be told from what is behind it, and what stands outside of
/// its parent or over something else. \a picture is one of the window as it is.
QList<Misfit> misfitsIn(const QWidget *window, const QImage &picture);
