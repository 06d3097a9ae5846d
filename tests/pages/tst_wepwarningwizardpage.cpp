#include <QLabel>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include "tests/support/wizardfixture.h"

/// Tests the WEP warning, a page between the choose-network page and the test page.
class TestWarningPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { _f.reset(); }

    void nextIsEnabledAsSoonAsItAppears();
    void nextLeadsToTheTestWhateverTheNetwork_data();
    void nextLeadsToTheTestWhateverTheNetwork();
    void askingForTheNextPageChangesNothing();
    void itConnectsToNothing();
    void backIsTheChoosePageWithTheNetworkAsItWas();
    void theLinkAndItsTextAreOneAddress();

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
    _f->inside.queue().clear();
}

void TestWarningPage::nextIsEnabledAsSoonAsItAppears()
{
    QVERIFY(_f->wizard.currentPage()->isComplete());
    QVERIFY(_f->canGoOn());
}

void TestWarningPage::nextLeadsToTheTestWhateverTheNetwork_data()
{
    QTest::addColumn<QString>("network");
    QTest::newRow("one with WEP") << "Home";
    QTest::newRow("one that isn't in the list") << "Elsewhere";
    QTest::newRow("none") << "";
}

void TestWarningPage::nextLeadsToTheTestWhateverTheNetwork()
{
    QFETCH(QString, network);
    _f->tolvar.setNetwork(network);
    QCOMPARE(_f->wizard.currentPage()->nextId(), 4);
    _f->wizard.next();
    QCOMPARE(_f->wizard.currentId(), 4);
}

void TestWarningPage::askingForTheNextPageChangesNothing()
{
    QSignalSpy network(&_f->tolvar, &ZVTolvar::networkChanged);
    QSignalSpy passphrase(&_f->tolvar, &ZVTolvar::passwordChanged);
    QCOMPARE(_f->wizard.currentPage()->nextId(), 4);
    QVERIFY(network.isEmpty());
    QVERIFY(passphrase.isEmpty());
    QVERIFY(_f->inside.queue().isEmpty());
}

void TestWarningPage::itConnectsToNothing()
{
    QStringList connected;
    _f->wizard.back();
    _f->tolvar.connected = [&connected](const QString &signal) { connected += signal; };
    _f->wizard.next();
    QCOMPARE(_f->wizard.currentId(), 6);
    QCOMPARE(connected, QStringList());
    QVERIFY2(_f->inside.queue().isEmpty(), "the warning sends nothing");
}

void TestWarningPage::backIsTheChoosePageWithTheNetworkAsItWas()
{
    _f->wizard.back();
    QCOMPARE(_f->wizard.currentId(), 3);
    QCOMPARE(_f->tolvar.network(), QStringLiteral("Home"));
    QVERIFY2(_f->inside.queue().isEmpty(), "going back scans no second time");
}

void TestWarningPage::theLinkAndItsTextAreOneAddress()
{
    const QString text = _f->widget<QLabel>("label_4")->text();
    static const QRegularExpression whole(
        "^See <a href=\"(https?://[^\"]+)\">([^<]+)</a> for more details\\.$");
    const QRegularExpressionMatch match = whole.match(text);
    QVERIFY2(match.hasMatch(), qPrintable(text));
    QCOMPARE(match.captured(2), match.captured(1));
}

QTEST_MAIN(TestWarningPage)
#include "tst_wepwarningwizardpage.moc"
