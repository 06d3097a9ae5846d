#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "tests/support/drawntext.h"
#include "tests/support/pseudotranslator.h"
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

    void withoutAVerdictThePageStaysBusy();
    void theNameOfTheNetworkIsShownAsItIs();
    void eachVerdictHasItsTextAndButton_data();
    void eachVerdictHasItsTextAndButton();
    void aSaveLetsTheUserFinish();
    void aLaterVerdictLeavesFinishAsItIs();
    void aSecondEntryStartsOver();
    void afterASecondEntryOneReleaseSavesTwice();
    void theSaveHappensOnRelease();
    void itIsTheLastPage();

private:
    QString label() const { return _f->widget<QLabel>("label")->text(); }
    QPushButton *button() const { return _f->widget<QPushButton>("pushButton"); }
    bool barVisible() const { return _f->widget<QProgressBar>("progressBar")->isVisible(); }
    /// Releases the button and returns the commands that this has queued.
    QStringList save() const
    {
        _f->inside.queue().clear();
        QTest::mouseClick(button(), Qt::LeftButton);
        return _f->inside.queue();
    }
    static QStringList saveLines()
    {
        return {"ant_select \r\n", "setssid Home\r\n", "setpass \r\n", "setstaticip N\r\n", "save\r\n"};
    }

    std::unique_ptr<WizardFixture> _f;
};

void TestTestPage::withoutAVerdictThePageStaysBusy()
{
    _f->finishTest("9"); // not a verdict
    QCOMPARE(label(), QStringLiteral("Please wait while ZV Tolvar tests the connection to network: Home\n"));
    QVERIFY(barVisible());
    QVERIFY(!button()->isEnabled());
    QVERIFY(!_f->canFinish());
}

void TestTestPage::theNameOfTheNetworkIsShownAsItIs()
{
    const QString name = "AT&T && <b>bold &lt;";
    _f->wizard.back();
    _f->widget<QLineEdit>("input_NetworkName")->setText(name);
    _f->wizard.next();
    const QString shown = "Please wait while ZV Tolvar tests the connection to network: " + name + "\n";
    QVERIFY(isDrawnLiterally(*_f->widget<QLabel>("label"), shown));
    QCOMPARE(announced(*_f->widget<QLabel>("label")), shown);
}

void TestTestPage::eachVerdictHasItsTextAndButton_data()
{
    QTest::addColumn<QString>("result");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("buttonText");
    QTest::addColumn<bool>("canSave");
    const QString save = "TestNetworkWizardPage|push button text|Save network configuration";
    QTest::newRow("found") << "0"
                           << "Successfully tested connection to network\n"
                           << save << true;
    QTest::newRow("wrong passphrase") << "1"
                                      << "The network was found, but the passphrase was invalid\n"
                                      << save + " anyway?" << true;
    QTest::newRow("unknown SSID") << "2"
                                  << "The network was not found\n"
                                  << save + " anyway?" << true;
    QTest::newRow("system error")
        << "3"
        << "There was an unexpected system error. Please power off and then power on the Tolvar and restart "
           "this utility\n"
        << "Save Network Configuration" << false;
}

void TestTestPage::eachVerdictHasItsTextAndButton()
{
    QFETCH(QString, result);
    QFETCH(QString, text);
    QFETCH(QString, buttonText);
    QFETCH(bool, canSave);
    const PseudoTranslator translator;
    const QSignalSpy complete(_f->wizard.currentPage(), &QWizardPage::completeChanged);
    _f->finishTest(result);
    QCOMPARE(label(), "TestNetworkWizardPage|Progress Text|" + text);
    QCOMPARE(button()->text(), buttonText);
    QCOMPARE(button()->isEnabled(), canSave);
    QVERIFY(!barVisible());
    QVERIFY2(complete.isEmpty() && !_f->canFinish(), "Finish is enabled before the save");
    QCOMPARE(save(), canSave ? saveLines() : QStringList());
    QCOMPARE(_f->canFinish(), canSave);
    QCOMPARE(button()->text(), buttonText);
}

void TestTestPage::aSaveLetsTheUserFinish()
{
    _f->finishTest("0");
    const PseudoTranslator translator;
    const QSignalSpy complete(_f->wizard.currentPage(), &QWizardPage::completeChanged);
    for (int saves = 1; saves <= 2; ++saves) {
        QCOMPARE(save(), saveLines());
        QCOMPARE(label(), QStringLiteral("TestNetworkWizardPage|Progress Text|Configuration saved\n"));
        QCOMPARE(complete.count(), saves);
        QVERIFY(_f->canFinish());
        QVERIFY(button()->isEnabled());
    }
}

void TestTestPage::aLaterVerdictLeavesFinishAsItIs()
{
    _f->finishTest("0");
    save();
    _f->reply("<networktest_results><status result=\"1\"/></networktest_results>");
    QCOMPARE(label(), QStringLiteral("The network was found, but the passphrase was invalid\n"));
    QCOMPARE(button()->text(), QStringLiteral("Save network configuration anyway?"));
    QVERIFY(_f->canFinish());
}

void TestTestPage::aSecondEntryStartsOver()
{
    _f->finishTest("0");
    save();
    _f->inside.queue().clear();
    const PseudoTranslator translator;
    _f->goBackAndEnterAgain();
    QCOMPARE(_f->inside.queue(), QStringList({"setssid Home\r\n", "setpass \r\n", "test\r\n"}));
    QCOMPARE(label(), QStringLiteral("TestNetworkWizardPage||Please wait while ZV Tolvar tests the "
                                     "connection to network: Home\n"));
    QVERIFY(barVisible());
    QVERIFY(!button()->isEnabled());
    QVERIFY(!_f->canFinish());
}

void TestTestPage::afterASecondEntryOneReleaseSavesTwice()
{
    _f->goBackAndEnterAgain();
    _f->finishTest("0");
    QCOMPARE(save(), saveLines() + saveLines());
}

void TestTestPage::theSaveHappensOnRelease()
{
    _f->finishTest("0");
    _f->inside.queue().clear();
    QTest::mousePress(button(), Qt::LeftButton);
    QVERIFY(_f->inside.queue().isEmpty());
    // Releasing the mouse beside the button emits released(), but not clicked().
    QTest::mouseMove(button(), QPoint(-50, -50));
    QTest::mouseRelease(button(), Qt::LeftButton, {}, QPoint(-50, -50));
    QVERIFY(!_f->inside.queue().isEmpty());
}

void TestTestPage::itIsTheLastPage()
{
    const WizardFixture f;
    QVERIFY2(f.wizard.page(4)->isComplete(), "the page is not complete before the first test");
    QCOMPARE(_f->wizard.currentPage()->nextId(), -1);
    QVERIFY(_f->wizard.button(QWizard::FinishButton)->isVisible());
    QVERIFY(_f->wizard.button(QWizard::BackButton)->isEnabled());
}

QTEST_MAIN(TestTestPage)
#include "tst_testnetworkwizardpage.moc"
