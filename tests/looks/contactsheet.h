#pragma once

#include <QImage>
#include <QStringList>

/// Pictures side by side, a row a view and a column a look, each with its caption.
/// \a folders hold the pictures, under the same names; their own names are the columns' captions.
QImage contactSheet(const QStringList &folders);
