#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "pages/advanceddialog.h"
#include "tests/support/signalrecorder.h"
#include "tests/support/zvtolvartestpeer.h"

/// Tests the advanced settings: they are read from the controller when the dialog opens, and written back on
/// OK.
class TestAdvancedDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { _tolvar = std::make_unique<ZVTolvar>(); }

    void theValuesAreShownWhenItOpens_data();
    void theValuesAreShownWhenItOpens();
    void okWritesEverythingBackAsTyped();
    void okWithoutAChangeEmitsNothing();
    void aSwitchThatIsOnIsNeverSwitchedOff();
    void anAddressWithoutItsSwitchIsDropped_data();
    void anAddressWithoutItsSwitchIsDropped();
    void theAntennaIsWrittenAsOneOrZero_data();
    void theAntennaIsWrittenAsOneOrZero();
    void cancelChangesNothing();

private:
    void setEverything(const QString &staticIP, const QString &sysLog, const QString &antenna) const;

    std::unique_ptr<ZVTolvar> _tolvar;
};

namespace
{
QCheckBox *box(const AdvancedDialog &dialog, const char *name)
{
    return dialog.findChild<QCheckBox *>(QLatin1String(name));
}

QLineEdit *field(const AdvancedDialog &dialog, const char *name)
{
    return dialog.findChild<QLineEdit *>(QLatin1String(name));
}

void press(const AdvancedDialog &dialog, QDialogButtonBox::StandardButton which)
{
    QTest::mouseClick(dialog.findChild<QDialogButtonBox *>()->button(which), Qt::LeftButton);
}
} // namespace

void TestAdvancedDialog::setEverything(const QString &staticIP, const QString &sysLog,
                                       const QString &antenna) const
{
    _tolvar->setUseStaticIP(staticIP);
    _tolvar->setIPAddress("10.0.0.7");
    _tolvar->setSysLogOn(sysLog);
    _tolvar->setSysLogServer("10.0.0.9");
    _tolvar->setAntenna(antenna);
    _tolvar->setNetwork("Home");
    _tolvar->setPassword("open sesame");
}

// Each row: what the device reported for static address, syslog server and antenna; the two addresses that
// are shown; whether the external antenna is checked.
void TestAdvancedDialog::theValuesAreShownWhenItOpens_data()
{
    QTest::addColumn<QStringList>("reported");
    QTest::addColumn<QStringList>("shown");
    QTest::addColumn<bool>("external");
    QTest::newRow("static IP Y, antenna 1 -> external")
        << QStringList{"Y", "N", "1"} << QStringList{"10.0.0.7", ""} << true;
    QTest::newRow("static IP y, antenna 2 -> external")
        << QStringList{"y", "", "2"} << QStringList{"10.0.0.7", ""} << true;
    QTest::newRow("syslog Y, antenna 0 -> internal")
        << QStringList{"N", "Y", "0"} << QStringList{"", "10.0.0.9"} << false;
    QTest::newRow("words -> off, internal") << QStringList{"yes", "Yes", "Y"} << QStringList{"", ""} << false;
}

void TestAdvancedDialog::theValuesAreShownWhenItOpens()
{
    QFETCH(QStringList, reported);
    QFETCH(QStringList, shown);
    QFETCH(bool, external);
    setEverything(reported[0], reported[1], reported[2]);
    const AdvancedDialog dialog(_tolvar.get(), nullptr);
    QCOMPARE(box(dialog, "checkBox_useStaticIP")->isChecked(), !shown[0].isEmpty());
    QCOMPARE(field(dialog, "lineEdit_ipAddress")->text(), shown[0]);
    QCOMPARE(box(dialog, "checkBox_syslog")->isChecked(), !shown[1].isEmpty());
    QCOMPARE(field(dialog, "lineEdit_syslogServer")->text(), shown[1]);
    QCOMPARE(box(dialog, "checkBox_ExternalAntenna")->isChecked(), external);
    QCOMPARE(field(dialog, "lineEdit_network")->text(), QStringLiteral("Home"));
    QCOMPARE(field(dialog, "lineEdit_passphrase")->text(), QStringLiteral("open sesame"));
}

