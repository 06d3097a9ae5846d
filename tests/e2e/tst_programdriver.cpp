// Included before Qt's headers: its own headers use names that Qt defines as keywords.
#include <umockdev.h>

#include "tests/support/programdriver.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTest>

using namespace onscreen;
using namespace std::chrono_literals;

/// Tests everything that the program driver can do, on a small wizard. Under umockdev-wrapper the same tests
/// run with a test bed in place of the computer's devices.
class TestProgramDriver : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void aProgramRunsInItsOwnHomeAndFolder();
    void aProgramSeesTheDevicesOfTheTestBed();
    void aProgramThatCannotStartIsReported();
    void theEndOfAProgramIsSeen();
    void aWindowIsFoundByItsTitle();
    void labelsAreReadToTheLastBlank();
    void statesAreRead();
    void onlyWhatIsOnThePageIsFound();
    void rowsAreListedInOrder();
    void aClickSelectsARow();
    void aRowOutOfSightIsScrolledTo();
    void aDoubleClickIsOne();
    void twoClicksAreNoDoubleClick();
    void buttonsOfTheWizardTurnThePages();
    void extentsAreWhereThePixelsAre();
    void text_data();
    void text();
    void moreStrangeCharactersThanUnusedKeys();
    void aFieldIsFoundByItsNumber();
    void aFieldIsEmptied();
    void keysMoveTheFocus();
    void aCheckBoxIsClickedWhereItTakesClicks();
    void aDisabledCheckBoxStaysAsItIs();
    void aMessageBoxIsAnswered();
    void aModalDialogIsFilledIn();
    void aDialogStaysOpenBesideTheWizard();
    void whatIsCoveredIsNotClicked();
    void theSaveDialogIsAnswered();
    void theSaveDialogIsAnsweredThoughSimilarFilesDropDown();
    void aChangeIsWaitedFor();
    void aFailureTellsWhatWasThereInstead();
    void aDisabledButtonIsNotClicked();
    void evidenceIsLeft();
    void aBusyProgramIsDriven();

private:
    void turnToFields();

    UMockdevTestbed *_testbed = nullptr;
    std::unique_ptr<QTemporaryDir> _folder;
    std::unique_ptr<ProgramDriver> _app;
};

#define DRIVE(step) ZV_DRIVE(*_app, step)

void TestProgramDriver::initTestCase()
{
    // umockdev_in_mock_environment() would be the right check, but it returns false under the wrapper too
    // (0.17.16).
    if (qgetenv("LD_PRELOAD").contains("umockdev"))
        _testbed = umockdev_testbed_new();
}

void TestProgramDriver::cleanupTestCase()
{
    g_clear_object(&_testbed);
}

void TestProgramDriver::init()
{
    _folder = std::make_unique<QTemporaryDir>();
    _app = std::make_unique<ProgramDriver>();
    _app->setWorkingFolder(_folder->path());
    DRIVE(start(SAMPLEAPP));
    DRIVE(waitFor(window("Sample Wizard")));
    DRIVE(waitFor(button("Continue"))); // in the active window: some tests have short timeouts
}

void TestProgramDriver::cleanup()
{
    if (!_app)
        return;
    if (QTest::currentTestFailed())
        qWarning().noquote() << "The screen at the end:\n" << _app->describeScreen();
    _app->terminate(); // its output is complete from here on
    if (!QTest::currentTestFailed())
        QCOMPARE(_app->errorOutput().count('\n'), 4); // its own lines at the start: the driver adds none
    _app.reset();
}

void TestProgramDriver::turnToFields()
{
    DRIVE(click(button("Continue")));
    DRIVE(waitFor(label("Passphrase")));
}

