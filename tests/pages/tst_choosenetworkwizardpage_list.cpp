#include <QListView>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "tests/pages/choosepagefixture.h"
#include "tests/support/pseudotranslator.h"
#include "tests/support/scopedconnection.h"
#include "tests/support/widgetchangerecorder.h"

/// Tests the choose-network page's list: scanning, and selecting a network.
class TestNetworkList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { _f = std::make_unique<ChoosePageFixture>(); }
    void cleanup() { _f.reset(); }

    void theEndOfAScan();
    void theStepsOfAScanComeInTheirOrder();
    void aScanWithoutNetworksEmptiesTheList();
    void theListIsRebuiltFromTheTable();
    void theListIsOfTheTableThatTheSignalCarries();
    void anUnplugEmptiesTheList();
    void aPlaceholderRowCanBePicked_data();
    void aPlaceholderRowCanBePicked();
    void thePlaceholderRowsAreNotTranslated();
    void aClickPicksTheNetwork();
    void aNameWithControlBytesIsPickedAndSentAsItCame();
    void aClickOnNothingPicksNothing();
    void aHighlightedRowIsTheNetwork();
    void aRowHighlightedDuringAScanIsNot();
    void aPlaceholderIsNotHighlightedAsTheNetwork();
    void aScanThatEndsWithoutAListLeavesNoOtherRowHighlighted();
    void aTypedNameLeavesNoOtherRowHighlighted();
    void aClickReportsTheNetworkOnce();
    void afterASecondEntryAHighlightedRowCountsOnce();
    void theRefreshButtonScans();
    void theRefreshSlotScans();
    void afterASecondEntryTheRefreshButtonScansTwice();

private:
    /// Highlights \a row as an arrow key does.
    void highlight(const QString &row) const
    {
        auto *list = _f->widget<QListView>("networkListView");
        list->setCurrentIndex(list->model()->index(int(_f->rows().indexOf(row)), 0));
    }

    /// Ends the current scan with a status document, as when the device answers an earlier "get" late.
    void endScanWithoutList() const
    {
        for (const char byte : "\x02<puckdata></puckdata>\x03")
            _f->tolvar().handleReceived(byte);
        _f->wizard.inside.state() = NOT_CONNECTED; // there is no port to send the next command to
    }
    bool hasHighlight() const
    {
        return _f->widget<QListView>("networkListView")->selectionModel()->hasSelection();
    }

    std::unique_ptr<ChoosePageFixture> _f;
};

void TestNetworkList::theEndOfAScan()
{
    QSignalSpy complete(_f->page(), &QWizardPage::completeChanged);
    _f->wizard.finishScan(threeNetworks);
    QVERIFY(!_f->widget<QProgressBar>("progressBar")->isVisible());
    QVERIFY(_f->widget<QPushButton>("refreshButton")->isEnabled());
    QVERIFY(_f->widget<QPushButton>("viewDetailsButton")->isEnabled());
    QCOMPARE(complete.count(), 1);
    QVERIFY(_f->wizard.canGoOn());
}

void TestNetworkList::theStepsOfAScanComeInTheirOrder()
{
    _f->wizard.finishScan();
    WidgetChangeRecorder steps(_f->page());
    connect(_f->page(), &QWizardPage::completeChanged, &steps,
            [&steps] { steps.note("it tells the wizard"); });
    _f->tolvar().startScan();
    QCOMPARE(steps.take(), QStringList({"refreshButton is disabled", "viewDetailsButton is disabled",
                                        "progressBar is shown", "it tells the wizard"}));
    _f->wizard.finishScan();
    QCOMPARE(steps.take(), QStringList({"refreshButton is enabled", "viewDetailsButton is enabled",
                                        "progressBar is hidden", "it tells the wizard"}));
}

void TestNetworkList::aScanWithoutNetworksEmptiesTheList()
{
    _f->name()->clear();
    _f->wizard.finishScan();
    QCOMPARE(_f->rows(), QStringList());
    QVERIFY(!_f->wizard.canGoOn());
    _f->name()->setFocus();
    QTest::keyClicks(_f->name(), "Typed");
    QTest::keyClick(_f->name(), Qt::Key_Tab);
    QVERIFY2(_f->wizard.canGoOn(), "a typed name is enough");
}

