#include <cstdio>
#include <unistd.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QTextStream>
#include <QtTest>

#include "app/diagnostics.h"
#include "app/sessionlog.h"

namespace
{
QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

/// Sends standard output into a file while it lives.
class CapturedOutput
{
public:
    explicit CapturedOutput(const QString &path)
        : _path(path)
        , _earlier(::dup(STDOUT_FILENO))
    {
        std::fflush(stdout);
        if (!std::freopen(QFile::encodeName(path).constData(), "w", stdout))
            qFatal("standard output can't be captured");
    }
    ~CapturedOutput() { restore(); }
    QByteArray written()
    {
        // Without a flush of our own: what the handler wrote, it has flushed.
        return contents(_path);
    }

private:
    void restore()
    {
        std::fflush(stdout);
        ::dup2(_earlier, STDOUT_FILENO);
        ::close(_earlier);
    }

    QString _path;
    int _earlier;
};
} // namespace

/// The session log, standard output and the console view: who gets which message.
class TestSessionLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void eachLevelGoesWhereItBelongs_data();
    void eachLevelGoesWhereItBelongs();
    void withoutAConsoleNothingIsInserted();
    void theTraceFlagBringsDebugMessagesToTheConsole();
    void theConsoleIsLaidOutByTheDevicesLineEnds();
    void theConsoleFollowsItsEnd();
    void eachRunStartsAnew();
    void aLogThatCantBeOpenedIsNoHindrance();
    void bytesBeyondAscii();
    void everyMessageOfTheProgramPasses();

private:
    QString logPath() const { return _home->filePath("zvinstall.log"); }

    std::unique_ptr<QTemporaryDir> _home;
    std::unique_ptr<QTextBrowser> _console;
};

void TestSessionLog::init()
{
    _home = std::make_unique<QTemporaryDir>();
    qputenv("HOME", QFile::encodeName(_home->path()));
    _console = std::make_unique<QTextBrowser>();
    theConsoleWindow = _console.get();
}

void TestSessionLog::cleanup()
{
    qInstallMessageHandler(nullptr);
    theConsoleWindow = nullptr;
    theTraceDebugFlag = false;
    _console.reset();
}

void TestSessionLog::eachLevelGoesWhereItBelongs_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("console");
    QTest::newRow("debug: log and output only") << int(QtDebugMsg) << QByteArray("D:abc\n") << "";
    QTest::newRow("warning: all three") << int(QtWarningMsg) << QByteArray("W:abc\n") << "abc";
    QTest::newRow("critical: all three") << int(QtCriticalMsg) << QByteArray("C:abc\n") << "abc";
    QTest::newRow("fatal: all three") << int(QtFatalMsg) << QByteArray("F:abc\n") << "abc";
    QTest::newRow("info has no prefix: not in the log") << int(QtInfoMsg) << QByteArray() << "abc";
}

void TestSessionLog::eachLevelGoesWhereItBelongs()
{
    QFETCH(int, type);
    QFETCH(QByteArray, line);
    QFETCH(QString, console);
    openSessionLog();
    QByteArray output;
    {
        CapturedOutput captured(_home->filePath("output"));
        zvMessageOutput(static_cast<QtMsgType>(type), "abc");
        output = captured.written();
    }
    QCOMPARE(contents(logPath()), line);
    QCOMPARE(output, QByteArray("abc\n"));
    QCOMPARE(_console->toPlainText(), console);
}

void TestSessionLog::withoutAConsoleNothingIsInserted()
{
    openSessionLog();
    theConsoleWindow = nullptr;
    zvMessageOutput(QtWarningMsg, "abc");
    QCOMPARE(_console->toPlainText(), QString());
    QCOMPARE(contents(logPath()), QByteArray("W:abc\n"));
}

void TestSessionLog::theTraceFlagBringsDebugMessagesToTheConsole()
{
    openSessionLog();
    QVERIFY2(!theTraceDebugFlag, "the flag starts false");
    theTraceDebugFlag = true;
    zvMessageOutput(QtDebugMsg, "abc");
    QCOMPARE(_console->toPlainText(), QStringLiteral("abc"));
}

void TestSessionLog::theConsoleIsLaidOutByTheDevicesLineEnds()
{
    openSessionLog();
    zvMessageOutput(QtWarningMsg, "abc");
    zvMessageOutput(QtWarningMsg, " <b>d</b>\nef");
    QCOMPARE(_console->toPlainText(), QStringLiteral("abc <b>d</b>\nef"));
}

void TestSessionLog::theConsoleFollowsItsEnd()
{
    openSessionLog();
    _console->resize(200, 100);
    _console->show();
    QVERIFY(QTest::qWaitForWindowExposed(_console.get()));
    for (int i = 0; i < 100; ++i)
        zvMessageOutput(QtWarningMsg, "line\n");
    QVERIFY2(_console->viewport()->rect().intersects(_console->cursorRect()), "the newest line is in view");
}

void TestSessionLog::eachRunStartsAnew()
{
    openSessionLog();
    zvMessageOutput(QtDebugMsg, "first run ");
    QCOMPARE(contents(logPath()), QByteArray("D:first run \n"));
    openSessionLog();
    zvMessageOutput(QtWarningMsg, "second run");
    QCOMPARE(contents(logPath()), QByteArray("W:second run\n"));
}

void TestSessionLog::aLogThatCantBeOpenedIsNoHindrance()
{
    qputenv("HOME", QFile::encodeName(_home->filePath("no/such/folder")));
    openSessionLog();
    QByteArray output;
    {
        CapturedOutput captured(_home->filePath("output"));
        zvMessageOutput(QtWarningMsg, "abc");
        output = captured.written();
    }
    QCOMPARE(output, QByteArray("abc\n"));
    QCOMPARE(_console->toPlainText(), QStringLiteral("abc"));
}

void TestSessionLog::bytesBeyondAscii()
{
    openSessionLog();
    QByteArray output;
    {
        CapturedOutput captured(_home->filePath("output"));
        zvMessageOutput(QtWarningMsg, "caf\xc3\xa9");
        output = captured.written();
    }
    QCOMPARE(contents(logPath()), QByteArray("W:caf\xc3\xa9\n"));
    QCOMPARE(output, QByteArray("caf\xc3\xa9\n"));
    QCOMPARE(_console->toPlainText(),
             QString::fromLatin1("caf\xc3\xa9")); // kept: the console takes bytes as ASCII
}

void TestSessionLog::everyMessageOfTheProgramPasses()
{
    openSessionLog();
    installMessageHandler();
    zvDebug() << "->IN_PROMPT";
    zvDebug() << "-->" << QByteArray("get\r\n");
    zvWarning() << "abc";
    qCritical("no port");
    QCOMPARE(contents(logPath()), QByteArray("D:->IN_PROMPT \nD:--> \"get\r\n\" \nW:abc \nC:no port\n"));
    QCOMPARE(_console->toPlainText(), QStringLiteral("abc no port"));
}

QTEST_MAIN(TestSessionLog)
#include "tst_sessionlog.moc"
