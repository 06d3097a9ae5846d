#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

#include "pages/advanceddialog.h"
#include "pages/choosenetworkwizardpage.h"
#include "pages/viewdetailsdialog.h"
#include "tests/support/messagerecorder.h"
#include "tests/support/modalanswers.h"
#include "tests/support/wizardfixture.h"

namespace
{
const QString threeNetworks = QStringLiteral("<scan SSID=\"Home\" channel=\"6\" sec=\"WPA2 (PSK)\"/>"
                                             "<scan SSID=\"Old\" sec=\"WEP\"/>"
                                             "<scan SSID=\"Open\"/>");
}

/// The choose-network page: scanning, picking or typing a network, and the way on.
class TestChoosePage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aScanStartsOnEntry();
    void theStepsOfAnEntryComeInTheirOrder();
    void theEndOfAScan();
    void aScanWithoutNetworksEmptiesTheList();
    void theListIsRebuiltFromTheTable();
    void anUnplugEmptiesTheList();
    void aPlaceholderCanBeClicked();
    void aClickPicksTheNetwork();
    void aClickOnNothingPicksNothing();
    void aDoubleClickOpensTheDetails();
    void theDetailsAreOfTheNameInTheField();
    void leavingTheNameFieldTellsTheController();
    void leavingThePassphraseFieldTellsTheController();
    void theFieldsFollowTheController();
    void aNameIsEnoughToGoOn_data();
    void aNameIsEnoughToGoOn();
    void theWayOn_data();
    void theWayOn();
    void goingOnHandsBothTextsOver();
    void theRefreshButtonScans();
    void theAntennaBox_data();
    void theAntennaBox();
    void aClickOnTheAntennaBoxCommitsIt();
    void theAntennaSlotFollowsTheController_data();
    void theAntennaSlotFollowsTheController();
    void theRefreshSlotScans();
    void theAdvancedSlot_data();
    void theAdvancedSlot();
    void theAdvancedSlotRefusesOldFirmware_data();
    void theAdvancedSlotRefusesOldFirmware();
    void acceptedAdvancedSettingsReachTheFields();
    void enteringAgainDoublesItsConnections();
    void aSecondDoubleClickAfterReentryOpensTwoDialogs();

private:
    template <typename Widget>
    Widget *widget(const char *name) const
    {
        return _f->widget<Widget>(name);
    }
    QLineEdit *name() const { return widget<QLineEdit>("input_NetworkName"); }
    QLineEdit *passphrase() const { return widget<QLineEdit>("input_Password"); }
    QListView *list() const { return widget<QListView>("networkListView"); }
    QStringList rows() const;
    QModelIndex row(const QString &text) const;
    void click(const QModelIndex &index) const;
    void doubleClick(const QModelIndex &index) const;
    void call(const char *slot) const { QVERIFY(QMetaObject::invokeMethod(_f->wizard.currentPage(), slot)); }

    std::unique_ptr<MessageRecorder> _log;
    std::unique_ptr<WizardFixture> _f;
};

void TestChoosePage::init()
{
    _log = std::make_unique<MessageRecorder>();
    _f = std::make_unique<WizardFixture>();
    _f->goTo(3);
}

void TestChoosePage::cleanup()
{
    _f.reset();
    _log.reset();
}

QStringList TestChoosePage::rows() const
{
    QStringList texts;
    for (int i = 0; i < list()->model()->rowCount(); ++i)
        texts += list()->model()->index(i, 0).data(Qt::DisplayRole).toString();
    return texts;
}

QModelIndex TestChoosePage::row(const QString &text) const
{
    return list()->model()->index(int(rows().indexOf(text)), 0);
}

void TestChoosePage::click(const QModelIndex &index) const
{
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, list()->visualRect(index).center());
}

void TestChoosePage::doubleClick(const QModelIndex &index) const
{
    click(index);
    QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, list()->visualRect(index).center());
}