void TestProgramDriver::aProgramRunsInItsOwnHomeAndFolder()
{
    ProgramDriver other;
    other.setHome(_folder->path());
    other.setEnvironment("SAMPLEAPP_WORD", "a word");
    ZV_DRIVE(other, start(SAMPLEAPP));
    ZV_DRIVE(other, waitFor(window("Sample Wizard")));
    QTRY_VERIFY(other.errorOutput().startsWith("home " + _folder->path().toUtf8() + "\nfolder " +
                                               _folder->path().toUtf8() + "\nword a word\n"));
    QTRY_VERIFY(_app->errorOutput().contains("\nfolder " + _folder->path().toUtf8() + "\n"));
    QVERIFY(!_app->errorOutput().contains("home " + _folder->path().toUtf8()));
    QVERIFY(!_app->errorOutput().contains("home " + qgetenv("HOME") + "\n"));
}

void TestProgramDriver::aProgramSeesTheDevicesOfTheTestBed()
{
    if (!_testbed)
        QSKIP("this run has the machine's own devices");
    const std::unique_ptr<gchar, decltype(&g_free)> path(
        umockdev_testbed_add_device(_testbed, "sample", "sample", nullptr, "word", "x", nullptr, nullptr),
        g_free);
    QVERIFY(path);
    _app->terminate();
    QVERIFY2(_app->errorOutput().endsWith("device no\n"), "it was started before the device came");
    DRIVE(start(SAMPLEAPP));
    DRIVE(waitFor(window("Sample Wizard")));
    QTRY_VERIFY(_app->errorOutput().endsWith("device yes\n"));
}

void TestProgramDriver::aProgramThatCannotStartIsReported()
{
    ProgramDriver none;
    QVERIFY(!none.click(button("Continue")));
    QVERIFY2(none.failure().contains("no program was started"), qPrintable(none.failure()));
    QVERIFY(!none.start("/no/such/program"));
    QVERIFY2(none.failure().contains("/no/such/program can't be started"), qPrintable(none.failure()));
    QVERIFY(!none.isRunning());
}

void TestProgramDriver::theEndOfAProgramIsSeen()
{
    QVERIFY(_app->isRunning());
    QCOMPARE(_app->exitCode(), -1);
    DRIVE(click(button("Cancel")));
    DRIVE(waitForEnd());
    QCOMPARE(_app->exitCode(), 3);
    QCOMPARE(_app->output(), QByteArray("ended with 0\n"));
    QElapsedTimer time;
    time.start();
    QVERIFY(!_app->waitFor(button("Continue")));
    QVERIFY2(time.elapsed() < 5000, "an ended program is not waited for");
    QVERIFY2(_app->failure().contains("the program does not run"), qPrintable(_app->failure()));
}

void TestProgramDriver::aWindowIsFoundByItsTitle()
{
    const auto found = _app->find(window("Sample Wizard"));
    QVERIFY(found);
    QVERIFY(found->rect.width() >= 750 && found->rect.height() >= 580);
    QVERIFY(!_app->find(window("Sample")));
    QVERIFY2(!_app->find(window("Sample Console")), "a hidden window is not there");
    DRIVE(closeWindow("Sample Wizard"));
    DRIVE(waitForEnd());
}

void TestProgramDriver::labelsAreReadToTheLastBlank()
{
    DRIVE(waitFor(label("A label with a trailing blank. ")));
    QVERIFY(!_app->find(label("A label with a trailing blank.")));
    DRIVE(waitFor(label("First line & second\nline with \"quotes\" and  two blanks")));
    QCOMPARE(_app->text(label().startingWith("Found")), QString("Found Networks:"));
    QCOMPARE(_app->text(label().beside("Found Networks:")), QString("A label with a trailing blank. "));
}

void TestProgramDriver::statesAreRead()
{
    DRIVE(waitFor(button("Never").disabled()));
    QVERIFY(!_app->find(button("Never").enabled()));
    DRIVE(waitFor(button("Ask").enabled()));
    DRIVE(waitFor(progressBar()));
    turnToFields();
    QVERIFY2(!_app->find(progressBar()), "a hidden progress bar is not there");
    DRIVE(waitFor(checkBox("Use External Antenna").checked().disabled()));
    DRIVE(waitFor(checkBox("Use static IP address:").unchecked().enabled()));
}

void TestProgramDriver::onlyWhatIsOnThePageIsFound()
{
    QVERIFY(!_app->find(label("Passphrase")));
    QVERIFY(!_app->find(button("Go Back")));
    turnToFields();
    QVERIFY(_app->find(button("Go Back")));
    QVERIFY(!_app->find(label("Found Networks:")));
    QVERIFY(!_app->find(row("alpha")));
}

