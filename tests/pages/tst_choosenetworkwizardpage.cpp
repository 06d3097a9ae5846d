#include <QListView>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "messages/sessionlog.h"
#include "pages/choosenetworkwizardpage.h"
#include "tests/pages/choosepagefixture.h"
#include "tests/support/pseudotranslator.h"
#include "tests/support/widgetchangerecorder.h"

/// Tests the choose-network page: entering it, its fields, and Continue.
class TestChoosePage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { _f = std::make_unique<ChoosePageFixture>(); }
    void cleanup() { _f.reset(); }

    void aScanStartsOnEntry();
    void theStepsOfAnEntryComeInTheirOrder();
    void theBusyBarIsHiddenUntilAScan();
    void leavingTheNameFieldTellsTheController();
    void leavingTheNameFieldAsksTheWizardAfterwards();
    void leavingThePassphraseFieldTellsTheController();
    void theFieldsFollowTheController();
    void aNameIsEnoughToGoOn_data();
    void aNameIsEnoughToGoOn();
    void anEmptyPassphraseNeverBlocksNext();
    void theWayOn_data();
    void theWayOn();
    void aNameThatIsNotInTheListLeadsToTheTestPage();
    void goingOnHandsBothTextsOver();
    void everyQuestionForTheNextPageIsLogged();
    void theConsoleIsLetGoBeforeThePageIs();
    void everyEntryConnectsOnceMore_data();
    void everyEntryConnectsOnceMore();

private:
    std::unique_ptr<ChoosePageFixture> _f;
};

void TestChoosePage::aScanStartsOnEntry()
{
    QCOMPARE(_f->rows(), QStringList({"Scanning for Networks", "Please Wait...."}));
    QCOMPARE(_f->queue(), QStringList({"setuarttrace y\r\n", "save\r\n", "scan\r\n"}));
    QVERIFY(_f->widget<QProgressBar>("progressBar")->isVisible());
    QVERIFY(!_f->widget<QPushButton>("refreshButton")->isEnabled());
    QVERIFY(!_f->widget<QPushButton>("viewDetailsButton")->isEnabled());
    QCOMPARE(_f->name()->text(), QStringLiteral("Home"));
    QCOMPARE(_f->passphrase()->text(), QString());
    QVERIFY2(!_f->wizard.canGoOn(), "nobody goes on while the device scans");
}

void TestChoosePage::theStepsOfAnEntryComeInTheirOrder()
{
    WizardFixture f;
    f.goTo(1);
    f.tolvar.setPassword("open sesame");
    f.tolvar.setAntenna("0");
    auto *page = f.page<ChooseNetworkWizardPage>();
    WidgetChangeRecorder steps(page);
    steps.tellAlso([&f, page] {
        int byWidgets = 0;
        for (const auto &[sender, signal] : {std::pair("networkListView", "doubleClicked(QModelIndex)"),
                                             std::pair("networkListView", "clicked(QModelIndex)"),
                                             std::pair("refreshButton", "clicked(bool)"),
                                             std::pair("input_NetworkName", "editingFinished()"),
                                             std::pair("input_Password", "editingFinished()"),
                                             std::pair("viewDetailsButton", "clicked(bool)"),
                                             std::pair("checkBox_useExternalAntenna", "clicked(bool)")})
            byWidgets += f.listeners(sender, signal);
        const QAbstractItemModel *list = page->findChild<QListView *>("networkListView")->model();
        return QStringLiteral("%1 by widgets, %2 rows").arg(byWidgets).arg(list ? list->rowCount() : 0);
    });
    f.tolvar.connected = [&steps](const QString &signal) { steps.note(signal); };
    connect(&f.tolvar, &ZVTolvar::scanStarted, &steps, [&steps] { steps.note("the scan begins"); });
    steps.take();
    f.wizard.next();
    QCOMPARE(f.wizard.currentId(), 3);
    // What is shown for the first time follows after that.
    QCOMPARE(steps.take().mid(0, 12),
             QStringList({"networkChanged(QString), 0 by widgets, 0 rows",
                          "passwordChanged(QString), 0 by widgets, 0 rows",
                          "scanStarted(), 0 by widgets, 0 rows", "scanFinished(), 0 by widgets, 0 rows",
                          "scannedNetworkListChanged(QHash<QString,ZVScanResult>*), 7 by widgets, 0 rows",
                          R"(input_NetworkName says "Home", 7 by widgets, 0 rows)",
                          R"(input_Password says "open sesame", 7 by widgets, 0 rows)",
                          "checkBox_useExternalAntenna is unchecked, 7 by widgets, 0 rows",
                          "the scan begins, 7 by widgets, 2 rows",
                          "refreshButton is disabled, 7 by widgets, 2 rows",
                          "viewDetailsButton is disabled, 7 by widgets, 2 rows",
                          "progressBar is shown, 7 by widgets, 2 rows"}));
}

