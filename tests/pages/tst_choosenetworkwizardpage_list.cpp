#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>

#include "tests/pages/choosepagefixture.h"
#include "tests/support/pseudotranslator.h"
#include "tests/support/scopedconnection.h"

/// Tests the choose-network page's list: scanning, and selecting a network.
class TestNetworkList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { _f = std::make_unique<ChoosePageFixture>(); }
    void cleanup() { _f.reset(); }

    void theEndOfAScanEnablesThePage();
    void aScanWithoutNetworksEmptiesTheList();
    void theListIsRebuiltFromTheTable();
    void theListIsOfTheTableThatTheSignalCarries();
    void anUnplugEmptiesTheList();
    void aPlaceholderRowCanBePicked();
    void aClickPicksTheNetworkOnce();
    void aClickOnNothingPicksNothing();
    void aHighlightedRowIsTheNetwork();
    void aRowHighlightedDuringAScanIsNotTheNetwork();
    void aPlaceholderIsNotHighlightedAsTheNetwork();
    void aScanThatEndsWithoutAListLeavesNoOtherRowHighlighted();
    void aTypedNameLeavesNoOtherRowHighlighted();
    void afterASecondEntryAHighlightedRowCountsOnce();
    void theRefreshButtonScans();
    void theRefreshSlotScans();

private:
    /// Highlights \a row as an arrow key does.
    void highlight(const QString &row) const { _f->list()->setCurrentIndex(_f->index(row)); }
    bool hasHighlight() const { return _f->list()->selectionModel()->hasSelection(); }

    /// Ends the current scan with a status document, as when the device answers an earlier "get" late.
    void endScanWithoutList() const
    {
        for (const char byte : "\x02<puckdata></puckdata>\x03")
            _f->tolvar.handleReceived(byte);
        _f->inside.state() = NOT_CONNECTED; // there is no port to send the next command to
    }

    std::unique_ptr<ChoosePageFixture> _f;
};

void TestNetworkList::theEndOfAScanEnablesThePage()
{
    const QSignalSpy complete(_f->page(), &QWizardPage::completeChanged);
    _f->finishScan(threeNetworks);
    QVERIFY(!_f->widget<QProgressBar>("progressBar")->isVisible());
    QVERIFY(_f->widget<QPushButton>("refreshButton")->isEnabled());
    QVERIFY(_f->widget<QPushButton>("viewDetailsButton")->isEnabled());
    QCOMPARE(complete.count(), 1);
    QVERIFY(_f->canContinue());
}

void TestNetworkList::aScanWithoutNetworksEmptiesTheList()
{
    _f->name()->clear();
    _f->finishScan();
    QCOMPARE(_f->rows(), QStringList());
    QVERIFY(!_f->canContinue());
    _f->name()->setFocus();
    QTest::keyClicks(_f->name(), "Typed");
    QTest::keyClick(_f->name(), Qt::Key_Tab);
    QVERIFY2(_f->canContinue(), "Continue is disabled with a typed name");
}

void TestNetworkList::theListIsRebuiltFromTheTable()
{
    _f->log.take();
    _f->finishScan(threeNetworks);
    QStringList shown = _f->rows();
    QCOMPARE(shown, _f->tolvar.scannedNetworks()->keys()); // the order of the table
    shown.sort();
    QCOMPARE(shown, QStringList({"Home", "Old", "Open"}));
    // Each insertion rebuilds the list, which logs every row: "Old" was inserted before "Open".
    QCOMPARE(_f->log.messages("D:\"Old\" ").size(), 2);
    QCOMPARE(_f->log.messages("D:\"Open\" ").size(), 1);
}

void TestNetworkList::theListIsOfTheTableThatTheSignalCarries()
{
    _f->finishScan(threeNetworks);
    QHash<QString, ZVScanResult> another = {{"Another", {}}};
    Q_EMIT _f->tolvar.scannedNetworkListChanged(&another);
    QCOMPARE(_f->rows(), QStringList{"Another"});
}

void TestNetworkList::anUnplugEmptiesTheList()
{
    _f->finishScan(threeNetworks);
    _f->tolvar.onDeviceRemoved({}); // its name equals the controller's, which is empty
    QCOMPARE(_f->rows(), QStringList());
    QCOMPARE(_f->name()->text(), QString());
}

void TestNetworkList::aPlaceholderRowCanBePicked()
{
    _f->finishScan(threeNetworks);
    const PseudoTranslator translator; // the rows are not translated
    _f->goBackAndEnterAgain();
    const QStringList placeholders = {"Scanning for Networks", "Please Wait...."};
    QCOMPARE(_f->rows(), placeholders);
    for (const QString &row : placeholders) {
        _f->click(row);
        QCOMPARE(_f->tolvar.network(), row);
        QCOMPARE(_f->name()->text(), row);
        QVERIFY2(!_f->canContinue(), "Continue is enabled during the scan");
    }
}

