#include <csignal>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "tests/packaging/tsfile.h"
#include "tests/support/accessibletree.h"
#include "tests/support/widgetquery.h"

using namespace onscreen;

/// Tests the demonstration that scripts/demo opens on the user's display.
class TestDemo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void theWizardIsInTheUsersLanguageAndFindsTheDevice();

private:
    qint64 wizard() const;
    bool shows(const WidgetQuery &query);

    QProcess _demo; ///< becomes tolvarsim, and the wizard is its child process
    AccessibleTree _tree;
    QString _tty;    ///< the name of the port
    QString _screen; ///< the last content of the wizard
};

void TestDemo::cleanup()
{
    if (wizard() > 0)
        ::kill(static_cast<pid_t>(wizard()), SIGTERM);
    if (_demo.state() == QProcess::Running && !_demo.waitForFinished())
        _demo.kill();
    QFile::remove("/var/lock/LCK.." + _tty); // a terminated program leaves its lock file
}

qint64 TestDemo::wizard() const
{
    QFile children(QStringLiteral("/proc/%1/task/%1/children").arg(_demo.processId()));
    return children.open(QIODevice::ReadOnly) ? children.readAll().trimmed().toLongLong() : 0;
}

bool TestDemo::shows(const WidgetQuery &query)
{
    const Screen screen = _tree.read(wizard()).value_or(Screen());
    _screen = describe(screen);
    return !query.allIn(screen).isEmpty();
}

void TestDemo::theWizardIsInTheUsersLanguageAndFindsTheDevice()
{
    const TsFile ts = readTsFile(ZV_TRANSLATIONS "/zvinstall_de.ts");
    const QString title = ts.translation("ZVTolvarSetupWizard", "ZV Tolvar Setup v2.3");
    const QString found = ts.translation("ConnectTlovarWizardPage", "***** A Tolvar has been found *****");
    QVERIFY2(!title.isEmpty() && !found.isEmpty() && !found.contains("has been found"),
             "the first page is not translated");

    const QTemporaryDir home;
    const QTemporaryDir demo;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", home.path());
    environment.insert("LC_ALL", "de_DE.UTF-8");
    _demo.setProcessEnvironment(environment);
    // The lock files of serial ports are real, so the port has a name that no other test uses.
    _tty = QStringLiteral("ttyUSB%1").arg(800000000 + QCoreApplication::applicationPid() % 90000000);
    _demo.start(ZV_DEMO, {ZV_BUILD, demo.path(), "--tty", _tty});

    QTRY_VERIFY2_WITH_TIMEOUT(shows(label(found).in(title)), qPrintable(_screen), 30000);
    QVERIFY2(QFileInfo(demo.filePath("zvinstall.log")).isFile(),
             "the session log is expected in the demo's folder");
    QVERIFY2(!QFileInfo::exists(home.filePath("zvinstall.log")),
             "no session log is expected in the user's home folder");
}

QTEST_GUILESS_MAIN(TestDemo)
#include "tst_demo.moc"
