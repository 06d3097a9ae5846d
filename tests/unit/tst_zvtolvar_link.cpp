#include <algorithm>

#include <QTest>

#include "tests/support/linkfixture.h"
#include "tests/support/memoryport.h"
#include "tests/support/scopedconnection.h"
#include "tests/support/signalrecorder.h"

/// Tests how the link handles the console's output: replies, prompts, and the record of all of it.
class TestLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { _fixture.reset(); }

    void aReplyIsReadBeforeAnythingElseHearsOfIt();
    void eachByteOfAReplyIsOneCharacter();

    void aReplyInManyReadsIsTheSame();
    void howeverItIsCutTheSameComesOfIt_data();
    void howeverItIsCutTheSameComesOfIt();
    void twoRepliesInOneReadAreTwo();
    void whatIsReadIsLoggedRaw_data();
    void whatIsReadIsLoggedRaw();
    void whatIsReadIsLoggedBeforeItIsTaken();
    void nothingIsReadWithoutAPort();
    void nothingIsReadWhenThereIsNothing();

private:
    ZVTolvarTestPeer inside() const { return _fixture->inside; }
    void feed(const QByteArray &received) { _fixture->feed(received); }

    std::unique_ptr<LinkFixture> _fixture;
    ZVTolvar *_tolvar = nullptr;
};

void TestLink::init()
{
    _fixture = std::make_unique<LinkFixture>();
    _tolvar = &_fixture->tolvar;
}

void TestLink::aReplyIsReadBeforeAnythingElseHearsOfIt()
{
    inside().state() = IN_PROMPT;
    QString known;
    const ScopedConnection listener(_tolvar, &ZVTolvar::responseReceived,
                                    [&] { known = _tolvar->systemID(); });
    feed("\x02<puckdata><name>T</name></puckdata>\x03");
    QCOMPARE(known, QStringLiteral("T"));
}

void TestLink::eachByteOfAReplyIsOneCharacter()
{
    inside().state() = IN_PROMPT;
    QByteArray name;
    for (int byte = 0xA0; byte <= 0xFF; ++byte)
        name += static_cast<char>(byte);
    feed("\x02<puckdata><name>" + name + "</name></puckdata>\x03");
    QCOMPARE(_tolvar->systemID().size(), 0x60);
    QCOMPARE(_tolvar->systemID(), QString::fromLatin1(name));
}

void TestLink::aReplyInManyReadsIsTheSame()
{
    _fixture->connectPort();
    inside().state() = IN_PROMPT;
    SignalRecorder diary(_tolvar);
    const QByteArray reply = "\x02<puckdata><name>T</name></puckdata>\x03";
    for (const char c : reply) {
        _fixture->log->take();
        _fixture->pty.send(QByteArray(1, c));
        QTRY_COMPARE(_fixture->log->messages("W:"), QStringList{"W:" + QString(QLatin1Char(c)) + " "});
    }
    QCOMPARE(diary.take(),
             QStringList({"systemIDChanged:T", "responseReceived:<puckdata><name>T</name></puckdata>"}));
}

namespace
{
/// Returns what a controller does with \a sent, read \a chunk bytes at a time: its signals, its messages
/// except the raw ones, and its final state.
QStringList outcome(const QByteArray &sent, qsizetype chunk, CommState state, bool scanning, bool testing)
{
    MemoryPort port;
    LinkFixture fixture;
    fixture.inside.port() = &port;
    fixture.inside.state() = state;
    fixture.inside.scanning() = scanning;
    fixture.inside.testing() = testing;
    SignalRecorder diary(&fixture.tolvar);
    for (qsizetype at = 0; at < sent.size(); at += chunk) {
        port.bring(sent.constData() + at, std::min(chunk, sent.size() - at));
        fixture.tolvar.onReadyRead();
    }
    return diary.take() + fixture.log->messages("D:") +
           QStringList{fixture.inside.response(), QString::number(fixture.inside.state())};
}
} // namespace

