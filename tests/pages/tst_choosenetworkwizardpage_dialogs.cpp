#include <QCheckBox>
#include <QLabel>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include "pages/advanceddialog.h"
#include "pages/viewdetailsdialog.h"
#include "tests/pages/choosepagefixture.h"
#include "tests/support/modaldialogresponder.h"
#include "tests/support/pseudotranslator.h"

/// Tests the dialogs that the choose-network page opens.
class TestChoosePageDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { _f = std::make_unique<ChoosePageFixture>(); }
    void cleanup() { _f.reset(); }

    void aDoubleClickOpensTheDetails();
    void theDoubleClickPicksTheNetworkItself();
    void theDetailsButtonOpensTheDetailsOnce();
    void theDetailsAreOfTheNameInTheField();
    void theUnknownNetworkIsNotTranslated();
    void theAdvancedSlot_data();
    void theAdvancedSlot();
    void theAdvancedSlotRefusesOldFirmware_data();
    void theAdvancedSlotRefusesOldFirmware();
    void theRefusalIsTranslated();
    void acceptedAdvancedSettingsReachTheFields();
    void aSecondDoubleClickAfterReentryOpensTwoDialogs();

private:
    std::unique_ptr<ChoosePageFixture> _f;
};

void TestChoosePageDialogs::aDoubleClickOpensTheDetails()
{
    _f->wizard.finishScan(threeNetworks);
    QString network;
    ModalDialogResponder answers({[&](QDialog *dialog) {
        QVERIFY2(qobject_cast<ViewDetailsDialog *>(dialog), "the network's details were expected");
        QCOMPARE(dialog->parentWidget(), &_f->wizard.wizard);
        network = dialog->findChild<QLabel *>("label_network")->text();
        dialog->accept();
    }});
    _f->log.take();
    _f->doubleClick("Old");
    QCOMPARE(answers.opened(), 1);
    QCOMPARE(network, QStringLiteral("Old"));
    const QStringList messages = _f->log.messages();
    QVERIFY(messages.contains("D:View Details Button Clicked "));
    QCOMPARE(messages.constLast(), QStringLiteral("D: OK "));
}

void TestChoosePageDialogs::theDoubleClickPicksTheNetworkItself()
{
    // With a mouse, the preceding click has already selected the network.
    _f->wizard.finishScan("<scan SSID=\"Old\" sec=\"WEP\"/>");
    QCOMPARE(_f->tolvar().network(), QStringLiteral("Home"));
    QString network;
    ModalDialogResponder answers({[&network](QDialog *dialog) {
        network = dialog->findChild<QLabel *>("label_network")->text();
        dialog->accept();
    }});
    const QModelIndex row = _f->widget<QListView>("networkListView")->model()->index(0, 0);
    QVERIFY(QMetaObject::invokeMethod(_f->page(), "OnNetworkListDoubleClicked", Q_ARG(QModelIndex, row)));
    QCOMPARE(_f->tolvar().network(), QStringLiteral("Old"));
    QCOMPARE(network, QStringLiteral("Old"));
}

void TestChoosePageDialogs::theDetailsButtonOpensTheDetailsOnce()
{
    _f->wizard.finishScan(threeNetworks);
    ModalDialogResponder answers({[](QDialog *dialog) {
        QVERIFY2(qobject_cast<ViewDetailsDialog *>(dialog), "the network's details were expected");
        dialog->accept();
    }});
    QTest::mouseClick(_f->widget<QPushButton>("viewDetailsButton"), Qt::LeftButton);
    QCOMPARE(answers.opened(), 1);
}

void TestChoosePageDialogs::theDetailsAreOfTheNameInTheField()
{
    _f->wizard.finishScan(threeNetworks);
    _f->click("Old");
    _f->name()->setText("Elsewhere");
    QStringList shown;
    ModalDialogResponder answers({[&](QDialog *dialog) {
        for (const char *label : {"label_network", "label_security"})
            shown += dialog->findChild<QLabel *>(label)->text();
        dialog->reject();
    }});
    _f->log.take();
    _f->call("OnViewDetailsButtonClicked");
    QCOMPARE(answers.opened(), 1);
    QCOMPARE(shown, QStringList({"Not Found", ""}));
    QCOMPARE(_f->log.messages(), QStringList{"D:View Details Button Clicked "});
}

void TestChoosePageDialogs::theUnknownNetworkIsNotTranslated()
{
    _f->wizard.finishScan();
    const PseudoTranslator translator;
    QString shown;
    ModalDialogResponder answers({[&shown](QDialog *dialog) {
        shown = dialog->findChild<QLabel *>("label_network")->text();
        dialog->reject();
    }});
    _f->call("OnViewDetailsButtonClicked");
    QCOMPARE(shown, QStringLiteral("Not Found"));
}

