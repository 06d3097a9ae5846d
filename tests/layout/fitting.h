#pragma once

#include <QStringList>

class QImage;
class QWidget;

/// Returns the texts of a window that do not fit or have too little contrast to their background, and the
/// widgets that extend beyond their parent or overlap another widget. Each entry has the widget's object name
/// (its class if it has none), what is wrong, and the text. \a image is a screenshot of the window in its
/// current state.
QStringList layoutIssues(const QWidget *window, const QImage &image);
