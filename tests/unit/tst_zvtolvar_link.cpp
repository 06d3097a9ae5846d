#include <algorithm>

#include <QTest>

#include "tests/support/linkfixture.h"
#include "tests/support/memoryport.h"
#include "tests/support/signalrecorder.h"

namespace
{
enum Mode { Normal, Scanning, Testing, Handshake };

void setLink(const ZVTolvarTestPeer &inside, CommState state, Mode mode)
{
    inside.state() = state;
    inside.scanning() = mode == Scanning;
    inside.testing() = mode == Testing;
    inside.eotHandshake() = mode == Handshake;
}

/// Returns what a controller does with \a sent, read \a chunk bytes at a time: its signals, its messages
/// except the raw ones, and its final state.
QStringList outcome(const QByteArray &sent, qsizetype chunk, CommState state, Mode mode)
{
    MemoryPort port;
    LinkFixture fixture;
    setLink(fixture.inside, state, mode);
    fixture.inside.port() = &port;
    SignalRecorder recorder(&fixture.tolvar);
    for (qsizetype at = 0; at < sent.size(); at += chunk) {
        port.setUnread(sent.constData() + at, std::min(chunk, sent.size() - at));
        fixture.tolvar.onReadyRead();
    }
    return recorder.take() + fixture.log->messages("D:") +
           QStringList{fixture.inside.response(), QString::number(fixture.inside.state())};
}
} // namespace

/// Tests how the link reads what its port has received. tst_zvtolvar_link_table tests what each byte does.
class TestLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aReplyIsParsedBeforeItIsReported_data();
    void aReplyIsParsedBeforeItIsReported();
    void theSizeOfReadsDoesNotMatter_data();
    void theSizeOfReadsDoesNotMatter();
    void receivedBytesAreLoggedRaw_data();
    void receivedBytesAreLoggedRaw();
    void receivedBytesAreLoggedBeforeTheyAreProcessed();
    void nothingIsReadWithoutAPortOrWithoutBytes();
};

void TestLink::aReplyIsParsedBeforeItIsReported_data()
{
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<QString>("document");
    QTest::addColumn<QStringList>("read");
    QTest::addColumn<QString>("end");
    QTest::newRow("status") << Normal << "<puckdata><name>T</name></puckdata>"
                            << QStringList{"systemIDChanged:T"} << "readyForCommand";
    QTest::newRow("scan reply") << Scanning << "<scan_results><scan SSID=\"A\"/></scan_results>"
                                << QStringList({"scannedNetworkListChanged:0", "scannedNetworkListChanged:1"})
                                << "scanFinished";
    QTest::newRow("test reply") << Testing
                                << "<networktest_results><status result=\"1\"/></networktest_results>"
                                << QStringList{"networkTestPassphraseInvalid"} << "networkTestFinished";
}

void TestLink::aReplyIsParsedBeforeItIsReported()
{
    QFETCH(Mode, mode);
    QFETCH(QString, document);
    QFETCH(QStringList, read);
    QFETCH(QString, end);
    LinkFixture fixture;
    setLink(fixture.inside, IN_PROMPT, mode);
    SignalRecorder recorder(&fixture.tolvar);
    fixture.feed("get\r\n\x02" + document.toLatin1() + "\x03\r\n>");
    QCOMPARE(recorder.take(), read + QStringList({"responseReceived:" + document, end}));
}

void TestLink::theSizeOfReadsDoesNotMatter_data()
{
    QTest::addColumn<CommState>("state");
    QTest::addColumn<Mode>("mode");
    QTest::newRow("initial prompt") << INITIAL_WAITING_FOR_CONSOLE_PROMPT << Normal;
    QTest::newRow("handshake") << INITIAL_WAITING_FOR_CONSOLE_PROMPT << Handshake;
    QTest::newRow("at the prompt") << IN_PROMPT << Normal;
    QTest::newRow("in a reply") << IN_RESPONSE_RECEIVE << Normal;
    QTest::newRow("scanning") << IN_PROMPT << Scanning;
    QTest::newRow("testing") << IN_PROMPT << Testing;
}

void TestLink::theSizeOfReadsDoesNotMatter()
{
    QFETCH(CommState, state);
    QFETCH(Mode, mode);
    static const char bytes[] =
        "echo\r\n\x04\x04 >>junk\x02\x02<puckdata><name>a\x04>b\xc3\xa9\0</name>\r\n</puckdata>\x03\x03"
        "\r\n>get\x02\x02<puckdata><mode>M</mode></puckdata>\n\x03\n>>\x02<open";
    const QByteArray sent(bytes, sizeof bytes - 1); // contains a zero byte
    const QStringList byteByByte = outcome(sent, 1, state, mode);
    QVERIFY(byteByByte.size() > 4);
    for (const qsizetype chunk : {2, 3, 7, 64, 1000})
        QCOMPARE(outcome(sent, chunk, state, mode), byteByByte);
}

void TestLink::receivedBytesAreLoggedRaw_data()
{
    QTest::addColumn<QByteArray>("sent");
    QTest::addColumn<QString>("message");
    QTest::newRow("control bytes, line ends and quotes")
        << QByteArray("\"get\"\r\n\x02<a>\x03\r\n>") << "W:\"get\"\r\n\x02<a>\x03\r\n> ";
    QTest::newRow("zero byte ends the text") << QByteArray("ab\0cd", 5) << "W:ab ";
    QTest::newRow("UTF-8 bytes, read as Latin-1")
        << QByteArray("caf\xc3\xa9") << QString("W:caf\u00c3\u00a9 ");
}

void TestLink::receivedBytesAreLoggedRaw()
{
    QFETCH(QByteArray, sent);
    QFETCH(QString, message);
    LinkFixture fixture;
    fixture.connectPort();
    fixture.pty.send(sent);
    QTRY_COMPARE(fixture.log->messages(), QStringList{message});
}

void TestLink::receivedBytesAreLoggedBeforeTheyAreProcessed()
{
    LinkFixture fixture;
    fixture.connectPort();
    fixture.inside.state() = WAITING_FOR_CONSOLE_PROMPT;
    fixture.pty.send(QByteArray("\0>\x02ok", 5)); // the bytes after a zero byte are still processed
    QTRY_COMPARE(fixture.log->messages(), QStringList({"W: ", "D:->IN_PROMPT ", "D:->IN_RESPONSE_RECEIVE "}));
    QCOMPARE(fixture.inside.response(), QStringLiteral("ok"));
}

void TestLink::nothingIsReadWithoutAPortOrWithoutBytes()
{
    LinkFixture fixture;
    fixture.tolvar.onReadyRead();
    fixture.connectPort();
    fixture.tolvar.onReadyRead();
    QCOMPARE(fixture.log->messages(), QStringList());
}

QTEST_GUILESS_MAIN(TestLink)
#include "tst_zvtolvar_link.moc"
