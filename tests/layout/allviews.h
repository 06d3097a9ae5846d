#pragma once

#include <functional>

#include <QString>

class QWidget;

/// The function that is called for each view, with its name and the window that shows it.
using ViewCallback = std::function<void(const QString &view, QWidget *window)>;

/// Takes a real wizard through all of its pages in all of their states, and through every dialog and message
/// box. No device is plugged in: the documents of the simulated device are fed to the controller directly.
void showAllViews(const ViewCallback &callback);