void TestProgramDriver::rowsAreListedInOrder()
{
    QStringList expected = {"alpha", "beta", "two  blanks", "Caf\u00e9 & Bar"};
    for (int i = 1; i <= 120; ++i)
        expected << QString("network number %1").arg(i);
    QCOMPARE(_app->names(row()), expected);
}

void TestProgramDriver::aClickSelectsARow()
{
    DRIVE(click(row("Caf\u00e9 & Bar")));
    DRIVE(waitFor(row("Caf\u00e9 & Bar").selected()));
    QCOMPARE(_app->names(row().selected()), QStringList("Caf\u00e9 & Bar"));
    DRIVE(click(row("two  blanks")));
    QCOMPARE(_app->names(row().selected()), QStringList("two  blanks"));
    QTRY_COMPARE(_app->output(), QByteArray("clicked Caf\u00e9 & Bar\nclicked two  blanks\n"));
}

void TestProgramDriver::aRowOutOfSightIsScrolledTo()
{
    QVERIFY2(!_app->find(row("network number 120"))->showing, "the list is too short for this test");
    DRIVE(click(row("network number 120")));
    DRIVE(waitFor(row("network number 120").selected()));
    DRIVE(click(row("alpha")));
    QTRY_COMPARE(_app->output(), QByteArray("clicked network number 120\nclicked alpha\n"));
}

void TestProgramDriver::aDoubleClickIsOne()
{
    const auto isSaid = [this](const char *words) { return _app->output().contains(words); };
    DRIVE(doubleClick(row("beta"), [&] { return isSaid("double-clicked beta\n"); }));
    QVERIFY(isSaid("clicked beta\ndouble-clicked beta\n"));
    DRIVE(click(row("alpha")));
    DRIVE(doubleClick(row("alpha"), [&] { return isSaid("double-clicked alpha\n"); }));
    QCOMPARE(_app->output().count("double-clicked alpha\n"), 1);
}

void TestProgramDriver::twoClicksAreNoDoubleClick()
{
    DRIVE(click(row("beta")));
    DRIVE(click(row("beta")));
    DRIVE(click(row("alpha")));
    QTRY_COMPARE(_app->output(), QByteArray("clicked beta\nclicked beta\nclicked alpha\n"));
}

void TestProgramDriver::buttonsOfTheWizardTurnThePages()
{
    DRIVE(click(button("Continue")));
    DRIVE(click(button("Go Back")));
    DRIVE(waitFor(label("Found Networks:")));
    DRIVE(click(button("Continue")));
    DRIVE(click(button("Done")));
    DRIVE(waitForEnd());
    QCOMPARE(_app->exitCode(), 0);
    QCOMPARE(_app->output(), QByteArray("ended with 1\n"));
}

void TestProgramDriver::extentsAreWhereThePixelsAre()
{
    // No other part of the screen has the patch's colour: its position in an image must be the reported one.
    const auto patch = _app->find(label("patch"));
    QVERIFY(patch);
    const QString path = _folder->filePath("screen.png");
    const QRgb colour = qRgb(1, 200, 99);
    const auto colouredRect = [&] {
        if (!_app->screenshot(path))
            return QRect();
        const QImage picture(path);
        QRect rect;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixel(x, y) == colour)
                    rect |= QRect(x, y, 1, 1);
            }
        }
        return rect;
    };
    QTRY_COMPARE(colouredRect(), patch->rect);
    QCOMPARE(QImage(path).size(), QSize(1280, 1024));
    DRIVE(screenshot(path, "Sample Wizard"));
    const QRect inside = _app->find(window("Sample Wizard"))->rect;
    const QSize withFrame = QImage(path).size();
    QVERIFY2(withFrame.width() > inside.width() && withFrame.height() > inside.height() + 10,
             "the picture of a window has its frame");
    DRIVE(dragWindow("Sample Wizard", {40, 60}));
    QTRY_COMPARE(colouredRect(), _app->find(label("patch"))->rect);
    QVERIFY(colouredRect().topLeft() != patch->rect.topLeft());
}

