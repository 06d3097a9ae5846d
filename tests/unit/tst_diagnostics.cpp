#include <QTest>

#include "messages/diagnostics.h"
#include "tests/support/messagespy.h"

/// Tests how one message is composed.
class TestDiagnostics : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachItemIsFollowedByOneBlank();
    void aLiteralStandsBare();
    void deviceOutputIsOneCharacterAByteUpToTheFirstZero();
    void aTextStandsInQuotesAsItIs_data();
    void aTextStandsInQuotesAsItIs();
    void bytesStandInQuotesAsTheyAre();
    void aNumberStandsInDecimal();
    void oneStatementIsOneMessage();
    void theLevelIsTheCallers();
};

void TestDiagnostics::eachItemIsFollowedByOneBlank()
{
    MessageSpy log;
    zvDebug() << "_commState = " << QStringLiteral("IN_PROMPT");
    zvDebug() << "port name:" << QStringLiteral("ttyUSB0") << 7 << QByteArray("x");
    zvDebug();
    QCOMPARE(log.messages(),
             QStringList({"D:_commState =  \"IN_PROMPT\" ", "D:port name: \"ttyUSB0\" 7 \"x\" ", "D:"}));
}

void TestDiagnostics::aLiteralStandsBare()
{
    MessageSpy log;
    zvDebug() << " OK";
    zvDebug() << "";
    zvDebug() << "100 %s %1";
    QCOMPARE(log.messages(), QStringList({"D: OK ", "D: ", "D:100 %s %1 "}));
}

void TestDiagnostics::deviceOutputIsOneCharacterAByteUpToTheFirstZero()
{
    MessageSpy log;
    const QByteArray received("\x02<a>\xc3\xa9\xff</a>\x03\r\n\0>", 16);
    zvWarning() << received.constData();
    QCOMPARE(log.messages(), QStringList{QString::fromLatin1("W:\x02<a>\xc3\xa9\xff</a>\x03\r\n ")});
}

void TestDiagnostics::aTextStandsInQuotesAsItIs_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << "";
    QTest::newRow("blanks") << "  a  ";
    QTest::newRow("quotes and backslashes") << "say \"hi\" \\n";
    QTest::newRow("line ends") << "get\r\n";
    QTest::newRow("characters beyond ASCII") << QString::fromUtf8("caf\xc3\xa9 \xe2\x82\xac");
}

void TestDiagnostics::aTextStandsInQuotesAsItIs()
{
    QFETCH(QString, text);
    MessageSpy log;
    zvDebug() << text;
    QCOMPARE(log.messages(), QStringList{"D:\"" + text + "\" "});
}

void TestDiagnostics::bytesStandInQuotesAsTheyAre()
{
    MessageSpy log;
    zvDebug() << "-->" << QByteArray("setssid \xe9\r\n");
    QCOMPARE(log.messages(), QStringList{QString("D:--> \"setssid \u00e9\r\n\" ")});
}

void TestDiagnostics::aNumberStandsInDecimal()
{
    MessageSpy log;
    zvDebug() << "Firmware:" << 60 << -1;
    QCOMPARE(log.messages(), QStringList{"D:Firmware: 60 -1 "});
}

void TestDiagnostics::oneStatementIsOneMessage()
{
    MessageSpy log;
    {
        ZVMessage message(QtDebugMsg);
        message << "one"
                << "two";
        QVERIFY2(log.messages().isEmpty(), "a message goes out whole, at its end");
    }
    QCOMPARE(log.messages(), QStringList{"D:one two "});
}

void TestDiagnostics::theLevelIsTheCallers()
{
    MessageSpy log;
    zvDebug() << "a";
    zvWarning() << "b";
    zvCritical() << "c";
    QCOMPARE(log.messages(), QStringList({"D:a ", "W:b ", "C:c "}));
}

QTEST_GUILESS_MAIN(TestDiagnostics)
#include "tst_diagnostics.moc"
