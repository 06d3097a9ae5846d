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
#include "serial/openerror.h"
#include "serial/portopening.h"
#include "serial/portwatcher.h"
#include "serial/qextserialport.h"

#ifdef Q_OS_UNIX
#include <poll.h>
#endif

// How long reading pauses after an error: 230 bytes at 115200 baud, which the system buffers in the meantime.
static constexpr auto readRetryDelay = std::chrono::milliseconds(20);

// At 115200 baud, a bridge empties its largest packet in about 20 ms, and even a busy computer serves it
// within this time. A line that accepts nothing for so long is stuck. The caller's event loop is blocked
// during the wait.
static constexpr int writeTimeoutMs = 1000;

// The open lines by port name. Intentional leak: port objects may be destroyed together with statics.
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
    return ::poll(&line, 1, 0) > 0; // poll() always reports a hang-up
#else
    Q_UNUSED(port)
    return true;
#endif
}

SerialLine *SerialLine::acquire(const QString &portName, QextSerialPort *user, QString *openError)
{
    const QString name = lineName(portName);
    SerialLine *line = openLines().value(name);
    if (!line) {
        auto fresh = std::unique_ptr<SerialLine>(new SerialLine(name));
        *openError = openPort(fresh->_port);
        if (!openError->isEmpty()) {
            logOpenError(name, *openError);
            return nullptr;
        }
        forgetOpenError(name);
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

void SerialLine::portRemoved(const QString &portName)
{
    const QString name = lineName(portName);
    forgetOpenError(name);
    if (SerialLine *line = openLines().value(name))
        line->closeUnrequested(QStringLiteral("the port was removed"));
}

// The application's destructor closes lines that are still in use, which removes the port's lock file.
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
    closePort();
}

void SerialLine::release(QextSerialPort *user)
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
    // Wait for a stuck line once, not again for each of the following bytes.
    const qint64 taken = writeThrough(_port, data, size, _stuck ? 0 : writeTimeoutMs);
    _stuck = taken < size;
    return taken;
}

void SerialLine::onReceived()
{
    const QByteArray bytes = _port.readAll();
    if (bytes.isEmpty())
        return;
    for (QextSerialPort *user : std::as_const(_users))
        user->appendReceived(bytes);
    // The event loop notifies the users, not the port's own signal: a slot may run a nested event loop (a
    // message box), and the port would emit nothing more until that loop ends.
    QMetaObject::invokeMethod(this, &SerialLine::notifyUsers, Qt::QueuedConnection);
}

void SerialLine::notifyUsers()
{
    // Any slot may close or destroy any of the users, or this line's port.
    const QList<QPointer<QextSerialPort>> users(_users.cbegin(), _users.cend());
    for (const QPointer<QextSerialPort> &user : users) {
        if (user)
            user->notifyReadyRead();
    }
}

void SerialLine::onError(QSerialPort::SerialPortError error)
{
    // A setting that the port does not support is an error too, but none of these.
    if (error != QSerialPort::ResourceError && error != QSerialPort::ReadError &&
        error != QSerialPort::DeviceNotFoundError)
        return;
    // Qt also reports an error if there is nothing to read after all, because another program took the byte
    // (modem managers try every port). Whatever the error, the line stays open until the other end is gone.
    // Reading pauses for a moment, because Qt would retry endlessly.
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
    onReceived(); // requesting bytes resumes reading if Qt itself has stopped it
}

void SerialLine::setReading(bool on)
{
    // Qt has no function for this. Where ports are not file descriptors, there is no notifier.
    const auto notifiers = _port.findChildren<QSocketNotifier *>();
    for (QSocketNotifier *notifier : notifiers) {
        if (notifier->type() == QSocketNotifier::Read)
            notifier->setEnabled(on);
    }
}

void SerialLine::onHungUp()
{
    closeUnrequested(QStringLiteral("the device hung up"));
}

void SerialLine::closeUnrequested(const QString &reason)
{
    qCritical("%s",
              qUtf8Printable(QStringLiteral("The port %1 was closed: %2").arg(_port.portName(), reason)));
    close(reason);
    PortWatcher::lineClosed(_port.portName());
}

void SerialLine::close(const QString &reason)
{
    closePort(reason);
    deleteLater(); // not immediately: the caller may be a slot of a user, or the port itself
}

// Forgets the line and releases the port to the system.
void SerialLine::closePort(const QString &reason)
{
    if (!_port.isOpen())
        return;
    openLines().remove(_port.portName());
    for (QextSerialPort *user : std::exchange(_users, {}))
        user->lineClosed(reason);
    _hangUpWatch.stop();
    _readRetry.stop();
    _port.close();
}
