#include <QTest>
#include <QXmlStreamReader>

#include "simulator/tolvardocuments.h"
#include "tests/support/portinfos.h"
#include "tests/support/zvtolvartestpeer.h"

namespace
{
/// The bytes that the device sends, from a given moment on.
struct Talk {
    CommState state;
    bool isScanning;
    bool isTesting;
    QByteArray bytes;
};

/// The expected result.
struct Outcome {
    QStringList replies;
    int prompts = 0;
    CommState state = NOT_CONNECTED;
};

/// The link's rules, implemented a second time and independently, for a whole talk at a time.
Outcome outcomeOf(const Talk &talk)
{
    Outcome outcome;
    outcome.state = talk.state;
    bool isBusy =
        talk.isScanning || talk.isTesting; // prompts are ignored then, and a start mark always counts
    QString reply;
    for (const char c : talk.bytes) {
        const bool isInReply = outcome.state == IN_RESPONSE_RECEIVE;
        if (c == '\x02' && (isBusy || outcome.state == IN_PROMPT)) {
            reply.clear();
            outcome.state = IN_RESPONSE_RECEIVE;
        } else if (isInReply && c == '\x03') {
            outcome.replies += reply;
            outcome.state = isBusy ? IN_PROMPT : WAITING_FOR_CONSOLE_PROMPT;
            isBusy = false;
        } else if (isInReply) {
            reply += QLatin1Char(c);
        } else if (c == '>' && !isBusy && outcome.state != IN_PROMPT) {
            ++outcome.prompts;
            outcome.state = IN_PROMPT;
        }
    }
    return outcome;
}

/// Returns whether the reply's root is none of the four known ones; the controller hangs at such a root.
bool hasForeignRoot(const QString &reply)
{
    QXmlStreamReader reader(reply);
    while (!reader.atEnd() && reader.readNext() != QXmlStreamReader::StartElement) {
    }
    static const QStringList known = {"puckdata", "scan_results", "networktest_results", "log_file"};
    return reader.isStartElement() && !known.contains(reader.name());
}

QByteArray framed(const QByteArray &document)
{
    return '\x02' + document + "\x03\r\n>";
}

QByteArray statusTalk()
{
    const DeviceConfig setup;
    return "\r\n>get\r\n" + framed(TolvarDocuments::status(setup, setup.configuration, "0"));
}
} // namespace

/// Tests that the controller handles corrupted bytes from a bad line like any other bytes, and reads the next
/// device correctly.
class TestLinkCorruption : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void bytesAtEveryPlace_data();
    void bytesAtEveryPlace();
    void cutAtEveryByte_data() { talks(); }
    void cutAtEveryByte();
    void everyByteMissing_data() { talks(); }
    void everyByteMissing();

private:
    static void talks();
    void hear(const Talk &talk, const QString &what);

    const ZVTolvar
        _other; // keeps the ports watched all the time, instead of starting the watch for each controller
    int _heard = 0;
};

Q_DECLARE_METATYPE(Talk)

void TestLinkCorruption::initTestCase()
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
}

void TestLinkCorruption::talks()
{
    QTest::addColumn<Talk>("talk");
    QTest::newRow("a status") << Talk{INITIAL_WAITING_FOR_CONSOLE_PROMPT, false, false, statusTalk()};
    QTest::newRow("a scan") << Talk{IN_PROMPT, true, false,
                                    "scan\r\nwlan: scan starts\r\n" +
                                        framed(TolvarDocuments::scanResults(defaultAir()))};
    QTest::newRow("a test") << Talk{
        IN_PROMPT, false, true, "test\r\n" + framed(TolvarDocuments::testResults("Workshop", "joined", 0))};
    QTest::newRow("a log") << Talk{WAITING_FOR_CONSOLE_PROMPT, false, false,
                                   "\r\n>get_log_file\r\n" +
                                       framed(TolvarDocuments::logFile(defaultLogText()))};
}

