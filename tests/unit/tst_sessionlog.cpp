#include <csignal>
#include <cstdio>
#include <memory>

#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
#include <QLoggingCategory>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QTextStream>

#include "messages/diagnostics.h"
#include "messages/sessionlog.h"
#include "tests/support/filecontents.h"
#include "tests/support/messagespy.h"

namespace
{
/// Passes the message to the handler; returns what has reached standard output when the handler returns.
QByteArray outputOf(QtMsgType type, const QByteArray &message)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("output");
    std::fflush(stdout);
    const int earlier = ::dup(STDOUT_FILENO);
    if (!std::freopen(QFile::encodeName(path).constData(), "w", stdout))
        qFatal("cannot capture standard output");
    zvMessageOutput(type, message.constData());
    QByteArray output = contents(path); // only what the handler has flushed: the test does not flush
    std::fflush(stdout);
    ::dup2(earlier, STDOUT_FILENO);
    ::close(earlier);
    return output;
}
} // namespace

/// Tests which message goes to the session log, to standard output and to the console view.
class TestSessionLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void eachLevelGoesToItsDestinations_data();
    void eachLevelGoesToItsDestinations();
    void aMessageIsNeitherFormatNorMarkup();
    void theDevicesLineEndsSeparateTheLinesOfTheConsole();
    void theConsoleIsWrittenAtItsCursor();
    void theConsoleFollowsItsCursor();
    void messagesWithoutALogReachTheConsole();
    void nonAsciiBytesReachTheConsoleAsLatin1();
    void theHandlerGetsEveryMessageOfTheProgram();
    void namedCategoriesKeepTheirWarnings();
    void aFatalMessageIsRecordedBeforeTheProgramEnds();

private:
    QString logPath() const { return _home->filePath("zvinstall.log"); }

    std::unique_ptr<QTemporaryDir> _home;
    std::unique_ptr<QTextBrowser> _console;
};

void TestSessionLog::initTestCase()
{
    QVERIFY2(!theConsoleWindow, "a console exists at the start");
    QVERIFY2(!theTraceDebugFlag, "the trace flag is set at the start");
    QVERIFY2(!theSessionLog.device(), "the log has a device at the start");
}

void TestSessionLog::init()
{
    _home = std::make_unique<QTemporaryDir>();
    qputenv("HOME", QFile::encodeName(_home->path()));
    _console = std::make_unique<QTextBrowser>();
    theConsoleWindow = _console.get();
}

void TestSessionLog::cleanup()
{
    QLoggingCategory::setFilterRules({});
    qInstallMessageHandler(nullptr);
    theConsoleWindow = nullptr;
    theTraceDebugFlag = false;
    _console.reset();
}

void TestSessionLog::eachLevelGoesToItsDestinations_data()
{
    QTest::addColumn<QtMsgType>("type");
    QTest::addColumn<QByteArray>("logged");
    QTest::addColumn<QString>("inConsole");
    QTest::newRow("debug") << QtDebugMsg << QByteArray("D:abc\n") << "";
    QTest::newRow("info") << QtInfoMsg << QByteArray() << "abc";
    QTest::newRow("warning") << QtWarningMsg << QByteArray("W:abc\n") << "abc";
    QTest::newRow("critical") << QtCriticalMsg << QByteArray("C:abc\n") << "abc";
    QTest::newRow("fatal") << QtFatalMsg << QByteArray("F:abc\n") << "abc";
}

void TestSessionLog::eachLevelGoesToItsDestinations()
{
    QFETCH(QtMsgType, type);
    QFETCH(QByteArray, logged);
    QFETCH(QString, inConsole);
    openSessionLog();
    theSessionLog << "still in memory\n";
    QCOMPARE(contents(logPath()), QByteArray());
    QCOMPARE(outputOf(type, "abc"), QByteArray("abc\n"));
    QCOMPARE(contents(logPath()), "still in memory\n" + logged);
    QCOMPARE(_console->toPlainText(), inConsole);

    _console->clear();
    theTraceDebugFlag = true;
    zvMessageOutput(type, "abc");
    QCOMPARE(_console->toPlainText(), QStringLiteral("abc"));

    theConsoleWindow = nullptr;
    zvMessageOutput(type, "abc");
    QCOMPARE(contents(logPath()), "still in memory\n" + logged.repeated(3));
    QCOMPARE(_console->toPlainText(), QStringLiteral("abc"));
}

void TestSessionLog::aMessageIsNeitherFormatNorMarkup()
{
    openSessionLog();
    const QByteArray message = "100 % %s %n %1 <b>1</b>&amp;";
    QCOMPARE(outputOf(QtWarningMsg, message), message + '\n');
    QCOMPARE(contents(logPath()), "W:" + message + '\n');
    QCOMPARE(_console->toPlainText(), QString(message));
}