void TestChoosePage::aScanStartsOnEntry()
{
    QCOMPARE(rows(), QStringList({"Scanning for Networks", "Please Wait...."}));
    QCOMPARE(_f->inside.queue(), QStringList({"setuarttrace y\r\n", "save\r\n", "scan\r\n"}));
    QVERIFY(widget<QProgressBar>("progressBar")->isVisible());
    QVERIFY(!widget<QPushButton>("refreshButton")->isEnabled());
    QVERIFY(!widget<QPushButton>("viewDetailsButton")->isEnabled());
    QCOMPARE(name()->text(), QStringLiteral("Home"));
    QCOMPARE(passphrase()->text(), QString());
    QVERIFY2(!_f->canGoOn(), "nobody goes on while the device scans");
}

void TestChoosePage::theStepsOfAnEntryComeInTheirOrder()
{
    WizardFixture f;
    f.goTo(1);
    f.tolvar.setPassword("open sesame");
    f.tolvar.setAntenna("0");
    bool ready = false;
    auto *page = f.page<ChooseNetworkWizardPage>();
    QVERIFY2(page->findChild<QProgressBar *>("progressBar")->isHidden(),
             "the busy bar is hidden until a scan");
    connect(&f.tolvar, &ZVTolvar::scanStarted, this, [&] {
        // All that the page shows stands before the scan begins.
        ready = page->findChild<QListView *>("networkListView")->model()->rowCount() == 2 &&
                page->findChild<QLineEdit *>("input_NetworkName")->text() == "Home" &&
                page->findChild<QLineEdit *>("input_Password")->text() == "open sesame" &&
                !page->findChild<QCheckBox *>("checkBox_useExternalAntenna")->isChecked();
    });
    f.wizard.next();
    QCOMPARE(f.wizard.currentId(), 3);
    QVERIFY(ready);
}

void TestChoosePage::theEndOfAScan()
{
    QSignalSpy complete(_f->wizard.currentPage(), &QWizardPage::completeChanged);
    _f->finishScan(threeNetworks);
    QVERIFY(!widget<QProgressBar>("progressBar")->isVisible());
    QVERIFY(widget<QPushButton>("refreshButton")->isEnabled());
    QVERIFY(widget<QPushButton>("viewDetailsButton")->isEnabled());
    QCOMPARE(complete.count(), 1);
    QVERIFY(_f->canGoOn());
}

void TestChoosePage::aScanWithoutNetworksEmptiesTheList()
{
    name()->clear();
    _f->finishScan();
    QCOMPARE(rows(), QStringList());
    QVERIFY(!_f->canGoOn());
    name()->setFocus();
    QTest::keyClicks(name(), "Typed");
    QTest::keyClick(name(), Qt::Key_Tab);
    QVERIFY2(_f->canGoOn(), "a typed name is enough");
}

void TestChoosePage::theListIsRebuiltFromTheTable()
{
    _log->take();
    _f->finishScan(threeNetworks);
    QStringList shown = rows();
    QCOMPARE(shown, _f->tolvar.scannedNetworks()->keys()); // the table's own order
    shown.sort();
    QCOMPARE(shown, QStringList({"Home", "Old", "Open"}));
    // One rebuild an insertion, and each names every row: 1 + 2 + 3 lines.
    QStringList names;
    for (const QString &message : _log->messages("D:\"")) {
        if (message == "D:\"Home\" " || message == "D:\"Old\" " || message == "D:\"Open\" ")
            names += message;
    }
    // isComplete() names the field's text, "Home", once more when the scan is over.
    QVERIFY2(names.size() >= 7, qPrintable(names.join(',')));
    QCOMPARE(names.count("D:\"Open\" "), 1);
    QCOMPARE(names.count("D:\"Old\" "), 2);
}

void TestChoosePage::anUnplugEmptiesTheList()
{
    _f->finishScan(threeNetworks);
    QextPortInfo info; // its name equals the controller's: none
    _f->tolvar.onDeviceRemoved(info);
    QCOMPARE(rows(), QStringList());
    QCOMPARE(name()->text(), QString());
}

