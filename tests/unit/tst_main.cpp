#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLibraryInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "simulator/fakeusbbus.h"
#include "tests/support/filecontents.h"

namespace
{
bool write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

/// Removes the messages of the offscreen platform plugin.
QByteArray withoutRemarks(QByteArray text)
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

    /// Runs the program until it has ended; \a how selects the way it ends, in the probe's terms.
    void run(const QString &how = QStringLiteral("accept"))
    {
        environment.insert(QStringLiteral("HOME"), home);
        environment.insert(QStringLiteral("ZV_PROBE_END"), how);
        QProcess process;
        if (_givesUpRoot)
            process.setChildProcessModifier(becomeNobody);
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(workingFolder);
        process.start(path, QStringList());
        QVERIFY2(process.waitForFinished(60000), "the program was expected to end");
        output = process.readAllStandardOutput();
        errorOutput = process.readAllStandardError();
        QVERIFY2(process.exitStatus() == QProcess::NormalExit, errorOutput);
        exitCode = process.exitCode();
        seen = QJsonDocument::fromJson(contents(report())).object();
        QVERIFY2(!seen.isEmpty(), "the probe was expected to leave a report");
    }

    /// Sets the program's language to German, and gives it its own folder for Qt's translation files.
    void speakGerman()
    {
        environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("de_DE.UTF-8"));
        // Qt reads its paths from a file next to the program.
        path = _folder->filePath(QStringLiteral("zvinstall"));
        QVERIFY(QFile::copy(QStringLiteral(ZV_PROGRAM), path));
        QDir().mkpath(toolkitFolder());
        QVERIFY(write(_folder->filePath(QStringLiteral("qt.conf")),
                      "[Paths]\nPrefix=" + QLibraryInfo::path(QLibraryInfo::PrefixPath).toUtf8() +
                          "\nPlugins=" + QLibraryInfo::path(QLibraryInfo::PluginsPath).toUtf8() +
                          "\nTranslations=" + toolkitFolder().toUtf8() + "\n"));
    }
    /// Runs the program as an ordinary user: if the test runs as root, the program changes to another user,
    /// who gets access to everything it needs.
    void giveUpRoot()
    {
        if (::geteuid() != 0)
            return;
        _givesUpRoot = true;
        path = _folder->filePath(QStringLiteral("zvinstall"));
        QVERIFY(QFile::copy(QStringLiteral(ZV_PROGRAM), path));
        const QString plugins = _folder->filePath(QStringLiteral("generic"));
        QDir().mkpath(plugins);
        QDirIterator built(QStringLiteral(ZV_TEST_PLUGINS "/generic"), QDir::Files);
        while (built.hasNext()) {
            built.next();
            QVERIFY(QFile::copy(built.filePath(), plugins + QLatin1Char('/') + built.fileName()));
        }
        environment.insert(QStringLiteral("QT_PLUGIN_PATH"), _folder->path());
        for (const QString &folder : {_folder->path(), home, workingFolder})
            QCOMPARE(::chown(QFile::encodeName(folder).constData(), Nobody, Nobody), 0);
        QCOMPARE(::chmod(qgetenv("UMOCKDEV_DIR").constData(), 0755),
                 0); // all users may access the simulated computer
    }
    QString toolkitFolder() const { return _folder->filePath(QStringLiteral("toolkit")); }

    QString logPath() const { return home + QStringLiteral("/zvinstall.log"); }
    QByteArray log() const { return contents(logPath()); }
    /// Returns a text that the probe saw.
    QString saw(const char *what) const { return seen.value(QLatin1String(what)).toString(); }

private:
    static constexpr uid_t Nobody = 65534;

    static void becomeNobody()
    {
        if (::setgroups(0, nullptr) != 0 || ::setresgid(Nobody, Nobody, Nobody) != 0 ||
            ::setresuid(Nobody, Nobody, Nobody) != 0)
            ::_exit(99);
    }
    QString report() const { return _folder->filePath(QStringLiteral("report.json")); }

    std::unique_ptr<QTemporaryDir> _folder;
    bool _givesUpRoot = false;

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