void TestProgramDriver::text_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("letters, capitals and digits") << "The quick brown fox 0123456789 JUMPS";
    QTest::newRow("blanks at both ends and in the middle") << "  a   b ";
    QTest::newRow("everything in ASCII") << " !\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~";
    QTest::newRow("Latin-1") << "\u00fc\u00dc\u00df\u00e9\u00c9\u00f1 \u00a0 \u00ff\u00a1";
    QTest::newRow("beyond Latin-1") << "\u20ac \u010d\u010c \u0416\u0436 \u4e2d\u6587 \u03b1\u0391";
    QTest::newRow("beyond the first plane") << QString::fromUcs4(U"\U0001F4F6 a \U0001F511", 5);
    QTest::newRow("the same strange letter again") << "\u00fc\u00fcu\u00fc\u00dc\u00fc";
    QTest::newRow("the same letter many times") << QString(60, 'm');
}

void TestProgramDriver::text()
{
    QFETCH(QString, text);
    turnToFields();
    DRIVE(fill(field().beside("Passphrase"), text));
    DRIVE(fill(field().beside("Network"), "x" + text));
    DRIVE(pressKey("Tab"));
    QTRY_COMPARE(_app->output(), QString("passphrase <%1>\nnetwork <x%1>\n").arg(text).toUtf8());
    QCOMPARE(_app->text(field().beside("Passphrase")), text);
}

void TestProgramDriver::moreStrangeCharactersThanUnusedKeys()
{
    QString text;
    for (char16_t character = 0x0401; character <= 0x0482; ++character)
        text += QChar(character);
    turnToFields();
    DRIVE(fill(field().beside("Network"), text));
    DRIVE(fill(field().beside("Network"), text + text));
    DRIVE(fill(field().beside("Passphrase"), "abc"));
}

void TestProgramDriver::aFieldIsFoundByItsNumber()
{
    turnToFields();
    DRIVE(fill(field().number(2), "second"));
    DRIVE(waitFor(field().beside("Passphrase").withText("second")));
    DRIVE(fill(field().number(1), "first"));
    DRIVE(waitFor(field().beside("Network").withText("first")));
    QVERIFY(!_app->find(field().number(3)));
}

void TestProgramDriver::aFieldIsEmptied()
{
    turnToFields();
    DRIVE(fill(field().beside("Network"), "something"));
    DRIVE(fill(field().beside("Network"), ""));
    const QString text = _app->text(field().beside("Network"));
    QVERIFY(!text.isNull());
    QCOMPARE(text, QString(""));
}

void TestProgramDriver::keysMoveTheFocus()
{
    turnToFields();
    DRIVE(click(field().beside("Network")));
    DRIVE(waitFor(field().beside("Network").focused()));
    DRIVE(typeText("one"));
    DRIVE(pressKey("Tab"));
    DRIVE(waitFor(field().beside("Passphrase").focused()));
    DRIVE(typeText("two"));
    DRIVE(pressKey("shift+Tab"));
    DRIVE(waitFor(field().beside("Network").focused()));
    DRIVE(pressKey("End"));
    DRIVE(pressKey("Backspace"));
    DRIVE(waitFor(field().beside("Network").withText("on")));
    QVERIFY(!_app->pressKey("NoSuchKey"));
    QVERIFY(_app->failure().contains("NoSuchKey"));
    DRIVE(pressKey("Escape"));
    DRIVE(waitForEnd());
}

void TestProgramDriver::aCheckBoxIsClickedWhereItTakesClicks()
{
    turnToFields();
    DRIVE(click(checkBox("Use static IP address:")));
    DRIVE(waitFor(checkBox("Use static IP address:").checked()));
    DRIVE(click(checkBox("Use static IP address:")));
    DRIVE(waitFor(checkBox("Use static IP address:").unchecked()));
    QTRY_COMPARE(_app->output(), QByteArray("checked\nunchecked\n"));
}

