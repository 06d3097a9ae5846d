#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>

#include "messages/diagnostics.h"
#include "messages/sessionlog.h"
#include "tests/support/filecontents.h"

// On Linux, Qt's local 8-bit encoding is always UTF-8. On Windows it is the code page, such as Latin-1. These
// two functions replace Qt's own for the whole program.
QString QString::fromLocal8Bit(QByteArrayView ba)
{
    return QString::fromLatin1(ba);
}
QByteArray QString::toLocal8Bit_helper(const QChar *data, qsizetype size)
{
    return QStringView(data, size).toLatin1();
}

/// Tests the session log where the local 8-bit encoding is not UTF-8.
class TestSessionLogEncoding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aMessageIsDecodedAsItWasEncoded();
};

void TestSessionLogEncoding::aMessageIsDecodedAsItWasEncoded()
{
    const QString text = QString::fromUtf8("caf\xc3\xa9");
    QCOMPARE(text.toLocal8Bit(), QByteArray("caf\xe9"));
    const QTemporaryDir home;
    qputenv("HOME", QFile::encodeName(home.path()));
    openSessionLog();
    installMessageHandler();
    zvDebug() << "SSID:" << text;
    zvDebug() << "from the device:" << QByteArray("\xc3\xa9");
    zvMessageOutput(QtDebugMsg, text.toLocal8Bit().constData());
    qInstallMessageHandler(nullptr);
    QCOMPARE(contents(home.filePath("zvinstall.log")), QByteArray("D:SSID: \"caf\xc3\xa9\" \n"
                                                                  "D:from the device: \"\xc3\x83\xc2\xa9\" \n"
                                                                  "D:caf\xc3\xa9\n"));
}

QTEST_GUILESS_MAIN(TestSessionLogEncoding)
#include "tst_sessionlog_encoding.moc"
