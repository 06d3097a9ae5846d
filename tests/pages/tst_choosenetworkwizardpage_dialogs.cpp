#include <QCheckBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

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

    void aDoubleClickPicksTheNetworkAndOpensTheDetails();
    void theDetailsAreOfTheNameInTheField();
    void theAdvancedSlotOpensTheDialog_data();
    void theAdvancedSlotOpensTheDialog();
    void theAdvancedSlotRejectsOldFirmware_data();
    void theAdvancedSlotRejectsOldFirmware();
    void acceptedAdvancedSettingsReachTheFields();
    void aSecondDoubleClickAfterReentryOpensTwoDialogs();

private:
    std::unique_ptr<ChoosePageFixture> _f;
};

void TestChoosePageDialogs::aDoubleClickPicksTheNetworkAndOpensTheDetails()
{
    _f->finishScan(threeNetworks);
    QString network;
    const ModalDialogResponder answers({[&](QDialog *dialog) {
        QVERIFY2(qobject_cast<ViewDetailsDialog *>(dialog), "the dialog is not a ViewDetailsDialog");
        QCOMPARE(dialog->parentWidget(), &_f->wizard);
        network = dialog->findChild<QLabel *>("label_network")->text();
        dialog->accept();
    }});
    _f->log.take();
    // With a mouse, the preceding click would already have picked the network.
    _f->call("OnNetworkListDoubleClicked", Q_ARG(QModelIndex, _f->index("Old")));
    QCOMPARE(answers.opened(), 1);
    QCOMPARE(network, QStringLiteral("Old"));
    QCOMPARE(_f->tolvar.network(), QStringLiteral("Old"));
    QVERIFY(_f->log.messages().contains("D:View Details Button Clicked "));
    QCOMPARE(_f->log.messages().constLast(), QStringLiteral("D: OK "));
}

void TestChoosePageDialogs::theDetailsAreOfTheNameInTheField()
{
    _f->finishScan(threeNetworks);
    _f->click("Old");
    _f->name()->setText("Elsewhere");
    const PseudoTranslator translator; // "Not Found" is not translated
    QStringList shown;
    const ModalDialogResponder answers({[&](QDialog *dialog) {
        for (const char *label : {"label_network", "label_security"})
            shown += dialog->findChild<QLabel *>(label)->text();
        dialog->reject();
    }});
    _f->log.take();
    _f->widget<QPushButton>("viewDetailsButton")->click();
    QCOMPARE(answers.opened(), 1);
    QCOMPARE(shown, QStringList({"Not Found", ""}));
    QCOMPARE(_f->log.messages(), QStringList{"D:View Details Button Clicked "});
}

void TestChoosePageDialogs::theAdvancedSlotOpensTheDialog_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<bool>("accept");
    QTest::newRow("A059, accepted") << 59 << true;
    QTest::newRow("A060, rejected") << 60 << false;
}

void TestChoosePageDialogs::theAdvancedSlotOpensTheDialog()
{
    QFETCH(int, version);
    QFETCH(bool, accept);
    _f->tolvar.setFirmwareVersion(QString("A0%1").arg(version));
    const ModalDialogResponder answers({[&](QDialog *dialog) {
        QVERIFY2(qobject_cast<AdvancedDialog *>(dialog), "the dialog is not an AdvancedDialog");
        QCOMPARE(dialog->parentWidget(), &_f->wizard);
        accept ? dialog->accept() : dialog->reject();
    }});
    _f->log.take();
    _f->call("OnAdvancedButtonClicked");
    QCOMPARE(answers.opened(), 1);
    QStringList expected = {"D:Advanced Button Clicked ", QString("D:Firmware: %1 ").arg(version)};
    if (accept)
        expected += "D: Advanced settings accepted ";
    QCOMPARE(_f->log.messages(), expected);
}

void TestChoosePageDialogs::theAdvancedSlotRejectsOldFirmware_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<int>("number");
    QTest::newRow("A058") << "A058" << 58;
    QTest::newRow("no digits") << "Abc" << 0;
}

void TestChoosePageDialogs::theAdvancedSlotRejectsOldFirmware()
{
    QFETCH(QString, version);
    QFETCH(int, number);
    _f->tolvar.setFirmwareVersion(version);
    const PseudoTranslator translator;
    const ModalDialogResponder answers({[](QDialog *dialog) {
        auto *box = qobject_cast<QMessageBox *>(dialog);
        QVERIFY2(box, "the dialog is not a message box");
        QCOMPARE(box->text(),
                 QStringLiteral("ChooseNetworkWizardPage|Warning dialog when advanced settings selected, and "
                                "an incompatible firmware is loaded.|Advanced settings are only available "
                                "with Firmware version A059 or higher"));
        QCOMPARE(box->parentWidget(), nullptr);
        QCOMPARE(box->windowTitle(), QString());
        QCOMPARE(box->icon(), QMessageBox::NoIcon);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok);
        box->accept();
    }});
    _f->log.take();
    _f->call("OnAdvancedButtonClicked");
    QCOMPARE(answers.opened(), 1);
    QCOMPARE(_f->log.messages(),
             QStringList({"D:Advanced Button Clicked ", QString("D:Firmware: %1 ").arg(number)}));
}

void TestChoosePageDialogs::acceptedAdvancedSettingsReachTheFields()
{
    const auto *box = _f->widget<QCheckBox>("checkBox_useExternalAntenna");
    const bool before = box->isChecked();
    const ModalDialogResponder answers({[&](QDialog *dialog) {
        dialog->findChild<QLineEdit *>("lineEdit_network")->setText("Elsewhere");
        dialog->findChild<QLineEdit *>("lineEdit_passphrase")->setText("secret");
        dialog->findChild<QCheckBox *>("checkBox_ExternalAntenna")->setChecked(!before);
        dialog->accept();
    }});
    _f->call("OnAdvancedButtonClicked");
    QCOMPARE(_f->name()->text(), QStringLiteral("Elsewhere"));
    QCOMPARE(_f->passphrase()->text(), QStringLiteral("secret"));
    QCOMPARE(_f->tolvar.antenna(), before ? QStringLiteral("0") : QStringLiteral("1"));
    QCOMPARE(box->isChecked(), before); // the page's box is not updated
}

void TestChoosePageDialogs::aSecondDoubleClickAfterReentryOpensTwoDialogs()
{
    _f->finishScan(threeNetworks);
    _f->goBackAndEnterAgain();
    _f->finishScan(threeNetworks);
    int open = 0;
    int mostAtOnce = 0;
    const ModalDialogResponder::Answer look = [&](QDialog *dialog) {
        ++open;
        mostAtOnce = qMax(mostAtOnce, open);
        dialog->accept();
        --open;
    };
    const ModalDialogResponder answers({look, look});
    _f->click("Open");
    QTest::mouseDClick(_f->list()->viewport(), Qt::LeftButton, {},
                       _f->list()->visualRect(_f->index("Open")).center());
    QCOMPARE(answers.opened(), 2); // one after the other
    QCOMPARE(mostAtOnce, 1);
}

QTEST_MAIN(TestChoosePageDialogs)
#include "tst_choosenetworkwizardpage_dialogs.moc"
