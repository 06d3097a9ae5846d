#pragma once

#include <QImage>
#include <QStringList>

/// Returns images side by side, a row for each view and a column for each appearance, each with its caption.
/// \a folders contain the images, under the same names; the names of the folders are the captions of the
/// columns.
QImage contactSheet(const QStringList &folders);