void TestAdvancedDialog::okWritesEverythingBackAsTyped()
{
    _tolvar->setNetwork("Home");
    SignalRecorder changes(_tolvar.get());
    const AdvancedDialog dialog(_tolvar.get(), nullptr);
    box(dialog, "checkBox_ExternalAntenna")->setChecked(true);
    box(dialog, "checkBox_useStaticIP")->setChecked(true);
    field(dialog, "lineEdit_ipAddress")->setText(" not an address ");
    box(dialog, "checkBox_syslog")->setChecked(true);
    field(dialog, "lineEdit_syslogServer")->setText("10.0.0.9");
    field(dialog, "lineEdit_network")->setText("");
    field(dialog, "lineEdit_passphrase")->setText("P");
    QCOMPARE(changes.take(), QStringList());
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(changes.take(),
             QStringList({"antennaChanged:1", "useStaticIPChanged:Y", "ipAddressChanged: not an address ",
                          "sysLogOnChanged:Y", "sysLogServerChanged:10.0.0.9",
                          "networkChanged:", "passwordChanged:P"}));
    QVERIFY2(ZVTolvarTestPeer{*_tolvar}.queue().isEmpty(), "the dialog queued a command");
}

void TestAdvancedDialog::okWithoutAChangeEmitsNothing()
{
    setEverything("Y", "Y", "1");
    SignalRecorder changes(_tolvar.get());
    press(AdvancedDialog(_tolvar.get(), nullptr), QDialogButtonBox::Ok);
    QCOMPARE(changes.take(), QStringList());
}

void TestAdvancedDialog::aSwitchThatIsOnIsNeverSwitchedOff()
{
    setEverything("Y", "Y", "1");
    SignalRecorder changes(_tolvar.get());
    const AdvancedDialog dialog(_tolvar.get(), nullptr);
    box(dialog, "checkBox_useStaticIP")->setChecked(false);
    field(dialog, "lineEdit_ipAddress")->setText("1.1.1.1");
    box(dialog, "checkBox_syslog")->setChecked(false);
    field(dialog, "lineEdit_syslogServer")->setText("2.2.2.2");
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(changes.take(), QStringList());
    // The save sends the device the address that it had.
    _tolvar->saveNetworkConfig();
    const QStringList queue = ZVTolvarTestPeer{*_tolvar}.queue();
    QVERIFY2(queue.contains("setstaticip Y 10.0.0.7\r\n"), qPrintable(queue.join(' ')));
}

void TestAdvancedDialog::anAddressWithoutItsSwitchIsDropped_data()
{
    QTest::addColumn<QByteArray>("isOn");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("static address only") << QByteArray("checkBox_useStaticIP")
                                         << QStringList{"useStaticIPChanged:Y", "ipAddressChanged:1.1.1.1"};
    QTest::newRow("syslog server only")
        << QByteArray("checkBox_syslog") << QStringList{"sysLogOnChanged:Y", "sysLogServerChanged:2.2.2.2"};
}

void TestAdvancedDialog::anAddressWithoutItsSwitchIsDropped()
{
    QFETCH(QByteArray, isOn);
    QFETCH(QStringList, expected);
    SignalRecorder changes(_tolvar.get());
    const AdvancedDialog dialog(_tolvar.get(), nullptr);
    box(dialog, isOn)->setChecked(true);
    field(dialog, "lineEdit_ipAddress")->setText("1.1.1.1");
    field(dialog, "lineEdit_syslogServer")->setText("2.2.2.2");
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(changes.take(), QStringList("antennaChanged:0") + expected);
}

void TestAdvancedDialog::theAntennaIsWrittenAsOneOrZero_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<bool>("external");
    QTest::addColumn<QString>("after");
    QTest::newRow("1 stays 1") << QByteArray("1") << true << "1";
    QTest::newRow("7 becomes 1") << QByteArray("7") << true << "1";
    QTest::newRow("1 becomes 0") << QByteArray("1") << false << "0";
}

void TestAdvancedDialog::theAntennaIsWrittenAsOneOrZero()
{
    QFETCH(QByteArray, before);
    QFETCH(bool, external);
    QFETCH(QString, after);
    _tolvar->setAntenna(before);
    const AdvancedDialog dialog(_tolvar.get(), nullptr);
    box(dialog, "checkBox_ExternalAntenna")->setChecked(external);
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(_tolvar->antenna(), after);
}

void TestAdvancedDialog::cancelChangesNothing()
{
    SignalRecorder changes(_tolvar.get());
    AdvancedDialog dialog(_tolvar.get(), nullptr);
    dialog.show();
    field(dialog, "lineEdit_network")->setText("N");
    box(dialog, "checkBox_ExternalAntenna")->setChecked(true);
    press(dialog, QDialogButtonBox::Cancel);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QCOMPARE(changes.take(), QStringList());
}

QTEST_MAIN(TestAdvancedDialog)
#include "tst_advanceddialog.moc"
