#pragma once

#include <QSize>

class QDialog;
class QDialogButtonBox;
class QLayout;
class QWidget;

/// The largest size that \a window may have without its frame, so that all of it is on its screen. A window
/// that is not shown yet is taken to come to its parent's screen, with a frame like its parent's.
QSize largestSize(const QWidget &window);

/// The size in which all that \a layout holds can be seen, wrapped text too: \a size where that is enough,
/// otherwise higher. Where it would be higher than \a largest, it is wider. At most \a largest, which may not
/// be enough.
QSize fittingSize(const QLayout &layout, QSize size, QSize largest);

/// Gives \a dialog, before it is shown, the size that its contents need. Where the screen is too small for
/// them, they can be scrolled. \a buttons, the last in the dialog's vertical layout, stay below.
void fitToScreen(QDialog &dialog, QDialogButtonBox &buttons);
