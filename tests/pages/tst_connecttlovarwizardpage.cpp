#include <QLabel>
#include <QProgressBar>
#include <QSignalSpy>
#include <QTest>

#include "pages/connecttlovarwizardpage.h"
#include "tests/support/messagespy.h"
#include "tests/support/pseudotranslator.h"
#include "tests/support/widgetchangerecorder.h"
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

    void searchingAtFirst();
    void theStepsOfAnEntryComeInTheirOrder();
    void aCandidateWithoutASystemIDStaysAtGettingStatus();
    void aSystemIDIdentifiesTheDevice();
    void anotherSystemIDLeavesItIdentified();
    void withoutASystemIDAgainTheSearchIsBack();
    void aCandidateAfterIdentificationIsIdentifiedAtOnce();
    void theLabelStaysWhileTheBarIsVisible();
    void beforeTheWindowIsShownTheBarCountsAsHidden();
    void aDeviceThatIsThereAtTheStartKeepsItsText();
    void everyQuestionWhetherItIsCompleteIsLogged();
    void backFromTheNextPageSearchesNoSecondTime();
    void theNextPageIsTheFoundPage();
    void theTextsAreTranslated_data();
    void theTextsAreTranslated();
    void everyEntryConnectsOnceMore_data();
    void everyEntryConnectsOnceMore();
    void eachConnectionAsksOnce();

private:
    QString label() const { return _f->widget<QLabel>("label_progress")->text(); }
    bool barVisible() const { return _f->widget<QProgressBar>("connectionProgressBar")->isVisible(); }

    std::unique_ptr<MessageSpy> _log;
    std::unique_ptr<WizardFixture> _f;
};

void TestConnectPage::searchingAtFirst()
{
    QCOMPARE(_f->wizard.currentId(), 0);
    QCOMPARE(label(), QStringLiteral("Looking for ZV Tolvar"));
    QVERIFY(barVisible());
    QVERIFY(!_f->canGoOn());
    QVERIFY(_log->messages().contains("D:List of ports: "));
    QVERIFY(_log->messages().contains("D:Sysid: \"\" "));
}

void TestConnectPage::theStepsOfAnEntryComeInTheirOrder()
{
    Q_EMIT _f->tolvar.candidateDeviceFound();
    WidgetChangeRecorder steps(_f->wizard.currentPage());
    _f->tolvar.connected = [&steps](const QString &signal) { steps.note(signal + " has a listener more"); };
    _log->setCallback([&steps](const QString &message) {
        if (message == QLatin1String("D:List of ports: "))
            steps.note("the search begins");
    });
    _f->wizard.restart();
    QCOMPARE(steps.take().mid(0, 4),
             QStringList({R"(label_progress says "Looking for ZV Tolvar")",
                          "systemIDChanged(QString) has a listener more",
                          "candidateDeviceFound() has a listener more", "the search begins"}));
}

void TestConnectPage::aCandidateWithoutASystemIDStaysAtGettingStatus()
{
    Q_EMIT _f->tolvar.candidateDeviceFound();
    QCOMPARE(label(), QStringLiteral("Getting status"));
    QVERIFY(barVisible());
    QVERIFY(!_f->canGoOn());
    _f->status("<mode>SETUP</mode>");
    QCOMPARE(label(), QStringLiteral("Getting status"));
    QVERIFY(!_f->canGoOn());
}

void TestConnectPage::aSystemIDIdentifiesTheDevice()
{
    _f->status("<name>TOLVAR-1</name>");
    QCOMPARE(label(), QStringLiteral("***** A Tolvar has been found *****"));
    QVERIFY(!barVisible());
    QVERIFY(_f->canGoOn());
    QCOMPARE(_f->wizard.currentId(), 0); // the wizard does not continue by itself
    QCOMPARE(_log->messages().constLast(), QStringLiteral("D:Sysid: \"TOLVAR-1\" "));
}

void TestConnectPage::anotherSystemIDLeavesItIdentified()
{
    _f->status("<name>TOLVAR-1</name>");
    for (const char *name : {"TOLVAR-2", "TOLVAR-3"}) {
        _log->take();
        _f->tolvar.setSystemID(name);
        QCOMPARE(label(), QStringLiteral("***** A Tolvar has been found *****"));
        QVERIFY(!barVisible());
        QVERIFY(_f->canGoOn());
        QVERIFY(_log->messages().contains("D:Sysid: \"" + QLatin1String(name) + "\" "));
    }
}

void TestConnectPage::withoutASystemIDAgainTheSearchIsBack()
{
    _f->status("<name>TOLVAR-1</name>");
    _f->tolvar.setSystemID(QString());
    QCOMPARE(label(), QStringLiteral("Looking for ZV Tolvar"));
    QVERIFY(barVisible());
    QVERIFY(!_f->canGoOn());
}