/// Sends the talk to a controller, then unplugs the device and plugs it in again.
void TestLinkCorruption::hear(const Talk &talk, const QString &what)
{
    const Outcome expected = outcomeOf(talk);
    if (std::any_of(expected.replies.cbegin(), expected.replies.cend(), hasForeignRoot))
        return;
    ++_heard;

    ZVTolvar tolvar;
    const ZVTolvarTestPeer inside{tolvar};
    QStringList replies;
    int prompts = 0;
    connect(&tolvar, &ZVTolvar::responseReceived, this,
            [&replies](const QString &reply) { replies += reply; });
    connect(&tolvar, &ZVTolvar::readyForCommand, this, [&prompts] { ++prompts; });
    inside.portName() = QStringLiteral("ttyUSB0");
    inside.state() = talk.state;
    inside.scanning() = talk.isScanning;
    inside.testing() = talk.isTesting;
    for (const char c : talk.bytes)
        tolvar.handleReceived(c);
    QVERIFY2(replies == expected.replies,
             qPrintable(what + ": other replies were expected than " + replies.join(QStringLiteral(" | "))));
    QVERIFY2(
        prompts == expected.prompts,
        qPrintable(what +
                   QStringLiteral(": %1 prompts were expected, not %2").arg(expected.prompts).arg(prompts)));
    QVERIFY2(inside.state() == expected.state,
             qPrintable(
                 what +
                 QStringLiteral(": state %1 was expected, not %2").arg(expected.state).arg(inside.state())));

    tolvar.onDeviceRemoved(PortInfos::bridge(QStringLiteral("ttyUSB0")));
    QVERIFY2(tolvar.systemID().isEmpty() && inside.state() == NOT_CONNECTED &&
                 tolvar.scannedNetworks()->isEmpty(),
             qPrintable(what + ": the device was expected to be forgotten"));
    inside.state() = INITIAL_WAITING_FOR_CONSOLE_PROMPT;
    const QByteArray clean = statusTalk();
    for (const char c : clean)
        tolvar.handleReceived(c);
    const DeviceConfig device;
    QVERIFY2(tolvar.systemID() == QLatin1String(device.systemId) &&
                 tolvar.network() == QLatin1String(device.configuration.network) &&
                 tolvar.sysLogServer() == QLatin1String(device.sysLogServer) && inside.state() == IN_PROMPT,
             qPrintable(what + ": the next device was expected to be read as if nothing had been"));
}

void TestLinkCorruption::bytesAtEveryPlace_data()
{
    talks();
}

void TestLinkCorruption::bytesAtEveryPlace()
{
    QFETCH(Talk, talk);
    _heard = 0;
    for (const QByteArray &bytes :
         {QByteArray("\x02"), QByteArray("\x03"), QByteArray(">"), QByteArray("\x00\xFF\x1B[2J<&", 8)}) {
        for (qsizetype place = 0; place <= talk.bytes.size(); ++place) {
            Talk spoilt = talk;
            spoilt.bytes.insert(place, bytes);
            hear(spoilt, QStringLiteral("%1 at byte %2").arg(QLatin1String(bytes.toHex())).arg(place));
            if (QTest::currentTestFailed())
                return;
        }
    }
    // The cases that make a foreign root are left out: bytes inside the root's name, and a scan's start mark
    // right before one of the networks.
    const qsizetype leftOut = 4 * (talk.bytes.size() + 1) - _heard;
    QVERIFY2(leftOut < 100, qPrintable(QStringLiteral("%1 places were left out").arg(leftOut)));
}

void TestLinkCorruption::cutAtEveryByte()
{
    QFETCH(Talk, talk);
    for (qsizetype length = 0; length < talk.bytes.size(); ++length) {
        Talk cut = talk;
        cut.bytes.truncate(length);
        hear(cut, QStringLiteral("cut after %1 bytes").arg(length));
        // The end mark arrives after all.
        cut.bytes += '\x03';
        hear(cut, QStringLiteral("ended after %1 bytes").arg(length));
        if (QTest::currentTestFailed())
            return;
    }
}

void TestLinkCorruption::everyByteMissing()
{
    QFETCH(Talk, talk);
    for (qsizetype place = 0; place < talk.bytes.size(); ++place) {
        Talk spoilt = talk;
        spoilt.bytes.remove(place, 1);
        hear(spoilt, QStringLiteral("without byte %1").arg(place));
        if (QTest::currentTestFailed())
            return;
    }
}

QTEST_GUILESS_MAIN(TestLinkCorruption)
#include "tst_link_corruption.moc"
