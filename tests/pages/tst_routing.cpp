#include <QtTest>

#include "tests/support/wizardfixture.h"

/// The way through the pages.
class TestRouting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nextNeverLeadsToTheNotFoundPage();
    void theNotFoundPageWouldLeadToTheChoosePage();
    void theWarningLeadsToTheTest();
    void backFromTheWarningIsTheChoosePage();
    void startingAtAnUnreachablePageDoesNoHarm();
};

void TestRouting::nextNeverLeadsToTheNotFoundPage()
{
    WizardFixture f;
    f.goTo(4);
    QVERIFY(!f.wizard.hasVisitedPage(2));
    QCOMPARE(f.wizard.visitedIds(), QList<int>({0, 1, 3, 4}));
}

void TestRouting::theNotFoundPageWouldLeadToTheChoosePage()
{
    WizardFixture f;
    QWizardPage *notFound = f.wizard.page(2);
    QVERIFY(notFound->isComplete());
    QCOMPARE(notFound->nextId(), 3);
    QVERIFY(!notFound->isFinalPage());
}

void TestRouting::theWarningLeadsToTheTest()
{
    WizardFixture f;
    f.goTo(3);
    f.finishScan("<scan SSID=\"Home\" sec=\"WEP\"/>");
    f.wizard.next();
    QCOMPARE(f.wizard.currentId(), 6);
    QVERIFY2(f.canGoOn(), "the warning holds nobody up");
    f.inside.queue().clear();
    QCOMPARE(f.wizard.currentPage()->nextId(), 4);
    QVERIFY(f.inside.queue().isEmpty());
    f.wizard.next();
    QCOMPARE(f.wizard.currentId(), 4);
}

void TestRouting::backFromTheWarningIsTheChoosePage()
{
    WizardFixture f;
    f.goTo(3);
    f.finishScan("<scan SSID=\"Home\" sec=\"WEP\"/>");
    f.wizard.next();
    f.inside.queue().clear();
    f.wizard.back();
    QCOMPARE(f.wizard.currentId(), 3);
    QCOMPARE(f.tolvar.network(), QStringLiteral("Home"));
    QVERIFY2(f.inside.queue().isEmpty(), "going back scans no second time");
}

void TestRouting::startingAtAnUnreachablePageDoesNoHarm()
{
    WizardFixture f;
    f.wizard.setStartId(2);
    f.wizard.restart();
    QCOMPARE(f.wizard.currentId(), 2);
    QVERIFY(f.canGoOn());
    f.wizard.next();
    QCOMPARE(f.wizard.currentId(), 3);
}

QTEST_MAIN(TestRouting)
#include "tst_routing.moc"