void TestConnectPage::aCandidateAfterIdentificationIsIdentifiedAtOnce()
{
    _f->status("<name>TOLVAR-1</name>");
    WidgetChangeRecorder steps(_f->wizard.currentPage());
    _log->setCallback([&steps](const QString &) { steps.note("asks whether it is complete"); });
    Q_EMIT _f->tolvar.candidateDeviceFound();
    QCOMPARE(steps.take().mid(0, 3),
             QStringList({R"(label_progress says "Getting status")", "asks whether it is complete",
                          R"(label_progress says "***** A Tolvar has been found *****")"}));
    QVERIFY(!barVisible());
    QVERIFY(_f->canGoOn());
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
    ZVTolvarSetupWizard wizard;
    const QWizardPage *page = wizard.page(0);
    auto *text = page->findChild<QLabel *>("label_progress");
    auto *bar = page->findChild<QProgressBar *>("connectionProgressBar");
    QCOMPARE(text->text(), QStringLiteral("TextLabel"));
    QVERIFY(!page->isComplete());
    QCOMPARE(text->text(), QStringLiteral("Looking for ZV Tolvar"));
    QVERIFY(!bar->isHidden());
    bar->hide();
    QVERIFY(!page->isComplete());
    QVERIFY(!bar->isHidden());
}

void TestConnectPage::aDeviceThatIsThereAtTheStartKeepsItsText()
{
    // The device is announced while the wizard enters its first page, before its window is shown.
    ZVTolvarSetupWizard wizard;
    wizard.restart();
    Q_EMIT wizard._tolvar->candidateDeviceFound();
    wizard.show();
    QWizardPage *page = wizard.currentPage();
    QCOMPARE(page->findChild<QLabel *>("label_progress")->text(), QStringLiteral("Getting status"));
    QVERIFY(page->findChild<QProgressBar *>("connectionProgressBar")->isVisible());
}

void TestConnectPage::everyQuestionWhetherItIsCompleteIsLogged()
{
    for (const char *systemID : {"", "TOLVAR-1"}) {
        _f->tolvar.setSystemID(systemID);
        _log->take();
        _f->wizard.currentPage()->isComplete();
        _f->wizard.currentPage()->isComplete();
        const QString line = "D:Sysid: \"" + QLatin1String(systemID) + "\" ";
        QCOMPARE(_log->messages(), QStringList({line, line}));
    }
}

void TestConnectPage::backFromTheNextPageSearchesNoSecondTime()
{
    _f->goTo(1);
    _log->take();
    _f->wizard.back();
    QCOMPARE(_f->wizard.currentId(), 0);
    QVERIFY(!_log->messages().contains("D:List of ports: "));
    QCOMPARE(label(), QStringLiteral("***** A Tolvar has been found *****"));
    QVERIFY(_f->canGoOn());
}

void TestConnectPage::theNextPageIsTheFoundPage()
{
    QCOMPARE(_f->wizard.currentPage()->nextId(), 1);
    _f->status("<name>TOLVAR-1</name>");
    QCOMPARE(_f->wizard.currentPage()->nextId(), 1);
}

void TestConnectPage::theTextsAreTranslated_data()
{
    QTest::addColumn<QString>("systemID");
    QTest::addColumn<bool>("candidate");
    QTest::addColumn<QString>("shown");
    QTest::newRow("the search") << "" << false
                                << "ConnectTlovarWizardPage|Progress bar label|Looking for ZV Tolvar";
    QTest::newRow("a candidate") << "" << true << "ConnectTlovarWizardPage|Progress bar label|Getting status";
    QTest::newRow("a device")
        << "TOLVAR-1" << false
        << "ConnectTlovarWizardPage|Progress bar label|***** A Tolvar has been found *****";
}

void TestConnectPage::theTextsAreTranslated()
{
    QFETCH(QString, systemID);
    QFETCH(bool, candidate);
    QFETCH(QString, shown);
    const PseudoTranslator translator;
    _f->wizard.restart();
    if (candidate)
        Q_EMIT _f->tolvar.candidateDeviceFound();
    _f->tolvar.setSystemID(systemID);
    QCOMPARE(label(), shown);
    if (!systemID.isEmpty())
        return;
    // The text that returns while no device is found is the same.
    _f->widget<QProgressBar>("connectionProgressBar")->hide();
    QVERIFY(!_f->wizard.currentPage()->isComplete());
    QCOMPARE(label(), QStringLiteral("ConnectTlovarWizardPage|Progress bar label|Looking for ZV Tolvar"));
}

void TestConnectPage::everyEntryConnectsOnceMore_data()
{
    QTest::addColumn<QByteArray>("signal");
    QTest::newRow("the system ID's change") << QByteArray("systemIDChanged(QString)");
    QTest::newRow("the candidate") << QByteArray("candidateDeviceFound()");
}

void TestConnectPage::everyEntryConnectsOnceMore()
{
    QFETCH(QByteArray, signal);
    QCOMPARE(_f->listeners("the controller", signal), 1);
    _f->wizard.restart();
    QCOMPARE(_f->listeners("the controller", signal), 2);
}

void TestConnectPage::eachConnectionAsksOnce()
{
    const QSignalSpy complete(_f->wizard.currentPage(), &QWizardPage::completeChanged);
    Q_EMIT _f->tolvar.candidateDeviceFound();
    QCOMPARE(complete.count(), 1);
    _f->tolvar.setSystemID("TOLVAR-1");
    QCOMPARE(complete.count(), 2);
}

QTEST_MAIN(TestConnectPage)
#include "tst_connecttlovarwizardpage.moc"
