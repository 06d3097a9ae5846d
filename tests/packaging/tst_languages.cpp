#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include "tests/packaging/tsfile.h"
#include "tests/support/programdriver.h"

using namespace onscreen;

/// Tests the installed program in each of its languages, started by its launcher as the desktop starts it.
class TestLanguages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theWizardSpeaksTheUsersLanguage_data();
    void theWizardSpeaksTheUsersLanguage();
    void unpackedItSpeaksTheUsersLanguageToo();
    void otherLanguagesGetEnglish_data();
    void otherLanguagesGetEnglish();
    void whatIsSavedGoesWhereTheUserMayWrite();
};

void TestLanguages::theWizardSpeaksTheUsersLanguage_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("catalogue");
    QTest::newRow("Arabic") << "ar_EG.UTF-8"
                            << "ar";
    QTest::newRow("German") << "de_DE.UTF-8"
                            << "de";
    QTest::newRow("German, of Austria") << "de_AT.UTF-8@euro"
                                        << "de";
    QTest::newRow("Spanish") << "es_ES.UTF-8"
                             << "es";
    QTest::newRow("French") << "fr_FR.UTF-8"
                            << "fr";
    QTest::newRow("Italian") << "it_IT.UTF-8"
                             << "it";
    QTest::newRow("Japanese") << "ja_JP.UTF-8"
                              << "ja";
    QTest::newRow("Dutch") << "nl_NL.UTF-8"
                           << "nl";
    QTest::newRow("Polish") << "pl_PL.UTF-8"
                            << "pl";
    QTest::newRow("Portuguese, of Brazil") << "pt_BR.UTF-8"
                                           << "pt_BR";
    QTest::newRow("Chinese, simplified") << "zh_CN.UTF-8"
                                         << "zh_CN";
}

void TestLanguages::theWizardSpeaksTheUsersLanguage()
{
    QFETCH(QString, locale);
    QFETCH(QString, catalogue);
    const TsFile ts =
        readTsFile(QStringLiteral(ZV_TRANSLATIONS "/zvinstall_") + catalogue + QStringLiteral(".ts"));
    const QString page = ts.translation("ConnectTlovarWizardPage", "Identifying ZV Tolvar");
    QVERIFY2(!page.isEmpty() && page != "Identifying ZV Tolvar", "the first page's title is not translated");
    const QString title = ts.translation("ZVTolvarSetupWizard", "ZV Tolvar Setup v" ZV_VERSION);
    QVERIFY2(!title.isEmpty(), "the window's title is not translated");

    ProgramDriver app;
    app.setEnvironment("LC_ALL", locale);
    ZV_DRIVE(app, start(ZV_LAUNCHER));
    ZV_DRIVE(app, waitFor(window(title)));
    ZV_DRIVE(app, waitFor(label(page)));
}

void TestLanguages::unpackedItSpeaksTheUsersLanguageToo()
{
    const QString page = readTsFile(ZV_TRANSLATIONS "/zvinstall_de.ts")
                             .translation("ConnectTlovarWizardPage", "Identifying ZV Tolvar");
    QVERIFY2(!page.isEmpty() && page != "Identifying ZV Tolvar", "the first page's title is not translated");

    ProgramDriver app;
    app.setEnvironment("LC_ALL", "de_DE.UTF-8");
    app.setWorkingFolder("/");
    ZV_DRIVE(app, start(ZV_UNPACKED_LAUNCHER));
    ZV_DRIVE(app, waitFor(label(page)));
}

void TestLanguages::otherLanguagesGetEnglish_data()
{
    QTest::addColumn<QString>("locale");
    QTest::newRow("none at all") << "C";
    QTest::newRow("one that there is no catalogue for") << "sv_SE.UTF-8";
    QTest::newRow("Portuguese, not of Brazil") << "pt_PT.UTF-8";
    QTest::newRow("Chinese, traditional") << "zh_TW.UTF-8";
}

void TestLanguages::otherLanguagesGetEnglish()
{
    QFETCH(QString, locale);
    ProgramDriver app;
    app.setEnvironment("LC_ALL", locale);
    ZV_DRIVE(app, start(ZV_LAUNCHER));
    ZV_DRIVE(app, waitFor(window("ZV Tolvar Setup v" ZV_VERSION)));
    ZV_DRIVE(app, waitFor(label("Identifying ZV Tolvar")));
}

void TestLanguages::whatIsSavedGoesWhereTheUserMayWrite()
{
    // The save dialog opens in the program's working folder.
    const QTemporaryDir home;
    ProgramDriver app;
    app.setHome(home.path());
    app.setWorkingFolder("/");
    ZV_DRIVE(app, start(ZV_LAUNCHER));
    ZV_DRIVE(app, waitFor(window("ZV Tolvar Setup v" ZV_VERSION)));
    const QFileInfo folder(QStringLiteral("/proc/%1/cwd").arg(app.processId()));
    QCOMPARE(folder.canonicalFilePath(), QDir(home.path()).canonicalPath() + "/ZV Tolvar Setup");
    QVERIFY(folder.isWritable());
    ZV_DRIVE(app, closeWindow("ZV Tolvar Setup v" ZV_VERSION));
    ZV_DRIVE(app, waitForEnd());
    QCOMPARE(app.exitCode(), 0);
    QVERIFY2(QFileInfo(home.filePath("zvinstall.log")).isFile(), "the session log stays in the home folder");
}

QTEST_GUILESS_MAIN(TestLanguages)
#include "tst_languages.moc"
