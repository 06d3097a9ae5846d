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

#include "app/zvtolvarsetupwizard.h"
#include "messages/diagnostics.h"
#include "messages/sessionlog.h"
#include "pages/pageid.h"
#include "tests/support/filecontents.h"
#include "tests/support/messagespy.h"

namespace
{
/// Passes the message to the handler; returns what has reached standard output when the handler returns.
QByteArray outputOf(QtMsgType type, const char *message)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("output");
    std::fflush(stdout);
    const int earlier = ::dup(STDOUT_FILENO);
    if (!std::freopen(QFile::encodeName(path).constData(), "w", stdout))
        qFatal("standard output can't be captured");
    zvMessageOutput(type, message);
    QByteArray output = contents(path); // the test does not flush: only what the handler flushed is here
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

    void eachLevelGoesWhereItBelongs_data();
    void eachLevelGoesWhereItBelongs();
    void everyMessageWritesTheLogToTheDisk_data() { levels(); }
    void everyMessageWritesTheLogToTheDisk();
    void aMessageIsNoFormat();
    void aWarningAloneLeavesNoLineBreakInTheConsole();
    void theConsoleIsLaidOutByTheDevicesLineEnds();
    void theConsoleTakesMarkupForText();
    void theConsoleIsWrittenAtItsCursor();
    void theConsoleFollowsItsCursor();
    void eachRunStartsAnew();
    void aLogThatCantBeOpenedIsNoHindrance();
    void beforeTheLogIsOpenedNothingIsWritten();
    void bytesBeyondAscii();
    void everyMessageOfTheProgramPasses();
    void aMessageEndsAtItsFirstZeroByte();
    void namedCategoriesKeepTheirWarnings();
    void aFatalMessageIsRecordedBeforeTheProgramEnds();

private:
    static void levels();
    QString logPath() const { return _home->filePath("zvinstall.log"); }

    std::unique_ptr<QTemporaryDir> _home;
    std::unique_ptr<QTextBrowser> _console;
};

void TestSessionLog::initTestCase()
{
    QVERIFY2(!theConsoleWindow, "there is no console at first");
    QVERIFY2(!theTraceDebugFlag, "the trace flag starts false");
    QVERIFY2(!theSessionLog.device(), "the log goes nowhere at first");
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

namespace
{
struct Level {
    const char *name;
    QtMsgType type;
    const char *logged; // of the message "abc"
};
constexpr Level allLevels[] = {
    {"debug", QtDebugMsg, "D:abc\n"},     {"info", QtInfoMsg, ""},
    {"warning", QtWarningMsg, "W:abc\n"}, {"critical", QtCriticalMsg, "C:abc\n"},
    {"fatal", QtFatalMsg, "F:abc\n"},
};

using Deed = void (*)(ZVTolvarSetupWizard &wizard);

struct ConsoleState {
    const char *name;
    Deed deed; // what happens to the wizard before the message
    bool getsDebugMessages;
    bool getsOthers;
};
const ConsoleState consoleStates[] = {
    // clang-format off
    {"with a console",                   [](auto &) {},                                           false, true},
    {"with a console and the trace flag", [](auto &) { theTraceDebugFlag = true; },               true,  true},
    {"after the wizard's OnFinished",    [](auto &wizard) { wizard.OnFinished(0); },              false, false},
    {"after OnFinished with the flag",   [](auto &wizard) { wizard.OnFinished(0);
                                                            theTraceDebugFlag = true; },          false, false},
    {"after the choose-network page",    [](auto &wizard) { delete wizard.page(ChooseNetworkPageId); }, false, false},
    // clang-format on
};
} // namespace

void TestSessionLog::levels()
{
    QTest::addColumn<int>("type");
    for (const Level &level : allLevels)
        QTest::newRow(level.name) << int(level.type);
}

void TestSessionLog::eachLevelGoesWhereItBelongs_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("logged");
    QTest::addColumn<bool>("early");
    QTest::addColumn<Deed>("deed");
    QTest::addColumn<bool>("inConsole");
    for (const Level &level : allLevels) {
        const auto row = [&level](const char *when) -> QTestData & {
            return QTest::addRow("%s %s", level.name, when) << int(level.type) << QByteArray(level.logged);
        };
        row("before there is a console") << true << Deed([](auto &) {}) << false;
        for (const ConsoleState &state : consoleStates) {
            row(state.name) << false << state.deed
                            << (level.type == QtDebugMsg ? state.getsDebugMessages : state.getsOthers);
        }
    }
}

void TestSessionLog::eachLevelGoesWhereItBelongs()
{
    QFETCH(int, type);
    QFETCH(QByteArray, logged);
    QFETCH(bool, early);
    QFETCH(Deed, deed);
    QFETCH(bool, inConsole);
    theConsoleWindow = nullptr;
    std::unique_ptr<ZVTolvarSetupWizard> wizard;
    if (!early) {
        wizard = std::make_unique<ZVTolvarSetupWizard>();
        deed(*wizard);
    }
    openSessionLog();
    const QByteArray output = outputOf(static_cast<QtMsgType>(type), "abc");
    QCOMPARE(contents(logPath()), logged);
    QCOMPARE(output, QByteArray("abc\n"));
    if (early)
        wizard = std::make_unique<ZVTolvarSetupWizard>(); // no message has been kept for it
    QCOMPARE(wizard->findChild<QTextBrowser *>("textBrowser_log_console")->toPlainText(),
             QString(inConsole ? "abc" : ""));
}