void TestNetworkList::aClickPicksTheNetworkOnce()
{
    _f->finishScan(threeNetworks);
    const QSignalSpy changed(&_f->tolvar, &ZVTolvar::networkChanged);
    _f->click("Open");
    QCOMPARE(changed, {QVariantList{"Open"}});
    QCOMPARE(_f->name()->text(), QStringLiteral("Open"));
}

void TestNetworkList::aClickOnNothingPicksNothing()
{
    _f->call("OnNetworkListClicked", Q_ARG(QModelIndex, QModelIndex()));
    QCOMPARE(_f->tolvar.network(), QString());
}

void TestNetworkList::aHighlightedRowIsTheNetwork()
{
    _f->finishScan(threeNetworks);
    highlight("Open");
    QCOMPARE(_f->tolvar.network(), QStringLiteral("Open"));
    QCOMPARE(_f->name()->text(), QStringLiteral("Open"));
    QVERIFY(hasHighlight());
    _f->list()->clearSelection();
    QCOMPARE(_f->name()->text(), QStringLiteral("Open"));
}

void TestNetworkList::aRowHighlightedDuringAScanIsNotTheNetwork()
{
    highlight("Please Wait....");
    QCOMPARE(_f->tolvar.network(), QStringLiteral("Home"));
    _f->finishScan(threeNetworks);
    _f->tolvar.startScan();
    highlight("Open"); // the old rows stay until the reply
    QCOMPARE(_f->tolvar.network(), QStringLiteral("Home"));
    _f->finishScan(threeNetworks);
    QVERIFY2(!hasHighlight(), "a row other than the network is highlighted");
}

void TestNetworkList::aPlaceholderIsNotHighlightedAsTheNetwork()
{
    endScanWithoutList();
    QVERIFY(!_f->tolvar.scanning());
    highlight("Scanning for Networks");
    QCOMPARE(_f->tolvar.network(), QStringLiteral("Home"));
    QCOMPARE(_f->name()->text(), QStringLiteral("Home"));
}

void TestNetworkList::aScanThatEndsWithoutAListLeavesNoOtherRowHighlighted()
{
    _f->finishScan(threeNetworks);
    _f->tolvar.startScan();
    highlight("Open");
    endScanWithoutList();
    QVERIFY(_f->rows().contains("Open"));
    QCOMPARE(_f->tolvar.network(), QStringLiteral("Home"));
    QVERIFY2(!hasHighlight(), "a row other than the network is highlighted");
}

void TestNetworkList::aTypedNameLeavesNoOtherRowHighlighted()
{
    _f->finishScan(threeNetworks);
    highlight("Open");
    _f->name()->setFocus();
    _f->name()->selectAll();
    QTest::keyClicks(_f->name(), "Hidden");
    QTest::keyClick(_f->name(), Qt::Key_Tab);
    QCOMPARE(_f->tolvar.network(), QStringLiteral("Hidden"));
    QVERIFY2(!hasHighlight(), "a row other than the network is highlighted");
    highlight("Open"); // highlighting the same row counts again
    QCOMPARE(_f->tolvar.network(), QStringLiteral("Open"));
    QVERIFY(hasHighlight());
}

void TestNetworkList::afterASecondEntryAHighlightedRowCountsOnce()
{
    _f->finishScan(threeNetworks);
    _f->goBackAndEnterAgain();
    _f->finishScan(threeNetworks);
    int calls = 0;
    const ScopedConnection undo(&_f->tolvar, &ZVTolvar::networkChanged, [&](const QString &name) {
        if (name != "Open")
            return;
        ++calls;
        _f->tolvar.setNetwork("Home"); // a second call would be another change
    });
    highlight("Open");
    QCOMPARE(calls, 1);
}

void TestNetworkList::theRefreshButtonScans()
{
    _f->finishScan(threeNetworks);
    const QStringList before = _f->rows();
    const QSignalSpy started(&_f->tolvar, &ZVTolvar::scanStarted);
    QTest::mouseClick(_f->widget<QPushButton>("refreshButton"), Qt::LeftButton);
    QCOMPARE(started.count(), 1);
    QCOMPARE(_f->rows(), before); // the old rows stay until the reply
    QVERIFY(!_f->canContinue());
    _f->finishScan("<scan SSID=\"New\"/>");
    QCOMPARE(_f->rows(), QStringList{"New"});
}

void TestNetworkList::theRefreshSlotScans()
{
    _f->finishScan();
    const QSignalSpy started(&_f->tolvar, &ZVTolvar::scanStarted);
    _f->call("OnRefreshButtonClicked");
    QCOMPARE(started.count(), 1);
}

QTEST_MAIN(TestNetworkList)
#include "tst_choosenetworkwizardpage_list.moc"
