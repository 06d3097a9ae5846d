#include <QLabel>
#include <QProgressBar>
#include <QSignalSpy>
#include <QTest>

#include "tests/support/messagespy.h"
#include "tests/support/pseudotranslator.h"
#include "tests/support/wizardfixture.h"

/// Tests the start page, which waits until the device has reported its system ID.
class TestConnectPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        _log = std::make_unique<MessageSpy>();
        _f = std::make_unique<WizardFixture>();
    }
    void cleanup()
    {
        _f.reset();
        _log.reset();
    }

    void itSearchesAtFirst();
    void aCandidateWithoutASystemIDStaysAtGettingStatus();
    void aSystemIDIdentifiesTheDevice();
    void theSearchReturnsWhenTheSystemIDIsGone();
    void aCandidateAfterIdentificationIsIdentifiedAtOnce();
    void theLabelStaysWhileTheBarIsVisible();
    void beforeTheWindowIsShownTheBarCountsAsHidden();
    void aDeviceThatIsThereAtTheStartKeepsItsText();
    void everyCallOfIsCompleteIsLogged();
    void goingBackDoesNotSearchAgain();
    void theTextsAreTranslated();
    void eachChangeChecksCompletenessOnce();

private:
    QString label() const { return _f->widget<QLabel>("label_progress")->text(); }
    bool barVisible() const { return _f->widget<QProgressBar>("connectionProgressBar")->isVisible(); }

    std::unique_ptr<MessageSpy> _log;
    std::unique_ptr<WizardFixture> _f;
};

void TestConnectPage::itSearchesAtFirst()
{
    QCOMPARE(_f->wizard.currentId(), 0);
    QCOMPARE(label(), QStringLiteral("Looking for ZV Tolvar"));
    QVERIFY(barVisible());
    QVERIFY(!_f->canContinue());
    QVERIFY(_log->messages().contains("D:List of ports: "));
}

void TestConnectPage::aCandidateWithoutASystemIDStaysAtGettingStatus()
{
    Q_EMIT _f->tolvar.candidateDeviceFound();
    _f->status("<mode>SETUP</mode>");
    QCOMPARE(label(), QStringLiteral("Getting status"));
    QVERIFY(barVisible());
    QVERIFY(!_f->canContinue());
}

void TestConnectPage::aSystemIDIdentifiesTheDevice()
{
    for (const char *name : {"TOLVAR-1", "TOLVAR-2"}) {
        _f->tolvar.setSystemID(name);
        QCOMPARE(label(), QStringLiteral("***** A Tolvar has been found *****"));
        QVERIFY(!barVisible());
        QVERIFY(_f->canContinue());
        QCOMPARE(_f->wizard.currentId(), 0); // the wizard does not continue by itself
        QCOMPARE(_log->messages().constLast(), "D:Sysid: \"" + QLatin1String(name) + "\" ");
    }
}

void TestConnectPage::theSearchReturnsWhenTheSystemIDIsGone()
{
    _f->tolvar.setSystemID("TOLVAR-1");
    _f->tolvar.setSystemID(QString());
    QCOMPARE(label(), QStringLiteral("Looking for ZV Tolvar"));
    QVERIFY(barVisible());
    QVERIFY(!_f->canContinue());
}

void TestConnectPage::aCandidateAfterIdentificationIsIdentifiedAtOnce()
{
    _f->tolvar.setSystemID("TOLVAR-1");
    Q_EMIT _f->tolvar.candidateDeviceFound();
    QCOMPARE(label(), QStringLiteral("***** A Tolvar has been found *****"));
    QVERIFY(!barVisible());
    QVERIFY(_f->canContinue());
}

void TestConnectPage::theLabelStaysWhileTheBarIsVisible()
{
    auto *text = _f->widget<QLabel>("label_progress");
    for (const char *before : {"as it was", "Getting status"}) {
        text->setText(before);
        QVERIFY(!_f->wizard.currentPage()->isComplete());
        QCOMPARE(label(), QLatin1String(before));
        _f->widget<QProgressBar>("connectionProgressBar")->hide();
        QVERIFY(!_f->wizard.currentPage()->isComplete());
        QCOMPARE(label(), QStringLiteral("Looking for ZV Tolvar"));
        QVERIFY(barVisible());
    }
}

void TestConnectPage::beforeTheWindowIsShownTheBarCountsAsHidden()
{
    const ZVTolvarSetupWizard wizard;
    const QWizardPage *page = wizard.page(0);
    auto *text = page->findChild<QLabel *>("label_progress");
    auto *bar = page->findChild<QProgressBar *>("connectionProgressBar");
    QCOMPARE(text->text(), QStringLiteral("TextLabel"));
    QVERIFY(!page->isComplete());
    QCOMPARE(text->text(), QStringLiteral("Looking for ZV Tolvar"));
    bar->hide();
    QVERIFY(!page->isComplete());
    QVERIFY(!bar->isHidden());
}

void TestConnectPage::aDeviceThatIsThereAtTheStartKeepsItsText()
{
    // The search announces the device before it returns, and before the window is shown.
    ZVTolvarSetupWizard wizard;
    _log->setCallback([&wizard](const QString &message) {
        if (message == "D:List of ports: ")
            Q_EMIT wizard._tolvar->candidateDeviceFound();
    });
    wizard.show();
    const QWizardPage *page = wizard.currentPage();
    QCOMPARE(page->findChild<QLabel *>("label_progress")->text(), QStringLiteral("Getting status"));
    QVERIFY(page->findChild<QProgressBar *>("connectionProgressBar")->isVisible());
}

void TestConnectPage::everyCallOfIsCompleteIsLogged()
{
    for (const char *systemID : {"", "TOLVAR-1"}) {
        _f->tolvar.setSystemID(systemID);
        _log->take();
        _f->wizard.currentPage()->isComplete();
        QCOMPARE(_log->messages(), QStringList("D:Sysid: \"" + QLatin1String(systemID) + "\" "));
    }
}

void TestConnectPage::goingBackDoesNotSearchAgain()
{
    _f->goTo(1);
    _log->take();
    _f->wizard.back();
    QCOMPARE(_f->wizard.currentId(), 0);
    QVERIFY(!_log->messages().contains("D:List of ports: "));
    QCOMPARE(label(), QStringLiteral("***** A Tolvar has been found *****"));
    QVERIFY(_f->canContinue());
}

void TestConnectPage::theTextsAreTranslated()
{
    const PseudoTranslator translator;
    const QString prefix = "ConnectTlovarWizardPage|Progress bar label|";
    _f->wizard.restart();
    QCOMPARE(label(), prefix + "Looking for ZV Tolvar");
    Q_EMIT _f->tolvar.candidateDeviceFound();
    QCOMPARE(label(), prefix + "Getting status");
    _f->tolvar.setSystemID("TOLVAR-1");
    QCOMPARE(label(), prefix + "***** A Tolvar has been found *****");
    _f->tolvar.setSystemID(QString());
    QCOMPARE(label(), prefix + "Looking for ZV Tolvar");
}

void TestConnectPage::eachChangeChecksCompletenessOnce()
{
    const QSignalSpy complete(_f->wizard.currentPage(), &QWizardPage::completeChanged);
    Q_EMIT _f->tolvar.candidateDeviceFound();
    QCOMPARE(complete.count(), 1);
    _f->tolvar.setSystemID("TOLVAR-1");
    QCOMPARE(complete.count(), 2);
}

QTEST_MAIN(TestConnectPage)
#include "tst_connecttlovarwizardpage.moc"
