#include <QCheckBox>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>

#include "messages/sessionlog.h"
#include "tests/pages/choosepagefixture.h"

/// Tests the choose-network page: entering it, its fields, its antenna box, and Continue.
class TestChoosePage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { _f = std::make_unique<ChoosePageFixture>(); }
    void cleanup() { _f.reset(); }

    void aScanStartsOnEntry();
    void theFieldsAreFilledOnEntry();
    void leavingTheNameFieldUpdatesTheController();
    void leavingThePassphraseFieldUpdatesTheController();
    void theFieldsFollowTheController();
    void aNameEnablesContinue_data();
    void aNameEnablesContinue();
    void onlyWepLeadsToTheWarningPage_data();
    void onlyWepLeadsToTheWarningPage();
    void aNameThatIsNotInTheListLeadsToTheTestPage();
    void continueSetsNetworkAndPassphrase();
    void theConsoleIsReleasedWithThePage();
    void theAntennaBoxShowsTheSettingOnEntry_data();
    void theAntennaBoxShowsTheSettingOnEntry();
    void firmwareA058DisablesTheAntennaBox();
    void aClickOnTheAntennaBoxCommitsIt();
    void theAntennaSlotFollowsTheController_data();
    void theAntennaSlotFollowsTheController();

private:
    QCheckBox *antennaBox() const { return _f->widget<QCheckBox>("checkBox_useExternalAntenna"); }

    std::unique_ptr<ChoosePageFixture> _f;
};

void TestChoosePage::aScanStartsOnEntry()
{
    QCOMPARE(_f->rows(), QStringList({"Scanning for Networks", "Please Wait...."}));
    QCOMPARE(_f->inside.queue(), QStringList({"setuarttrace y\r\n", "save\r\n", "scan\r\n"}));
    QVERIFY(_f->widget<QProgressBar>("progressBar")->isVisible());
    QVERIFY(!_f->widget<QPushButton>("refreshButton")->isEnabled());
    QVERIFY(!_f->widget<QPushButton>("viewDetailsButton")->isEnabled());
    QVERIFY2(!_f->canContinue(), "Continue is enabled during the scan");
}

void TestChoosePage::theFieldsAreFilledOnEntry()
{
    WizardFixture f;
    f.tolvar.setPassword("open sesame");
    f.goTo(3);
    QCOMPARE(f.widget<QLineEdit>("input_NetworkName")->text(), QStringLiteral("Home"));
    QCOMPARE(f.widget<QLineEdit>("input_Password")->text(), QStringLiteral("open sesame"));
}

void TestChoosePage::leavingTheNameFieldUpdatesTheController()
{
    _f->finishScan(threeNetworks);
    const QSignalSpy complete(_f->page(), &QWizardPage::completeChanged);
    _f->name()->setFocus();
    _f->name()->selectAll();
    QTest::keyClicks(_f->name(), " My Net ");
    QCOMPARE(_f->tolvar.network(), QStringLiteral("Home"));
    QTest::keyClick(_f->name(), Qt::Key_Tab);
    QCOMPARE(_f->tolvar.network(), QStringLiteral(" My Net "));
    QCOMPARE(_f->name()->text(), QStringLiteral(" My Net "));
    QCOMPARE(complete.count(), 2); // once for the controller's signal, once for the field's
}

void TestChoosePage::leavingThePassphraseFieldUpdatesTheController()
{
    _f->finishScan(threeNetworks);
    const QSignalSpy complete(_f->page(), &QWizardPage::completeChanged);
    _f->passphrase()->setFocus();
    QTest::keyClicks(_f->passphrase(), "a \"b\"");
    _f->log.take();
    QTest::keyClick(_f->passphrase(), Qt::Key_Tab);
    QCOMPARE(_f->log.messages(), QStringList{"D:Password Edit: \"a \"b\"\" "});
    QCOMPARE(_f->tolvar.password(), QStringLiteral("a \"b\""));
    QVERIFY2(complete.isEmpty(), "completeChanged() was emitted for a passphrase");
}

void TestChoosePage::theFieldsFollowTheController()
{
    _f->finishScan();
    QStringList atTheSignal;
    connect(_f->page(), &QWizardPage::completeChanged, this, [&] { atTheSignal += _f->name()->text(); });
    _f->tolvar.setNetwork("N");
    QCOMPARE(_f->name()->text(), QStringLiteral("N"));
    QCOMPARE(atTheSignal, QStringList{"N"}); // once, and the field is already filled
    _f->tolvar.setPassword("P");
    QCOMPARE(_f->passphrase()->text(), QStringLiteral("P"));
    QCOMPARE(atTheSignal.size(), 1);
}

void TestChoosePage::aNameEnablesContinue_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("complete");
    QTest::newRow("empty") << "" << false;
    QTest::newRow("spaces") << "   " << true;
    QTest::newRow("name without a passphrase") << "Elsewhere" << true;
}

void TestChoosePage::aNameEnablesContinue()
{
    QFETCH(QString, text);
    QFETCH(bool, complete);
    _f->name()->setText(text);
    _f->log.take();
    QVERIFY2(!_f->page()->isComplete(), "the page is complete during the scan");
    QVERIFY(_f->log.messages().isEmpty());
    _f->finishScan();
    _f->log.take();
    QCOMPARE(_f->page()->isComplete(), complete);
    QCOMPARE(_f->log.messages(), QStringList{"D:\"" + text + "\" "});
}

