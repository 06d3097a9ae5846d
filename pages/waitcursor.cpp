#include "pages/waitcursor.h"

#include <QCursor>
#include <QGuiApplication>

void showWaitCursor()
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    QMetaObject::invokeMethod(qGuiApp, &QGuiApplication::restoreOverrideCursor, Qt::QueuedConnection);
}
