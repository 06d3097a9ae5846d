#include <QTest>

#include "tests/support/wizardfixture.h"

/// Tests the device-not-found page, which the user never sees.
class TestNotFoundPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noPageLeadsToIt();
    void itLeadsToTheChoosePageAtOnce();
};

void TestNotFoundPage::noPageLeadsToIt()
{
    const WizardFixture f;
    for (const int id : {0, 1, 3, 4, 6})
        QVERIFY2(f.wizard.page(id)->nextId() != 2, qPrintable(QString::number(id)));
}

void TestNotFoundPage::itLeadsToTheChoosePageAtOnce()
{
    WizardFixture f;
    f.wizard.setStartId(2);
    f.wizard.restart();
    QCOMPARE(f.wizard.currentId(), 2);
    QVERIFY(f.canContinue());
    f.wizard.next();
    QCOMPARE(f.wizard.currentId(), 3);
}

QTEST_MAIN(TestNotFoundPage)
#include "tst_tolvarnotfoundwizardpage.moc"