void TestChoosePage::onlyWepLeadsToTheWarningPage_data()
{
    QTest::addColumn<QString>("security");
    QTest::addColumn<int>("page");
    QTest::newRow("WEP") << "WEP" << 6;
    QTest::newRow("WEP in a longer text") << "xxWEP-40 (shared)" << 6;
    QTest::newRow("lower-case wep") << "wep" << 4;
    QTest::newRow("WPA2") << "WPA2 (PSK)" << 4;
}

void TestChoosePage::onlyWepLeadsToTheWarningPage()
{
    QFETCH(QString, security);
    QFETCH(int, page);
    // The cipher suites are ignored, and so is another network.
    _f->finishScan("<scan SSID=\"Net\" sec=\"" + security +
                   "\" suites=\"WEP\"/><scan SSID=\"Old\" sec=\"WEP\"/>");
    _f->name()->setText("Net");
    _f->wizard.next();
    QCOMPARE(_f->wizard.currentId(), page);
}

void TestChoosePage::aNameThatIsNotInTheListLeadsToTheTestPage()
{
    _f->finishScan("<scan SSID=\"Old\" sec=\"WEP\"/>");
    _f->click("Old");
    QCOMPARE(_f->page()->nextId(), 6);
    _f->name()->setText("old");
    QCOMPARE(_f->page()->nextId(), 4);
}

void TestChoosePage::continueSetsNetworkAndPassphrase()
{
    _f->finishScan(threeNetworks);
    _f->name()->setText("Open");
    _f->passphrase()->setText("p w");
    _f->log.take();
    QCOMPARE(_f->page()->nextId(), 4);
    QCOMPARE(_f->log.messages().value(0), QStringLiteral("D:nextId \"p w\" "));
    QCOMPARE(_f->tolvar.network(), QStringLiteral("Open"));
    QCOMPARE(_f->tolvar.password(), QStringLiteral("p w"));
}

void TestChoosePage::theConsoleIsReleasedWithThePage()
{
    QVERIFY(theConsoleWindow);
    delete _f->page();
    QCOMPARE(theConsoleWindow, nullptr);
}

void TestChoosePage::theAntennaBoxShowsTheSettingOnEntry_data()
{
    QTest::addColumn<QByteArray>("firmware");
    QTest::addColumn<QByteArray>("antenna");
    QTest::addColumn<bool>("checked");
    QTest::newRow("A058 -> unchanged") << QByteArray("A058") << QByteArray("0") << true;
    QTest::newRow("A059, 0 -> internal") << QByteArray("A059") << QByteArray("0") << false;
    QTest::newRow("A059, 1 -> external") << QByteArray("A059") << QByteArray("1") << true;
    QTest::newRow("other number -> external") << QByteArray("A060") << QByteArray("7") << true;
    QTest::newRow("not a number -> internal") << QByteArray("A060") << QByteArray("Y") << false;
}

void TestChoosePage::theAntennaBoxShowsTheSettingOnEntry()
{
    QFETCH(QByteArray, firmware);
    QFETCH(QByteArray, antenna);
    QFETCH(bool, checked);
    WizardFixture f;
    f.status("<name>T</name><firmware_version>" + firmware + "</firmware_version><ant>" + antenna + "</ant>");
    f.goTo(3);
    const auto *box = f.widget<QCheckBox>("checkBox_useExternalAntenna");
    QCOMPARE(box->isChecked(), checked);
    QVERIFY2(!box->isEnabled(), "the antenna box is enabled");
}

void TestChoosePage::firmwareA058DisablesTheAntennaBox()
{
    _f->tolvar.setFirmwareVersion("A058");
    antennaBox()->setEnabled(true); // nothing in the program does this
    _f->goBackAndEnterAgain();
    QVERIFY(!antennaBox()->isEnabled());
}

void TestChoosePage::aClickOnTheAntennaBoxCommitsIt()
{
    _f->inside.queue().clear();
    antennaBox()->setEnabled(true);
    antennaBox()->setChecked(false);
    antennaBox()->click();
    QCOMPARE(_f->tolvar.antenna(), QStringLiteral("1"));
    QCOMPARE(_f->inside.queue(), QStringList{"ant_select 1\r\n"});
    antennaBox()->setChecked(false);
    _f->call("OnExternalAntennaClicked", Q_ARG(bool, true)); // the box's own state counts, not the argument
    QCOMPARE(_f->tolvar.antenna(), QStringLiteral("0"));
    QCOMPARE(_f->inside.queue(), QStringList({"ant_select 1\r\n", "ant_select 0\r\n"}));
}

void TestChoosePage::theAntennaSlotFollowsTheController_data()
{
    QTest::addColumn<QString>("antenna");
    QTest::addColumn<bool>("before");
    QTest::addColumn<bool>("after");
    QTest::newRow("1 -> checked") << "1" << false << true;
    QTest::newRow("1 -> still checked") << "1" << true << true;
    QTest::newRow("0 -> unchecked") << "0" << true << false;
    QTest::newRow("0 -> still unchecked") << "0" << false << false;
    QTest::newRow("other text -> unchecked") << "2" << true << false;
}

void TestChoosePage::theAntennaSlotFollowsTheController()
{
    QFETCH(QString, antenna);
    QFETCH(bool, before);
    QFETCH(bool, after);
    antennaBox()->setChecked(before);
    _f->tolvar.setAntenna(antenna);
    QCOMPARE(antennaBox()->isChecked(), before); // nothing is connected to the slot
    _f->call("OnAntennaChanged", Q_ARG(QString, "ignored"));
    QCOMPARE(antennaBox()->isChecked(), after);
}

QTEST_MAIN(TestChoosePage)
#include "tst_choosenetworkwizardpage.moc"