void TestSessionLog::theDevicesLineEndsSeparateTheLinesOfTheConsole()
{
    openSessionLog();
    zvMessageOutput(QtWarningMsg, "abc");
    zvMessageOutput(QtCriticalMsg, " d\nef");
    zvMessageOutput(QtWarningMsg, "g\r\n> ");
    QCOMPARE(_console->toPlainText(), QStringLiteral("abc d\nefg\n> "));
}

void TestSessionLog::theConsoleIsWrittenAtItsCursor()
{
    openSessionLog();
    zvMessageOutput(QtWarningMsg, "ad");
    _console->moveCursor(QTextCursor::PreviousCharacter); // as a user's click does
    zvMessageOutput(QtWarningMsg, "b");
    zvMessageOutput(QtWarningMsg, "c");
    QCOMPARE(_console->toPlainText(), QStringLiteral("abcd"));
}

void TestSessionLog::theConsoleFollowsItsCursor()
{
    openSessionLog();
    _console->resize(200, 100);
    _console->show();
    QVERIFY(QTest::qWaitForWindowExposed(_console.get()));
    const auto cursorIsInView = [this] {
        return _console->viewport()->rect().contains(_console->cursorRect());
    };
    for (int i = 0; i < 100; ++i)
        zvMessageOutput(QtWarningMsg, "line\n");
    QScrollBar *scroll = _console->verticalScrollBar();
    QVERIFY2(scroll->value() > 0 && cursorIsInView(), "the newest line is not visible");

    _console->moveCursor(QTextCursor::Start);
    scroll->setValue(scroll->maximum());
    QVERIFY(!cursorIsInView());
    zvMessageOutput(QtWarningMsg, "first line\n");
    QVERIFY2(cursorIsInView(), "the inserted text is not visible");
}

void TestSessionLog::messagesWithoutALogReachTheConsole()
{
    MessageSpy messagesOfQt;
    theSessionLog.setDevice(nullptr);
    zvMessageOutput(QtWarningMsg, "before the log is opened,");
    qputenv("HOME", QFile::encodeName(_home->filePath("no/such/folder")));
    openSessionLog();
    QCOMPARE(outputOf(QtWarningMsg, " and without one"), QByteArray(" and without one\n"));
    QCOMPARE(_console->toPlainText(), QStringLiteral("before the log is opened, and without one"));
    QCOMPARE(messagesOfQt.messages(), QStringList());
    QVERIFY2(!QFile::exists(_home->filePath("no")), "a folder was created for the log");
}

void TestSessionLog::nonAsciiBytesReachTheConsoleAsLatin1()
{
    openSessionLog();
    QCOMPARE(outputOf(QtWarningMsg, "caf\xc3\xa9"), QByteArray("caf\xc3\xa9\n"));
    QCOMPARE(contents(logPath()), QByteArray("W:caf\xc3\xa9\n"));
    QCOMPARE(_console->toPlainText(),
             QString::fromLatin1("caf\xc3\xa9")); // kept: each byte is one character
}

void TestSessionLog::theHandlerGetsEveryMessageOfTheProgram()
{
    openSessionLog();
    installMessageHandler();
    zvDebug() << "-->" << QByteArray("get\r\n");
    zvWarning() << QStringLiteral("one").append(QChar::Null).append("two"); // ends at the first zero byte
    qCritical("no port");
    QCOMPARE(contents(logPath()), QByteArray("D:--> \"get\r\n\" \nW:\"one\nC:no port\n"));
    QCOMPARE(_console->toPlainText(), QStringLiteral("\"oneno port"));
}

void TestSessionLog::namedCategoriesKeepTheirWarnings()
{
    openSessionLog();
    installMessageHandler();
    const QLoggingCategory early("zv.early");
    QLoggingCategory::setFilterRules("*=false");
    const QLoggingCategory late("zv.late");
    for (const QLoggingCategory *category : {&early, &late}) {
        qCDebug((*category), "debug");
        qCWarning((*category), "warning");
        qCCritical((*category), "critical");
    }
    zvDebug() << "from the program";
    QCOMPARE(contents(logPath()), QByteArray("W:warning\nC:critical\n"
                                             "W:warning\nC:critical\n"
                                             "D:from the program \n"));
}

void TestSessionLog::aFatalMessageIsRecordedBeforeTheProgramEnds()
{
    openSessionLog();
    const pid_t program = ::fork();
    if (program == 0) {
        std::signal(SIGABRT, SIG_DFL);
        if (!std::freopen("/dev/null", "w", stdout))
            ::_exit(1);
        installMessageHandler();
        qFatal("no way on");
    }
    int status = 0;
    QCOMPARE(::waitpid(program, &status, 0), program);
    QVERIFY2(WIFSIGNALED(status), "the fatal message did not abort the program");
    QCOMPARE(contents(logPath()), QByteArray("F:no way on\n"));
}

QTEST_MAIN(TestSessionLog)
#include "tst_sessionlog.moc"
