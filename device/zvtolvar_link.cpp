#include <algorithm>

#include <QDeadlineTimer>
#include <QMutex>
#include <QTimer>
#include <QWaitCondition>

#include "device/zvtolvar.h"
#include "messages/diagnostics.h"
#include "serial/qextserialport.h"

// The link to the device's console: wakes the console, recognizes its prompt, sends one line at a time, and
// extracts the framed replies from its output.

namespace
{
using namespace std::chrono_literals;

constexpr auto BytePause = 10ms;        // the time that the device's console needs for each byte
constexpr auto WakeUpInterval = 1000ms; // until the first prompt

// The bytes that rows of the table name. Any other byte is part of a reply, or is ignored.
constexpr int STX = 0x02; // a reply begins
constexpr int ETX = 0x03; // a reply ends
constexpr int EOT = 0x04; // the device is ready, in the handshake that is not used
constexpr int Prompt = '>';
constexpr const char *LineEnd = "\r\n";

// In a row of the table: any value matches, or the value does not change.
constexpr int Any = -1;
constexpr int Same = -1;

// While the device scans or tests, prompts are ignored and only its framed reply counts.
enum Mode : unsigned { Scanning = 1, Testing = 2, Normal = 4, Handshake = 8, Commanded = Normal | Handshake };

/// Writes \a bytes one at a time with a pause after each, until the port does not take a byte. Returns how
/// many it took.
qsizetype sendSlowly(QextSerialPort &port, const QByteArray &bytes)
{
    QMutex mutex;
    QWaitCondition neverSignalled; // kept: sleeps, and blocks the event loop
    qsizetype taken = 0;
    for (const char byte : bytes) {
        if (port.write(&byte, 1) != 1)
            break;
        ++taken;
        const QMutexLocker locker(&mutex);
        const QDeadlineTimer pause(BytePause, Qt::PreciseTimer);
        while (neverSignalled.wait(&mutex, pause))
            ; // woken early by the system: wait for the rest of the pause
    }
    return taken;
}
} // namespace

struct ZVTolvarLink {
    using Action = void (*)(ZVTolvar &, QLatin1String received);

    struct Rule {
        unsigned modes;
        int state;
        int byte;
        int next;
        const char *log;
        Action action;

        bool fits(Mode mode, CommState inState, char received) const
        {
            return (modes & mode) && (state == Any || state == inState) &&
                   (byte == Any || byte == static_cast<unsigned char>(received));
        }
    };

    static void none(ZVTolvar &, QLatin1String) {}
    static void prompt(ZVTolvar &t, QLatin1String) { Q_EMIT t.readyForCommand(); }
    static void begin(ZVTolvar &t, QLatin1String) { t._response.clear(); }
    static void collect(ZVTolvar &t, QLatin1String received) { t._response += received; }
    static void end(ZVTolvar &t, QLatin1String) { Q_EMIT t.responseReceived(t._response); }

    static void endScan(ZVTolvar &t, QLatin1String)
    {
        Q_EMIT t.responseReceived(t._response);
        t._scanning = false;
        t.submitCommand(QStringLiteral("setuarttrace n\r\n"));
        Q_EMIT t.scanFinished();
    }

    static void endTest(ZVTolvar &t, QLatin1String)
    {
        Q_EMIT t.responseReceived(t._response);
        t._testing = false;
        Q_EMIT t.networkTestFinished();
    }

    static Mode mode(const ZVTolvar &t)
    {
        if (t._scanning)
            return Scanning;
        if (t._testing)
            return Testing;
        return t._eotHandshake ? Handshake : Normal;
    }

    static const Rule rules[];

    static qsizetype runLength(QLatin1String received);
    static void handle(ZVTolvar &t, QLatin1String received);
};

// clang-format off
// kept: the reply to a scan or test leads to IN_PROMPT without readyForCommand(); any other reply waits for the prompt.
// kept: the spelling "scaning".
constexpr ZVTolvarLink::Rule ZVTolvarLink::rules[] = { // the first matching row decides; without one, the byte is ignored
    // modes     state                               byte    next state                  log                                           action
    { Scanning,  Any,                                STX,    IN_RESPONSE_RECEIVE,        "->IN_RESPONSE_RECEIVE and Scanning",         begin   },
    { Scanning,  IN_RESPONSE_RECEIVE,                ETX,    IN_PROMPT,                  "->IN_PROMPT - end scaning",                  endScan },
    { Scanning,  IN_RESPONSE_RECEIVE,                Any,    Same,                       nullptr,                                      collect },

    { Testing,   Any,                                STX,    IN_RESPONSE_RECEIVE,        "->IN_RESPONSE_RECEIVE and testing",          begin   },
    { Testing,   IN_RESPONSE_RECEIVE,                ETX,    IN_PROMPT,                  "->IN_PROMPT - end testing",                  endTest },
    { Testing,   IN_RESPONSE_RECEIVE,                Any,    Same,                       nullptr,                                      collect },

    { Normal,    INITIAL_WAITING_FOR_CONSOLE_PROMPT, Prompt, IN_PROMPT,                  "->IN_PROMPT",                                prompt  },
    { Handshake, INITIAL_WAITING_FOR_CONSOLE_PROMPT, EOT,    WAITING_FOR_CONSOLE_PROMPT, "-> Controller: WAITING_FOR_CONSOLE_PROMPT2", none    },
    { Commanded, WAITING_FOR_CONSOLE_PROMPT,         Prompt, IN_PROMPT,                  "->IN_PROMPT",                                prompt  },
    { Commanded, IN_PROMPT,                          STX,    IN_RESPONSE_RECEIVE,        "->IN_RESPONSE_RECEIVE",                      begin   },
    { Commanded, IN_RESPONSE_RECEIVE,                ETX,    WAITING_FOR_CONSOLE_PROMPT, "->WAITING_FOR_CONSOLE_PROMPT",               end     },
    { Commanded, IN_RESPONSE_RECEIVE,                Any,    Same,                       nullptr,                                      collect },
};
// clang-format on

