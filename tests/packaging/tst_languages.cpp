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
    void savedFilesGoWhereTheUserMayWrite();
};

void TestLanguages::theWizardSpeaksTheUsersLanguage_data()
{
    QTest::addColumn<QString>("launcher");
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("translation"); // empty: English
    const QString installed = ZV_LAUNCHER;
    for (const char *language : {"ar", "de", "es", "fr", "it", "ja", "nl", "pl"})
        QTest::newRow(language) << installed << QStringLiteral("%1_XX.UTF-8").arg(language) << language;
    QTest::newRow("Austrian German") << installed << "de_AT.UTF-8@euro"
                                     << "de";
    QTest::newRow("Brazilian Portuguese") << installed << "pt_BR.UTF-8"
                                          << "pt_BR";
    QTest::newRow("simplified Chinese") << installed << "zh_CN.UTF-8"
                                        << "zh_CN";
    QTest::newRow("German, from the archive") << QString(ZV_UNPACKED_LAUNCHER) << "de_DE.UTF-8"
                                              << "de";
    QTest::newRow("no language") << installed << "C" << QString();
    QTest::newRow("no translation file") << installed << "is_IS.UTF-8" << QString();
    QTest::newRow("European Portuguese") << installed << "pt_PT.UTF-8" << QString();
    QTest::newRow("traditional Chinese") << installed << "zh_TW.UTF-8" << QString();
}

void TestLanguages::theWizardSpeaksTheUsersLanguage()
{
    QFETCH(QString, launcher);
    QFETCH(QString, locale);
    QFETCH(QString, translation);
    QString page = "Identifying ZV Tolvar";
    QString title = "ZV Tolvar Setup v" ZV_VERSION;
    if (!translation.isEmpty()) {
        const TsFile ts = readTsFile(QStringLiteral(ZV_TRANSLATIONS "/zvinstall_%1.ts").arg(translation));
        QVERIFY2(ts.translation("ConnectTlovarWizardPage", page) != page, "the title is not translated");
        page = ts.translation("ConnectTlovarWizardPage", page);
        title = ts.translation("ZVTolvarSetupWizard", title);
        QVERIFY(!page.isEmpty() && !title.isEmpty());
    }
    ProgramDriver app;
    app.setEnvironment("LC_ALL", locale);
    app.setWorkingFolder("/");
    ZV_DRIVE(app, start(launcher));
    ZV_DRIVE(app, waitFor(window(title)));
    ZV_DRIVE(app, waitFor(label(page)));
}

// The save dialog opens in the program's working folder.
void TestLanguages::savedFilesGoWhereTheUserMayWrite()
{
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
    QVERIFY2(QFileInfo(home.filePath("zvinstall.log")).isFile(),
             "the session log is expected in the home folder");
}

QTEST_GUILESS_MAIN(TestLanguages)
#include "tst_languages.moc"
