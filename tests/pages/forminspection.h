#pragma once

#include <QStringList>
#include <QWidget>

class QLayout;
struct Form;

/// The class and the name of \a object, as an outline has them.
QString kindAndName(const QObject *object);

/// \a layout and all in it, a line each, as the tables' outlines have it.
QString outlineOf(QLayout *layout, int depth = 0);

/// The widgets that the form has made on \a widget, in that order. What the toolkit adds has no name.
QWidgetList widgetsOf(const QWidget *widget);

/// The properties in which \a widget, \a object in the tables, is other than a new widget of \a toolkitClass
/// that was given what the tables have, and no more; a sentence each.
QStringList deviations(const Form &form, const QWidget *widget, const QString &object,
                       const char *toolkitClass);

/// The properties in which \a layout and the layouts in it are other than new ones, a sentence each: margins,
/// spacing, the way a form layout treats its rows and fields, and the stretch of rows and columns.
QStringList layoutDeviations(QLayout *layout);

/// The signals of \a widget and of what the form has made on it that have more listeners than the toolkit's
/// own classes bring along, as "name.signal()", in the widgets' order.
QStringList connectionsBeyond(const Form &form, const QWidget *widget);
