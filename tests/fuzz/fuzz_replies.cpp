#include <cstdint>
#include <utility>

#include <QFile>

#include "tests/fuzz/fuzzing.h"
#include "tests/fuzz/referencereader.h"
#include "tests/support/signalrecorder.h"
#include "tests/support/zvtolvartestpeer.h"

// Fuzzes the reply documents. An input is a byte that selects whether a file waits for a log ("1") or not
// ("0"), then the document; each byte is one character, as the link passes it on.

using Fuzzing::require;

namespace
{
/// A file for a log that keeps the written data in memory.
class LogFile : public QFile
{
public:
    explicit LogFile(QByteArray &written)
        : QFile(QStringLiteral("/dev/null"))
        , _written(written)
    {
        require(open(WriteOnly | Text), "/dev/null can be opened");
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

/// The controller that reads the inputs. One object serves all inputs, because creating one takes longer than
/// most inputs.
struct Subject {
    ZVTolvar tolvar;
    const ZVTolvarTestPeer inside{tolvar};
    SignalRecorder recorder{&tolvar};

    /// Resets the state that earlier inputs have left.
    void reset();
    /// Requires that a clean status is read completely, whatever came before.
    void requireCleanStatusIsRead();
};

void Subject::reset()
{
    for (const auto set :
         {&ZVTolvar::setSystemID, &ZVTolvar::setStatus, &ZVTolvar::setFirmwareVersion, &ZVTolvar::setNetwork,
          &ZVTolvar::setMacAddress, &ZVTolvar::setIPAddress, &ZVTolvar::setUseStaticIP, &ZVTolvar::setMask,
          &ZVTolvar::setGateway, &ZVTolvar::setDns, &ZVTolvar::setTestResult, &ZVTolvar::setUpgradeResult,
          &ZVTolvar::setAntenna, &ZVTolvar::setUartTrace, &ZVTolvar::setSysLogOn, &ZVTolvar::setSysLogServer})
        (tolvar.*set)(QString());
    tolvar.scannedNetworks()->clear();
    recorder.take();
}

void Subject::requireCleanStatusIsRead()
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
    const ReferenceReader expected(document);
    if (!expected.controllerReturns())
        return -1;

    static Subject subject;
    auto &[tolvar, inside, recorder] = subject;
    subject.reset();
    QByteArray written;
    if (logIsAwaited)
        inside.logFile() = new LogFile(written);
    tolvar.onResponseReceived(document);

    if (!expected.isTooDeep()) {
        require(recorder.take() == expected.reported(), "all values in the document are reported in order");
        require(networks(tolvar) == expected.networks(), "every network is listed");
        const bool logHasCome = !expected.logs().isEmpty();
        require((inside.logFile() == nullptr) == (logHasCome || !logIsAwaited),
                "a received log ends the wait for a log");
        const QString log = logIsAwaited && logHasCome ? expected.logs().constFirst() : QString();
        require(written == log.toLocal8Bit().left(log.size()), "the log is written");
    }
    delete inside.logFile();
    inside.logFile() = nullptr;
    subject.requireCleanStatusIsRead();
    return 0;
}
