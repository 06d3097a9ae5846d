#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "device/zvtolvar.h"
#include "pages/advanceddialog.h"
#include "tests/support/reachable.h"
#include "tests/support/scopedsettings.h"
#include "tests/support/zvtolvartestpeer.h"

/// Tests the advanced settings: they are read from the controller when the dialog opens, and written back on
/// OK.
class TestAdvancedDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        _tolvar = std::make_unique<ZVTolvar>();
        _order.clear();
    }

    void theValuesAreShownWhenItOpens_data();
    void theValuesAreShownWhenItOpens();
    void aSwitchThatIsOffLeavesItsFieldToThePlaceholder();
    void aPlaceholderIsSeenWholeInLargeLetters_data();
    void aPlaceholderIsSeenWholeInLargeLetters();
    void theScreenHoldsTheDialog_data();
    void theScreenHoldsTheDialog();
    void theDialogKeepsItsWidthWhereAllIsSeen();
    void theSwitchesEnableAndDisableNothing();
    void eachOpeningReadsTheControllerAfresh();
    void okWritesEverythingBackInOrder();
    void theStaticAddressIsNeverSwitchedOff();
    void theSyslogServerIsNeverSwitchedOff();
    void anAddressWithoutItsSwitchIsDropped();
    void theAntennaIsWrittenAsOneOrZero_data();
    void theAntennaIsWrittenAsOneOrZero();
    void okWithoutAChangeTellsOfNothing();
    void cancelChangesNothing_data();
    void cancelChangesNothing();
    void textsAreStoredAsTyped();
    void itSendsNothingToTheDevice();

private:
    std::unique_ptr<ZVTolvar> _tolvar;
    QStringList _order; ///< the changes that the controller has reported, where a test records them
};

namespace
{
template <typename Widget>
Widget *in(AdvancedDialog &dialog, const char *name)
{
    return dialog.findChild<Widget *>(QLatin1String(name));
}

void press(AdvancedDialog &dialog, QDialogButtonBox::StandardButton which)
{
    QTest::mouseClick(in<QDialogButtonBox>(dialog, "buttonBox")->button(which), Qt::LeftButton);
}
} // namespace

void TestAdvancedDialog::theValuesAreShownWhenItOpens_data()
{
    QTest::addColumn<QString>("flag");
    QTest::addColumn<QString>("antenna");
    QTest::addColumn<bool>("on");
    QTest::addColumn<bool>("external");
    QTest::newRow("Y is on, 1 is external") << "Y"
                                            << "1" << true << true;
    QTest::newRow("y is on, 2 is external") << "y"
                                            << "2" << true << true;
    QTest::newRow("N is off, 0 is internal") << "N"
                                             << "0" << false << false;
    QTest::newRow("nothing is off and internal") << ""
                                                 << "" << false << false;
    QTest::newRow("a word is off and internal") << "yes"
                                                << "Y" << false << false;
}

void TestAdvancedDialog::theValuesAreShownWhenItOpens()
{
    QFETCH(QString, flag);
    QFETCH(QString, antenna);
    QFETCH(bool, on);
    QFETCH(bool, external);
    _tolvar->setUseStaticIP(flag);
    _tolvar->setIPAddress("10.0.0.7");
    _tolvar->setSysLogOn(flag);
    _tolvar->setSysLogServer("10.0.0.9");
    _tolvar->setAntenna(antenna);
    _tolvar->setNetwork("Home");
    _tolvar->setPassword("open sesame");
    AdvancedDialog dialog(_tolvar.get(), nullptr);
    QCOMPARE(in<QCheckBox>(dialog, "checkBox_useStaticIP")->isChecked(), on);
    QCOMPARE(in<QLineEdit>(dialog, "lineEdit_ipAddress")->text(), on ? "10.0.0.7" : "");
    QCOMPARE(in<QCheckBox>(dialog, "checkBox_syslog")->isChecked(), on);
    QCOMPARE(in<QLineEdit>(dialog, "lineEdit_syslogServer")->text(), on ? "10.0.0.9" : "");
    QCOMPARE(in<QCheckBox>(dialog, "checkBox_ExternalAntenna")->isChecked(), external);
    QCOMPARE(in<QLineEdit>(dialog, "lineEdit_network")->text(), QStringLiteral("Home"));
    QCOMPARE(in<QLineEdit>(dialog, "lineEdit_passphrase")->text(), QStringLiteral("open sesame"));
    QVERIFY(in<QLineEdit>(dialog, "lineEdit_ipAddress")->isEnabled());
    QVERIFY(!in<QCheckBox>(dialog, "checkBox_syslog")->isEnabled());
    QVERIFY(!in<QLineEdit>(dialog, "lineEdit_syslogServer")->isEnabled());
}

