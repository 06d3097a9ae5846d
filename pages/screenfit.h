#pragma once

#include <QSize>

class QDialog;
class QDialogButtonBox;
class QLayout;
class QWidget;

/// The largest size without its frame that the visible \a window may have so that all of it is on its screen.
QSize largestSize(const QWidget &window);

/// The size at which everything in \a layout is visible, including wrapped text: \a size if that is enough,
/// otherwise higher. If it would be higher than \a largest, it is wider. Never exceeds \a largest, which may
/// not be enough.
QSize fittingSize(const QLayout &layout, QSize size, QSize largest);

/// Resizes \a dialog, before it is shown, to the size that its contents need. If the screen is too small for
/// them, they become scrollable. \a buttons, the last item of the dialog's vertical layout, stays below.
void fitToScreen(QDialog &dialog, QDialogButtonBox &buttons);