void TestNetworkList::theListIsRebuiltFromTheTable()
{
    _f->log.take();
    _f->wizard.finishScan(threeNetworks);
    QStringList shown = _f->rows();
    QCOMPARE(shown, _f->tolvar().scannedNetworks()->keys()); // the order of the table
    shown.sort();
    QCOMPARE(shown, QStringList({"Home", "Old", "Open"}));
    // Each insertion causes one rebuild, and each rebuild logs every row: 1 + 2 + 3 lines.
    QStringList names;
    for (const QString &message : _f->log.messages("D:\"")) {
        if (message == "D:\"Home\" " || message == "D:\"Old\" " || message == "D:\"Open\" ")
            names += message;
    }
    // isComplete() logs the field's text, "Home", once more when the scan is over.
    QVERIFY2(names.size() >= 7, qPrintable(names.join(',')));
    QCOMPARE(names.count("D:\"Open\" "), 1);
    QCOMPARE(names.count("D:\"Old\" "), 2);
}

void TestNetworkList::theListIsOfTheTableThatTheSignalCarries()
{
    _f->wizard.finishScan(threeNetworks);
    QHash<QString, ZVScanResult> another = {{"Another", {}}};
    Q_EMIT _f->tolvar().scannedNetworkListChanged(&another);
    QCOMPARE(_f->rows(), QStringList{"Another"});
}

void TestNetworkList::anUnplugEmptiesTheList()
{
    _f->wizard.finishScan(threeNetworks);
    QextPortInfo info; // its name equals the controller's, which is empty
    _f->tolvar().onDeviceRemoved(info);
    QCOMPARE(_f->rows(), QStringList());
    QCOMPARE(_f->name()->text(), QString());
}

void TestNetworkList::aPlaceholderRowCanBePicked_data()
{
    QTest::addColumn<QString>("row");
    QTest::newRow("the upper") << "Scanning for Networks";
    QTest::newRow("the lower") << "Please Wait....";
}

void TestNetworkList::aPlaceholderRowCanBePicked()
{
    QFETCH(QString, row);
    QCOMPARE(_f->rows(), QStringList({"Scanning for Networks", "Please Wait...."}));
    _f->click(row);
    QCOMPARE(_f->tolvar().network(), row);
    QCOMPARE(_f->name()->text(), row);
    QVERIFY2(!_f->wizard.canGoOn(), "Next stays disabled while the scan runs");
}

void TestNetworkList::thePlaceholderRowsAreNotTranslated()
{
    const PseudoTranslator translator;
    _f->wizard.goBackAndEnterAgain();
    QCOMPARE(_f->rows(), QStringList({"Scanning for Networks", "Please Wait...."}));
}

void TestNetworkList::aClickPicksTheNetwork()
{
    _f->wizard.finishScan(threeNetworks);
    _f->click("Open");
    QCOMPARE(_f->tolvar().network(), QStringLiteral("Open"));
    QCOMPARE(_f->name()->text(), QStringLiteral("Open"));
}

void TestNetworkList::aNameWithControlBytesIsPickedAndSentAsItCame()
{
    QString odd = "x";
    for (char16_t byte = 1; byte < 0x20; ++byte) {
        if (byte != '\t' && byte != '\n' && byte != '\r' && byte != 2 && byte != 3)
            odd += QChar(byte);
    }
    _f->wizard.finishScan("<scan SSID=\"A\"/><scan SSID=\"" + odd + "\"/><scan SSID=\"B\"/>");
    QStringList shown = _f->rows();
    shown.sort();
    QCOMPARE(shown, QStringList({"A", "B", odd}));
    _f->click(odd);
    QCOMPARE(_f->name()->text(), odd);
    QVERIFY(_f->wizard.canGoOn());
    _f->queue().clear();
    _f->wizard.wizard.next();
    QCOMPARE(_f->tolvar().network(), odd);
    QVERIFY2(_f->queue().contains("setssid " + odd + "\r\n"), qPrintable(_f->queue().join(QLatin1Char('|'))));
}

void TestNetworkList::aClickOnNothingPicksNothing()
{
    QVERIFY(QMetaObject::invokeMethod(_f->page(), "OnNetworkListClicked", Q_ARG(QModelIndex, QModelIndex())));
    QCOMPARE(_f->tolvar().network(), QString());
}

void TestNetworkList::aHighlightedRowIsTheNetwork()
{
    _f->wizard.finishScan(threeNetworks);
    highlight("Open");
    QCOMPARE(_f->tolvar().network(), QStringLiteral("Open"));
    QCOMPARE(_f->name()->text(), QStringLiteral("Open"));
    QVERIFY(hasHighlight());
    _f->widget<QListView>("networkListView")->clearSelection();
    QCOMPARE(_f->name()->text(), QStringLiteral("Open"));
}

