#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "device/zvscanresult.h"
#include "pages/viewdetailsdialog.h"

/// Tests the details of a network, as the device reported them.
class TestViewDetailsDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachFieldIsShownUnchanged_data();
    void eachFieldIsShownUnchanged();
    void bothButtonsClose_data();
    void bothButtonsClose();
};

void TestViewDetailsDialog::eachFieldIsShownUnchanged_data()
{
    QTest::addColumn<QStringList>("fields");
    QTest::newRow("all fields") << QStringList({"Home ", "6", "N", "WPA2 (PSK)", "U-AES M-AES", "Y", "-75"});
    QTest::newRow("unknown network") << QStringList({"Not Found", "", "", "", "", "", ""});
}

void TestViewDetailsDialog::eachFieldIsShownUnchanged()
{
    QFETCH(QStringList, fields);
    ZVScanResult record{fields[0], fields[1], fields[2], fields[3], fields[4], fields[5], fields[6]};
    const ViewDetailsDialog dialog(&record, nullptr);
    record = {}; // the dialog does not need it any more
    QStringList shown;
    for (const char *label : {"label_network", "label_channel", "label_adhoc", "label_security",
                              "label_suites", "label_wps", "label_rssi"})
        shown += dialog.findChild<QLabel *>(QLatin1String(label))->text();
    QCOMPARE(shown, fields);
}

void TestViewDetailsDialog::bothButtonsClose_data()
{
    QTest::addColumn<QDialogButtonBox::StandardButton>("button");
    QTest::addColumn<int>("result");
    QTest::newRow("OK") << QDialogButtonBox::Ok << int(QDialog::Accepted);
    QTest::newRow("Cancel") << QDialogButtonBox::Cancel << int(QDialog::Rejected);
}

void TestViewDetailsDialog::bothButtonsClose()
{
    QFETCH(QDialogButtonBox::StandardButton, button);
    QFETCH(int, result);
    ZVScanResult record;
    ViewDetailsDialog dialog(&record, nullptr);
    dialog.show();
    dialog.setResult(-1);
    QTest::mouseClick(dialog.findChild<QDialogButtonBox *>()->button(button), Qt::LeftButton);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), result);
}

QTEST_MAIN(TestViewDetailsDialog)
#include "tst_viewdetailsdialog.moc"