/// Copies the test's translation file \a catalogue into the folder, as \a name.
bool putCatalogue(const QString &catalogue, const QString &folder, const QString &name)
{
    return QFile::copy(QStringLiteral(ZV_CATALOGUES "/") + catalogue, folder + QLatin1Char('/') + name);
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
    void theLogHoldsThisRunFromItsFirstMessageToItsLast();
    void theLogOfTheRunBeforeIsLost();
    void messagesBeforeTheLogGoWhereTheToolkitSendsThem();
    void standardOutputHasEachMessageBare();
    void loggingRulesDropNoMessage_data();
    void loggingRulesDropNoMessage();
    void aMessageAfterTheLogHasGoneDoesNoHarm();
    void theLogStandsInTheHomeFolder();
    void aLogThatCantBeWrittenIsNoHindrance_data();
    void aLogThatCantBeWrittenIsNoHindrance();
    void anOrdinaryUserCanRunIt();
    void theWizardIsTheOneWindow();
    void theApplicationsIconStaysEmpty();
    void theApplicationsIconIsLookedForAmongTheImages();
    void thePicturesAreThereBeforeTheApplication();
    void theExitCodeIsTheEventLoops_data();
    void theExitCodeIsTheEventLoops();
    void theTextsAreTheSourcesWithoutACatalogue();
    void theProgramsCatalogueStandsInTheCurrentFolder_data();
    void theProgramsCatalogueStandsInTheCurrentFolder();
    void theToolkitsCatalogueStandsInTheToolkitsFolder_data();
    void theToolkitsCatalogueStandsInTheToolkitsFolder();
    void eachCatalogueIsLookedForInItsOwnFolderAlone();
    void theProgramsCatalogueGoesBeforeTheToolkits();
    void anotherLanguagesCataloguesAreLeftAlone();

private:
    FakeUsbBus _computer;
};

void TestMain::theLogHoldsThisRunFromItsFirstMessageToItsLast()
{
    Program program;
    program.run();
    QCOMPARE(withoutRemarks(program.log()), logOfTheStart + logOfTheEnd);
    // Each message was on the disk as soon as it was logged.
    QCOMPARE(withoutRemarks(program.saw("log").toLocal8Bit()), logOfTheStart);
}

void TestMain::theLogOfTheRunBeforeIsLost()
{
    Program program;
    program.run();
    const QByteArray log = program.log();
    program.run();
    QCOMPARE(program.log(), log);

    const QByteArray earlier = "D:another run, much longer\n" + QByteArray(10000, 'x');
    QVERIFY(write(program.logPath(), earlier));
    program.run();
    QCOMPARE(program.log(), log);
    QCOMPARE(program.saw("log before").toLatin1(), earlier); // the application object is created first
}

void TestMain::messagesBeforeTheLogGoWhereTheToolkitSendsThem()
{
    Program program;
    program.environment.remove("QT_LOGGING_RULES"); // Qt's own output drops the messages that they disable
    program.run();
    const QByteArray early = "the application object is being made";
    QVERIFY2(program.errorOutput.contains(early), program.errorOutput);
    QVERIFY2(!program.log().contains(early), program.log());
    QVERIFY2(!program.output.contains(early), program.output);
}

void TestMain::standardOutputHasEachMessageBare()
{
    Program program;
    program.run();
    QCOMPARE(withoutRemarks(program.output), "List of ports: \n"
                                             "Sysid: \"\" \n"
                                             "the event loop runs\n"
                                             "_commState =  \"NOT_CONNECTED\" \n"
                                             "the wizard is gone\n");
    QVERIFY2(!program.errorOutput.contains("the event loop runs"), "nothing goes to standard error any more");
}

void TestMain::loggingRulesDropNoMessage_data()
{
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("rules");
    for (const char *rule : {"*=false", "*.debug=false", "*.warning=false", "default=false"}) {
        QTest::addRow("%s in the environment", rule) << "QT_LOGGING_RULES" << rule;
        QTest::addRow("%s in the user's qtlogging.ini", rule) << "XDG_CONFIG_HOME" << rule;
        QTest::addRow("%s in a file that the environment names", rule) << "QT_LOGGING_CONF" << rule;
    }
}