void TestNetworkList::aRowHighlightedDuringAScanIsNot()
{
    highlight("Please Wait....");
    QCOMPARE(_f->tolvar().network(), QStringLiteral("Home"));
    _f->wizard.finishScan(threeNetworks);
    _f->tolvar().startScan();
    highlight("Open"); // the old rows stay until the reply
    QCOMPARE(_f->tolvar().network(), QStringLiteral("Home"));
    _f->wizard.finishScan(threeNetworks);
    QVERIFY2(!hasHighlight(), "no row may stay highlighted that is not the network");
}

void TestNetworkList::aPlaceholderIsNotHighlightedAsTheNetwork()
{
    endScanWithoutList();
    QVERIFY(!_f->tolvar().scanning());
    QCOMPARE(_f->rows().constFirst(), QStringLiteral("Scanning for Networks"));
    highlight("Scanning for Networks");
    QCOMPARE(_f->tolvar().network(), QStringLiteral("Home"));
    QCOMPARE(_f->name()->text(), QStringLiteral("Home"));
}

void TestNetworkList::aScanThatEndsWithoutAListLeavesNoOtherRowHighlighted()
{
    _f->wizard.finishScan(threeNetworks);
    _f->tolvar().startScan();
    highlight("Open");
    endScanWithoutList();
    QVERIFY(_f->rows().contains("Open"));
    QCOMPARE(_f->tolvar().network(), QStringLiteral("Home"));
    QVERIFY2(!hasHighlight(), "no row may stay highlighted that is not the network");
}

void TestNetworkList::aTypedNameLeavesNoOtherRowHighlighted()
{
    _f->wizard.finishScan(threeNetworks);
    highlight("Open");
    _f->name()->setFocus();
    _f->name()->selectAll();
    QTest::keyClicks(_f->name(), "Hidden");
    QTest::keyClick(_f->name(), Qt::Key_Tab);
    QCOMPARE(_f->tolvar().network(), QStringLiteral("Hidden"));
    QVERIFY2(!hasHighlight(), "no row may stay highlighted that is not the network");
    highlight("Open"); // highlighting the same row counts again
    QCOMPARE(_f->tolvar().network(), QStringLiteral("Open"));
    QVERIFY(hasHighlight());
}

void TestNetworkList::aClickReportsTheNetworkOnce()
{
    _f->wizard.finishScan(threeNetworks);
    const QSignalSpy changed(&_f->tolvar(), &ZVTolvar::networkChanged);
    _f->click("Open");
    QCOMPARE(changed.count(), 1);
}

void TestNetworkList::afterASecondEntryAHighlightedRowCountsOnce()
{
    _f->wizard.finishScan(threeNetworks);
    _f->wizard.goBackAndEnterAgain();
    _f->wizard.finishScan(threeNetworks);
    int calls = 0;
    const ScopedConnection undo(&_f->tolvar(), &ZVTolvar::networkChanged, [&](const QString &name) {
        if (name != "Open")
            return;
        ++calls;
        _f->tolvar().setNetwork("Home"); // a second call would be another change
    });
    highlight("Open");
    QCOMPARE(calls, 1);
}

void TestNetworkList::theRefreshButtonScans()
{
    _f->wizard.finishScan(threeNetworks);
    const QStringList before = _f->rows();
    _f->queue().clear();
    QSignalSpy started(&_f->tolvar(), &ZVTolvar::scanStarted);
    QTest::mouseClick(_f->widget<QPushButton>("refreshButton"), Qt::LeftButton);
    QCOMPARE(started.count(), 1);
    QCOMPARE(_f->queue().size(), 3);
    QCOMPARE(_f->rows(), before); // the old rows stay until the reply
    QVERIFY(!_f->wizard.canGoOn());
    _f->wizard.finishScan("<scan SSID=\"New\"/>");
    QCOMPARE(_f->rows(), QStringList{"New"});
}

void TestNetworkList::theRefreshSlotScans()
{
    _f->wizard.finishScan();
    QSignalSpy started(&_f->tolvar(), &ZVTolvar::scanStarted);
    _f->call("OnRefreshButtonClicked");
    QCOMPARE(started.count(), 1);
}

void TestNetworkList::afterASecondEntryTheRefreshButtonScansTwice()
{
    _f->wizard.finishScan(threeNetworks);
    _f->wizard.goBackAndEnterAgain();
    QCOMPARE(_f->rows(), QStringList({"Scanning for Networks", "Please Wait...."}));
    _f->wizard.finishScan(threeNetworks);
    const QSignalSpy started(&_f->tolvar(), &ZVTolvar::scanStarted);
    QTest::mouseClick(_f->widget<QPushButton>("refreshButton"), Qt::LeftButton);
    QCOMPARE(started.count(), 2);
}

QTEST_MAIN(TestNetworkList)
#include "tst_choosenetworkwizardpage_list.moc"
