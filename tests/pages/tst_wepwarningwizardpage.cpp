#include <QTest>

#include "tests/support/wizardfixture.h"

/// Tests the WEP warning, a page between the choose-network page and the test page.
class TestWarningPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { _f.reset(); }

    void nextAlwaysLeadsToTheTestPage();
    void backLeadsToTheChoosePageWithTheSameNetwork();

private:
    std::unique_ptr<WizardFixture> _f;
};

void TestWarningPage::init()
{
    _f = std::make_unique<WizardFixture>();
    _f->goTo(3);
    _f->finishScan("<scan SSID=\"Home\" sec=\"WEP\"/>");
    _f->wizard.next();
    QCOMPARE(_f->wizard.currentId(), 6);
}

void TestWarningPage::nextAlwaysLeadsToTheTestPage()
{
    for (const char *network : {"Home", "Elsewhere", ""}) {
        _f->tolvar.setNetwork(network);
        QCOMPARE(_f->wizard.currentPage()->nextId(), 4);
    }
    QVERIFY(_f->canContinue());
}

void TestWarningPage::backLeadsToTheChoosePageWithTheSameNetwork()
{
    _f->inside.queue().clear();
    _f->wizard.back();
    QCOMPARE(_f->wizard.currentId(), 3);
    QCOMPARE(_f->tolvar.network(), QStringLiteral("Home"));
    QVERIFY2(_f->inside.queue().isEmpty(), "going back started another scan");
}

QTEST_MAIN(TestWarningPage)
#include "tst_wepwarningwizardpage.moc"