void TestChoosePage::aPlaceholderCanBeClicked()
{
    click(row("Please Wait...."));
    QCOMPARE(_f->tolvar.network(), QStringLiteral("Please Wait...."));
    QCOMPARE(name()->text(), QStringLiteral("Please Wait...."));
    QVERIFY(!_f->canGoOn());
}

void TestChoosePage::aClickPicksTheNetwork()
{
    _f->finishScan(threeNetworks);
    click(row("Open"));
    QCOMPARE(_f->tolvar.network(), QStringLiteral("Open"));
    QCOMPARE(name()->text(), QStringLiteral("Open"));
}

void TestChoosePage::aClickOnNothingPicksNothing()
{
    QVERIFY(QMetaObject::invokeMethod(_f->wizard.currentPage(), "OnNetworkListClicked",
                                      Q_ARG(QModelIndex, QModelIndex())));
    QCOMPARE(_f->tolvar.network(), QString());
}

void TestChoosePage::aDoubleClickOpensTheDetails()
{
    _f->finishScan(threeNetworks);
    QString network;
    ModalAnswers answers({[&](QDialog *dialog) {
        QVERIFY2(qobject_cast<ViewDetailsDialog *>(dialog), "the network's details were expected");
        QCOMPARE(dialog->parentWidget(), &_f->wizard);
        network = dialog->findChild<QLabel *>("label_network")->text();
        dialog->accept();
    }});
    _log->take();
    doubleClick(row("Old"));
    QCOMPARE(answers.opened(), 1);
    QCOMPARE(network, QStringLiteral("Old"));
    const QStringList messages = _log->messages();
    QVERIFY(messages.contains("D:View Details Button Clicked "));
    QCOMPARE(messages.constLast(), QStringLiteral("D: OK "));
}

void TestChoosePage::theDetailsAreOfTheNameInTheField()
{
    _f->finishScan(threeNetworks);
    click(row("Old"));
    name()->setText("Elsewhere");
    QStringList shown;
    ModalAnswers answers({[&](QDialog *dialog) {
        for (const char *label : {"label_network", "label_security"})
            shown += dialog->findChild<QLabel *>(label)->text();
        dialog->reject();
    }});
    _log->take();
    call("OnViewDetailsButtonClicked");
    QCOMPARE(answers.opened(), 1);
    QCOMPARE(shown, QStringList({"Not Found", ""}));
    QCOMPARE(_log->messages(), QStringList{"D:View Details Button Clicked "});
}

void TestChoosePage::leavingTheNameFieldTellsTheController()
{
    _f->finishScan(threeNetworks);
    QSignalSpy complete(_f->wizard.currentPage(), &QWizardPage::completeChanged);
    name()->setFocus();
    name()->selectAll();
    QTest::keyClicks(name(), " My Net ");
    QCOMPARE(_f->tolvar.network(), QStringLiteral("Home"));
    QTest::keyClick(name(), Qt::Key_Tab);
    QCOMPARE(_f->tolvar.network(), QStringLiteral(" My Net "));
    QCOMPARE(name()->text(), QStringLiteral(" My Net "));
    QCOMPARE(complete.count(), 2); // by the controller's signal, and by the field's
}

void TestChoosePage::leavingThePassphraseFieldTellsTheController()
{
    _f->finishScan(threeNetworks);
    QSignalSpy complete(_f->wizard.currentPage(), &QWizardPage::completeChanged);
    passphrase()->setFocus();
    QTest::keyClicks(passphrase(), "a \"b\"");
    _log->take();
    QTest::keyClick(passphrase(), Qt::Key_Tab);
    QCOMPARE(_log->messages().value(0), QStringLiteral("D:Password Edit: \"a \"b\"\" "));
    QCOMPARE(_f->tolvar.password(), QStringLiteral("a \"b\""));
    QVERIFY2(complete.isEmpty(), "a passphrase makes nothing complete");
}

