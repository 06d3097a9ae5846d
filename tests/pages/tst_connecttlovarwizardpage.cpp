#include <QLabel>
#include <QProgressBar>
#include <QSignalSpy>
#include <QtTest>

#include "pages/connecttlovarwizardpage.h"
#include "tests/support/messagerecorder.h"
#include "tests/support/wizardfixture.h"

/// The start page: waiting until the device has told its system ID.
class TestConnectPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        _log = std::make_unique<MessageRecorder>();
        _f = std::make_unique<WizardFixture>();
    }
    void cleanup()
    {
        _f.reset();
        _log.reset();
    }

    void searchingAtFirst();
    void aCandidateWithoutASystemIDStaysAtGettingStatus();
    void aSystemIDIdentifiesTheDevice();
    void anotherSystemIDLeavesItIdentified();
    void withoutASystemIDAgainTheSearchIsBack();
    void aCandidateAfterIdentificationChangesNothing();
    void theLabelStaysWhileTheBarIsVisible();
    void backFromTheNextPageSearchesNoSecondTime();
    void theNextPageIsTheFoundPage();
    void enteringAgainDoublesItsConnections();

private:
    QString label() const { return _f->widget<QLabel>("label_progress")->text(); }
    bool barVisible() const { return _f->widget<QProgressBar>("connectionProgressBar")->isVisible(); }

    std::unique_ptr<MessageRecorder> _log;
    std::unique_ptr<WizardFixture> _f;
};

void TestConnectPage::searchingAtFirst()
{
    QCOMPARE(label(), QStringLiteral("Looking for ZV Tolvar"));
    QVERIFY(barVisible());
    QVERIFY(!_f->canGoOn());
    QVERIFY(_log->messages().contains("D:List of ports: "));
    QVERIFY(_log->messages().contains("D:Sysid: \"\" "));
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
    QCOMPARE(_f->wizard.currentId(), 0); // it doesn't go on by itself
    QCOMPARE(_log->messages().constLast(), QStringLiteral("D:Sysid: \"TOLVAR-1\" "));
}

void TestConnectPage::anotherSystemIDLeavesItIdentified()
{
    _f->status("<name>TOLVAR-1</name>");
    _log->take();
    _f->status("<name>TOLVAR-2</name>");
    QCOMPARE(label(), QStringLiteral("***** A Tolvar has been found *****"));
    QVERIFY(_f->canGoOn());
    QVERIFY(_log->messages().contains("D:Sysid: \"TOLVAR-2\" "));
}

void TestConnectPage::withoutASystemIDAgainTheSearchIsBack()
{
    _f->status("<name>TOLVAR-1</name>");
    _f->tolvar.setSystemID(QString());
    QCOMPARE(label(), QStringLiteral("Looking for ZV Tolvar"));
    QVERIFY(barVisible());
    QVERIFY(!_f->canGoOn());
}

void TestConnectPage::aCandidateAfterIdentificationChangesNothing()
{
    _f->status("<name>TOLVAR-1</name>");
    Q_EMIT _f->tolvar.candidateDeviceFound();
    QCOMPARE(label(), QStringLiteral("***** A Tolvar has been found *****"));
    QVERIFY(!barVisible());
    QVERIFY(_f->canGoOn());
}

void TestConnectPage::theLabelStaysWhileTheBarIsVisible()
{
    auto *text = _f->widget<QLabel>("label_progress");
    text->setText("as it was");
    QVERIFY(!_f->wizard.currentPage()->isComplete());
    QCOMPARE(label(), QStringLiteral("as it was"));
    _f->widget<QProgressBar>("connectionProgressBar")->hide();
    QVERIFY(!_f->wizard.currentPage()->isComplete());
    QCOMPARE(label(), QStringLiteral("Looking for ZV Tolvar"));
    QVERIFY(barVisible());
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

void TestConnectPage::enteringAgainDoublesItsConnections()
{
    QSignalSpy complete(_f->wizard.currentPage(), &QWizardPage::completeChanged);
    Q_EMIT _f->tolvar.candidateDeviceFound();
    QCOMPARE(complete.count(), 1);
    _f->tolvar.setSystemID("TOLVAR-1");
    QCOMPARE(complete.count(), 2);

    _f->wizard.restart();
    complete.clear();
    Q_EMIT _f->tolvar.candidateDeviceFound();
    QCOMPARE(complete.count(), 2);
    _f->tolvar.setSystemID("TOLVAR-2");
    QCOMPARE(complete.count(), 4);
}

QTEST_MAIN(TestConnectPage)
#include "tst_connecttlovarwizardpage.moc"
