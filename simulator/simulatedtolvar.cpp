#include "simulator/simulatedtolvar.h"

#include <chrono>
#include <utility>

#include <QMutexLocker>
#include <QScopedValueRollback>

#include "simulator/tolvardocuments.h"

namespace
{
constexpr char replyStart = 0x02;
constexpr char replyEnd = 0x03;

qint64 monotonicNow()
{
    using namespace std::chrono;
    return duration_cast<nanoseconds>(steady_clock::now().time_since_epoch()).count();
}
} // namespace

QList<QByteArray> TolvarState::lineTexts() const
{
    QList<QByteArray> texts;
    for (const TolvarLine &line : lines)
        texts += line.text;
    return texts;
}

SimulatedTolvar::SimulatedTolvar(const DeviceConfig &config, QObject *parent)
    : QObject(parent)
    , _config(config)
    , _work(this)
{
    _state.pending = config.configuration;
    _state.saved = config.configuration;
    _state.testResult = config.testResult;
    _work.setSingleShot(true);
    _work.setTimerType(Qt::PreciseTimer);
    connect(&_work, &QTimer::timeout, this, [this] {
        std::exchange(_nextStep, nullptr)();
        readInput();
        change([this](TolvarState &state) { state.isWorking = _work.isActive(); });
    });
}

TolvarState SimulatedTolvar::state() const
{
    const QMutexLocker lock(&_guard);
    return _state;
}

DeviceConfig SimulatedTolvar::config() const
{
    const QMutexLocker lock(&_guard);
    return _config;
}

void SimulatedTolvar::reconfigure(const std::function<void(DeviceConfig &)> &change)
{
    const QMutexLocker lock(&_guard);
    change(_config);
}

void SimulatedTolvar::change(const std::function<void(TolvarState &)> &how)
{
    {
        const QMutexLocker lock(&_guard);
        how(_state);
    }
    Q_EMIT changed();
}

void SimulatedTolvar::losePower()
{
    _work.stop();
    _nextStep = nullptr;
    _input.clear();
    _arriving = LineSplitter();
    _reading = LineSplitter();
    change([](TolvarState &state) {
        state.pending = state.saved;
        state.awake = false;
        state.isWorking = false;
    });
    Q_EMIT conversation(Note, "lost power");
}

void SimulatedTolvar::receive(const QByteArray &bytes)
{
    recordArrival(bytes);
    _input += bytes;
    readInput();
}

void SimulatedTolvar::recordArrival(const QByteArray &bytes)
{
    const qint64 now = monotonicNow();
    QList<QByteArray> lines;
    change([&](TolvarState &state) {
        for (const char byte : bytes) {
            state.bytes.append(TolvarByte{byte, now});
            if (_arriving.feed(byte) != LineSplitter::LineEnd)
                continue;
            const qsizetype length = _arriving.size();
            lines += _arriving.take();
            state.lines.append(TolvarLine{lines.last(), state.bytes.size() - 1 - length});
        }
    });
    for (const QByteArray &line : std::as_const(lines))
        Q_EMIT conversation(HostLine, line);
}

void SimulatedTolvar::readInput()
{
    if (_isReading)
        return; // a reply made the host send again; the outer call's loop processes what it sent
    const QScopedValueRollback<bool> reading(_isReading, true);

    while (!_work.isActive() && !_input.isEmpty()) {
        const char byte = _input.at(0);
        _input.remove(0, 1);
        const LineSplitter::Outcome outcome = _reading.feed(byte);
        if (outcome == LineSplitter::Nothing)
            continue;
        if (state().awake)
            Q_EMIT transmit(outcome == LineSplitter::LineEnd ? QByteArray("\r\n") : QByteArray(1, byte));
        if (outcome == LineSplitter::LineEnd)
            execute(_reading.take());
    }
}

void SimulatedTolvar::runAfter(int milliseconds, const std::function<void()> &step)
{
    if (milliseconds <= 0) {
        step();
        return;
    }
    _nextStep = step;
    _work.start(milliseconds);
    change([](TolvarState &state) { state.isWorking = true; });
}

void SimulatedTolvar::prompt()
{
    const DeviceConfig now = config();
    if (now.faults.neverPrompts)
        return;
    runAfter(now.delays.prompt, [this, times = now.faults.promptsTwice ? 2 : 1] {
        for (int time = 0; time < times; ++time) {
            Q_EMIT conversation(Prompt, "\r\n>");
            Q_EMIT transmit("\r\n>");
        }
    });
}

void SimulatedTolvar::trace(const QByteArray &text)
{
    Q_EMIT conversation(Trace, text);
    Q_EMIT transmit(text + "\r\n");
}

void SimulatedTolvar::reply(QByteArray document)
{
    const TolvarFaults faults = config().faults;
    if (faults.malformedDocuments)
        document = document.left(document.lastIndexOf("</")) + "</not_its_name>";
    if (!faults.garbageBeforeReplies.isEmpty())
        trace(faults.garbageBeforeReplies);

    const bool isCut = faults.cutRepliesAfter >= 0 && faults.cutRepliesAfter < document.size();
    if (isCut)
        document.truncate(faults.cutRepliesAfter);
    Q_EMIT conversation(Reply, document);
    Q_EMIT transmit(replyStart + document);
    if (isCut)
        return;
    Q_EMIT transmit(QByteArray(1, replyEnd));
    prompt();
}