void TestChoosePage::theFieldsFollowTheController()
{
    _f->finishScan();
    QSignalSpy complete(_f->wizard.currentPage(), &QWizardPage::completeChanged);
    _f->tolvar.setNetwork("N");
    _f->tolvar.setPassword("P");
    QCOMPARE(name()->text(), QStringLiteral("N"));
    QCOMPARE(passphrase()->text(), QStringLiteral("P"));
    QCOMPARE(complete.count(), 1);
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
    name()->setText(text);
    _log->take();
    QVERIFY2(!_f->wizard.currentPage()->isComplete(), "not while the device scans");
    QVERIFY(_log->messages().isEmpty());
    _f->finishScan();
    _log->take();
    QCOMPARE(_f->wizard.currentPage()->isComplete(), complete);
    QCOMPARE(_log->messages(), QStringList{"D:\"" + text + "\" "});
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
    _f->finishScan("<scan SSID=\"Net\" sec=\"" + security +
                   "\" suites=\"WEP\"/><scan SSID=\"Old\" sec=\"WEP\"/>");
    name()->setText("Net");
    QCOMPARE(_f->wizard.currentPage()->nextId(), page);
    name()->setText("Elsewhere");
    QCOMPARE(_f->wizard.currentPage()->nextId(),
             4); // a name that isn't in the list never leads to the warning
    name()->setText("Net");
    _f->wizard.next();
    QCOMPARE(_f->wizard.currentId(), page);
}

void TestChoosePage::goingOnHandsBothTextsOver()
{
    _f->finishScan(threeNetworks);
    name()->setText("Open");
    passphrase()->setText("p w");
    QStringList order;
    connect(&_f->tolvar, &ZVTolvar::networkChanged, this, [&] { order += "network"; });
    connect(&_f->tolvar, &ZVTolvar::passwordChanged, this, [&] { order += "password"; });
    _log->take();
    QCOMPARE(_f->wizard.currentPage()->nextId(), 4);
    QCOMPARE(_log->messages().value(0), QStringLiteral("D:nextId \"p w\" "));
    QCOMPARE(order, QStringList({"network", "password"}));
    QCOMPARE(_f->tolvar.network(), QStringLiteral("Open"));
    QCOMPARE(_f->tolvar.password(), QStringLiteral("p w"));
}

void TestChoosePage::theRefreshButtonScans()
{
    _f->finishScan(threeNetworks);
    const QStringList before = rows();
    _f->inside.queue().clear();
    QSignalSpy started(&_f->tolvar, &ZVTolvar::scanStarted);
    QTest::mouseClick(widget<QPushButton>("refreshButton"), Qt::LeftButton);
    QCOMPARE(started.count(), 1);
    QCOMPARE(_f->inside.queue().size(), 3);
    QCOMPARE(rows(), before); // the old rows stay until the reply
    QVERIFY(!_f->canGoOn());
    _f->finishScan("<scan SSID=\"New\"/>");
    QCOMPARE(rows(), QStringList{"New"});
}

void TestChoosePage::theAntennaBox_data()
{
    QTest::addColumn<QString>("firmware");
    QTest::addColumn<QString>("antenna");
    QTest::addColumn<bool>("checked");
    QTest::newRow("A058 keeps it checked") << "A058"
                                           << "0" << true;
    QTest::newRow("A059 shows the internal antenna") << "A059"
                                                     << "0" << false;
    QTest::newRow("A059 shows the external antenna") << "A059"
                                                     << "1" << true;
    QTest::newRow("any other number is external") << "A060"
                                                  << "7" << true;
    QTest::newRow("no number is internal") << "A060"
                                           << "Y" << false;
    QTest::newRow("nothing is internal") << "A060"
                                         << "" << false;
}

void TestChoosePage::theAntennaBox()
{
    QFETCH(QString, firmware);
    QFETCH(QString, antenna);
    QFETCH(bool, checked);
    WizardFixture f;
    f.status("<name>T</name><firmware_version>" + firmware + "</firmware_version><ant>" + antenna + "</ant>");
    f.goTo(3);
    const auto *box = f.widget<QCheckBox>("checkBox_useExternalAntenna");
    QCOMPARE(box->isChecked(), checked);
    QVERIFY2(!box->isEnabled(), "it only shows the setting");
    f.status("<ant>" + QString(checked ? "0" : "1") + "</ant>");
    QCOMPARE(box->isChecked(), checked); // and doesn't follow it
}