void TestProgramDriver::aDisabledCheckBoxStaysAsItIs()
{
    turnToFields();
    DRIVE(click(checkBox("Use External Antenna").disabled()));
    QVERIFY(_app->find(checkBox("Use External Antenna").checked()));
}

void TestProgramDriver::aMessageBoxIsAnswered()
{
    DRIVE(click(button("Ask")));
    DRIVE(waitFor(window("Question")));
    DRIVE(waitFor(label("Is \"this\" it?\nReally?")));
    DRIVE(click(button("Yes")));
    DRIVE(waitUntilGone(window("Question")));
    DRIVE(waitFor(label("answered yes")));
    DRIVE(click(button("Ask")));
    DRIVE(waitFor(window("Question")));
    DRIVE(pressKey("Escape"));
    DRIVE(waitFor(label("answered no")));
}

void TestProgramDriver::aModalDialogIsFilledIn()
{
    DRIVE(click(button("View Details...")));
    DRIVE(waitFor(window("Details")));
    QCOMPARE(_app->text(field().beside("Join Network:")), QString("alpha"));
    QCOMPARE(_app->text(label().beside("Channel:")), QString("11"));
    QCOMPARE(_app->text(label().beside("WPS: ")), QString(""));
    DRIVE(fill(field().beside("Join Network:"), "b\u00e9ta"));
    DRIVE(click(button("OK")));
    DRIVE(waitUntilGone(window("Details")));
    QTRY_COMPARE(_app->output(), QByteArray("details accepted b\u00e9ta\n"));
    DRIVE(click(button("View Details...")));
    DRIVE(closeWindow("Details"));
    QTRY_COMPARE(_app->output(), QByteArray("details accepted b\u00e9ta\ndetails rejected\n"));
}

void TestProgramDriver::aDialogStaysOpenBesideTheWizard()
{
    DRIVE(click(button("Console")));
    DRIVE(waitFor(window("Sample Console")));
    DRIVE(waitFor(textView().in("Sample Console").withText("first line\n\nlast <line>")));
    DRIVE(dragWindow("Sample Console", {20, 40}));
    DRIVE(activateWindow("Sample Wizard"));
    DRIVE(click(button("Look for Networks...")));
    DRIVE(waitFor(label("looking").in("Sample Wizard")));
    DRIVE(click(button("Console").in("Sample Wizard")));
    DRIVE(waitFor(textView().in("Sample Console")));
    DRIVE(closeWindow("Sample Console"));
    DRIVE(click(button("Continue")));
    DRIVE(waitFor(label("Passphrase")));
}

void TestProgramDriver::whatIsCoveredIsNotClicked()
{
    DRIVE(click(button("Console")));
    DRIVE(waitFor(window("Sample Console")));
    const QPoint ask = _app->find(button("Ask").in("Sample Wizard"))->rect.center();
    DRIVE(dragWindow("Sample Console", ask - QPoint(300, 100)));
    _app->setPatience(500ms);
    QVERIFY(!_app->click(button("Ask").in("Sample Wizard")));
    QVERIFY2(_app->failure().contains("covered"), qPrintable(_app->failure()));
    _app->setPatience(20s);
    DRIVE(closeWindow("Sample Console"));
    DRIVE(click(button("Ask")));
    DRIVE(waitFor(window("Question")));
}

void TestProgramDriver::theSaveDialogIsAnswered()
{
    DRIVE(click(button("Save Log")));
    DRIVE(waitFor(window("Save the Log")));
    QCOMPARE(_app->text(field().number(1)), QString("start.txt"));
    const QString path = _folder->filePath("the l\u00f6g.txt");
    DRIVE(saveAs(path));
    DRIVE(waitFor(label("saved " + path)));
    DRIVE(click(button("Save Log")));
    DRIVE(waitFor(window("Save the Log")));
    DRIVE(click(button("Cancel")));
    DRIVE(waitFor(label("saved ")));
}

