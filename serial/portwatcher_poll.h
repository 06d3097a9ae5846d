#pragma once

#include <QTimer>

#include "serial/portwatcher.h"

/// Watches by comparing the list of ports once a second, for systems that don't tell.
class PollingPortWatcher : public PortWatcher
{
    Q_OBJECT

public:
    explicit PollingPortWatcher(QObject *parent = nullptr);

    bool arm() override;

private:
    QTimer _timer;
};