void TestSessionLog::everyMessageWritesTheLogToTheDisk()
{
    QFETCH(int, type);
    openSessionLog();
    theSessionLog << "still in memory\n";
    QCOMPARE(contents(logPath()), QByteArray());
    zvMessageOutput(static_cast<QtMsgType>(type), "abc");
    QVERIFY2(contents(logPath()).startsWith("still in memory\n"), contents(logPath()));
}

void TestSessionLog::aMessageIsNoFormat()
{
    openSessionLog();
    const QByteArray output = outputOf(QtWarningMsg, "100 % %s %n %1");
    QCOMPARE(output, QByteArray("100 % %s %n %1\n"));
    QCOMPARE(contents(logPath()), QByteArray("W:100 % %s %n %1\n"));
    QCOMPARE(_console->toPlainText(), QStringLiteral("100 % %s %n %1"));
}

void TestSessionLog::aWarningAloneLeavesNoLineBreakInTheConsole()
{
    openSessionLog();
    zvMessageOutput(QtWarningMsg, "abc");
    QCOMPARE(_console->toPlainText(), QStringLiteral("abc"));
    QCOMPARE(_console->document()->blockCount(), 1);
}

void TestSessionLog::theConsoleIsLaidOutByTheDevicesLineEnds()
{
    openSessionLog();
    zvMessageOutput(QtWarningMsg, "abc");
    zvMessageOutput(QtCriticalMsg, " d\nef");
    zvMessageOutput(QtWarningMsg, "g\r\n> ");
    QCOMPARE(_console->toPlainText(), QStringLiteral("abc d\nefg\n> "));
}

void TestSessionLog::theConsoleTakesMarkupForText()
{
    openSessionLog();
    zvMessageOutput(QtWarningMsg, "<puckdata><b>1</b>&amp;</puckdata>");
    QCOMPARE(_console->toPlainText(), QStringLiteral("<puckdata><b>1</b>&amp;</puckdata>"));
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
    QVERIFY2(scroll->value() > 0 && cursorIsInView(), "the newest line is in view");

    _console->moveCursor(QTextCursor::Start);
    scroll->setValue(scroll->maximum());
    QVERIFY(!cursorIsInView());
    zvMessageOutput(QtWarningMsg, "first line\n");
    QVERIFY2(cursorIsInView(), "the view goes to where the text is inserted");
}

void TestSessionLog::eachRunStartsAnew()
{
    openSessionLog();
    zvMessageOutput(QtDebugMsg, "first run ");
    QCOMPARE(contents(logPath()), QByteArray("D:first run \n"));
    openSessionLog();
    QCOMPARE(contents(logPath()), QByteArray());
    zvMessageOutput(QtWarningMsg, "second run");
    QCOMPARE(contents(logPath()), QByteArray("W:second run\n"));
}

void TestSessionLog::aLogThatCantBeOpenedIsNoHindrance()
{
    qputenv("HOME", QFile::encodeName(_home->filePath("no/such/folder")));
    MessageSpy toolkit;
    openSessionLog();
    const QByteArray output = outputOf(QtWarningMsg, "abc");
    QCOMPARE(output, QByteArray("abc\n"));
    QCOMPARE(_console->toPlainText(), QStringLiteral("abc"));
    QCOMPARE(toolkit.messages(), QStringList()); // Qt reports nothing
    QVERIFY2(!QFile::exists(_home->filePath("no")), "no folder is made for the log");
}

void TestSessionLog::beforeTheLogIsOpenedNothingIsWritten()
{
    theSessionLog.setDevice(nullptr);
    MessageSpy toolkit;
    zvMessageOutput(QtWarningMsg, "abc");
    QCOMPARE(_console->toPlainText(), QStringLiteral("abc"));
    openSessionLog();
    zvMessageOutput(QtWarningMsg, "def");
    QCOMPARE(contents(logPath()), QByteArray("W:def\n"));
    QCOMPARE(toolkit.messages(), QStringList());
}

void TestSessionLog::bytesBeyondAscii()
{
    openSessionLog();
    const QByteArray output = outputOf(QtWarningMsg, "caf\xc3\xa9");
    QCOMPARE(contents(logPath()), QByteArray("W:caf\xc3\xa9\n"));
    QCOMPARE(output, QByteArray("caf\xc3\xa9\n"));
    QCOMPARE(_console->toPlainText(),
             QString::fromLatin1("caf\xc3\xa9")); // kept: each byte is one character
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

void TestSessionLog::aMessageEndsAtItsFirstZeroByte()
{
    openSessionLog();
    installMessageHandler();
    zvWarning() << QStringLiteral("one").append(QChar::Null).append("two");
    zvWarning() << "three";
    QCOMPARE(contents(logPath()), QByteArray("W:\"one\nW:three \n"));
    QCOMPARE(_console->toPlainText(), QStringLiteral("\"onethree "));
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
    QVERIFY2(WIFSIGNALED(status), "the toolkit was expected to end the program");
    QCOMPARE(contents(logPath()), QByteArray("F:no way on\n"));
}

QTEST_MAIN(TestSessionLog)
#include "tst_sessionlog.moc"
