#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include "tests/support/messagespy.h"
#include "tests/support/picturefile.h"
#include "tests/support/pseudotranslator.h"
#include "tests/support/widgetchangerecorder.h"
#include "tests/support/wizardfixture.h"

/// Tests the last page: the verdict of the network test, and saving.
class TestTestPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        _f = std::make_unique<WizardFixture>();
        _f->goTo(4);
        _f->inside.queue().clear();
    }
    void cleanup() { _f.reset(); }

    void theTestStartsOnEntry();
    void theStepsOfAnEntryComeInTheirOrder();
    void aPictureThatTheNetworkNamesIsNotShown();
    void withoutAVerdictItStaysBusy();
    void eachVerdict_data();
    void eachVerdict();
    void theStepsOfEachVerdictComeInTheirOrder_data();
    void theStepsOfEachVerdictComeInTheirOrder();
    void aSystemErrorIsTerminal();
    void finishIsDisabledUntilSaved();
    void aSaveLetsTheUserFinish();
    void theStepsOfASaveComeInTheirOrder();
    void afterAWrongPassphraseASaveKeepsTheButtonsText();
    void savingAgainSavesAgain();
    void aLaterVerdictLeavesFinishAsItIs();
    void aSecondEntryStartsOver();
    void afterASecondEntryOneReleaseSavesTwice();
    void theSaveComesWithTheRelease();
    void itIsTheLastPage();
    void theTextsAreTranslated_data();
    void theTextsAreTranslated();
    void everyEntryConnectsOnceMore_data();
    void everyEntryConnectsOnceMore();

private:
    QString label() const { return _f->widget<QLabel>("label")->text(); }
    QPushButton *button() const { return _f->widget<QPushButton>("pushButton"); }
    bool barVisible() const { return _f->widget<QProgressBar>("progressBar")->isVisible(); }

    std::unique_ptr<WizardFixture> _f;
};

namespace
{
/// Returns the commands of one save.
QStringList saveLines()
{
    return {"ant_select \r\n", "setssid Home\r\n", "setpass \r\n", "setstaticip N\r\n", "save\r\n"};
}
} // namespace

void TestTestPage::theTestStartsOnEntry()
{
    WizardFixture f;
    QVERIFY2(f.wizard.page(4)->isComplete(), "no test has begun yet");
    f.goTo(3);
    f.finishScan();
    f.inside.queue().clear();
    f.wizard.next();
    QCOMPARE(f.wizard.currentId(), 4);
    QVERIFY(!f.wizard.page(4)->isComplete());
    QCOMPARE(f.inside.queue(), QStringList({"setssid Home\r\n", "setpass \r\n", "test\r\n"}));
}

void TestTestPage::theStepsOfAnEntryComeInTheirOrder()
{
    _f->finishTest("0");
    QTest::mouseClick(button(), Qt::LeftButton);
    WidgetChangeRecorder steps(_f->wizard.currentPage());
    steps.tellAlso([this] {
        return QStringLiteral("%1 for the button, %2")
            .arg(_f->listeners("pushButton", "released()"))
            .arg(_f->wizard.page(4)->isComplete() ? "complete" : "not complete");
    });
    _f->tolvar.connected = [&steps](const QString &signal) { steps.note(signal); };
    connect(&_f->tolvar, &ZVTolvar::networkTestStarted, &steps, [&steps] { steps.note("the test begins"); });
    steps.take();
    _f->goBackAndEnterAgain();
    const QString waiting = "Please wait while ZV Tolvar tests the connection to network: Home\n";
    // The earlier network test had enabled the button and hidden the bar.
    QCOMPARE(steps.take(), QStringList({"networkTestFound(), 1 for the button, complete",
                                        "networkTestPassphraseInvalid(), 1 for the button, complete",
                                        "networkTestSsidNotFound(), 1 for the button, complete",
                                        "networkTestSystemError(), 1 for the button, complete",
                                        "pushButton is disabled, 2 for the button, complete",
                                        "progressBar is shown, 2 for the button, complete",
                                        "label says \"" + waiting + "\", 2 for the button, not complete",
                                        "the test begins, 2 for the button, not complete"}));
}

