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

// What each page and dialog is made of.

/// Stands for the page or dialog itself where an object is named.
constexpr char itself[] = "";

/// A text that a form gives to one of its objects, translated in the form's context without a comment.
struct FormText {
    const char *object;
    const char *property;
    const char *source;
};

/// Any other value that the form, or the constructor after it, gives. It covers a text of the form.
struct FormProperty {
    const char *object;
    const char *property;
    QVariant value;
};

/// A page or dialog as it stands when it was just made.
struct Form {
    const char *name; ///< its class, its object name and the context of its texts
    const char *base;
    std::function<std::unique_ptr<QWidget>()> make;
    QSize size;
    QStringList methods;   ///< all of them are public slots, in the order of the meta-object
    const char *outline;   ///< layouts, spacers and widgets, from top to bottom; grid and form cells first
    QList<FormText> texts; ///< in the order in which the form asks for them
    QList<FormProperty> properties;      ///< whatever is not here is as the toolkit has it
    QStringList connected = {};          ///< the signals that someone listens to from the start
    QMap<QString, QString> buddies = {}; ///< the labels that name another widget to a screen reader
};

/// Every page and dialog, and the console view. Ask once there is an application.
const QList<Form> &forms();

/// The network that the details dialog is made with. Each of its texts is another, and none is the form's.
ZVScanResult someNetwork();
