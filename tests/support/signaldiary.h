#pragma once

#include <QStringList>

#include "device/zvtolvar.h"

/// Notes each signal of a controller as it is emitted, by its name: a text that it carries stands behind a
/// colon, of a table its size.
class SignalDiary : public QObject
{
public:
    explicit SignalDiary(ZVTolvar *tolvar);

    /// What was noted, forgotten from here on.
    QStringList take();

private:
    template <typename Signal>
    void note(ZVTolvar *tolvar, const char *name, Signal signal);

    QStringList _lines;
};
