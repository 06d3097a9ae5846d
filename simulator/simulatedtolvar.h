#pragma once

#include <functional>

#include <QMutex>
#include <QObject>
#include <QTimer>

#include "simulator/linecutter.h"
#include "simulator/tolvarsetup.h"
#include "simulator/tolvarstate.h"

/// The device's console: bytes in, bytes out. It sleeps until a "C" or an empty line wakes it, echoes what it
/// gets, shows '>' after each command and puts its documents between 0x02 and 0x03. Lines that come while it
/// works wait.
///
/// It lives in one thread, with an event loop when it has delays; what is marked so may be called from any
/// other.
class SimulatedTolvar : public QObject
{
    Q_OBJECT

public:
    /// What a piece of the conversation is.
    enum Speech {
        HostLine, ///< a line from the host, without its end
        Reply,    ///< a document, as sent, without its marks
        Prompt,   ///< the '>' with its line end
        Trace,    ///< unframed text
        Note      ///< what happened to the device, in plain English
    };
    Q_ENUM(Speech)

    explicit SimulatedTolvar(const TolvarSetup &setup = TolvarSetup(), QObject *parent = nullptr);

    /// What it has received and holds now. Any thread.
    TolvarState state() const;
    /// What it is made of now. Any thread.
    TolvarSetup setup() const;
    /// Changes what it is made of, from the next command on; its configuration is out of reach here. Any
    /// thread.
    void alter(const std::function<void(TolvarSetup &)> &change);

    /// Whether it has read all that it got and works on nothing. From its own thread.
    bool isAtRest() const { return _input.isEmpty() && !_work.isActive(); }

public Q_SLOTS:
    /// Takes bytes from the host; answers come as transmit().
    void receive(const QByteArray &bytes);
    /// What is not saved is gone, work under way too, and the console sleeps.
    void losePower();

Q_SIGNALS:
    /// Bytes for the host.
    void transmit(const QByteArray &bytes);
    /// A piece of the conversation, to be shown to people.
    void conversation(SimulatedTolvar::Speech what, const QByteArray &text);
    /// state() tells something new.
    void changed();

private:
    Q_DISABLE_COPY_MOVE(SimulatedTolvar)

    void noteArrival(const QByteArray &bytes);
    void readInput();
    void obey(const QByteArray &line);
    void startSession();

    void tellStatus(const QByteArray &);
    void scan(const QByteArray &);
    void test(const QByteArray &);
    void tellLog(const QByteArray &);
    void setTrace(const QByteArray &value);
    void setNetwork(const QByteArray &value);
    void setPassphrase(const QByteArray &value);
    void setAntenna(const QByteArray &value);
    void setStaticIP(const QByteArray &value);
    void save(const QByteArray &);
    void leaveSetup(const QByteArray &);

    void reply(QByteArray document);
    void prompt();
    void trace(const QByteArray &text);
    void later(int milliseconds, const std::function<void()> &step);
    void change(const std::function<void(TolvarState &)> &how);

    mutable QMutex _guard; // over _setup and _state
    TolvarSetup _setup;
    TolvarState _state;

    LineCutter _arriving; // cuts the lines of the record, as they come
    LineCutter _reading;  // cuts the lines of the console, when it gets to them
    QByteArray _input;    // arrived, not read yet
    bool _isReading = false;
    QTimer _work; // runs while the console can't read
    std::function<void()> _nextStep;
};
