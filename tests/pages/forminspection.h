#pragma once

#include <QStringList>
#include <QWidget>

class QLayout;
struct Form;

/// Returns the class and the name of \a object, in the notation of the outlines.
QString kindAndName(const QObject *object);

/// Returns \a layout and its content, one line per item, in the notation of the tables' outlines.
QString outlineOf(QLayout *layout, int depth = 0);

/// Returns the widgets that the form has created on \a widget, in that order. Widgets that Qt adds have no
/// name.
QWidgetList widgetsOf(const QWidget *widget);

/// Returns the properties in which \a widget, \a object in the tables, differs from a new widget of \a
/// toolkitClass with exactly the values in the tables; one sentence each.
QStringList deviations(const Form &form, const QWidget *widget, const QString &object,
                       const char *toolkitClass);

/// Returns the properties in which \a layout and its nested layouts differ from new ones, one sentence each:
/// margins, spacing, the way a form layout handles its rows and fields, and the stretch of rows and columns.
QStringList layoutDeviations(QLayout *layout);

/// Returns the signals of \a widget, and of what the form has created on it, that have more connections than
/// Qt's own classes make; as "name.signal()", in the widgets' order.
QStringList connectionsBeyond(const Form &form, const QWidget *widget);