void TestChoosePage::theBusyBarIsHiddenUntilAScan()
{
    const ChooseNetworkWizardPage page;
    QVERIFY(page.findChild<QProgressBar *>("progressBar")->isHidden());
}

void TestChoosePage::leavingTheNameFieldTellsTheController()
{
    _f->wizard.finishScan(threeNetworks);
    QSignalSpy complete(_f->page(), &QWizardPage::completeChanged);
    _f->name()->setFocus();
    _f->name()->selectAll();
    QTest::keyClicks(_f->name(), " My Net ");
    QCOMPARE(_f->tolvar().network(), QStringLiteral("Home"));
    QTest::keyClick(_f->name(), Qt::Key_Tab);
    QCOMPARE(_f->tolvar().network(), QStringLiteral(" My Net "));
    QCOMPARE(_f->name()->text(), QStringLiteral(" My Net "));
    QCOMPARE(complete.count(), 2); // once for the controller's signal, once for the field's
}

void TestChoosePage::leavingTheNameFieldAsksTheWizardAfterwards()
{
    _f->wizard.finishScan(threeNetworks);
    QStringList order;
    connect(&_f->tolvar(), &ZVTolvar::networkChanged, this,
            [&] { order += "the controller knows the name"; });
    connect(_f->page(), &QWizardPage::completeChanged, this, [&] { order += "the wizard asks"; });
    _f->name()->setText("Typed");
    _f->call("OnNetworkEditingFinished");
    // The wizard asks first when the controller's signal has filled the field.
    QCOMPARE(order, QStringList({"the wizard asks", "the controller knows the name", "the wizard asks"}));
    order.clear();
    _f->call("OnNetworkEditingFinished");
    QCOMPARE(order, QStringList{"the wizard asks"}); // even when the name has not changed
}

void TestChoosePage::leavingThePassphraseFieldTellsTheController()
{
    _f->wizard.finishScan(threeNetworks);
    const QSignalSpy complete(_f->page(), &QWizardPage::completeChanged);
    _f->passphrase()->setFocus();
    QTest::keyClicks(_f->passphrase(), "a \"b\"");
    _f->log.take();
    QString atTheMessage = "no message";
    _f->log.setCallback([&](const QString &) { atTheMessage = _f->tolvar().password(); });
    QTest::keyClick(_f->passphrase(), Qt::Key_Tab);
    QCOMPARE(_f->log.messages(), QStringList{"D:Password Edit: \"a \"b\"\" "});
    QCOMPARE(atTheMessage, QString()); // the name is logged before it is passed to the controller
    QCOMPARE(_f->tolvar().password(), QStringLiteral("a \"b\""));
    QVERIFY2(complete.isEmpty(), "a passphrase makes nothing complete");
}

void TestChoosePage::theFieldsFollowTheController()
{
    _f->wizard.finishScan();
    QStringList atTheSignal;
    connect(_f->page(), &QWizardPage::completeChanged, this, [&] { atTheSignal += _f->name()->text(); });
    _f->tolvar().setNetwork("N");
    QCOMPARE(_f->name()->text(), QStringLiteral("N"));
    QCOMPARE(atTheSignal, QStringList{"N"}); // once, and the field is already filled
    _f->tolvar().setPassword("P");
    QCOMPARE(_f->passphrase()->text(), QStringLiteral("P"));
    QCOMPARE(atTheSignal.size(), 1);
}

void TestChoosePage::aNameIsEnoughToGoOn_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("complete");
    QTest::newRow("empty is not") << "" << false;
    QTest::newRow("blanks are") << "   " << true;
    QTest::newRow("a name is, without a passphrase") << "Elsewhere" << true;
}

void TestChoosePage::aNameIsEnoughToGoOn()
{
    QFETCH(QString, text);
    QFETCH(bool, complete);
    _f->name()->setText(text);
    _f->log.take();
    QVERIFY2(!_f->page()->isComplete(), "not while the device scans");
    QVERIFY(_f->log.messages().isEmpty());
    _f->wizard.finishScan();
    _f->log.take();
    QCOMPARE(_f->page()->isComplete(), complete);
    QCOMPARE(_f->log.messages(), QStringList{"D:\"" + text + "\" "});
}

void TestChoosePage::anEmptyPassphraseNeverBlocksNext()
{
    _f->wizard.finishScan(threeNetworks);
    _f->name()->setText("Home");
    _f->passphrase()->clear();
    QVERIFY(_f->page()->isComplete());
    QVERIFY(_f->wizard.canGoOn());
    _f->wizard.wizard.next();
    QCOMPARE(_f->wizard.wizard.currentId(), 4);
    QCOMPARE(_f->tolvar().password(), QString());
}