void TestChoosePage::aClickOnTheAntennaBoxCommitsIt()
{
    _f->inside.queue().clear();
    auto *box = widget<QCheckBox>("checkBox_useExternalAntenna");
    box->setEnabled(true);
    box->setChecked(false);
    box->click();
    QCOMPARE(_f->tolvar.antenna(), QStringLiteral("1"));
    QCOMPARE(_f->inside.queue(), QStringList{"ant_select 1\r\n"});
    box->click();
    QCOMPARE(_f->tolvar.antenna(), QStringLiteral("0"));
    QCOMPARE(_f->inside.queue(), QStringList({"ant_select 1\r\n", "ant_select 0\r\n"}));
    // The box's own state counts, not the argument.
    QVERIFY(
        QMetaObject::invokeMethod(_f->wizard.currentPage(), "OnExternalAntennaClicked", Q_ARG(bool, true)));
    QCOMPARE(_f->tolvar.antenna(), QStringLiteral("0"));
}

void TestChoosePage::theAntennaSlotFollowsTheController_data()
{
    QTest::addColumn<QString>("antenna");
    QTest::addColumn<bool>("before");
    QTest::addColumn<bool>("after");
    QTest::newRow("1 checks it") << "1" << false << true;
    QTest::newRow("1 leaves it checked") << "1" << true << true;
    QTest::newRow("0 unchecks it") << "0" << true << false;
    QTest::newRow("0 leaves it unchecked") << "0" << false << false;
    QTest::newRow("any other text unchecks it") << "2" << true << false;
}

void TestChoosePage::theAntennaSlotFollowsTheController()
{
    QFETCH(QString, antenna);
    QFETCH(bool, before);
    QFETCH(bool, after);
    auto *box = widget<QCheckBox>("checkBox_useExternalAntenna");
    box->setChecked(before);
    _f->tolvar.setAntenna(antenna);
    QCOMPARE(box->isChecked(), before); // nothing is connected to the slot
    QVERIFY(
        QMetaObject::invokeMethod(_f->wizard.currentPage(), "OnAntennaChanged", Q_ARG(QString, "ignored")));
    QCOMPARE(box->isChecked(), after);
}

void TestChoosePage::theRefreshSlotScans()
{
    _f->finishScan();
    QSignalSpy started(&_f->tolvar, &ZVTolvar::scanStarted);
    call("OnRefreshButtonClicked");
    QCOMPARE(started.count(), 1);
}

void TestChoosePage::theAdvancedSlot_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("number");
    QTest::addColumn<bool>("accept");
    QTest::newRow("A059, accepted") << "A059"
                                    << "59" << true;
    QTest::newRow("A060, rejected") << "A060"
                                    << "60" << false;
}

void TestChoosePage::theAdvancedSlot()
{
    QFETCH(QString, version);
    QFETCH(QString, number);
    QFETCH(bool, accept);
    _f->tolvar.setFirmwareVersion(version);
    ModalAnswers answers({[&](QDialog *dialog) {
        QVERIFY2(qobject_cast<AdvancedDialog *>(dialog), "the advanced settings were expected");
        QCOMPARE(dialog->parentWidget(), &_f->wizard);
        accept ? dialog->accept() : dialog->reject();
    }});
    _log->take();
    call("OnAdvancedButtonClicked");
    QCOMPARE(answers.opened(), 1);
    QStringList expected = {"D:Advanced Button Clicked ", "D:Firmware: " + number + " "};
    if (accept)
        expected += "D: Advanced settings accepted ";
    QCOMPARE(_log->messages(), expected);
}

void TestChoosePage::theAdvancedSlotRefusesOldFirmware_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("number");
    QTest::newRow("A058") << "A058"
                          << "58";
    QTest::newRow("no digits") << "Abc"
                               << "0";
    QTest::newRow("nothing") << ""
                             << "0";
}

