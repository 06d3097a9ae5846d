#include <QTest>

#include "messages/diagnostics.h"
#include "tests/support/messagespy.h"

/// Tests how one message is composed.
class TestDiagnostics : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachItemIsFollowedByOneSpace();
    void literalsAreBareAndEndAtTheFirstZeroByte();
    void textsAndBytesAreInQuotesAndUnchanged();
    void aMessageIsDeliveredWholeAtItsLevel();
};

void TestDiagnostics::eachItemIsFollowedByOneSpace()
{
    MessageSpy log;
    zvDebug() << "_commState = " << QStringLiteral("IN_PROMPT");
    zvDebug() << "port name:" << QStringLiteral("ttyUSB0") << 60 << -1 << QByteArray("x");
    zvDebug();
    QCOMPARE(log.messages(),
             QStringList({"D:_commState =  \"IN_PROMPT\" ", "D:port name: \"ttyUSB0\" 60 -1 \"x\" ", "D:"}));
}

void TestDiagnostics::literalsAreBareAndEndAtTheFirstZeroByte()
{
    MessageSpy log;
    zvDebug() << ""
              << " 100 %s %1 \\ \"";
    const QByteArray received("\x02<a>\xc3\xa9\xff</a>\x03\r\n\0>", 16); // each byte is one character
    zvDebug() << received.constData();
    QCOMPARE(log.messages(), QStringList({"D:  100 %s %1 \\ \" ",
                                          QString::fromLatin1("D:\x02<a>\xc3\xa9\xff</a>\x03\r\n ")}));
}

void TestDiagnostics::textsAndBytesAreInQuotesAndUnchanged()
{
    MessageSpy log;
    zvDebug() << QString();
    zvDebug() << QStringLiteral("  \"hi\" \\n \r\n caf\u00e9 \u20ac ");
    zvDebug() << QByteArray("setssid \xe9\r\n");
    QCOMPARE(log.messages(), QStringList({"D:\"\" ", QString("D:\"  \"hi\" \\n \r\n caf\u00e9 \u20ac \" "),
                                          QString("D:\"setssid \u00e9\r\n\" ")}));
}

void TestDiagnostics::aMessageIsDeliveredWholeAtItsLevel()
{
    MessageSpy log;
    {
        ZVMessage message(QtDebugMsg);
        message << "one"
                << "two";
        QCOMPARE(log.messages(), QStringList());
    }
    zvWarning() << "b";
    zvCritical() << "c";
    QCOMPARE(log.messages(), QStringList({"D:one two ", "W:b ", "C:c "}));
}

QTEST_GUILESS_MAIN(TestDiagnostics)
#include "tst_diagnostics.moc"