void TestMain::loggingRulesDropNoMessage()
{
    QFETCH(QString, variable);
    QFETCH(QString, rules);
    Program program;
    const QDir settings(program.workingFolder);
    const QString file = settings.filePath("QtProject/qtlogging.ini");
    QVERIFY(settings.mkdir("QtProject"));
    QVERIFY(write(file, "[Rules]\n" + rules.toUtf8() + "\n"));
    const QHash<QString, QString> values{
        {"QT_LOGGING_RULES", rules}, {"XDG_CONFIG_HOME", settings.path()}, {"QT_LOGGING_CONF", file}};
    program.environment.remove("QT_LOGGING_RULES"); // it is deleted before the files
    program.environment.insert(variable, values.value(variable));
    program.run();
    QVERIFY2(!program.errorOutput.contains("the application object is being made") ||
                 rules == "*.debug=false",
             "the rules are in force before the program installs its handler");
    QCOMPARE(withoutRemarks(program.log()), logOfTheStart + logOfTheEnd);
    QVERIFY2(program.saw("console").endsWith("the event loop runs"), qPrintable(program.saw("console")));
}

void TestMain::aMessageAfterTheLogHasGoneDoesNoHarm()
{
    Program program;
    program.environment.insert("ZV_PROBE_LAST_MESSAGE", "the last message");
    program.environment.insert("MALLOC_PERTURB_", "165"); // overwrites freed memory
    program.run();
    QVERIFY2(program.output.endsWith("the wizard is gone\nthe last message\n"), program.output);
    QCOMPARE(program.exitCode, 0);
    QCOMPARE(withoutRemarks(program.log()), logOfTheStart + logOfTheEnd);
    QVERIFY2(!program.errorOutput.contains("AddressSanitizer"), program.errorOutput);
}

void TestMain::theLogStandsInTheHomeFolder()
{
    Program program;
    program.run();
    QCOMPARE(QDir(program.home).entryList(QDir::Files), QStringList{"zvinstall.log"});
    QCOMPARE(QDir(program.workingFolder).entryList(QDir::Files), QStringList());
}

void TestMain::aLogThatCantBeWrittenIsNoHindrance_data()
{
    QTest::addColumn<bool>("folderInItsPlace");
    QTest::newRow("the home folder does not exist") << false;
    QTest::newRow("a folder stands in the file's place") << true;
}

void TestMain::aLogThatCantBeWrittenIsNoHindrance()
{
    QFETCH(bool, folderInItsPlace);
    Program program;
    if (folderInItsPlace)
        QVERIFY(QDir().mkpath(program.logPath()));
    else
        program.home += QStringLiteral("/nowhere");
    program.run();
    QCOMPARE(program.exitCode, 0);
    QVERIFY2(!QFileInfo(program.logPath()).isFile(), "no log was expected");
    QVERIFY2(program.output.startsWith("List of ports: \n"), program.output);
    QVERIFY2(program.saw("console").endsWith("the event loop runs"), qPrintable(program.saw("console")));
    QVERIFY2(!program.errorOutput.contains("zvinstall.log"), program.errorOutput);
}

void TestMain::anOrdinaryUserCanRunIt()
{
    Program program;
    program.giveUpRoot();
    program.run();
    QCOMPARE(program.exitCode, 0);
    QCOMPARE(withoutRemarks(program.log()), logOfTheStart + logOfTheEnd);
    QVERIFY(QFileInfo(program.logPath()).ownerId() != 0);
    QCOMPARE(program.seen.value("windows").toArray(), QJsonArray{"ZV Tolvar Setup v2.3"});
}

void TestMain::theWizardIsTheOneWindow()
{
    Program program;
    program.run();
    QCOMPARE(program.seen.value("windows").toArray(), QJsonArray{"ZV Tolvar Setup v2.3"});
    QCOMPARE(program.seen.value("modal"), QJsonValue(false));
}

void TestMain::theApplicationsIconStaysEmpty()
{
    Program program;
    program.run();
    QCOMPARE(program.seen.value("icon is empty"), QJsonValue(true));
}

void TestMain::theApplicationsIconIsLookedForAmongTheImages()
{
    Program program;
    program.environment.insert("ZV_PROBE_BUNDLE", ZV_ICON); // contains ":/images/zv_setup.png"
    program.run();
    QCOMPARE(program.seen.value("icon is empty"), QJsonValue(false));
}

void TestMain::thePicturesAreThereBeforeTheApplication()
{
    Program program;
    program.run();
    QCOMPARE(program.seen.value("bundle is there"), QJsonValue(true));
}

void TestMain::theExitCodeIsTheEventLoops_data()
{
    QTest::addColumn<QString>("how");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("Finish ends the loop with 0") << "accept" << 0;
    QTest::newRow("Cancel ends the loop with 0") << "reject" << 0;
    QTest::newRow("the loop's own code is handed on") << "7" << 7;
}