void TestAdvancedDialog::aSwitchThatIsOffLeavesItsFieldToThePlaceholder()
{
    _tolvar->setUseStaticIP("N");
    _tolvar->setIPAddress("10.0.0.7");
    _tolvar->setSysLogOn("N");
    _tolvar->setSysLogServer("10.0.0.9");
    AdvancedDialog dialog(_tolvar.get(), nullptr);
    for (const char *name : {"lineEdit_ipAddress", "lineEdit_syslogServer"}) {
        QCOMPARE(in<QLineEdit>(dialog, name)->text(), QString());
        QVERIFY(!in<QLineEdit>(dialog, name)->placeholderText().isEmpty());
    }
}

void TestAdvancedDialog::aPlaceholderIsSeenWholeInLargeLetters_data()
{
    QTest::addColumn<int>("points");
    QTest::addColumn<QString>("field");
    for (const int points : {24, 36}) {
        QTest::addRow("the address, %d points", points) << points << "lineEdit_ipAddress";
        QTest::addRow("the syslog server, %d points", points) << points << "lineEdit_syslogServer";
    }
}

void TestAdvancedDialog::theDialogKeepsItsWidthWhereAllIsSeen()
{
    const ScopedApplicationFont letters(9);
    QCOMPARE(AdvancedDialog(_tolvar.get()).size(), QSize(362, 269));
}

void TestAdvancedDialog::aPlaceholderIsSeenWholeInLargeLetters()
{
    QFETCH(int, points);
    QFETCH(QString, field);
    const ScopedApplicationFont letters(points);
    AdvancedDialog dialog(_tolvar.get());
    dialog.show();
    const auto *edit = dialog.findChild<QLineEdit *>(field);
    const int margins = 10; // in pixels: 2 of the frame and 2 of the field at each side, 2 for the cursor
    const int text = edit->fontMetrics().horizontalAdvance(edit->placeholderText());
    QVERIFY2(edit->width() >= text + margins, "what it asks for can be read");
}

void TestAdvancedDialog::theScreenHoldsTheDialog_data()
{
    QTest::addColumn<int>("points");
    for (const int points : {9, 16, 24, 36})
        QTest::addRow("%d points", points) << points;
}

void TestAdvancedDialog::theScreenHoldsTheDialog()
{
    QFETCH(int, points);
    const ScopedApplicationFont letters(points);
    QWidget window; // dialogs open centred over it
    window.setGeometry(QRect(window.screen()->geometry().center(), QSize(1, 1)));
    window.show();
    AdvancedDialog dialog(_tolvar.get(), &window);
    dialog.show();
    QCOMPARE(outOfReachIn(dialog).join(", "), QString());
}

void TestAdvancedDialog::theSwitchesEnableAndDisableNothing()
{
    AdvancedDialog dialog(_tolvar.get(), nullptr);
    for (const bool on : {true, false}) {
        in<QCheckBox>(dialog, "checkBox_useStaticIP")->setChecked(on);
        in<QCheckBox>(dialog, "checkBox_syslog")->setChecked(on);
        QVERIFY(in<QLineEdit>(dialog, "lineEdit_ipAddress")->isEnabled());
        QVERIFY(!in<QCheckBox>(dialog, "checkBox_syslog")->isEnabled());
        QVERIFY(!in<QLineEdit>(dialog, "lineEdit_syslogServer")->isEnabled());
    }
}

void TestAdvancedDialog::eachOpeningReadsTheControllerAfresh()
{
    for (const char *name : {"Home", "Elsewhere"}) {
        _tolvar->setNetwork(name);
        AdvancedDialog dialog(_tolvar.get(), nullptr);
        QCOMPARE(in<QLineEdit>(dialog, "lineEdit_network")->text(), QLatin1String(name));
    }
}

