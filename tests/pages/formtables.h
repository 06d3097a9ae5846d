#pragma once

#include <functional>
#include <memory>

#include <QList>
#include <QMap>
#include <QSize>
#include <QStringList>
#include <QVariant>
#include <QWidget>

#include "device/zvscanresult.h"

// The expected content of each page and dialog.

/// Stands for the page or dialog itself where an object is named.
constexpr char itself[] = "";

/// A text that a form sets on one of its objects, translated in the form's context without a comment.
struct FormText {
    const char *object;
    const char *property;
    const char *source;
};

/// Any other value that the form, or the constructor after it, sets. It has priority over a text of the form.
struct FormProperty {
    const char *object;
    const char *property;
    QVariant value;
};

/// A page or dialog as it is right after its construction.
struct Form {
    const char *name; ///< its class, its object name and the context of its texts
    const char *base;
    std::function<std::unique_ptr<QWidget>()> make;
    QSize size;
    QStringList methods;   ///< all of them are public slots, in the order of the meta-object
    const char *outline;   ///< layouts, spacers and widgets, from top to bottom; grid and form cells first
    QList<FormText> texts; ///< in the order in which the form sets them
    QList<FormProperty> properties;      ///< everything that is not listed has Qt's default
    QStringList connected = {};          ///< the signals that are connected from the start
    QMap<QString, QString> buddies = {}; ///< the labels that name another widget for a screen reader
};

/// Returns every page and dialog, and the console view. Requires an application object.
const QList<Form> &forms();

/// Returns the network that the details dialog is created with. All of its texts are different, and none is
/// in the form.
ZVScanResult someNetwork();
