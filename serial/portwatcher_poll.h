#pragma once

#include <QTimer>

#include "serial/portwatcher.h"

/// Compares the list of ports once a second: for systems that give no notice, and portable to all.
class PollingPortWatcher : public PortWatcher
{
    Q_OBJECT

public:
    PollingPortWatcher();

private:
    bool begin() override;

    QTimer _timer;
};
