#include <cstdint>
#include <utility>

#include <QFile>

#include "tests/fuzz/fuzzing.h"
#include "tests/fuzz/referencereader.h"
#include "tests/support/signaldiary.h"
#include "tests/support/zvtolvarinspector.h"

// Fuzzes the reply documents. An input is a byte that says whether a file waits for a log ("1") or not ("0"),
// then the document, each byte a character as the link hands it on.

using Fuzzing::require;

namespace
{
/// A log's file that keeps in memory what is written to it.
class LogFile : public QFile
{
public:
    explicit LogFile(QByteArray &written)
        : QFile(QStringLiteral("/dev/null"))
        , _written(written)
    {
        require(open(WriteOnly | Text), "there is a /dev/null");
    }

protected:
    qint64 writeData(const char *data, qint64 size) override
    {
        _written.append(data, size);
        return size;
    }

private:
    QByteArray &_written;
};

QHash<QString, QStringList> networks(ZVTolvar &tolvar)
{
    QHash<QString, QStringList> found;
    for (const ZVScanResult &n : std::as_const(*tolvar.scannedNetworks()))
        found.insert(n.ssid, {n.channel, n.adhoc, n.security, n.suites, n.wps, n.rssi});
    return found;
}

/// Whatever came before: a clean status is read from its first value to its last.
void requireCleanStatusIsRead(ZVTolvar &tolvar)
{
    tolvar.onResponseReceived(QStringLiteral("<puckdata><name>clean</name><skip><name/></skip>"
                                             "<sl_ip>1.2.3.4</sl_ip></puckdata>"));
    require(tolvar.systemID() == QLatin1String("clean"), "a clean status is read");
    require(tolvar.sysLogServer() == QLatin1String("1.2.3.4"), "a clean status is read to its end");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size < 1)
        return -1;
    const bool logIsAwaited = data[0] & 1U;
    const QString document =
        QString::fromLatin1(reinterpret_cast<const char *>(data) + 1, static_cast<qsizetype>(size) - 1);
    if (!Fuzzing::comesBack(document))
        return -1;

    QByteArray written;
    ZVTolvar tolvar;
    const ZVTolvarInspector inside{tolvar};
    SignalDiary diary(&tolvar);
    if (logIsAwaited)
        inside.logFile() = new LogFile(written);
    tolvar.onResponseReceived(document);

    const ReferenceReader expected(document);
    if (!expected.isTooDeep()) {
        require(diary.take() == expected.told(), "everything in the document is told of in its order");
        require(networks(tolvar) == expected.networks(), "every network is listed");
        const bool logHasCome = !expected.logs().isEmpty();
        require((inside.logFile() == nullptr) == (logHasCome || !logIsAwaited), "a log ends the waiting");
        const QString log = logIsAwaited && logHasCome ? expected.logs().constFirst() : QString();
        require(written == log.toLocal8Bit().left(log.size()), "the log is written");
    }
    delete inside.logFile();
    inside.logFile() = nullptr;
    requireCleanStatusIsRead(tolvar);
    return 0;
}