void TestChoosePageDialogs::theAdvancedSlot_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("number");
    QTest::addColumn<bool>("accept");
    QTest::newRow("A059, accepted") << "A059"
                                    << "59" << true;
    QTest::newRow("A060, rejected") << "A060"
                                    << "60" << false;
}

void TestChoosePageDialogs::theAdvancedSlot()
{
    QFETCH(QString, version);
    QFETCH(QString, number);
    QFETCH(bool, accept);
    _f->tolvar().setFirmwareVersion(version);
    ModalDialogResponder answers({[&](QDialog *dialog) {
        QVERIFY2(qobject_cast<AdvancedDialog *>(dialog), "the advanced settings were expected");
        QCOMPARE(dialog->parentWidget(), &_f->wizard.wizard);
        accept ? dialog->accept() : dialog->reject();
    }});
    _f->log.take();
    _f->call("OnAdvancedButtonClicked");
    QCOMPARE(answers.opened(), 1);
    QStringList expected = {"D:Advanced Button Clicked ", "D:Firmware: " + number + " "};
    if (accept)
        expected += "D: Advanced settings accepted ";
    QCOMPARE(_f->log.messages(), expected);
}

void TestChoosePageDialogs::theAdvancedSlotRefusesOldFirmware_data()
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

void TestChoosePageDialogs::theAdvancedSlotRefusesOldFirmware()
{
    QFETCH(QString, version);
    QFETCH(QString, number);
    _f->tolvar().setFirmwareVersion(version);
    ModalDialogResponder answers({[](QDialog *dialog) {
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
    _f->log.take();
    _f->call("OnAdvancedButtonClicked");
    QCOMPARE(answers.opened(), 1);
    QCOMPARE(_f->log.messages(), QStringList({"D:Advanced Button Clicked ", "D:Firmware: " + number + " "}));
}

void TestChoosePageDialogs::theRefusalIsTranslated()
{
    _f->tolvar().setFirmwareVersion("A058");
    const PseudoTranslator translator;
    QString shown;
    ModalDialogResponder answers({[&shown](QDialog *dialog) {
        shown = qobject_cast<QMessageBox *>(dialog)->text();
        dialog->reject();
    }});
    _f->call("OnAdvancedButtonClicked");
    QCOMPARE(shown,
             QStringLiteral("ChooseNetworkWizardPage|Warning dialog when advanced settings selected, and an "
                            "incompatible firmware is loaded.|Advanced settings are only available with "
                            "Firmware version A059 or higher"));
}

void TestChoosePageDialogs::acceptedAdvancedSettingsReachTheFields()
{
    const auto *box = _f->widget<QCheckBox>("checkBox_useExternalAntenna");
    const bool before = box->isChecked();
    ModalDialogResponder answers({[&](QDialog *dialog) {
        dialog->findChild<QLineEdit *>("lineEdit_network")->setText("Elsewhere");
        dialog->findChild<QLineEdit *>("lineEdit_passphrase")->setText("secret");
        dialog->findChild<QCheckBox *>("checkBox_ExternalAntenna")->setChecked(!before);
        dialog->accept();
    }});
    _f->call("OnAdvancedButtonClicked");
    QCOMPARE(_f->name()->text(), QStringLiteral("Elsewhere"));
    QCOMPARE(_f->passphrase()->text(), QStringLiteral("secret"));
    QCOMPARE(_f->tolvar().antenna(), before ? QStringLiteral("0") : QStringLiteral("1"));
    QCOMPARE(box->isChecked(), before); // the page's box is not updated
}

void TestChoosePageDialogs::aSecondDoubleClickAfterReentryOpensTwoDialogs()
{
    _f->wizard.finishScan(threeNetworks);
    _f->wizard.wizard.back();
    _f->wizard.wizard.next();
    _f->wizard.finishScan(threeNetworks);
    int open = 0;
    int mostAtOnce = 0;
    const ModalDialogResponder::Answer look = [&](QDialog *dialog) {
        ++open;
        mostAtOnce = qMax(mostAtOnce, open);
        dialog->accept();
        --open;
    };
    ModalDialogResponder answers({look, look});
    _f->doubleClick("Open");
    QCOMPARE(answers.opened(), 2); // one after the other
    QCOMPARE(mostAtOnce, 1);
}

QTEST_MAIN(TestChoosePageDialogs)
#include "tst_choosenetworkwizardpage_dialogs.moc"
