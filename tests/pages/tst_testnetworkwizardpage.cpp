#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

#include "pages/testnetworkwizardpage.h"
#include "tests/support/wizardfixture.h"

/// The last page: the test's verdict, and saving.
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

    void aTestStartsOnEntry();
    void withoutAVerdictItStaysBusy();
    void eachVerdict_data();
    void eachVerdict();
    void aSystemErrorIsTerminal();
    void aVerdictAloneLetsNobodyFinish();
    void aSaveLetsTheUserFinish();
    void savingAnywayKeepsTheButtonsText();
    void savingAgainSavesAgain();
    void aLaterVerdictLeavesFinishAsItIs();
    void itIsTheLastPage();
    void enteringAgainDoublesItsConnections();
    void theSaveComesWithTheRelease();

private:
    QString label() const { return _f->widget<QLabel>("label")->text(); }
    QPushButton *button() const { return _f->widget<QPushButton>("pushButton"); }
    bool barVisible() const { return _f->widget<QProgressBar>("progressBar")->isVisible(); }

    std::unique_ptr<WizardFixture> _f;
};

namespace
{
const QStringList saveLines = {"ant_select \r\n", "setssid Home\r\n", "setpass \r\n", "setstaticip N\r\n",
                               "save\r\n"};
}

void TestTestPage::aTestStartsOnEntry()
{
    WizardFixture f;
    f.goTo(3);
    f.finishScan();
    f.inside.queue().clear();
    bool ready = false;
    connect(&f.tolvar, &ZVTolvar::networkTestStarted, this, [&] {
        // All that the page shows stands before the test begins.
        auto *page = f.page<TestNetworkWizardPage>();
        ready = !page->findChild<QPushButton *>("pushButton")->isEnabled() && !page->isComplete() &&
                page->findChild<QLabel *>("label")->text().contains("Home");
    });
    f.wizard.next();
    QCOMPARE(f.wizard.currentId(), 4);
    QVERIFY(ready);
    QCOMPARE(f.inside.queue(), QStringList({"setssid Home\r\n", "setpass \r\n", "test\r\n"}));
}

void TestTestPage::withoutAVerdictItStaysBusy()
{
    QCOMPARE(label(), QStringLiteral("Please wait while ZV Tolvar tests the connection to network: Home\n"));
    QVERIFY(barVisible());
    QVERIFY(!button()->isEnabled());
    QCOMPARE(button()->text(), QStringLiteral("Save Network Configuration"));
    QVERIFY(!_f->canFinish());
    _f->finishTest("9"); // a result that is no verdict
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

void TestTestPage::aSystemErrorIsTerminal()
{
    _f->finishTest("3");
    QTest::mouseClick(button(), Qt::LeftButton);
    QVERIFY(_f->inside.queue().isEmpty());
    QVERIFY(!_f->canFinish());
}

void TestTestPage::aVerdictAloneLetsNobodyFinish()
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
    QCOMPARE(_f->inside.queue(), saveLines);
    QCOMPARE(label(), QStringLiteral("Configuration saved\n"));
    QCOMPARE(complete.count(), 1);
    QVERIFY(_f->canFinish());
    QVERIFY(button()->isEnabled());
    QCOMPARE(button()->text(), QStringLiteral("Save network configuration"));
}

void TestTestPage::savingAnywayKeepsTheButtonsText()
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
    QCOMPARE(_f->inside.queue(), saveLines);
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

void TestTestPage::enteringAgainDoublesItsConnections()
{
    _f->finishTest("0");
    _f->wizard.back();
    QCOMPARE(_f->wizard.currentId(), 3);
    _f->inside.queue().clear();
    _f->wizard.next();
    QCOMPARE(_f->inside.queue(), QStringList({"setssid Home\r\n", "setpass \r\n", "test\r\n"}));
    QVERIFY(barVisible());
    QVERIFY(!button()->isEnabled());
    _f->finishTest("0");
    _f->inside.queue().clear();
    QTest::mouseClick(button(), Qt::LeftButton);
    QCOMPARE(_f->inside.queue(), saveLines + saveLines);
}

void TestTestPage::theSaveComesWithTheRelease()
{
    _f->finishTest("0");
    _f->inside.queue().clear();
    QTest::mousePress(button(), Qt::LeftButton);
    QVERIFY(_f->inside.queue().isEmpty());
    // Let go beside the button: released() comes, clicked() doesn't.
    QTest::mouseMove(button(), QPoint(-50, -50));
    QTest::mouseRelease(button(), Qt::LeftButton, {}, QPoint(-50, -50));
    QCOMPARE(_f->inside.queue().isEmpty(), false);
}

QTEST_MAIN(TestTestPage)
#include "tst_testnetworkwizardpage.moc"