void TestChoosePage::theAdvancedSlotRefusesOldFirmware()
{
    QFETCH(QString, version);
    QFETCH(QString, number);
    _f->tolvar.setFirmwareVersion(version);
    ModalAnswers answers({[](QDialog *dialog) {
        auto *box = qobject_cast<QMessageBox *>(dialog);
        QVERIFY2(box, "a message box was expected");
        QCOMPARE(box->text(),
                 QStringLiteral("Advanced settings are only available with Firmware version A059 or higher"));
        QCOMPARE(box->parentWidget(), nullptr);
        QCOMPARE(box->windowTitle(), QString());
        QCOMPARE(box->icon(), QMessageBox::NoIcon);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok);
        box->accept();
    }});
    _log->take();
    call("OnAdvancedButtonClicked");
    QCOMPARE(answers.opened(), 1);
    QCOMPARE(_log->messages(), QStringList({"D:Advanced Button Clicked ", "D:Firmware: " + number + " "}));
}

void TestChoosePage::acceptedAdvancedSettingsReachTheFields()
{
    const auto *box = widget<QCheckBox>("checkBox_useExternalAntenna");
    const bool before = box->isChecked();
    ModalAnswers answers({[&](QDialog *dialog) {
        dialog->findChild<QLineEdit *>("lineEdit_network")->setText("Elsewhere");
        dialog->findChild<QLineEdit *>("lineEdit_passphrase")->setText("secret");
        dialog->findChild<QCheckBox *>("checkBox_ExternalAntenna")->setChecked(!before);
        dialog->accept();
    }});
    call("OnAdvancedButtonClicked");
    QCOMPARE(name()->text(), QStringLiteral("Elsewhere"));
    QCOMPARE(passphrase()->text(), QStringLiteral("secret"));
    QCOMPARE(_f->tolvar.antenna(), before ? QStringLiteral("0") : QStringLiteral("1"));
    QCOMPARE(box->isChecked(), before); // the page's box isn't refreshed
}

void TestChoosePage::enteringAgainDoublesItsConnections()
{
    const char *const signalNames[] = {SIGNAL(networkChanged(QString)), SIGNAL(passwordChanged(QString)),
                                       SIGNAL(scanStarted()), SIGNAL(scanFinished()),
                                       SIGNAL(scannedNetworkListChanged(QHash<QString, ZVScanResult> *))};
    QList<int> before;
    for (const char *signal : signalNames)
        before += _f->listeners(signal);
    _f->finishScan(threeNetworks);
    _f->wizard.back();
    _f->inside.queue().clear();
    _f->wizard.next();
    QCOMPARE(_f->wizard.currentId(), 3);
    QCOMPARE(_f->inside.queue(), QStringList({"setuarttrace y\r\n", "save\r\n", "scan\r\n"}));
    QCOMPARE(rows(), QStringList({"Scanning for Networks", "Please Wait...."}));
    // The found page was shown again by Back, not entered: its connections are as many as before.
    for (size_t i = 0; i < std::size(signalNames); ++i)
        QVERIFY2(_f->listeners(signalNames[i]) == before.at(qsizetype(i)) + 1, signalNames[i]);

    _f->finishScan(threeNetworks);
    QSignalSpy started(&_f->tolvar, &ZVTolvar::scanStarted);
    QTest::mouseClick(widget<QPushButton>("refreshButton"), Qt::LeftButton);
    QCOMPARE(started.count(), 2);
}

void TestChoosePage::aSecondDoubleClickAfterReentryOpensTwoDialogs()
{
    _f->finishScan(threeNetworks);
    _f->wizard.back();
    _f->wizard.next();
    _f->finishScan(threeNetworks);
    int open = 0;
    int mostAtOnce = 0;
    const ModalAnswers::Answer look = [&](QDialog *dialog) {
        ++open;
        mostAtOnce = qMax(mostAtOnce, open);
        dialog->accept();
        --open;
    };
    ModalAnswers answers({look, look});
    doubleClick(row("Open"));
    QCOMPARE(answers.opened(), 2); // one after the other
    QCOMPARE(mostAtOnce, 1);
}

QTEST_MAIN(TestChoosePage)
#include "tst_choosenetworkwizardpage.moc"