// How many of the received bytes the table can process at once: one byte that a row names, or all bytes up to
// the next byte that a row names.
qsizetype ZVTolvarLink::runLength(QLatin1String received)
{
    const auto isNamed = [](char c) { return c == STX || c == ETX || c == EOT || c == Prompt; };
    const auto *const next = std::find_if(received.cbegin(), received.cend(), isNamed);
    return next == received.cbegin() ? 1 : next - received.cbegin();
}

void ZVTolvarLink::handle(ZVTolvar &t, QLatin1String received)
{
    const Mode inMode = mode(t);
    for (const Rule &rule : rules) {
        if (!rule.fits(inMode, t._commState, received.front().toLatin1()))
            continue;
        if (rule.next != Same)
            t._commState = static_cast<CommState>(rule.next);
        if (rule.log)
            zvDebug() << rule.log;
        rule.action(t, received);
        return;
    }
}

void ZVTolvar::handleReceived(char c)
{
    ZVTolvarLink::handle(*this, QLatin1String(&c, 1));
}

void ZVTolvar::onReadyRead()
{
    if (!_port)
        return;
    const qint64 available = _port->bytesAvailable();
    if (available <= 0)
        return;

    QByteArray received(static_cast<int>(available), '\0');
    _port->read(received.data(), available);
    zvWarning() << received.constData(); // kept: a warning, so that the console view shows it
    // Text arrives in long runs. Processing a run byte by byte would take twice as long.
    for (QLatin1String rest(received); !rest.isEmpty();) {
        const qsizetype size = ZVTolvarLink::runLength(rest);
        ZVTolvarLink::handle(*this, rest.first(size));
        rest = rest.sliced(size);
    }
}

void ZVTolvar::submitCommand(const QString &command)
{
    _commandQueue.append(command);
    debug_commState();
    if (_commState == IN_PROMPT)
        onReadyForCommand(); // sends the oldest command, which need not be this one
}

void ZVTolvar::onReadyForCommand()
{
    if (_commandQueue.isEmpty())
        return;
    _currentCommand = _commandQueue.takeFirst();
    if (!_port)
        return; // kept: the command is lost

    const QByteArray command = _currentCommand.toLatin1();
    zvDebug() << "-->" << command;
    // The device still waits for the end of a line that was cut. Without a line end, this command would
    // become part of it, for example a passphrase part of a network name.
    const QByteArray bytes = _isLineOpen ? LineEnd + command : command;
    const qsizetype taken = sendSlowly(*_port, bytes);
    if (taken == bytes.size()) {
        _isLineOpen = false;
        return;
    }
    // The rest is not sent: the device would interpret it as a separate command.
    _isLineOpen = _isLineOpen || taken > 0;
    const qsizetype takenOfCommand = std::max<qsizetype>(0, taken - (bytes.size() - command.size()));
    zvCritical() << "The command was cut: the port took" << static_cast<int>(takenOfCommand) << "of"
                 << static_cast<int>(command.size()) << "bytes";
}

void ZVTolvar::onTimerKickOffTlovarConsole()
{
    if (_commState != CANDIDATE_DEVICE_FOUND && _commState != INITIAL_WAITING_FOR_CONSOLE_PROMPT)
        return;
    _commState = INITIAL_WAITING_FOR_CONSOLE_PROMPT;
    if (_port) {
        _port->write("C\r\n", 3); // kept: not queued, without pauses, not logged
        submitCommand(QStringLiteral("get\r\n"));
    }
    QTimer::singleShot(WakeUpInterval, this, &ZVTolvar::onTimerKickOffTlovarConsole);
}

void ZVTolvar::debug_commState()
{
    // In the order of CommState.
    static constexpr const char *names[] = {
        "NOT_CONNECTED",
        "CANDIDATE_DEVICE_FOUND",
        "WAITING_FOR_STATUS",
        "INITIAL_WAITING_FOR_CONSOLE_PROMPT",
        "WAITING_FOR_CONSOLE_PROMPT",
        "IN_PROMPT",
        "IN_RESPONSE_RECEIVE",
    };
    const auto state = static_cast<std::size_t>(_commState);
    zvDebug() << "_commState = "
              << (state < std::size(names) ? QString::fromLatin1(names[state]) : QString());
}
