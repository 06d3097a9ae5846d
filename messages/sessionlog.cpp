#include "messages/sessionlog.h"

#include <cstdio>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringConverter>
#include <QTextEdit>
#include <QTextStream>
#include <QVarLengthArray>

#include "messages/diagnostics.h"

QTextStream theSessionLog;
QTextEdit *theConsoleWindow = nullptr;
bool theTraceDebugFlag = false;

namespace
{
// Objects that are destroyed at process exit may log after theSessionLog is destroyed. This flag has no
// destructor.
bool logExists = true;
struct LogEnd {
    ~LogEnd() { logExists = false; }
};
// Is destroyed just before theSessionLog, which is defined before it.
const LogEnd theLogEnd; // clazy:exclude=non-pod-global-static

/// The level as the session log shows it; null for a level that is not logged.
const char *prefix(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return "D:";
    case QtWarningMsg:
        return "W:";
    case QtCriticalMsg:
        return "C:";
    case QtFatalMsg:
        return "F:";
    default:
        return nullptr;
    }
}

/// Whether the log's file could be opened. Qt warns about each write to a file that is not open.
bool isOpen()
{
    return theSessionLog.device() && theSessionLog.device()->isOpen();
}

/// Opens the log, readable and writable by its owner only: it contains the passphrase.
void openPrivately(QFile &log)
{
    constexpr auto owners = QFile::ReadOwner | QFile::WriteOwner;
    constexpr auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    // An earlier log that other users can open is replaced by a new file: a process that has it open would
    // continue to read.
    const QFileInfo earlier(log.fileName());
    if (earlier.isFile() && !earlier.isSymLink() && earlier.isWritable() && (earlier.permissions() & others))
        log.remove();

    // kept: the program runs without a log, and does not report that.
    if (!log.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text, owners))
        return;
    // An existing file, for example the target of a link that the user created, gets mode 0600 before the
    // first write. The mode of a special file, such as /dev/null, is not changed.
    if (QFileInfo(log.fileName()).isFile())
        log.setPermissions(owners);
}

constexpr qsizetype typicalLineLength = 1024; // a longer line costs an allocation

bool lastLineIsCut = false; // the last write wrote only the first part of a long line

/// Flushes the buffer of the log's file. Returns false if the disk is full.
bool flush(QIODevice *device)
{
    auto *file = qobject_cast<QFileDevice *>(device);
    return !file || file->flush();
}

/// Writes a line in UTF-8 to the log's file. A line that cannot be written is dropped.
void writeLine(const char *level, QByteArrayView text)
{
    QIODevice *device = theSessionLog.device();
    // Data that did not fit on the disk is still in the file's buffer, and is written first.
    if (!flush(device))
        return;

    // Bypasses the text stream: its buffer would take a quarter of the time that a line needs, and the stream
    // writes nothing more after a failed write. The line is written in one piece: the file's buffer takes all
    // of it or nothing.
    QVarLengthArray<char, typicalLineLength> line;
    if (lastLineIsCut)
        line += '\n';
    line.append(level, qsizetype(qstrlen(level)));
    line.append(text.data(), text.size());
    line += '\n';
    const qint64 written = device->write(line.constData(), line.size());
    flush(device);
    // A line that is longer than the file's buffer bypasses it.
    if (written > 0)
        lastLineIsCut = written < line.size();
}

/// Writes one message. The caller passes its text in UTF-8 and in the local 8-bit encoding.
void writeMessage(QtMsgType type, QByteArrayView utf8, const char *local)
{
    if (logExists) {
        theSessionLog.flush();
        theSessionLog.resetStatus();
        const char *level = prefix(type);
        if (level && isOpen())
            writeLine(level, utf8);
    }

    std::printf("%s\n", local);
    std::fflush(stdout);

    if (!theConsoleWindow)
        return;
    if (type == QtDebugMsg && !theTraceDebugFlag)
        return;
    // kept: no prefix and no line end. The device's own line ends separate the lines of the console view.
    theConsoleWindow->insertPlainText(QString::fromLatin1(local));
    theConsoleWindow->ensureCursorVisible();
}

void forwardMessage(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    // Not toLocal8Bit(), which allocates memory for each message.
    QStringEncoder toLocal8Bit(QStringEncoder::System);
    QVarLengthArray<char, typicalLineLength> local(toLocal8Bit.requiredSpace(message.size()) + 1);
    *toLocal8Bit.appendToBuffer(local.data(), message) = '\0';
    // As a C string, the message ends at its first zero byte.
#ifdef Q_OS_WIN
    writeMessage(type, message.left(message.indexOf(QChar::Null)).toUtf8(), local.constData());
#else
    writeMessage(type, local.constData(), local.constData()); // local is UTF-8
#endif
}
} // namespace

void openSessionLog()
{
    // kept: never closed or deleted; messages may come until the process ends.
    auto *file = new QFile(QDir::homePath() + QStringLiteral("/zvinstall.log"));
    openPrivately(*file);
    theSessionLog.setDevice(file);
    lastLineIsCut = false;
}

void installMessageHandler()
{
    enableAllMessages();
    qInstallMessageHandler(forwardMessage);
}

void zvMessageOutput(QtMsgType type, const char *msg)
{
    writeMessage(type, QString::fromLocal8Bit(msg).toUtf8(), msg);
}
