#pragma once

#include <utility>

#include <QMetaMethod>
#include <QStringList>

#include "device/zvtolvar.h"

/// Records each signal of a controller by name when it is emitted. A text argument follows after a colon; for
/// a table argument, its size follows.
class SignalRecorder : public QObject
{
public:
    // Each signal is connected to a slot that only qt_metacall() knows. Its number is that of the signal.
    explicit SignalRecorder(ZVTolvar *tolvar)
    {
        const QMetaObject &meta = ZVTolvar::staticMetaObject;
        for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
            if (meta.method(index).methodType() == QMetaMethod::Signal)
                QMetaObject::connect(tolvar, index, this, index, Qt::DirectConnection);
        }
    }

    /// Returns the record and clears it.
    QStringList take() { return std::exchange(_lines, {}); }

    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override
    {
        if (call != QMetaObject::InvokeMetaMethod || id < ZVTolvar::staticMetaObject.methodOffset())
            return QObject::qt_metacall(call, id, arguments);
        const QMetaMethod signal = ZVTolvar::staticMetaObject.method(id);
        QString line = QString::fromLatin1(signal.name());
        if (signal.parameterCount() == 1) { // arguments[0] is for the returned value
            const void *argument = arguments[1];
            const bool isText = signal.parameterType(0) == QMetaType::QString;
            line += ':' + (isText ? *static_cast<const QString *>(argument)
                                  : QString::number((*static_cast<const Table *>(argument))->size()));
        }
        _lines += line;
        return -1;
    }

private:
    using Table = QHash<QString, ZVScanResult> *;

    QStringList _lines;
};
