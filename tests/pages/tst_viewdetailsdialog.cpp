#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "device/zvscanresult.h"
#include "pages/viewdetailsdialog.h"
#include "tests/support/lettersof.h"
#include "tests/support/picturefile.h"

/// A network's details, as the device reported them.
class TestViewDetailsDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachFieldStandsAsItCame_data();
    void eachFieldStandsAsItCame();
    void aPictureThatAFieldNamesIsNotShown_data();
    void aPictureThatAFieldNamesIsNotShown();
    void longTextsAreNotWrapped();
    void theDialogGrowsWithItsLetters_data();
    void theDialogGrowsWithItsLetters();
    void theRecordMayGo();
    void bothButtonsCloseAndChangeNothing_data();
    void bothButtonsCloseAndChangeNothing();
};

void TestViewDetailsDialog::eachFieldStandsAsItCame_data()
{
    QTest::addColumn<QStringList>("fields");
    QTest::newRow("all filled") << QStringList({"Home", "6", "N", "WPA2 (PSK)", "U-AES M-AES", "Y", "-60"});
    QTest::newRow("a strength outside the advice, as the device sent it")
        << QStringList({"Home", "6", "N", "WPA2 (PSK)", "U-AES M-AES", "Y", "-75"});
    QTest::newRow("all empty") << QStringList({"", "", "", "", "", "", ""});
    QTest::newRow("an unknown network") << QStringList({"Not Found", "", "", "", "", "", ""});
}

void TestViewDetailsDialog::eachFieldStandsAsItCame()
{
    QFETCH(QStringList, fields);
    ZVScanResult record{fields[0], fields[1], fields[2], fields[3], fields[4], fields[5], fields[6]};
    const ViewDetailsDialog dialog(&record, nullptr);
    QStringList shown;
    for (const char *label : {"label_network", "label_channel", "label_adhoc", "label_security",
                              "label_suites", "label_wps", "label_rssi"})
        shown += dialog.findChild<QLabel *>(QLatin1String(label))->text();
    QCOMPARE(shown, fields);
}

void TestViewDetailsDialog::aPictureThatAFieldNamesIsNotShown_data()
{
    QTest::addColumn<QString ZVScanResult::*>("field");
    QTest::newRow("its name") << &ZVScanResult::ssid;
    QTest::newRow("its channel") << &ZVScanResult::channel;
    QTest::newRow("its ad-hoc flag") << &ZVScanResult::adhoc;
    QTest::newRow("its security") << &ZVScanResult::security;
    QTest::newRow("its suites") << &ZVScanResult::suites;
    QTest::newRow("its WPS") << &ZVScanResult::wps;
    QTest::newRow("its strength") << &ZVScanResult::rssi;
}

void TestViewDetailsDialog::aPictureThatAFieldNamesIsNotShown()
{
    QFETCH(QString ZVScanResult::*, field);
    const PictureFile picture;
    ZVScanResult record;
    record.*field = picture.markup();
    ViewDetailsDialog dialog(&record, nullptr);
    QVERIFY(!picture.isSeenIn(dialog));
}

void TestViewDetailsDialog::longTextsAreNotWrapped()
{
    ZVScanResult record;
    record.ssid = QString(32, 'M');
    record.suites = QString("U-AES M-AES ").repeated(8);
    ViewDetailsDialog dialog(&record, nullptr);
    dialog.show();
    for (const char *name : {"label_network", "label_suites"}) {
        const auto *label = dialog.findChild<QLabel *>(QLatin1String(name));
        QVERIFY(!label->wordWrap());
        QVERIFY2(label->width() >= label->fontMetrics().horizontalAdvance(label->text()),
                 "it is shown whole");
        QVERIFY(label->height() < 2 * label->fontMetrics().height());
    }
}

void TestViewDetailsDialog::theDialogGrowsWithItsLetters_data()
{
    QTest::addColumn<int>("points");
    QTest::addColumn<bool>("isHigher");
    QTest::newRow("letters that it was drawn for") << 9 << false;
    QTest::newRow("large letters") << 16 << true;
}

void TestViewDetailsDialog::theDialogGrowsWithItsLetters()
{
    QFETCH(int, points);
    QFETCH(bool, isHigher);
    const LettersOf letters(points);
    ZVScanResult record;
    ViewDetailsDialog dialog(&record, nullptr);
    dialog.show();
    QCOMPARE(dialog.width(), 400);
    QCOMPARE(dialog.height() > 398, isHigher);
    const auto labels = dialog.findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        const int needed =
            label->wordWrap() ? label->heightForWidth(label->width()) : label->sizeHint().height();
        QVERIFY2(label->height() >= needed, qPrintable(label->objectName() + " is seen whole"));
    }
}

void TestViewDetailsDialog::theRecordMayGo()
{
    auto record = std::make_unique<ZVScanResult>();
    record->ssid = "Home";
    const ViewDetailsDialog dialog(record.get(), nullptr);
    record->ssid = "Other";
    record.reset();
    QCOMPARE(dialog.findChild<QLabel *>("label_network")->text(), QStringLiteral("Home"));
}

void TestViewDetailsDialog::bothButtonsCloseAndChangeNothing_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("result");
    QTest::newRow("OK accepts") << int(QDialogButtonBox::Ok) << int(QDialog::Accepted);
    QTest::newRow("Cancel rejects") << int(QDialogButtonBox::Cancel) << int(QDialog::Rejected);
}

void TestViewDetailsDialog::bothButtonsCloseAndChangeNothing()
{
    QFETCH(int, button);
    QFETCH(int, result);
    ZVScanResult record;
    record.ssid = "Home";
    ViewDetailsDialog dialog(&record, nullptr);
    dialog.show();
    const auto *buttons = dialog.findChild<QDialogButtonBox *>("buttonBox");
    QTest::mouseClick(buttons->button(static_cast<QDialogButtonBox::StandardButton>(button)), Qt::LeftButton);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), result);
    QCOMPARE(record.ssid, QStringLiteral("Home"));
}

QTEST_MAIN(TestViewDetailsDialog)
#include "tst_viewdetailsdialog.moc"