void TestAdvancedDialog::okWritesEverythingBackInOrder()
{
    const ZVTolvar *tolvar = _tolvar.get();
    connect(tolvar, &ZVTolvar::antennaChanged, this, [this](const QString &s) { _order += "antenna " + s; });
    connect(tolvar, &ZVTolvar::useStaticIPChanged, this,
            [this](const QString &s) { _order += "static " + s; });
    connect(tolvar, &ZVTolvar::ipAddressChanged, this, [this](const QString &s) { _order += "ip " + s; });
    connect(tolvar, &ZVTolvar::sysLogOnChanged, this, [this](const QString &s) { _order += "syslog " + s; });
    connect(tolvar, &ZVTolvar::sysLogServerChanged, this,
            [this](const QString &s) { _order += "server " + s; });
    connect(tolvar, &ZVTolvar::networkChanged, this, [this](const QString &s) { _order += "network " + s; });
    connect(tolvar, &ZVTolvar::passwordChanged, this,
            [this](const QString &s) { _order += "password " + s; });
    AdvancedDialog dialog(_tolvar.get(), nullptr);
    QVERIFY2(_order.isEmpty(), "opening it changes nothing");
    in<QCheckBox>(dialog, "checkBox_ExternalAntenna")->setChecked(true);
    in<QCheckBox>(dialog, "checkBox_useStaticIP")->setChecked(true);
    in<QLineEdit>(dialog, "lineEdit_ipAddress")->setText("10.0.0.7");
    in<QCheckBox>(dialog, "checkBox_syslog")->setChecked(true);
    in<QLineEdit>(dialog, "lineEdit_syslogServer")->setText("10.0.0.9");
    in<QLineEdit>(dialog, "lineEdit_network")->setText("N");
    in<QLineEdit>(dialog, "lineEdit_passphrase")->setText("P");
    QSignalSpy accepted(&dialog, &QDialog::accepted);
    QVERIFY(_order.isEmpty());
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(accepted.count(), 1);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(_order, QStringList({"antenna 1", "static Y", "ip 10.0.0.7", "syslog Y", "server 10.0.0.9",
                                  "network N", "password P"}));
}

void TestAdvancedDialog::theStaticAddressIsNeverSwitchedOff()
{
    _tolvar->setUseStaticIP("Y");
    _tolvar->setIPAddress("10.0.0.7");
    AdvancedDialog dialog(_tolvar.get(), nullptr);
    in<QCheckBox>(dialog, "checkBox_useStaticIP")->setChecked(false);
    in<QLineEdit>(dialog, "lineEdit_ipAddress")->setText("1.1.1.1");
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(_tolvar->useStaticIP(), QStringLiteral("Y"));
    QCOMPARE(_tolvar->ipAddress(), QStringLiteral("10.0.0.7"));
    // The save sends the device the address that it had.
    const ZVTolvarTestPeer inside{*_tolvar};
    _tolvar->saveNetworkConfig();
    QVERIFY2(inside.queue().contains("setstaticip Y 10.0.0.7\r\n"), qPrintable(inside.queue().join(' ')));
}

void TestAdvancedDialog::theSyslogServerIsNeverSwitchedOff()
{
    _tolvar->setSysLogOn("Y");
    _tolvar->setSysLogServer("10.0.0.9");
    AdvancedDialog dialog(_tolvar.get(), nullptr);
    in<QCheckBox>(dialog, "checkBox_syslog")->setChecked(false);
    in<QLineEdit>(dialog, "lineEdit_syslogServer")->setText("2.2.2.2");
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(_tolvar->sysLogOn(), QStringLiteral("Y"));
    QCOMPARE(_tolvar->sysLogServer(), QStringLiteral("10.0.0.9"));
}

void TestAdvancedDialog::anAddressWithoutItsSwitchIsDropped()
{
    AdvancedDialog dialog(_tolvar.get(), nullptr);
    in<QLineEdit>(dialog, "lineEdit_ipAddress")->setText("1.1.1.1");
    in<QLineEdit>(dialog, "lineEdit_syslogServer")->setText("2.2.2.2");
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(_tolvar->useStaticIP(), QString());
    QCOMPARE(_tolvar->ipAddress(), QString());
    QCOMPARE(_tolvar->sysLogOn(), QString());
    QCOMPARE(_tolvar->sysLogServer(), QString());
}

