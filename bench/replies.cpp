// bench_replies: the time from received bytes to the device's values, compared with the time that Qt's XML
// reader needs to step through the same document.

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QXmlStreamReader>

#include "bench/measure.h"
#include "messages/diagnostics.h"
#include "messages/sessionlog.h"
#include "simulator/tolvardocuments.h"
#include "tests/support/memoryport.h"
#include "tests/support/zvtolvartestpeer.h"

namespace
{
constexpr int turns = 31;
constexpr int logTurns = 11;
constexpr qint64 logSize = 4 << 20;
constexpr qint64 usbPacket = 64;    // the bridge sends this many bytes at a time
constexpr qint64 maxTtyRead = 4095; // the maximum that one read of a tty returns

/// A controller at the prompt, and the port that it reads from.
struct Receiver {
    Receiver() { inside.port() = &port; }

    /// Receives one reply, from its start mark to its end mark, \a chunk bytes per read.
    void receive(const QByteArray &document, qint64 chunk)
    {
        inside.state() = IN_PROMPT;
        const QByteArray framed = '\x02' + document + '\x03';
        for (qint64 at = 0; at < framed.size(); at += chunk) {
            port.setUnread(framed.constData() + at, std::min(chunk, framed.size() - at));
            tolvar.onReadyRead();
        }
    }

    MemoryPort port;
    ZVTolvar tolvar;
    const ZVTolvarTestPeer inside{tolvar};
};

void stepThrough(const QString &document)
{
    QXmlStreamReader reader;
    reader.addData(document);
    while (!reader.atEnd())
        reader.readNext();
    if (reader.hasError())
        qFatal("the document is not well-formed");
}

/// Returns two versions of the device's status with different names and addresses, so that each one changes
/// values.
QList<QByteArray> statuses()
{
    DeviceConfig one;
    DeviceConfig other = one;
    other.systemId = "TOLVAR-4712";
    other.macAddress = "00:1E:C0:04:47:12";
    return {TolvarDocuments::status(one, one.configuration, one.testResult),
            TolvarDocuments::status(other, other.configuration, other.testResult)};
}

QByteArray scanReply(int networks)
{
    QList<TolvarNetwork> air;
    for (int i = 0; i < networks; ++i) {
        air += TolvarNetwork{"Network number " + QByteArray::number(i), "", "WPA2 (PSK)"};
    }
    return TolvarDocuments::scanResults(air);
}

/// Measures documents as one reply each, \a times times over.
void timeReplies(const char *name, const QList<QByteArray> &documents, qint64 chunk, double limit,
                 int times = 100)
{
    QStringList texts;
    for (const QByteArray &document : documents)
        texts += QString::fromLatin1(document);
    Receiver receiver;
    Measure measure{QLatin1String(name), "ms", limit};
    measure.timeByTurns(
        turns,
        [&] {
            for (int i = 0; i < times; ++i) {
                for (const QByteArray &document : documents)
                    receiver.receive(document, chunk);
            }
        },
        [&] {
            for (int i = 0; i < times; ++i) {
                for (const QString &text : texts)
                    stepThrough(text);
            }
        });
    if (receiver.tolvar.systemID() != QLatin1String("TOLVAR-4712") &&
        receiver.tolvar.getScanResult("Network number 0").ssid == "Not Found")
        qFatal("the replies did not change any values");
    measure.report();
}

/// Measures the device's log, from its bytes to the closed file.
void timeLog(const char *name, qint64 chunk, double limit)
{
    QByteArray log;
    for (int line = 0; log.size() < logSize; ++line)
        log += "[" + QByteArray::number(line) +
               "] wlan: beacon on channel 6, -61 dB; heap 20480 of 65536 free\n";
    const QByteArray document = TolvarDocuments::logFile(log);
    const QString text = QString::fromLatin1(document);
    const QString path = QDir::homePath() + QStringLiteral("/tolvar_log.txt");

    Receiver receiver;
    Measure measure{QLatin1String(name), "ms", limit};
    measure.timeByTurns(
        logTurns,
        [&] {
            receiver.inside.logFile() = new QFile(path); // the controller deletes it
            if (!receiver.inside.logFile()->open(QIODevice::WriteOnly))
                qFatal("cannot write %s", qPrintable(path));
            receiver.receive(document, chunk);
        },
        [&] {
            QXmlStreamReader reader;
            reader.addData(text);
            reader.readNextStartElement();
            if (reader.readElementText().size() < logSize)
                qFatal("the log is incomplete");
        });
    if (QFile(path).size() != log.size())
        qFatal("the written log differs from the log that was sent");
    measure.report();
}
} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);

    // The cost of messages about the replies is measured separately, below.
    enableAllMessages();
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    timeReplies("status reply, one read", statuses(), maxTtyRead, 2.0);
    timeReplies("status reply, a read each USB packet", statuses(), usbPacket, 2.0);
    timeReplies("scan reply of 20 networks, one read", {scanReply(20)}, maxTtyRead, 2.0);
    timeReplies("scan reply of 20 networks, a read each USB packet", {scanReply(20)}, usbPacket, 2.0);
    timeLog("4 MB log, the longest reads", maxTtyRead, 2.0);
    timeLog("4 MB log, a read each USB packet", usbPacket, 2.0);

    openSessionLog();
    installMessageHandler();
    timeReplies("status reply, a read each packet, with the session log", statuses(), usbPacket, 0, 10);
    timeLog("4 MB log, the longest reads, with the session log", maxTtyRead, 0);
    return 0;
}
