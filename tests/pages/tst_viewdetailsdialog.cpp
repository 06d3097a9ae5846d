#include <QDialogButtonBox>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QTest>

#include "device/zvscanresult.h"
#include "pages/viewdetailsdialog.h"
#include "tests/support/drawntext.h"
#include "tests/support/picturefile.h"
#include "tests/support/reachable.h"
#include "tests/support/scopedsettings.h"

/// Tests the details of a network, as the device reported them.
class TestViewDetailsDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachFieldStandsAsItCame_data();
    void eachFieldStandsAsItCame();
    void aPictureThatAFieldNamesIsNotShown_data();
    void aPictureThatAFieldNamesIsNotShown();
    void theValuesBeginAtTheLeadingEdge_data();
    void theValuesBeginAtTheLeadingEdge();
    void longTextsAreNotWrapped();
    void theDialogGrowsWithItsLetters_data();
    void theDialogGrowsWithItsLetters();
    void theScreenHoldsTheDialog_data();
    void theScreenHoldsTheDialog();
    void theHeightIsThatOfTheWidthItGets_data();
    void theHeightIsThatOfTheWidthItGets();
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

void TestViewDetailsDialog::theValuesBeginAtTheLeadingEdge_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addColumn<QString>("value");
    const QString arabic = QString::fromUtf8("\xd9\x85\xd9\x86\xd8\xb2\xd9\x84"); // "home"
    QTest::newRow("English, a Latin value") << "en" << Qt::LeftToRight << "Home";
    QTest::newRow("Arabic, a Latin value") << "ar" << Qt::RightToLeft << "Home";
    QTest::newRow("Arabic, an Arabic value") << "ar" << Qt::RightToLeft << arabic;
    QTest::newRow("Arabic without Qt's strings, a Latin value") << "ar" << Qt::LeftToRight << "Home";
    QTest::newRow("Arabic without Qt's strings, an Arabic value") << "ar" << Qt::LeftToRight << arabic;
}

void TestViewDetailsDialog::theValuesBeginAtTheLeadingEdge()
{
    QFETCH(QString, language);
    QFETCH(Qt::LayoutDirection, direction);
    QFETCH(QString, value);
    const LanguageOf program(language, direction);
    ZVScanResult record{value, value, value, value, value, value, value};
    ViewDetailsDialog dialog(&record, nullptr);
    dialog.show();
    constexpr int sideBearing = 3; // of a letter
    for (const char *name : {"label_network", "label_channel", "label_adhoc", "label_security",
                             "label_suites", "label_wps", "label_rssi"}) {
        auto *label = dialog.findChild<QLabel *>(QLatin1String(name));
        QVERIFY2(label->width() > 2 * label->sizeHint().width(), "else both edges are one");
        const int distance = distanceFromLeadingEdge(*label, direction);
        QVERIFY2(distance <= sideBearing,
                 qPrintable(QString("%1 begins %2 pixels off").arg(name).arg(distance)));
    }
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
    const ScopedApplicationFont letters(points);
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

void TestViewDetailsDialog::theScreenHoldsTheDialog_data()
{
    QTest::addColumn<int>("points");
    QTest::addColumn<QString>("network");
    for (const int points : {9, 16, 24, 36}) {
        QTest::addRow("%d points", points) << points << "Home";
        QTest::addRow("%d points and the longest name", points) << points << QString(32, 'W');
    }
}

void TestViewDetailsDialog::theScreenHoldsTheDialog()
{
    QFETCH(int, points);
    QFETCH(QString, network);
    const ScopedApplicationFont letters(points);
    ZVScanResult record{network, "11", "n", "WPA2 (PSK)", "U-AES M-AES", "Yes", "-75"};
    QWidget window; // dialogs open centred over it
    window.setGeometry(QRect(window.screen()->geometry().center(), QSize(1, 1)));
    window.show();
    ViewDetailsDialog dialog(&record, &window);
    dialog.show();
    QCOMPARE(outOfReachIn(dialog).join(", "), QString());
}

void TestViewDetailsDialog::theHeightIsThatOfTheWidthItGets_data()
{
    QTest::addColumn<int>("points");
    for (const int points : {11, 16, 20, 24})
        QTest::addRow("%d points", points) << points;
}

void TestViewDetailsDialog::theHeightIsThatOfTheWidthItGets()
{
    QFETCH(int, points);
    const ScopedApplicationFont letters(points);
    ZVScanResult record{
        "The name with thirty-two letters", "11", "n", "WPA2 (PSK)", "U-AES M-AES", "Yes", "-75"};
    ViewDetailsDialog dialog(&record, nullptr);
    dialog.show();
    const int notesEnd = dialog.findChild<QLabel *>("label_9")->geometry().bottom();
    const int free = dialog.findChild<QDialogButtonBox *>("buttonBox")->y() - notesEnd;
    const int spacer = 40 + 2 * dialog.layout()->spacing();
    QVERIFY2(dialog.height() == 398 || free <= spacer, qPrintable(QString("%1 pixels are empty").arg(free)));
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