void TestTestPage::aPictureThatTheNetworkNamesIsNotShown()
{
    const PictureFile picture;
    _f->wizard.back();
    _f->widget<QLineEdit>("input_NetworkName")->setText(picture.markup());
    _f->wizard.next();
    QVERIFY(_f->widget<QLabel>("label")->text().contains(picture.markup()));
    QVERIFY(!picture.isSeenIn(*_f->wizard.currentPage()));
}

void TestTestPage::withoutAVerdictItStaysBusy()
{
    QCOMPARE(label(), QStringLiteral("Please wait while ZV Tolvar tests the connection to network: Home\n"));
    QVERIFY(barVisible());
    QVERIFY(!button()->isEnabled());
    QCOMPARE(button()->text(), QStringLiteral("Save Network Configuration"));
    QVERIFY(!_f->canFinish());
    _f->finishTest("9"); // a result that is not a verdict
    QVERIFY(barVisible());
    QVERIFY(!button()->isEnabled());
    QVERIFY(!_f->canFinish());
}

void TestTestPage::eachVerdict_data()
{
    QTest::addColumn<QString>("result");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("buttonText");
    QTest::addColumn<bool>("canSave");
    QTest::newRow("found") << "0"
                           << "Successfully tested connection to network\n"
                           << "Save network configuration" << true;
    QTest::newRow("wrong passphrase") << "1"
                                      << "The network was found, but the passphrase was invalid\n"
                                      << "Save network configuration anyway?" << true;
    QTest::newRow("unknown SSID") << "2"
                                  << "The network was not found\n"
                                  << "Save network configuration anyway?" << true;
    QTest::newRow("system error")
        << "3"
        << "There was an unexpected system error. Please power off and then power on the "
           "Tolvar and restart this utility\n"
        << "Save Network Configuration" << false;
}

void TestTestPage::eachVerdict()
{
    QFETCH(QString, result);
    QFETCH(QString, text);
    QFETCH(QString, buttonText);
    QFETCH(bool, canSave);
    QSignalSpy complete(_f->wizard.currentPage(), &QWizardPage::completeChanged);
    _f->finishTest(result);
    QCOMPARE(label(), text);
    QCOMPARE(button()->text(), buttonText);
    QCOMPARE(button()->isEnabled(), canSave);
    QVERIFY(!barVisible());
    QVERIFY(!_f->canFinish());
    QVERIFY2(complete.isEmpty(), "a verdict alone changes nothing about finishing");
}

void TestTestPage::theStepsOfEachVerdictComeInTheirOrder_data()
{
    QTest::addColumn<QString>("result");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("found") << "0"
                           << QStringList({R"(label says "Successfully tested connection to network)",
                                           "pushButton is enabled",
                                           R"(pushButton says "Save network configuration)",
                                           "progressBar is hidden"});
    QTest::newRow("wrong passphrase")
        << "1"
        << QStringList({R"(label says "The network was found, but the passphrase was invalid)",
                        R"(pushButton says "Save network configuration anyway?)", "pushButton is enabled",
                        "progressBar is hidden"});
    QTest::newRow("unknown SSID") << "2"
                                  << QStringList({R"(label says "The network was not found)",
                                                  R"(pushButton says "Save network configuration anyway?)",
                                                  "pushButton is enabled", "progressBar is hidden"});
    QTest::newRow("system error")
        << "3"
        << QStringList(
               {R"(label says "There was an unexpected system error. Please power off and then power on )"
                "the Tolvar and restart this utility",
                "progressBar is hidden"});
}

void TestTestPage::theStepsOfEachVerdictComeInTheirOrder()
{
    QFETCH(QString, result);
    QFETCH(QStringList, expected);
    WidgetChangeRecorder steps(_f->wizard.currentPage());
    _f->finishTest(result);
    QStringList seen = steps.take();
    // Another test checks the line break and the quotation mark at the end of a text.
    static const QRegularExpression textsEnd("\n?\"$");
    for (QString &step : seen)
        step.remove(textsEnd);
    QCOMPARE(seen, expected);
}

void TestTestPage::aSystemErrorIsTerminal()
{
    _f->finishTest("3");
    QVERIFY(!button()->isEnabled());
    QCOMPARE(button()->text(), QStringLiteral("Save Network Configuration"));
    QTest::mouseClick(button(), Qt::LeftButton);
    QVERIFY(_f->inside.queue().isEmpty());
    QVERIFY(!_f->canFinish());
    QVERIFY2(_f->wizard.button(QWizard::CancelButton)->isEnabled(), "only Cancel remains");
}

