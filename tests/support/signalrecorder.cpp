#include "tests/support/signalrecorder.h"

#include <QMetaMethod>

// Each signal of the controller is connected to a slot that only qt_metacall() knows. The number of the slot
// is that of the signal.
SignalRecorder::SignalRecorder(ZVTolvar *tolvar)
{
    const QMetaObject &meta = ZVTolvar::staticMetaObject;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        if (meta.method(index).methodType() == QMetaMethod::Signal)
            QMetaObject::connect(tolvar, index, this, index, Qt::DirectConnection);
    }
}

int SignalRecorder::qt_metacall(QMetaObject::Call call, int id, void **arguments)
{
    if (call != QMetaObject::InvokeMetaMethod || id < ZVTolvar::staticMetaObject.methodOffset())
        return QObject::qt_metacall(call, id, arguments);
    const QMetaMethod signal = ZVTolvar::staticMetaObject.method(id);
    QString line = QString::fromLatin1(signal.name());
    if (signal.parameterCount() == 1) { // arguments[0] is for the returned value
        const void *argument = arguments[1];
        line += QLatin1Char(':');
        if (signal.parameterType(0) == QMetaType::QString)
            line += *static_cast<const QString *>(argument);
        else
            line += QString::number((*static_cast<QHash<QString, ZVScanResult> *const *>(argument))->size());
    }
    _lines += line;
    return -1;
}
