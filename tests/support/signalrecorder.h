#pragma once

#include <utility>

#include <QStringList>

#include "device/zvtolvar.h"

/// Records each signal of a controller by name when it is emitted. A text argument follows after a colon; for
/// a table argument, its size follows.
class SignalRecorder : public QObject
{
public:
    explicit SignalRecorder(ZVTolvar *tolvar);

    /// Returns the record and clears it.
    QStringList take() { return std::exchange(_lines, {}); }

    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override;

private:
    QStringList _lines;
};
