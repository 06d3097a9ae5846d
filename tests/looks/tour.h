#pragma once

#include <functional>

#include <QString>

class QWidget;

/// Called with each view: its name, and the window that shows it.
using Onlooker = std::function<void(const QString &view, QWidget *window)>;

/// Takes a real wizard through all of its pages in all of their states, and through every dialog and message
/// box. Nothing is plugged in: the simulated device's documents are read out to it.
void tour(const Onlooker &onlooker);