void TestAdvancedDialog::theAntennaIsWrittenAsOneOrZero_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<bool>("external");
    QTest::addColumn<QString>("after");
    QTest::newRow("1 stays 1") << "1" << true << "1";
    QTest::newRow("7 becomes 1") << "7" << true << "1";
    QTest::newRow("1 becomes 0") << "1" << false << "0";
    QTest::newRow("nothing becomes 0") << "" << false << "0";
}

void TestAdvancedDialog::theAntennaIsWrittenAsOneOrZero()
{
    QFETCH(QString, before);
    QFETCH(bool, external);
    QFETCH(QString, after);
    _tolvar->setAntenna(before);
    AdvancedDialog dialog(_tolvar.get(), nullptr);
    in<QCheckBox>(dialog, "checkBox_ExternalAntenna")->setChecked(external);
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(_tolvar->antenna(), after);
}

void TestAdvancedDialog::okWithoutAChangeTellsOfNothing()
{
    _tolvar->setAntenna("1");
    _tolvar->setUseStaticIP("Y");
    _tolvar->setIPAddress("10.0.0.7");
    _tolvar->setSysLogOn("Y");
    _tolvar->setSysLogServer("10.0.0.9");
    _tolvar->setNetwork("Home");
    _tolvar->setPassword("open sesame");
    QList<QSignalSpy *> spies;
    for (const auto signal :
         {&ZVTolvar::antennaChanged, &ZVTolvar::useStaticIPChanged, &ZVTolvar::ipAddressChanged,
          &ZVTolvar::sysLogOnChanged, &ZVTolvar::sysLogServerChanged, &ZVTolvar::networkChanged,
          &ZVTolvar::passwordChanged})
        spies += new QSignalSpy(_tolvar.get(), signal);
    AdvancedDialog dialog(_tolvar.get(), nullptr);
    press(dialog, QDialogButtonBox::Ok);
    for (const QSignalSpy *spy : spies)
        QVERIFY(spy->isEmpty());
    qDeleteAll(spies);
}

void TestAdvancedDialog::cancelChangesNothing_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("Cancel") << 0;
    QTest::newRow("Escape") << 1;
    QTest::newRow("closing the window") << 2;
}

void TestAdvancedDialog::cancelChangesNothing()
{
    QFETCH(int, way);
    AdvancedDialog dialog(_tolvar.get(), nullptr);
    dialog.show();
    in<QLineEdit>(dialog, "lineEdit_network")->setText("N");
    in<QCheckBox>(dialog, "checkBox_ExternalAntenna")->setChecked(true);
    if (way == 0)
        press(dialog, QDialogButtonBox::Cancel);
    else if (way == 1)
        QTest::keyClick(&dialog, Qt::Key_Escape);
    else
        dialog.close();
    QVERIFY(!dialog.isVisible());
    QCOMPARE(_tolvar->network(), QString());
    QCOMPARE(_tolvar->antenna(), QString());
}

void TestAdvancedDialog::textsAreStoredAsTyped()
{
    _tolvar->setNetwork("Home");
    AdvancedDialog dialog(_tolvar.get(), nullptr);
    in<QCheckBox>(dialog, "checkBox_useStaticIP")->setChecked(true);
    in<QLineEdit>(dialog, "lineEdit_ipAddress")->setText(" not an address ");
    in<QLineEdit>(dialog, "lineEdit_network")->setText("");
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(_tolvar->ipAddress(), QStringLiteral(" not an address "));
    QCOMPARE(_tolvar->network(), QString());
}

void TestAdvancedDialog::itSendsNothingToTheDevice()
{
    AdvancedDialog dialog(_tolvar.get(), nullptr);
    in<QCheckBox>(dialog, "checkBox_useStaticIP")->setChecked(true);
    in<QCheckBox>(dialog, "checkBox_ExternalAntenna")->setChecked(true);
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(_tolvar->antenna(), QStringLiteral("1"));
    QCOMPARE(ZVTolvarTestPeer{*_tolvar}.queue(), QStringList());
}

QTEST_MAIN(TestAdvancedDialog)
#include "tst_advanceddialog.moc"