void TestTestPage::finishIsDisabledUntilSaved()
{
    _f->finishTest("0");
    QVERIFY(!_f->wizard.currentPage()->isComplete());
    QVERIFY(!_f->canFinish());
}

void TestTestPage::aSaveLetsTheUserFinish()
{
    _f->finishTest("0");
    _f->inside.queue().clear();
    QSignalSpy complete(_f->wizard.currentPage(), &QWizardPage::completeChanged);
    QTest::mouseClick(button(), Qt::LeftButton);
    QCOMPARE(_f->inside.queue(), saveLines());
    QCOMPARE(label(), QStringLiteral("Configuration saved\n"));
    QCOMPARE(complete.count(), 1);
    QVERIFY(_f->canFinish());
    QVERIFY(button()->isEnabled());
    QCOMPARE(button()->text(), QStringLiteral("Save network configuration"));
}

void TestTestPage::theStepsOfASaveComeInTheirOrder()
{
    _f->finishTest("0");
    _f->inside.queue().clear();
    WidgetChangeRecorder steps(_f->wizard.currentPage());
    steps.tellAlso([this] {
        return QStringLiteral("%1 commands, %2")
            .arg(_f->inside.queue().size())
            .arg(_f->wizard.page(4)->isComplete() ? "complete" : "not complete");
    });
    connect(_f->wizard.currentPage(), &QWizardPage::completeChanged, &steps,
            [&steps] { steps.note("it tells the wizard"); });
    MessageSpy messages;
    messages.setCallback([&steps](const QString &) { steps.note("a command is queued"); });
    Q_EMIT button()->released();
    QCOMPARE(steps.take(), QStringList({"a command is queued, 1 commands, not complete",
                                        "a command is queued, 2 commands, not complete",
                                        "a command is queued, 3 commands, not complete",
                                        "a command is queued, 4 commands, not complete",
                                        "a command is queued, 5 commands, not complete",
                                        "label says \"Configuration saved\n\", 5 commands, complete",
                                        "it tells the wizard, 5 commands, complete"}));
}

void TestTestPage::afterAWrongPassphraseASaveKeepsTheButtonsText()
{
    _f->finishTest("1");
    QTest::mouseClick(button(), Qt::LeftButton);
    QCOMPARE(label(), QStringLiteral("Configuration saved\n"));
    QCOMPARE(button()->text(), QStringLiteral("Save network configuration anyway?"));
    QVERIFY(_f->canFinish());
}

void TestTestPage::savingAgainSavesAgain()
{
    _f->finishTest("2");
    QTest::mouseClick(button(), Qt::LeftButton);
    _f->inside.queue().clear();
    QTest::mouseClick(button(), Qt::LeftButton);
    QCOMPARE(_f->inside.queue(), saveLines());
    QVERIFY(_f->canFinish());
}

void TestTestPage::aLaterVerdictLeavesFinishAsItIs()
{
    _f->finishTest("0");
    QTest::mouseClick(button(), Qt::LeftButton);
    _f->reply("<networktest_results><status result=\"1\"/></networktest_results>");
    QCOMPARE(label(), QStringLiteral("The network was found, but the passphrase was invalid\n"));
    QCOMPARE(button()->text(), QStringLiteral("Save network configuration anyway?"));
    QVERIFY(_f->canFinish());
}

void TestTestPage::itIsTheLastPage()
{
    QCOMPARE(_f->wizard.currentPage()->nextId(), -1);
    QVERIFY(_f->wizard.button(QWizard::FinishButton)->isVisible());
    QVERIFY(_f->wizard.button(QWizard::BackButton)->isEnabled());
}

void TestTestPage::aSecondEntryStartsOver()
{
    _f->finishTest("0");
    QTest::mouseClick(button(), Qt::LeftButton);
    QVERIFY(_f->canFinish());
    _f->inside.queue().clear();
    _f->goBackAndEnterAgain();
    QCOMPARE(_f->inside.queue(), QStringList({"setssid Home\r\n", "setpass \r\n", "test\r\n"}));
    QCOMPARE(label(), QStringLiteral("Please wait while ZV Tolvar tests the connection to network: Home\n"));
    QVERIFY(barVisible());
    QVERIFY(!button()->isEnabled());
    QVERIFY(!_f->canFinish());
}