void TestProgramDriver::theSaveDialogIsAnsweredThoughSimilarFilesDropDown()
{
    for (const char *name : {"tolvar-1.txt", "tolvar-2.txt", "tolvar-3.txt", "tolvar-33.txt"})
        QVERIFY(QFile(_folder->filePath(name)).open(QIODevice::WriteOnly));
    DRIVE(click(button("Save Log")));
    DRIVE(saveAs(_folder->filePath("tolvar-")));
    DRIVE(waitFor(label("saved " + _folder->filePath("tolvar-"))));
    DRIVE(click(button("Save Log")));
    DRIVE(saveAs(_folder->filePath("tolvar-3.txt")));
    DRIVE(click(button("Yes"))); // the question whether to overwrite the existing file
    DRIVE(waitFor(label("saved " + _folder->filePath("tolvar-3.txt"))));
}

void TestProgramDriver::aChangeIsWaitedFor()
{
    DRIVE(click(button("Look for Networks...")));
    QVERIFY2(_app->find(label("looking")), "what is read after a click tells of it");
    DRIVE(click(button("Look for Networks...")));
    DRIVE(waitFor(label("found & done")));
    DRIVE(waitUntilGone(label("looking")));
}

void TestProgramDriver::aFailureTellsWhatWasThereInstead()
{
    QVERIFY(!_app->waitFor(button("Done").enabled(), 200ms));
    const QStringList expected = {"button \"Done\" (enabled) in the active window",
                                  "200 ms",
                                  "window \"Sample Wizard\" (active)\n",
                                  "\n  button \"Continue\"",
                                  "button \"Never\" (disabled)\n",
                                  "row \"alpha\"\n",
                                  "label \"idle\"\n"};
    for (const QString &part : expected)
        QVERIFY2(_app->failure().contains(part), qPrintable(part + " is not in:\n" + _app->failure()));
    _app->setPatience(200ms);
    QVERIFY(_app->text(label("nowhere")).isNull());
    QVERIFY(!_app->waitUntilGone(label("idle")));
    QVERIFY2(_app->failure().contains("no label \"idle\""), qPrintable(_app->failure()));
}

void TestProgramDriver::aDisabledButtonIsNotClicked()
{
    _app->setPatience(300ms);
    QVERIFY(!_app->click(button("Never")));
    QVERIFY2(_app->failure().startsWith("It is disabled"), qPrintable(_app->failure()));
}

void TestProgramDriver::evidenceIsLeft()
{
    const QDir folder(_folder->filePath("evidence"));
    DRIVE(click(row("alpha")));
    QTRY_COMPARE(_app->output(), QByteArray("clicked alpha\n"));
    _app->leaveEvidence(folder.path());
    QCOMPARE(QImage(folder.filePath("screen.png")).size(), QSize(1280, 1024));
    QFile text(folder.filePath("screen.txt"));
    QVERIFY(text.open(QIODevice::ReadOnly));
    QVERIFY(text.readAll().contains("row \"alpha\" (focused, selected)\n"));
    QFile output(folder.filePath("stdout.txt"));
    QVERIFY(output.open(QIODevice::ReadOnly));
    QCOMPARE(output.readAll(), QByteArray("clicked alpha\n"));
    QVERIFY(QFileInfo(folder.filePath("stderr.txt")).size() > 0);
}

void TestProgramDriver::aBusyProgramIsDriven()
{
    _app->terminate();
    QVERIFY(!_app->isRunning());
    DRIVE(start(SAMPLEAPP, {"--busy"}));
    DRIVE(click(row("beta")));
    QVERIFY(_app->find(row("beta").selected()));
    DRIVE(click(button("Ask")));
    DRIVE(click(button("Yes")));
    DRIVE(waitFor(label("answered yes")));
    turnToFields();
    DRIVE(fill(field().beside("Passphrase"), "\u00fcber \"lang\" \u20ac"));
    DRIVE(fill(field().beside("Network"), "n"));
    DRIVE(click(button("Done")));
    DRIVE(waitForEnd());
    QCOMPARE(_app->output(), QByteArray("clicked beta\npassphrase <\u00fcber \"lang\" \u20ac>\nnetwork <n>\n"
                                        "ended with 1\n"));
}

QTEST_GUILESS_MAIN(TestProgramDriver)
#include "tst_programdriver.moc"
