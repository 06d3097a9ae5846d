#include "app/sessionlog.h"

#include <cstdio>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringBuilder>
#include <QTextEdit>
#include <QTextStream>

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

bool writeFailed = false;   // the last write, because the disk was full
bool lastLineIsCut = false; // and it wrote only the first part of a long line

/// Writes a line to the log's file. A line that cannot be written is dropped: a stream keeps its text after a
/// failed write, and writes nothing more.
void writeLine(const char *level, const QString &text)
{
    QIODevice *device = theSessionLog.device();
    if (writeFailed) {
        // What did not fit on the disk is still in the file's buffer, and goes first.
        auto *file = qobject_cast<QFileDevice *>(device);
        if (file && !file->flush())
            return;
    }

    // In one piece: three would cost a line a twentieth of its time.
    const QString line =
        QLatin1String(lastLineIsCut ? "\n" : "") % QLatin1String(level) % text % QLatin1Char('\n');
    const qint64 start = device->pos();
    theSessionLog << line;
    theSessionLog.flush();
    writeFailed = theSessionLog.status() != QTextStream::Ok;
    if (!writeFailed) {
        lastLineIsCut = false;
        return;
    }
    theSessionLog.resetStatus();
    // The file's buffer takes a line or nothing. A line that is longer than the buffer goes past it.
    const qint64 written = device->pos() - start;
    if (written > 0)
        lastLineIsCut = written < line.toUtf8().size();
}

/// Writes one message. The caller gives it in Unicode and in the local 8-bit encoding, and has one of them
/// already.
void writeMessage(QtMsgType type, const QString &text, const char *bytes)
{
    if (logExists) {
        const char *level = prefix(type);
        if (level && isOpen())
            writeLine(level, text);
        else
            theSessionLog.flush();
    }

    std::printf("%s\n", bytes);
    std::fflush(stdout);

    if (!theConsoleWindow)
        return;
    if (type == QtDebugMsg && !theTraceDebugFlag)
        return;
    // kept: neither prefix nor line end. The device's own line ends lay out the console.
    theConsoleWindow->insertPlainText(QString::fromLatin1(bytes));
    theConsoleWindow->ensureCursorVisible();
}

void forwardMessage(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    // As a C string, the message ends at its first zero byte.
    writeMessage(type, message.left(message.indexOf(QChar::Null)), message.toLocal8Bit().constData());
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
    writeMessage(type, QString::fromLocal8Bit(msg), msg);
}
