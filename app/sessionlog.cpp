#include "app/sessionlog.h"

#include <cstdio>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringConverter>
#include <QTextEdit>
#include <QTextStream>
#include <QVarLengthArray>

#include "app/diagnostics.h"

QTextStream theSessionLog;
QTextEdit *theConsoleWindow = nullptr;
bool theTraceDebugFlag = false;

namespace
{
// Objects that are destroyed at process exit may log after theSessionLog has gone. This flag has no
// destructor.
bool logExists = true;
struct LogEnd {
    ~LogEnd() { logExists = false; }
};
// Is destroyed just before theSessionLog, which is defined before it.
const LogEnd theLogEnd; // clazy:exclude=non-pod-global-static

/// The level as the session log shows it; null for a level that it doesn't hold.
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

/// Opens the log, readable and writable by its owner alone: it holds the passphrase.
void openPrivately(QFile &log)
{
    constexpr auto owners = QFile::ReadOwner | QFile::WriteOwner;
    constexpr auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    // An earlier log that others may open makes way for a new file: whoever has it open would read on.
    const QFileInfo earlier(log.fileName());
    if (earlier.isFile() && !earlier.isSymLink() && earlier.isWritable() && (earlier.permissions() & others))
        log.remove();

    // kept: whether it opens makes no difference to the run.
    if (!log.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text, owners))
        return;
    // One that is still there, at the end of a link such as the user may have put here, is closed to others
    // before anything is in it. What is no file, such as /dev/null, is not the log's to close.
    if (QFileInfo(log.fileName()).isFile())
        log.setPermissions(owners);
}

constexpr qsizetype typicalLineLength = 1024; // a longer line costs an allocation

bool writeFailed = false;   // the last write, because the disk was full
bool lastLineIsCut = false; // and it wrote only the first part of a long line

/// Writes what has been written to the device so far to the disk.
bool flush(QIODevice *device)
{
    auto *file = qobject_cast<QFileDevice *>(device);
    return !file || file->flush();
}

/// Writes a line in UTF-8 to the log's file. A line that cannot be written is dropped.
void writeLine(const char *level, QByteArrayView text)
{
    QIODevice *device = theSessionLog.device();
    // What did not fit on the disk is still in the file's buffer, and goes first.
    if (writeFailed && !flush(device))
        return;

    // Past the stream's buffer: it would take a quarter of a line's time, and writes nothing more after a
    // failed write. In one piece: the file's buffer takes a line or nothing.
    QVarLengthArray<char, typicalLineLength> line;
    if (lastLineIsCut)
        line += '\n';
    line.append(level, qsizetype(qstrlen(level)));
    line.append(text.data(), text.size());
    line += '\n';
    const qint64 written = device->write(line.constData(), line.size());
    writeFailed = written < line.size() || !flush(device);
    // A line that is longer than the file's buffer goes past it.
    if (written > 0)
        lastLineIsCut = written < line.size();
}

/// Writes one message, whose text the caller gives in UTF-8 and in the local 8-bit encoding.
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
    // kept: neither prefix nor line end. The device's own line ends lay out the console.
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
    writeMessage(type, local.constData(), local.constData()); // it is UTF-8
#endif
}
} // namespace

void openSessionLog()
{
    // kept: never closed or deleted; messages may come until the process ends.
    auto *file = new QFile(QDir::homePath() + QStringLiteral("/zvinstall.log"));
    openPrivately(*file);
    theSessionLog.setDevice(file);
    writeFailed = lastLineIsCut = false;
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
