#include "simulator/fakeusbbus.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLibraryInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "tests/support/filecontents.h"

namespace
{
bool write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

/// Removes the messages of the offscreen platform plugin.
QByteArray withoutPlatformMessages(QByteArray text)
{
    for (const char *prefix : {"W:", ""})
        text.replace(QByteArray(prefix) + "This plugin does not support propagateSizeHints()\n", "");
    return text;
}

/// The real program on a simulated computer without ports, in its own folders and with a probe inside. It
/// ends as soon as the probe has collected its data.
class Program
{
public:
    Program()
        : _folder(std::make_unique<QTemporaryDir>())
        , home(_folder->filePath(QStringLiteral("home")))
        , workingFolder(_folder->filePath(QStringLiteral("work")))
    {
        QDir().mkpath(home);
        QDir().mkpath(workingFolder);
        environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("inprocessprobe"));
        environment.insert(QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(ZV_TEST_PLUGINS));
        environment.insert(QStringLiteral("ZV_PROBE_REPORT"), report());
    }

    /// Runs the program until it has ended; \a how is the value of ZV_PROBE_END.
    void run(const QString &how = QStringLiteral("accept"))
    {
        environment.insert(QStringLiteral("HOME"), home);
        environment.insert(QStringLiteral("ZV_PROBE_END"), how);
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(workingFolder);
        process.start(path, QStringList());
        QVERIFY2(process.waitForFinished(60000), "the program is still running");
        output = process.readAllStandardOutput();
        errorOutput = process.readAllStandardError();
        QVERIFY2(process.exitStatus() == QProcess::NormalExit, errorOutput);
        exitCode = process.exitCode();
        seen = QJsonDocument::fromJson(contents(report())).object();
        QVERIFY2(!seen.isEmpty(), "the probe wrote no report");
    }

    /// Sets the program's language to German, and gives it its own folder for Qt's translation files.
    void useGerman()
    {
        environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("de_DE.UTF-8"));
        // Qt reads its paths from a file next to the program.
        path = _folder->filePath(QStringLiteral("zvinstall"));
        QVERIFY(QFile::copy(QStringLiteral(ZV_PROGRAM), path));
        QDir().mkpath(qtFolder());
        QVERIFY(write(_folder->filePath(QStringLiteral("qt.conf")),
                      "[Paths]\nPrefix=" + QLibraryInfo::path(QLibraryInfo::PrefixPath).toUtf8() +
                          "\nPlugins=" + QLibraryInfo::path(QLibraryInfo::PluginsPath).toUtf8() +
                          "\nTranslations=" + qtFolder().toUtf8() + "\n"));
    }
    QString qtFolder() const { return _folder->filePath(QStringLiteral("qt")); }

    QString logPath() const { return home + QStringLiteral("/zvinstall.log"); }
    QByteArray log() const { return contents(logPath()); }
    /// Returns one result of the probe.
    QVariant probed(const char *what) const { return seen.value(QLatin1String(what)).toVariant(); }
    /// Returns the texts that show which translation files are in use.
    QStringList texts() const
    {
        return {probed("windows").toStringList().join(' '), probed("console button").toString(),
                probed("console's title").toString(), probed("cancel button").toString()};
    }

private:
    QString report() const { return _folder->filePath(QStringLiteral("report.json")); }

    std::unique_ptr<QTemporaryDir> _folder;

public:
    QString path = QStringLiteral(ZV_PROGRAM);
    QString home;
    QString workingFolder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QByteArray output;
    QByteArray errorOutput;
    QJsonObject seen;
    int exitCode = -1;
};

/// Copies the test's translation file \a file into the folder, as \a name.
bool copyTranslation(const QString &file, const QString &folder, const QString &name)
{
    return QFile::copy(QStringLiteral(ZV_TRANSLATIONS "/") + file, folder + QLatin1Char('/') + name);
}

const QByteArray logOfTheStart = "D:List of ports: \n"
                                 "D:Sysid: \"\" \n"
                                 "W:the event loop runs\n";
const QByteArray logOfTheEnd = "D:_commState =  \"NOT_CONNECTED\" \n"
                               "W:the wizard is gone\n";
} // namespace

/// Tests the start and the end of the real program.
class TestMain : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void theLogHasTheMessagesOfThisRunOnly();
    void standardOutputHasEachMessageWithoutItsLevel();
    void messagesBeforeTheLogGoToQtsOutput();
    void theWizardIsTheOnlyWindow();
    void theIconIsEmptyBecauseItIsNotAmongTheImages();
    void loggingRulesDropNoMessage();
    void aMessageAfterTheEndOfTheLogIsHarmless();
    void theExitCodeIsThatOfTheEventLoop();
    void translationFilesElsewhereAreNotUsed();
    void translationFilesInTheirFoldersAreUsed();

private:
    const QByteArray _earlierLog = "D:another run, much longer\n" + QByteArray(10000, 'x');
    FakeUsbBus _computer;
    Program _typical; ///< has run once, on an earlier log
};

void TestMain::initTestCase()
{
    QVERIFY(write(_typical.logPath(), _earlierLog));
    _typical.environment.remove("QT_LOGGING_RULES"); // Qt's own output drops the messages that they disable
    _typical.run();
}

