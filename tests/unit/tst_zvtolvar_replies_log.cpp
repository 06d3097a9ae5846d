#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "device/qcorexmlstreamreader.h"
#include "tests/support/filecontents.h"
#include "tests/support/scopedconnection.h"
#include "tests/support/signalrecorder.h"
#include "tests/support/zvtolvartestpeer.h"

namespace
{
/// A file that reports how it ends.
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

    void theLogIsWritten_data();
    void theLogIsWritten();
    void theFileIsClosedAndDeletedBeforeTheEndIsReported();
    void anUnrequestedLogIsIgnored();
    void contentBeforeTheLogIsSkipped();

private:
    QFile *&logFile() const { return ZVTolvarTestPeer{*_tolvar}.logFile(); }
    /// Returns the current content of the file, as Latin-1.
    QString written() const { return QString::fromLatin1(contents(_folder.filePath("log.txt"))); }

    QTemporaryDir _folder;
    QStringList _steps;
    std::unique_ptr<ZVTolvar> _tolvar;
    std::unique_ptr<SignalRecorder> _recorder;
};

// Sets up a controller that waits for a log.
void TestLog::init()
{
    _tolvar = std::make_unique<ZVTolvar>();
    _recorder = std::make_unique<SignalRecorder>(_tolvar.get());
    logFile() = new WatchedFile(_folder.filePath("log.txt"), _steps);
    QVERIFY(logFile()->open(QIODevice::WriteOnly | QIODevice::Text));
    _steps.clear();
}

void TestLog::theLogIsWritten_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("log"); // as Latin-1
    const auto row = [](const char *name, const QString &text, const QString &log) {
        QTest::newRow(name) << text << log;
    };
    row("line by line", "one\r\ntwo &lt;x&gt;\n</log_file>", "one\ntwo <x>\n");
    row("UTF-8 bytes, read as Latin-1", "caf\u00e9!\n</log_file>", "caf\u00c3\u00a9!");
    row("empty log", "</log_file>", "");
    row("truncated in the text, the text is lost", "one\ntwo", "");
    row("truncated after a comment, the text before it is kept", "one<!-- -->two", "one");
    row("truncated in the end tag, the text is kept", "one\ntwo</log_f", "one\ntwo");
    row("control byte, the text before it is kept", "one\x01two</log_file>", "one");
}

void TestLog::theLogIsWritten()
{
    QFETCH(QString, text);
    _tolvar->onResponseReceived("<log_file>" + text);
    QTEST(written(), "log");
    QCOMPARE(logFile(), nullptr);
    QCOMPARE(_recorder->take(), QStringList{"finishedWriteLog"});
}

void TestLog::theFileIsClosedAndDeletedBeforeTheEndIsReported()
{
    const ScopedConnection listener(_tolvar.get(), &ZVTolvar::finishedWriteLog,
                                    [this] { _steps += logFile() ? "reported too early" : "reported"; });
    _tolvar->onResponseReceived("<log_file>one</log_file>");
    QCOMPARE(_steps, QStringList({"closed", "deleted", "reported"}));
    QCOMPARE(written(), QStringLiteral("one"));
}

void TestLog::anUnrequestedLogIsIgnored()
{
    delete std::exchange(logFile(), nullptr);
    _tolvar->onResponseReceived("<log_file>one\ntwo\n</log_file>");
    QCOMPARE(_recorder->take(), QStringList{"finishedWriteLog"});
    QCOMPARE(written(), QString());
}

void TestLog::contentBeforeTheLogIsSkipped()
{
    QCoreXmlStreamReader reader("<?xml version=\"1.0\"?><!-- the log --><log_file>one</log_file>");
    reader.readNext();
    ZVTolvarTestPeer{*_tolvar}.parseLog(reader);
    QCOMPARE(written(), QStringLiteral("one"));
}

QTEST_GUILESS_MAIN(TestLog)
#include "tst_zvtolvar_replies_log.moc"
