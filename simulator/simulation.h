#pragma once

#include <QObject>
#include <QProcess>

#include "simulator/conversationprinter.h"
#include "simulator/fakeusbbus.h"
#include "simulator/pluggedport.h"
#include "simulator/simoptions.h"

/// One run of a program with a simulated device, from the start to the check of both.
class Simulation : public QObject
{
    Q_OBJECT

public:
    explicit Simulation(const SimOptions &options);
    ~Simulation() override;

    /// Runs the simulation. Returns the exit status of this process.
    int run();

private:
    Q_DISABLE_COPY_MOVE(Simulation)

    bool runProgram();
    void plugIn();
    void onSignal(int number);
    void waitForPendingInput();
    void printDeviceState();
    bool isAsExpected() const;

    const SimOptions _options;
    ConversationPrinter _printer;
    FakeUsbBus _bus;
    PluggedTolvar _tolvar;
    ForeignPort _foreignFtdi;
    ForeignPort _foreignCh340;
    QProcess _program;
    bool _wasAskedToEnd = false;
};