void TestMain::theExitCodeIsTheEventLoops()
{
    QFETCH(QString, how);
    QFETCH(int, exitCode);
    Program program;
    program.run(how);
    QCOMPARE(program.exitCode, exitCode);
}

void TestMain::theTextsAreTheSourcesWithoutACatalogue()
{
    Program program;
    program.speakGerman();
    program.run();
    QCOMPARE(program.exitCode, 0);
    QCOMPARE(program.seen.value("windows").toArray(), QJsonArray{"ZV Tolvar Setup v2.3"});
    QCOMPARE(program.saw("console button"), QStringLiteral("&Console"));
    QCOMPARE(program.saw("cancel button"), QStringLiteral("Cancel"));
    QCOMPARE(program.saw("console's title"), QStringLiteral("Console Log"));
}

void TestMain::theProgramsCatalogueStandsInTheCurrentFolder_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("named for the language and the country") << "zvinstall_de_DE.qm";
    QTest::newRow("named for the language") << "zvinstall_de.qm";
    QTest::newRow("named for no language") << "zvinstall.qm";
}

void TestMain::theProgramsCatalogueStandsInTheCurrentFolder()
{
    QFETCH(QString, name);
    Program program;
    program.speakGerman();
    QVERIFY(putCatalogue("zvinstall_de.qm", program.workingFolder, name));
    program.run();
    QCOMPARE(program.seen.value("windows").toArray(), QJsonArray{"ZV Tolvar einrichten v2.3"});
    QCOMPARE(program.saw("console button"), QStringLiteral("&Konsole"));
    QCOMPARE(program.saw("console's title"), QStringLiteral("Mitschrift"));
    QCOMPARE(program.saw("console's title at the end"), QStringLiteral("Mitschrift"));
}

void TestMain::theToolkitsCatalogueStandsInTheToolkitsFolder_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("named for the language and the country") << "qt_de_DE.qm";
    QTest::newRow("named for the language") << "qt_de.qm";
}

void TestMain::theToolkitsCatalogueStandsInTheToolkitsFolder()
{
    QFETCH(QString, name);
    Program program;
    program.speakGerman();
    QVERIFY(putCatalogue("qt_de.qm", program.toolkitFolder(), name));
    program.run();
    QCOMPARE(program.saw("cancel button"), QStringLiteral("Abbrechen"));
    QCOMPARE(program.saw("console button"), QStringLiteral("&Console"));
    QCOMPARE(program.seen.value("application's translators"),
             QJsonValue(1)); // it is deleted with the application
}

void TestMain::eachCatalogueIsLookedForInItsOwnFolderAlone()
{
    Program program;
    program.speakGerman();
    QVERIFY(putCatalogue("qt_de.qm", program.workingFolder, "qt_de.qm"));
    QVERIFY(putCatalogue("zvinstall_de.qm", program.toolkitFolder(), "zvinstall_de.qm"));
    QVERIFY(putCatalogue("zvinstall_de.qm", program.home, "zvinstall_de.qm"));
    program.run();
    QCOMPARE(program.saw("cancel button"), QStringLiteral("Cancel"));
    QCOMPARE(program.saw("console button"), QStringLiteral("&Console"));
}

void TestMain::theProgramsCatalogueGoesBeforeTheToolkits()
{
    Program program;
    program.speakGerman();
    QVERIFY(putCatalogue("qt_de.qm", program.toolkitFolder(), "qt_de.qm"));
    program.run();
    QCOMPARE(program.saw("console's title"), QStringLiteral("Werkzeugkasten"));
    QVERIFY(putCatalogue("zvinstall_de.qm", program.workingFolder, "zvinstall_de.qm"));
    program.run();
    QCOMPARE(program.saw("cancel button"), QStringLiteral("Abbrechen"));
    QCOMPARE(program.saw("console's title"), QStringLiteral("Mitschrift"));
}

void TestMain::anotherLanguagesCataloguesAreLeftAlone()
{
    Program program;
    program.speakGerman();
    QVERIFY(putCatalogue("qt_de.qm", program.toolkitFolder(), "qt_fr.qm"));
    QVERIFY(putCatalogue("zvinstall_de.qm", program.workingFolder, "zvinstall_fr.qm"));
    program.run();
    QCOMPARE(program.saw("cancel button"), QStringLiteral("Cancel"));
    QCOMPARE(program.saw("console button"), QStringLiteral("&Console"));
}

QTEST_GUILESS_MAIN(TestMain)
#include "tst_main.moc"
