#pragma once

#include <csignal>
#include <initializer_list>
#include <memory>

#include <QList>
#include <QObject>

class QSocketNotifier;

/// Emits a Qt signal, in the event loop, for each system signal. Only one may exist in a process.
class UnixSignals : public QObject
{
    Q_OBJECT

public:
    explicit UnixSignals(std::initializer_list<int> numbers);
    /// Restores the default action of each signal.
    ~UnixSignals() override;

Q_SIGNALS:
    void arrived(int number);

private:
    Q_DISABLE_COPY_MOVE(UnixSignals)

    const QList<int> _numbers;
    int _pipe[2] = {-1, -1};
    std::unique_ptr<QSocketNotifier> _readable;
};
