#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include "device/qcorexmlstreamreader.h"
#include "messages/diagnostics.h"
#include "tests/support/filecontents.h"
#include "tests/support/signalrecorder.h"
#include "tests/support/zvtolvartestpeer.h"

namespace
{
/// A file for a log that reports the operations on it.
class WatchedFile : public QFile
{
public:
    WatchedFile(const QString &path, QStringList &steps)
        : QFile(path)
        , _steps(steps)
    {
    }
    ~WatchedFile() override { _steps += "deleted"; }

    void close() override
    {
        _steps += "closed";
        QFile::close();
    }

protected:
    qint64 writeData(const char *data, qint64 size) override
    {
        _steps += "written:" + QString::fromLatin1(data, size);
        return QFile::writeData(data, size);
    }

private:
    Q_DISABLE_COPY_MOVE(WatchedFile)

    QStringList &_steps;
};
} // namespace

/// Tests the reply that contains the device's log.
class TestLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void theLogIsWritten_data();
    void theLogIsWritten();
    void theFileIsWrittenClosedAndDeletedBeforeItsEndIsToldOf();
    void anEmptyRootWritesNothingAndStillFinishes();
    void aFileThatTakesNothingIsDeletedAllTheSame();
    void aLogCutOffInItsFirstTagIsStillAwaited();
    void onlyTheFirstLogIsWritten();
    void aLogThatNobodyWaitsForIsIgnored();
    void whatStandsBeforeTheLogIsSteppedOver();

private:
    void reply(const QString &document) { _tolvar->onResponseReceived(document); }
    QFile *logFile() const { return ZVTolvarTestPeer{*_tolvar}.logFile(); }
    QString path() const { return _folder.filePath("log.txt"); }
    /// Makes the controller wait for a log.
    void waitForLog(QIODevice::OpenMode mode = QIODevice::WriteOnly | QIODevice::Text);
    /// Returns the current content of the file, as Latin-1.
    QString written() const { return QString::fromLatin1(contents(path())); }

    QTemporaryDir _folder;
    QStringList _steps;
    std::unique_ptr<ZVTolvar> _tolvar;
    std::unique_ptr<SignalRecorder> _diary;
};

void TestLog::init()
{
    _tolvar = std::make_unique<ZVTolvar>();
    _diary = std::make_unique<SignalRecorder>(_tolvar.get());
    _steps.clear();
    QFile::remove(path());
}

void TestLog::cleanup()
{
    _diary.reset();
    _tolvar.reset();
}

void TestLog::waitForLog(QIODevice::OpenMode mode)
{
    auto file = std::make_unique<WatchedFile>(path(), _steps);
    if (mode & QIODevice::ReadOnly)
        QVERIFY(QFile(path()).open(QIODevice::WriteOnly));
    QVERIFY(file->open(mode));
    _tolvar->getLogFileTo(file.release());
    _diary->take();
}

void TestLog::theLogIsWritten_data()
{
    QTest::addColumn<QString>("document");
    QTest::addColumn<QString>("log"); // as Latin-1
    QTest::newRow("line by line") << "<log_file>one\ntwo &lt;x&gt;\n</log_file>"
                                  << "one\ntwo <x>\n";
    QTest::newRow("CR LF from the device is one line end") << "<log_file>one\r\ntwo\r\n</log_file>"
                                                           << "one\ntwo\n";
    QTest::newRow("as many bytes as characters, whatever they take")
        << QString("<log_file>caf\u00e9!\n</log_file>") << QString("caf\u00c3\u00a9!");
    QTest::newRow("cut off in the text: nothing of it can be read") << "<log_file>one\ntwo"
                                                                    << "";
    QTest::newRow("cut off in the text, behind a comment: what was before it") << "<log_file>one<!-- -->two"
                                                                               << "one";
    QTest::newRow("cut off in the text, behind a CDATA section: up to its end")
        << "<log_file>one<![CDATA[two]]>three"
        << "onetwo";
    QTest::newRow("cut off in the end tag: the whole text") << "<log_file>one\ntwo</log_f"
                                                            << "one\ntwo";
    QTest::newRow("a control byte: what was before it") << "<log_file>one\x01two</log_file>"
                                                        << "one";
    QTest::newRow("an undeclared entity: what was before it") << "<log_file>one&no;two</log_file>"
                                                              << "one";
    QTest::newRow("a zero byte is left out") << "<log_file>one" + QString(1, QChar(0)) + "two</log_file>"
                                             << "onetwo";
}

void TestLog::theLogIsWritten()
{
    QFETCH(QString, document);
    QFETCH(QString, log);
    waitForLog();
    reply(document);
    QCOMPARE(written(), log);
    QCOMPARE(logFile(), nullptr);
    QCOMPARE(_diary->take(), QStringList{"finishedWriteLog"});
}

void TestLog::theFileIsWrittenClosedAndDeletedBeforeItsEndIsToldOf()
{
    waitForLog();
    connect(_tolvar.get(), &ZVTolvar::finishedWriteLog, this,
            [this] { _steps += logFile() ? "told too early" : "told"; });
    reply("<log_file>one</log_file>");
    QCOMPARE(_steps, QStringList({"written:one", "closed", "deleted", "told"}));
}

void TestLog::anEmptyRootWritesNothingAndStillFinishes()
{
    waitForLog();
    reply("<log_file/>");
    _steps.removeOne("written:"); // of no bytes
    QCOMPARE(_steps, QStringList({"closed", "deleted"}));
    QCOMPARE(written(), QString());
    QCOMPARE(logFile(), nullptr);
    QCOMPARE(_diary->take(), QStringList{"finishedWriteLog"});
}

void TestLog::aFileThatTakesNothingIsDeletedAllTheSame()
{
    waitForLog(QIODevice::ReadOnly);
    enableAllMessages();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("ReadOnly device"));
    reply("<log_file>one</log_file>");
    QCOMPARE(_steps, QStringList({"closed", "deleted"}));
    QCOMPARE(_diary->take(), QStringList{"finishedWriteLog"});
}

void TestLog::aLogCutOffInItsFirstTagIsStillAwaited()
{
    waitForLog();
    reply("<log_fi");
    QVERIFY(logFile());
    QCOMPARE(_steps, QStringList());
    QCOMPARE(_diary->take(), QStringList());
    reply("<log_file>one</log_file>");
    QCOMPARE(written(), QStringLiteral("one"));
    QCOMPARE(_diary->take(), QStringList{"finishedWriteLog"});
}

void TestLog::onlyTheFirstLogIsWritten()
{
    waitForLog();
    reply("<log_file>one</log_file><log_file>two</log_file>");
    QCOMPARE(written(), QStringLiteral("one"));
    QCOMPARE(_diary->take(), QStringList{"finishedWriteLog"});
}

void TestLog::aLogThatNobodyWaitsForIsIgnored()
{
    reply("<log_file>one\ntwo\n</log_file>");
    QCOMPARE(_diary->take(), QStringList{"finishedWriteLog"});
    reply("<puckdata><name>T1</name></puckdata>");
    QCOMPARE(_diary->take(), QStringList{"systemIDChanged:T1"});
}

void TestLog::whatStandsBeforeTheLogIsSteppedOver()
{
    waitForLog();
    QCoreXmlStreamReader reader("<?xml version=\"1.0\"?><!-- the log --><log_file>one</log_file>");
    reader.readNext();
    ZVTolvarTestPeer{*_tolvar}.parseLog(reader);
    QCOMPARE(written(), QStringLiteral("one"));
}

QTEST_GUILESS_MAIN(TestLog)
#include "tst_zvtolvar_replies_log.moc"
