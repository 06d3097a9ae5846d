#include "serial/serialline.h"

#include <chrono>
#include <memory>
#include <utility>

#include <QCoreApplication>
#include <QHash>
#include <QPointer>
#include <QSocketNotifier>

#include "serial/linesettings.h"
#include "serial/linewriter.h"
#include "serial/openrefusal.h"
#include "serial/portopening.h"
#include "serial/portwatcher.h"
#include "serial/qextserialport.h"

#ifdef Q_OS_UNIX
#include <poll.h>
#endif

// How long reading rests after it has failed: 230 bytes at 115200 baud, which the system keeps meanwhile.
static constexpr auto readRetryDelay = std::chrono::milliseconds(20);

// At 115200 baud a bridge empties its largest packet in some 20 ms, and even a busy computer gets to it
// within this time: a line that takes nothing for so long is stuck. The caller's event loop waits meanwhile.
static constexpr int patienceMs = 1000;

// The open lines by port name. Lives to the end on purpose: port objects may be destroyed with the statics.
static QHash<QString, SerialLine *> &openLines()
{
    static auto *const lines = new QHash<QString, SerialLine *>;
    return *lines;
}

// "/dev/ttyUSB0" and "ttyUSB0" are the same port.
static QString lineName(const QString &portName)
{
    const QLatin1String folder("/dev/");
    return portName.startsWith(folder) ? portName.mid(folder.size()) : portName;
}

// Whether the other end of the open line is gone.
static bool hasHungUp(const QSerialPort &port)
{
#ifdef Q_OS_UNIX
    pollfd line{port.handle(), 0, 0};
    return ::poll(&line, 1, 0) > 0; // a hang-up shows without being asked for
#else
    Q_UNUSED(port)
    return true;
#endif
}

SerialLine *SerialLine::join(const QString &portName, QextSerialPort *user, QString *refusal)
{
    const QString name = lineName(portName);
    SerialLine *line = openLines().value(name);
    if (!line) {
        auto fresh = std::unique_ptr<SerialLine>(new SerialLine(name));
        *refusal = openPort(fresh->_port);
        if (!refusal->isEmpty()) {
            reportRefusal(name, *refusal);
            return nullptr;
        }
        forgetRefusal(name);
        line = fresh.release();
        connect(&line->_port, &QSerialPort::readyRead, line, &SerialLine::onReceived);
        connect(&line->_port, &QSerialPort::errorOccurred, line, &SerialLine::onError);
        connect(&line->_hangUpWatch, &HangUpWatch::hungUp, line, &SerialLine::onHungUp);
#ifdef Q_OS_UNIX
        line->_hangUpWatch.start(line->_port.handle());
#endif
        openLines().insert(name, line);
    }
    line->_users.append(user);
    return line;
}

void SerialLine::portGone(const QString &portName)
{
    const QString name = lineName(portName);
    forgetRefusal(name);
    if (SerialLine *line = openLines().value(name))
        line->closeBy(QStringLiteral("the port was removed"));
}

// Lines that nobody leaves are closed with the application: its end takes the port's lock file away.
SerialLine::SerialLine(const QString &portName)
    : QObject(QCoreApplication::instance())
{
    _port.setPortName(portName);
    _readRetry.setSingleShot(true);
    _readRetry.setInterval(readRetryDelay);
    connect(&_readRetry, &QTimer::timeout, this, &SerialLine::resumeReading);
}

SerialLine::~SerialLine()
{
    letGo();
}

void SerialLine::leave(QextSerialPort *user)
{
    _users.removeOne(user);
    if (_users.isEmpty())
        close();
}

void SerialLine::apply(const LineSettings &settings)
{
    settings.applyTo(_port);
}

qint64 SerialLine::write(const char *data, qint64 size)
{
    // A stuck line is waited for once, not again for each byte of what follows.
    const qint64 taken = writeThrough(_port, data, size, _stuck ? 0 : patienceMs);
    _stuck = taken < size;
    return taken;
}

void SerialLine::onReceived()
{
    const QByteArray bytes = _port.readAll();
    if (bytes.isEmpty())
        return;
    for (QextSerialPort *user : std::as_const(_users))
        user->take(bytes);
    // The users are told by the event loop, not from inside the port: somebody's slot may run an event loop
    // of its own (a message box), and the port would tell of nothing more until that ends.
    QMetaObject::invokeMethod(this, &SerialLine::tellUsers, Qt::QueuedConnection);
}

void SerialLine::tellUsers()
{
    // Any slot may close or destroy any of them, or this line's port.
    const QList<QPointer<QextSerialPort>> users(_users.cbegin(), _users.cend());
    for (const QPointer<QextSerialPort> &user : users) {
        if (user)
            user->tell();
    }
}

void SerialLine::onError(QSerialPort::SerialPortError error)
{
    // A setting that the port can't do is an error too, and none of these.
    if (error != QSerialPort::ResourceError && error != QSerialPort::ReadError &&
        error != QSerialPort::DeviceNotFoundError)
        return;
    // Qt calls it an error as well when there is nothing to read after all, because another program took the
    // byte (modem managers try every port). The line stays open, whatever the error: it is over once the
    // other end is gone. Reading rests for a moment, since Qt would try again without end.
    if (hasHungUp(_port))
        onHungUp();
    else
        pauseReading();
}

void SerialLine::pauseReading()
{
    setReading(false);
    if (!_readRetry.isActive())
        _readRetry.start();
}

void SerialLine::resumeReading()
{
    setReading(true);
    onReceived(); // asking for bytes resumes the reading where Qt itself has ended it
}

void SerialLine::setReading(bool on)
{
    // Qt has no function for it. Where a port is not a descriptor, nothing is found here.
    const auto notifiers = _port.findChildren<QSocketNotifier *>();
    for (QSocketNotifier *notifier : notifiers) {
        if (notifier->type() == QSocketNotifier::Read)
            notifier->setEnabled(on);
    }
}

void SerialLine::onHungUp()
{
    closeBy(QStringLiteral("the device hung up"));
}

void SerialLine::closeBy(const QString &reason)
{
    qCritical("%s",
              qUtf8Printable(QStringLiteral("The port %1 was closed: %2").arg(_port.portName(), reason)));
    close(reason);
    PortWatcher::lineClosed(_port.portName());
}

void SerialLine::close(const QString &reason)
{
    letGo(reason);
    deleteLater(); // not at once: a user's slot, or the port itself, may be the caller
}

// Forgets the line and gives the port back to the system.
void SerialLine::letGo(const QString &reason)
{
    if (!_port.isOpen())
        return;
    openLines().remove(_port.portName());
    for (QextSerialPort *user : std::exchange(_users, {}))
        user->lineClosed(reason);
    _hangUpWatch.stop();
    _readRetry.stop();
    _port.disconnect(this);
    _port.close();
}
