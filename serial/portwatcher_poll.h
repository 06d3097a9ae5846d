#pragma once

#include <QTimer>

#include "serial/portwatcher.h"

/// Compares the list of ports once a second, for systems that do not notify about ports.
class PollingPortWatcher : public PortWatcher
{
    Q_OBJECT

public:
    explicit PollingPortWatcher(QObject *parent = nullptr);

    bool start() override;

private:
    QTimer _timer;
};