void TestChoosePage::theWayOn_data()
{
    QTest::addColumn<QString>("security");
    QTest::addColumn<int>("page");
    QTest::newRow("WEP alone") << "WEP" << 6;
    QTest::newRow("WEP inside a longer text") << "xxWEP-40 (shared)" << 6;
    QTest::newRow("lower case is not WEP") << "wep" << 4;
    QTest::newRow("mixed case is not WEP") << "Wep" << 4;
    QTest::newRow("WPA2") << "WPA2 (PSK)" << 4;
    QTest::newRow("none") << "" << 4;
}

void TestChoosePage::theWayOn()
{
    QFETCH(QString, security);
    QFETCH(int, page);
    // The cipher suites are ignored, and so is another network.
    _f->wizard.finishScan("<scan SSID=\"Net\" sec=\"" + security +
                          "\" suites=\"WEP\"/><scan SSID=\"Old\" sec=\"WEP\"/>");
    _f->name()->setText("Net");
    QCOMPARE(_f->page()->nextId(), page);
    _f->wizard.wizard.next();
    QCOMPARE(_f->wizard.wizard.currentId(), page);
}

void TestChoosePage::aNameThatIsNotInTheListLeadsToTheTestPage()
{
    _f->wizard.finishScan("<scan SSID=\"Old\" sec=\"WEP\"/>");
    _f->click("Old");
    QCOMPARE(_f->page()->nextId(), 6);
    _f->name()->setText("old");
    QCOMPARE(_f->page()->nextId(), 4);
    _f->wizard.wizard.next();
    QCOMPARE(_f->wizard.wizard.currentId(), 4);
}

void TestChoosePage::goingOnHandsBothTextsOver()
{
    _f->wizard.finishScan(threeNetworks);
    _f->name()->setText("Open");
    _f->passphrase()->setText("p w");
    QStringList order;
    connect(&_f->tolvar(), &ZVTolvar::networkChanged, this, [&] { order += "network"; });
    connect(&_f->tolvar(), &ZVTolvar::passwordChanged, this, [&] { order += "password"; });
    _f->log.take();
    QCOMPARE(_f->page()->nextId(), 4);
    QCOMPARE(_f->log.messages().value(0), QStringLiteral("D:nextId \"p w\" "));
    QCOMPARE(order, QStringList({"network", "password"}));
    QCOMPARE(_f->tolvar().network(), QStringLiteral("Open"));
    QCOMPARE(_f->tolvar().password(), QStringLiteral("p w"));
}

void TestChoosePage::everyQuestionForTheNextPageIsLogged()
{
    _f->wizard.finishScan(threeNetworks);
    _f->log.take();
    _f->page()->nextId();
    _f->page()->nextId();
    QCOMPARE(_f->log.messages(), QStringList({"D:nextId \"\" ", "D:nextId \"\" "}));
}

void TestChoosePage::theConsoleIsLetGoBeforeThePageIs()
{
    QVERIFY(theConsoleWindow);
    const QTextEdit *whenTheListWent = theConsoleWindow;
    connect(_f->widget<QListView>("networkListView")->model(), &QObject::destroyed, this,
            [&] { whenTheListWent = theConsoleWindow; });
    delete _f->page();
    QCOMPARE(whenTheListWent, nullptr);
    QCOMPARE(theConsoleWindow, nullptr);
}

void TestChoosePage::everyEntryConnectsOnceMore_data()
{
    QTest::addColumn<QByteArray>("sender");
    QTest::addColumn<QByteArray>("signal");
    const auto row = [](const char *name, const QByteArray &sender, const QByteArray &signal) {
        QTest::newRow(name) << sender << signal;
    };
    row("the network's name", "the controller", "networkChanged(QString)");
    row("the passphrase", "the controller", "passwordChanged(QString)");
    row("the scan's begin", "the controller", "scanStarted()");
    row("the scan's end", "the controller", "scanFinished()");
    row("a double click on the list", "networkListView", "doubleClicked(QModelIndex)");
    row("a click on the list", "networkListView", "clicked(QModelIndex)");
    row("the refresh button", "refreshButton", "clicked(bool)");
    row("the name field", "input_NetworkName", "editingFinished()");
    row("the passphrase field", "input_Password", "editingFinished()");
    row("the details button", "viewDetailsButton", "clicked(bool)");
    row("the antenna box", "checkBox_useExternalAntenna", "clicked(bool)");
    row("the table", "the controller", "scannedNetworkListChanged(QHash<QString,ZVScanResult>*)");
}

void TestChoosePage::everyEntryConnectsOnceMore()
{
    QFETCH(QByteArray, sender);
    QFETCH(QByteArray, signal);
    WizardFixture f;
    f.goTo(1); // the previous page has its own connections
    const int before = f.listeners(sender, signal);
    QVERIFY2(before >= 0, "there is no such signal");
    f.goTo(3);
    QCOMPARE(f.listeners(sender, signal), before + 1);
    f.goBackAndEnterAgain();
    QCOMPARE(f.listeners(sender, signal), before + 2);
}

QTEST_MAIN(TestChoosePage)
#include "tst_choosenetworkwizardpage.moc"