void TestLink::howeverItIsCutTheSameComesOfIt_data()
{
    QTest::addColumn<CommState>("state");
    QTest::addColumn<bool>("scanning");
    QTest::addColumn<bool>("testing");
    QTest::newRow("before it is woken") << CANDIDATE_DEVICE_FOUND << false << false;
    QTest::newRow("waiting for the first prompt") << INITIAL_WAITING_FOR_CONSOLE_PROMPT << false << false;
    QTest::newRow("waiting for a prompt") << WAITING_FOR_CONSOLE_PROMPT << false << false;
    QTest::newRow("at the prompt") << IN_PROMPT << false << false;
    QTest::newRow("inside a reply") << IN_RESPONSE_RECEIVE << false << false;
    QTest::newRow("scanning") << IN_PROMPT << true << false;
    QTest::newRow("testing") << IN_PROMPT << false << true;
}

void TestLink::howeverItIsCutTheSameComesOfIt()
{
    QFETCH(CommState, state);
    QFETCH(bool, scanning);
    QFETCH(bool, testing);
    static const char bytes[] =
        "echo\r\n\x04\x04>>junk\x02\x02<puckdata><name>a\x04>b\xc3\xa9\0</name>\r\n</puckdata>\x03\x03"
        "\r\n>get\x02\x02<puckdata><mode>M</mode></puckdata>\x03>>\x02<open";
    const QByteArray sent(bytes, sizeof bytes - 1); // contains a zero byte
    const QStringList byteByByte = outcome(sent, 1, state, scanning, testing);
    QVERIFY(state == CANDIDATE_DEVICE_FOUND || byteByByte.size() > 4);
    for (const qsizetype chunk : {2, 3, 7, 64, 1000})
        QCOMPARE(outcome(sent, chunk, state, scanning, testing), byteByByte);
}

void TestLink::twoRepliesInOneReadAreTwo()
{
    _fixture->connectPort();
    inside().state() = IN_PROMPT;
    SignalRecorder diary(_tolvar);
    _fixture->pty.send("get\r\n\x02<puckdata><name>U</name></puckdata>\x03\r\n>"
                       "get\r\n\x02<puckdata><mode>M</mode></puckdata>\x03\r\n>");
    QTRY_COMPARE(_tolvar->status(), QStringLiteral("M"));
    QCOMPARE(diary.take(),
             QStringList({"systemIDChanged:U", "responseReceived:<puckdata><name>U</name></puckdata>",
                          "readyForCommand", "statusChanged:M",
                          "responseReceived:<puckdata><mode>M</mode></puckdata>", "readyForCommand"}));
    QCOMPARE(inside().state(), IN_PROMPT);
}

void TestLink::whatIsReadIsLoggedRaw_data()
{
    QTest::addColumn<QByteArray>("sent");
    QTest::addColumn<QString>("message");
    QTest::newRow("a single byte") << QByteArray(">") << "W:> ";
    QTest::newRow("control bytes and line ends stay")
        << QByteArray("get\r\n\x02<a>\x03\r\n>") << "W:get\r\n\x02<a>\x03\r\n> ";
    QTest::newRow("a zero byte ends the text") << QByteArray("ab\0cd", 5) << "W:ab ";
    QTest::newRow("a byte is a character") << QByteArray("caf\xc3\xa9") << QString("W:caf\u00c3\u00a9 ");
    QTest::newRow("quotes and percent signs stay") << QByteArray("\"%s\"") << "W:\"%s\" ";
}

void TestLink::whatIsReadIsLoggedRaw()
{
    QFETCH(QByteArray, sent);
    QFETCH(QString, message);
    _fixture->connectPort();
    _fixture->pty.send(sent);
    QTRY_COMPARE(_fixture->log->messages(), QStringList{message});
}

void TestLink::whatIsReadIsLoggedBeforeItIsTaken()
{
    _fixture->connectPort();
    inside().state() = WAITING_FOR_CONSOLE_PROMPT;
    _fixture->pty.send(QByteArray("\0>\x02ok", 5)); // the bytes after a zero byte are still processed
    QTRY_COMPARE(_fixture->log->messages(),
                 QStringList({"W: ", "D:->IN_PROMPT ", "D:->IN_RESPONSE_RECEIVE "}));
    QCOMPARE(inside().response(), QStringLiteral("ok"));
}

void TestLink::nothingIsReadWithoutAPort()
{
    _tolvar->onReadyRead();
    QCOMPARE(_fixture->log->messages(), QStringList());
}

void TestLink::nothingIsReadWhenThereIsNothing()
{
    _fixture->connectPort();
    _tolvar->onReadyRead();
    QCOMPARE(_fixture->log->messages(), QStringList());
}

QTEST_GUILESS_MAIN(TestLink)
#include "tst_zvtolvar_link.moc"