void TestMain::theLogHasTheMessagesOfThisRunOnly()
{
    QCOMPARE(withoutPlatformMessages(_typical.log()), logOfTheStart + logOfTheEnd);
    // Each message was on the disk as soon as it was logged.
    QCOMPARE(withoutPlatformMessages(_typical.probed("log").toByteArray()), logOfTheStart);
    QCOMPARE(_typical.probed("log before").toByteArray(),
             _earlierLog); // the application object is created first
    QCOMPARE(QDir(_typical.home).entryList(QDir::Files), QStringList{"zvinstall.log"});
    QCOMPARE(QDir(_typical.workingFolder).entryList(QDir::Files), QStringList());
}

void TestMain::standardOutputHasEachMessageWithoutItsLevel()
{
    QCOMPARE(withoutPlatformMessages(_typical.output), "List of ports: \n"
                                                       "Sysid: \"\" \n"
                                                       "the event loop runs\n"
                                                       "_commState =  \"NOT_CONNECTED\" \n"
                                                       "the wizard is gone\n");
    QVERIFY2(!_typical.errorOutput.contains("the event loop runs"), _typical.errorOutput);
}

void TestMain::messagesBeforeTheLogGoToQtsOutput()
{
    QVERIFY2(_typical.errorOutput.contains("the application object is being made"), _typical.errorOutput);
}

void TestMain::theWizardIsTheOnlyWindow()
{
    QCOMPARE(_typical.probed("windows").toStringList(), QStringList{"ZV Tolvar Setup v2.3"});
    QCOMPARE(_typical.probed("modal"), QVariant(false));
}

void TestMain::theIconIsEmptyBecauseItIsNotAmongTheImages()
{
    QCOMPARE(_typical.probed("bundle is there"), QVariant(true)); // before the application object
    QCOMPARE(_typical.probed("icon is empty"), QVariant(true));
    Program program;
    program.environment.insert("ZV_PROBE_BUNDLE", ZV_ICON); // contains ":/images/zv_setup.png"
    program.run();
    QCOMPARE(program.probed("icon is empty"), QVariant(false));
}

void TestMain::loggingRulesDropNoMessage()
{
    Program program;
    program.environment.insert("QT_LOGGING_RULES", "*=false");
    program.run();
    QVERIFY2(!program.errorOutput.contains("the application object is being made"),
             "the logging rules were not applied at the start");
    QCOMPARE(withoutPlatformMessages(program.log()), logOfTheStart + logOfTheEnd);
    QVERIFY2(program.probed("console").toString().endsWith("the event loop runs"), program.output);
}

void TestMain::aMessageAfterTheEndOfTheLogIsHarmless()
{
    Program program;
    program.environment.insert("ZV_PROBE_LAST_MESSAGE", "the last message");
    program.environment.insert("MALLOC_PERTURB_", "165"); // overwrites freed memory
    program.run();
    QVERIFY2(program.output.endsWith("the wizard is gone\nthe last message\n"), program.output);
    QCOMPARE(program.exitCode, 0);
    QCOMPARE(withoutPlatformMessages(program.log()), logOfTheStart + logOfTheEnd);
    QVERIFY2(!program.errorOutput.contains("AddressSanitizer"), program.errorOutput);
}

void TestMain::theExitCodeIsThatOfTheEventLoop()
{
    QCOMPARE(_typical.exitCode, 0);
    Program program;
    program.run("7");
    QCOMPARE(program.exitCode, 7);
}

void TestMain::translationFilesElsewhereAreNotUsed()
{
    Program program;
    program.useGerman();
    QVERIFY(copyTranslation("qt_de.qm", program.workingFolder, "qt_de.qm"));
    QVERIFY(copyTranslation("qt_de.qm", program.qtFolder(), "qt_fr.qm"));
    QVERIFY(copyTranslation("zvinstall_de.qm", program.qtFolder(), "zvinstall_de.qm"));
    QVERIFY(copyTranslation("zvinstall_de.qm", program.home, "zvinstall_de.qm"));
    QVERIFY(copyTranslation("zvinstall_de.qm", program.workingFolder, "zvinstall_fr.qm"));
    program.run();
    QCOMPARE(program.exitCode, 0);
    QCOMPARE(program.texts(), QStringList({"ZV Tolvar Setup v2.3", "&Console", "Console Log", "Cancel"}));
    QCOMPARE(program.probed("application's translators"), QVariant(1));
}

void TestMain::translationFilesInTheirFoldersAreUsed()
{
    Program program;
    program.useGerman();
    QVERIFY(copyTranslation("qt_de.qm", program.qtFolder(), "qt_de.qm"));
    program.run();
    QCOMPARE(program.texts(),
             QStringList({"ZV Tolvar Setup v2.3", "&Console", "Werkzeugkasten", "Abbrechen"}));

    // The program's own file is searched first.
    QVERIFY(copyTranslation("zvinstall_de.qm", program.workingFolder, "zvinstall_de_DE.qm"));
    program.run();
    QCOMPARE(program.texts(),
             QStringList({"ZV Tolvar einrichten v2.3", "&Konsole", "Mitschrift", "Abbrechen"}));
    QCOMPARE(program.probed("console's title at the end").toString(), QStringLiteral("Mitschrift"));
}

QTEST_GUILESS_MAIN(TestMain)
#include "tst_main.moc"
