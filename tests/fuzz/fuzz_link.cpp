#include <cstdint>

#include <QFile>
#include <QWaitCondition>

#include "tests/fuzz/fuzzing.h"
#include "tests/fuzz/linkmodel.h"
#include "tests/support/memoryport.h"
#include "tests/support/zvtolvartestpeer.h"

// Fuzzes the console's link with any bytes from the line, in every mode and state. An input is two bytes that
// select the mode and state ("31": scanning and testing, not woken yet), then the bytes from the line.

using Fuzzing::require;

// Replaces Qt's own function: this target does not test the pauses between the sent bytes.
bool QWaitCondition::wait(QMutex *, QDeadlineTimer)
{
    return false;
}

namespace
{
enum InputFlag : unsigned { Scanning = 1, Testing = 2, Handshake = 4, LogAwaited = 8 };

/// A controller with a port, and the expected results. One object serves all inputs, because creating one
/// takes longer than most inputs.
class LinkTrial
{
public:
    LinkTrial();

    /// Resets everything. \a flags, a sum of InputFlag, sets the modes and \a state the state of the link.
    void begin(unsigned flags, unsigned state);
    /// Feeds the bytes to the controller; returns false when the controller would hang at one of the replies.
    bool feed(QByteArrayView bytes);
    /// Requires that the controller is in the state of the model.
    void compare() const;
    /// Removes the device, and requires that nothing of it remains and that the next device is read
    /// correctly.
    void replug();

private:
    Q_DISABLE_COPY_MOVE(LinkTrial)

    void receive(QByteArrayView bytes)
    {
        _port.setUnread(bytes.data(), bytes.size());
        _tolvar.onReadyRead();
        require(_port.bytesAvailable() == 0, "all received bytes are read");
    }

    MemoryPort _port;
    ZVTolvar _tolvar;
    const ZVTolvarTestPeer _inside{_tolvar};
    LinkModel _model;
    QStringList _replies;
};

LinkTrial::LinkTrial()
{
    QObject::connect(&_tolvar, &ZVTolvar::responseReceived, &_tolvar,
                     [this](const QString &reply) { _replies += reply; });
}

void LinkTrial::begin(unsigned flags, unsigned state)
{
    _model = LinkModel();
    _model.state = static_cast<int>(state);
    _model.scanning = flags & Scanning;
    _model.testing = flags & Testing;
    _model.handshake = flags & Handshake;
    _model.queue = QStringList{QStringLiteral("one\r\n"), QStringLiteral("two\r\n")};

    _inside.state() = static_cast<CommState>(state);
    _inside.scanning() = _model.scanning;
    _inside.testing() = _model.testing;
    _inside.eotHandshake() = _model.handshake;
    _inside.queue() = _model.queue;
    _inside.response().clear();
    _inside.port() = &_port;
    _inside.portName() = QStringLiteral("memory");
    delete _inside.logFile();
    _inside.logFile() = nullptr;
    if (flags & LogAwaited) {
        _inside.logFile() = new QFile(QStringLiteral("/dev/null"));
        require(_inside.logFile()->open(QIODevice::WriteOnly | QIODevice::Text), "/dev/null can be opened");
    }
    _port.written.clear();
    _replies.clear();
}

bool LinkTrial::feed(QByteArrayView bytes)
{
    // The model runs first, so that each reply can be checked before the controller gets it. A line may split
    // its data anywhere. Here it is split before each mark that ends a reply.
    QList<QByteArrayView> reads;
    qsizetype begin = 0;
    for (qsizetype at = 0; at < bytes.size(); ++at) {
        if (bytes[at] == LinkModel::ETX && _model.state == IN_RESPONSE_RECEIVE) {
            if (!Fuzzing::controllerReturns(_model.replyText()))
                return false;
            reads += bytes.sliced(begin, at - begin);
            begin = at;
        }
        _model.process(bytes[at]);
    }
    reads += bytes.sliced(begin);
    for (const QByteArrayView &read : std::as_const(reads))
        receive(read);
    return true;
}

void LinkTrial::compare() const
{
    require(_inside.state() == _model.state, "the link is in the expected state");
    require(_inside.scanning() == _model.scanning && _inside.testing() == _model.testing,
            "the link is in the expected modes");
    require(_inside.response() == _model.replyText(), "the reply is collected byte by byte");
    require(_replies == _model.replies, "each reply is reported once and completely");
    require(_inside.queue() == _model.queue, "the queue contains the commands that wait for a prompt");
    require(_port.written == _model.sent, "commands are sent in order and completely");
}

void LinkTrial::replug()
{
    QextPortInfo info;
    info.portName = QStringLiteral("memory");
    _tolvar.onDeviceRemoved(info);
    require(_inside.state() == NOT_CONNECTED && !_inside.port(), "without a device there is no connection");
    require(_inside.queue().isEmpty() && !_tolvar.scanning() && !_inside.testing(),
            "no command, scan or test is in progress");
    require(_tolvar.scannedNetworks()->isEmpty() && _tolvar.systemID().isEmpty(),
            "no values of the device remain");

    _inside.port() = &_port;
    _inside.state() = WAITING_FOR_CONSOLE_PROMPT;
    receive("> get\r\n\x02<puckdata><name>clean</name><dns>1.2.3.4</dns></puckdata>\x03");
    require(_inside.state() == WAITING_FOR_CONSOLE_PROMPT, "the next device's reply has ended");
    require(_tolvar.systemID() == QLatin1String("clean") && _tolvar.dns() == QLatin1String("1.2.3.4"),
            "the next device's status is read in full");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size < 2)
        return -1;
    static LinkTrial trial;
    trial.begin(data[0] & 15U, data[1] & 7U);
    if (!trial.feed({reinterpret_cast<const char *>(data) + 2, static_cast<qsizetype>(size) - 2}))
        return -1;
    trial.compare();
    trial.replug();
    return 0;
}
