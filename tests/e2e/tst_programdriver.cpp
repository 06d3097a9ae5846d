#include <chrono>

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include "tests/support/filecontents.h"
#include "tests/support/programdriver.h"

using namespace onscreen;

/// Tests that a step of the program driver fails if it cannot be carried out, and that failure() and the
/// saved files explain why. The end-to-end tests would pass with a driver whose steps always succeed.
class TestProgramDriver : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aStepThatCannotBeCarriedOutFails();
    void aProgramThatCannotBeStartedIsReported();
};

void TestProgramDriver::aStepThatCannotBeCarriedOutFails()
{
    const QString console = "Console Log";
    ProgramDriver app;
    ZV_DRIVE(app, start(qEnvironmentVariable("ZV_PROGRAM")));
    ZV_DRIVE(app, waitFor(label("Looking for ZV Tolvar")));
    app.setTimeout(std::chrono::milliseconds(300));

    QVERIFY(!app.click(button("Continue")));
    QVERIFY2(app.failure().startsWith("It is disabled"), qPrintable(app.failure()));
    QVERIFY(!app.waitUntilGone(label("Looking for ZV Tolvar")));
    QVERIFY(!app.waitFor(label("Looking for")));
    QVERIFY(!app.waitFor(button("Console").disabled()));
    QVERIFY(!app.waitFor(window(console)));
    QVERIFY(!app.pressKey("NoSuchKey"));
    QVERIFY(!app.find(button("Cancel").in(console)));
    QVERIFY(!app.waitFor(button("Continue").enabled()));
    for (const char *text : {"button \"Continue\" (enabled) in the active window", "300 ms",
                             "window \"ZV Tolvar Setup v2.3\" (active)\n", "\n  button \"Console\"",
                             "button \"Continue\" (disabled)\n", "label \"Looking for ZV Tolvar\"\n"})
        QVERIFY2(app.failure().contains(text), qPrintable(app.failure()));

    const QTemporaryDir folder;
    app.saveDiagnostics(folder.path());
    QCOMPARE(QImage(folder.filePath("screen.png")).size(), QSize(1280, 1024));
    QVERIFY(contents(folder.filePath("screen.txt")).contains("button \"Continue\" (disabled)\n"));
    QVERIFY(contents(folder.filePath("stdout.txt")).contains("List of ports:"));

    app.setTimeout(std::chrono::seconds(20));
    ZV_DRIVE(app, click(button("Console")));
    ZV_DRIVE(app, waitFor(window(console).active()));
    ZV_DRIVE(app, closeWindow(console));
    ZV_DRIVE(app, closeWindow("ZV Tolvar Setup v2.3"));
    ZV_DRIVE(app, waitForEnd());
    QVERIFY(!app.waitFor(button("Console")));
    QVERIFY2(app.failure().contains("the program does not run"), qPrintable(app.failure()));
}

void TestProgramDriver::aProgramThatCannotBeStartedIsReported()
{
    ProgramDriver app;
    QVERIFY(!app.click(button("Continue")));
    QVERIFY2(app.failure().contains("no program was started"), qPrintable(app.failure()));
    QVERIFY(!app.start("/no/such/program"));
    QVERIFY2(app.failure().contains("cannot start /no/such/program"), qPrintable(app.failure()));
}

QTEST_GUILESS_MAIN(TestProgramDriver)
#include "tst_programdriver.moc"