void TestTestPage::afterASecondEntryOneReleaseSavesTwice()
{
    _f->goBackAndEnterAgain();
    _f->finishTest("0");
    _f->inside.queue().clear();
    QTest::mouseClick(button(), Qt::LeftButton);
    QCOMPARE(_f->inside.queue(), saveLines() + saveLines());
}

void TestTestPage::theSaveComesWithTheRelease()
{
    _f->finishTest("0");
    _f->inside.queue().clear();
    QTest::mousePress(button(), Qt::LeftButton);
    QVERIFY(_f->inside.queue().isEmpty());
    // Releasing the mouse beside the button emits released(), but not clicked().
    QTest::mouseMove(button(), QPoint(-50, -50));
    QTest::mouseRelease(button(), Qt::LeftButton, {}, QPoint(-50, -50));
    QCOMPARE(_f->inside.queue().isEmpty(), false);
}

void TestTestPage::theTextsAreTranslated_data()
{
    QTest::addColumn<QString>("result");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("buttonText");
    const QString formsButton =
        "Save Network Configuration"; // it was shown before the translation was loaded
    const QString save = "TestNetworkWizardPage|push button text|Save network configuration";
    const QString saveAnyway = "TestNetworkWizardPage|push button text|Save network configuration anyway?";
    QTest::newRow("no verdict yet")
        << ""
        << "TestNetworkWizardPage||Please wait while ZV Tolvar tests the connection to network: Home\n"
        << formsButton;
    QTest::newRow("found")
        << "0"
        << "TestNetworkWizardPage|Progress Text|Successfully tested connection to network\n"
        << save;
    QTest::newRow("wrong passphrase")
        << "1"
        << "TestNetworkWizardPage|Progress Text|The network was found, but the passphrase was invalid\n"
        << saveAnyway;
    QTest::newRow("unknown SSID") << "2"
                                  << "TestNetworkWizardPage|Progress Text|The network was not found\n"
                                  << saveAnyway;
    QTest::newRow("system error")
        << "3"
        << "TestNetworkWizardPage|Progress Text|There was an unexpected system error. Please power off and "
           "then power on the Tolvar and restart this utility\n"
        << formsButton;
    QTest::newRow("saved") << "save"
                           << "TestNetworkWizardPage|Progress Text|Configuration saved\n"
                           << formsButton;
}

void TestTestPage::theTextsAreTranslated()
{
    QFETCH(QString, result);
    QFETCH(QString, text);
    QFETCH(QString, buttonText);
    const PseudoTranslator translator;
    _f->goBackAndEnterAgain();
    if (result == "save")
        Q_EMIT button()->released();
    else if (!result.isEmpty())
        _f->finishTest(result);
    QCOMPARE(label(), text);
    QCOMPARE(button()->text(), buttonText);
}

void TestTestPage::everyEntryConnectsOnceMore_data()
{
    QTest::addColumn<QByteArray>("sender");
    QTest::addColumn<QByteArray>("signal");
    const QByteArray controller = "the controller";
    QTest::newRow("found") << controller << QByteArray("networkTestFound()");
    QTest::newRow("wrong passphrase") << controller << QByteArray("networkTestPassphraseInvalid()");
    QTest::newRow("unknown SSID") << controller << QByteArray("networkTestSsidNotFound()");
    QTest::newRow("system error") << controller << QByteArray("networkTestSystemError()");
    QTest::newRow("the save button's release") << QByteArray("pushButton") << QByteArray("released()");
}

void TestTestPage::everyEntryConnectsOnceMore()
{
    QFETCH(QByteArray, sender);
    QFETCH(QByteArray, signal);
    WizardFixture f;
    QCOMPARE(f.listeners(sender, signal), 0);
    f.goTo(4);
    QCOMPARE(f.listeners(sender, signal), 1);
    f.goBackAndEnterAgain();
    QCOMPARE(f.listeners(sender, signal), 2);
}

QTEST_MAIN(TestTestPage)
#include "tst_testnetworkwizardpage.moc"
