#include <QDialogButtonBox>
#include <QTest>
#include <QVBoxLayout>

#include "device/zvscanresult.h"
#include "device/zvtolvar.h"
#include "pages/advanceddialog.h"
#include "pages/screenfit.h"
#include "pages/viewdetailsdialog.h"
#include "tests/support/reachable.h"
#include "tests/support/scopedsettings.h"

namespace
{
ZVScanResult networkNamed(const QString &name)
{
    return {name, "11", "n", "WPA2 (PSK)", "U-AES M-AES", "Yes", "-75"};
}
} // namespace

/// Tests that the dialogs show all of their contents with any font size, and stay on their screen.
class TestDialogSizes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theDialogFitsOnTheScreen_data();
    void theDialogFitsOnTheScreen();
    void aPlaceholderFitsAtALargeFontSize();
    void aLargerFontMakesTheDialogHigher();
    void theSizeIsTheSmallestThatFits();
    void theHeightFitsTheActualWidth_data();
    void theHeightFitsTheActualWidth();
};

void TestDialogSizes::theDialogFitsOnTheScreen_data()
{
    QTest::addColumn<int>("points");
    for (const int points : {9, 16, 24, 36})
        QTest::addRow("%d points", points) << points;
}

void TestDialogSizes::theDialogFitsOnTheScreen()
{
    QFETCH(int, points);
    const ScopedApplicationFont font(points);
    QWidget window; // dialogs open centred over it
    window.setGeometry(QRect(window.screen()->geometry().center(), QSize(1, 1)));
    window.show();
    ZVTolvar tolvar;
    AdvancedDialog advanced(&tolvar, &window);
    advanced.show();
    QCOMPARE(unreachableWidgets(advanced).join(", "), QString());
    for (const QString &name : {QString("Home"), QString(32, 'W')}) {
        ZVScanResult network = networkNamed(name);
        ViewDetailsDialog details(&network, &window);
        details.show();
        QCOMPARE(unreachableWidgets(details).join(", "), QString());
    }
}

void TestDialogSizes::aPlaceholderFitsAtALargeFontSize()
{
    for (const int points : {24, 36}) {
        const ScopedApplicationFont font(points);
        ZVTolvar tolvar;
        AdvancedDialog dialog(&tolvar);
        dialog.show();
        for (const char *name : {"lineEdit_ipAddress", "lineEdit_syslogServer"}) {
            const auto *field = dialog.findChild<QLineEdit *>(QLatin1String(name));
            const int margins =
                10; // in pixels: 2 of the frame and 2 of the field at each side, 2 for the cursor
            const int text = field->fontMetrics().horizontalAdvance(field->placeholderText());
            QVERIFY2(field->width() >= text + margins, name);
        }
    }
}

void TestDialogSizes::aLargerFontMakesTheDialogHigher()
{
    const ScopedApplicationFont font(16);
    ZVScanResult network;
    const ViewDetailsDialog dialog(&network, nullptr);
    QCOMPARE(dialog.width(), 400);
    QVERIFY(dialog.height() > 398);
}

void TestDialogSizes::theSizeIsTheSmallestThatFits()
{
    QWidget window;
    QVBoxLayout layout(&window);
    QStringList words; // of different lengths
    for (int i = 0; i < 200; ++i)
        words += QString::number(i * i);
    auto *text = new QLabel(words.join(' '));
    text->setWordWrap(true);
    layout.addWidget(text);
    int found = 0;
    for (int width = 200; width < 300; ++width) {
        // The text would need a line less in a window that is one pixel wider than the largest size.
        const QSize largest(width, layout.totalMinimumHeightForWidth(width + 1));
        if (layout.totalMinimumHeightForWidth(width) == largest.height())
            continue;
        ++found;
        QCOMPARE(fittingSize(layout, QSize(100, 10), largest), largest);
        // A text that is exactly as high as the largest size does not need a wider window.
        const QSize exact(width, layout.totalMinimumHeightForWidth(width));
        QCOMPARE(fittingSize(layout, QSize(width, 10), exact + QSize(100, 0)), exact);
    }
    QVERIFY(found > 3);
}

void TestDialogSizes::theHeightFitsTheActualWidth_data()
{
    QTest::addColumn<int>("points");
    for (const int points : {11, 16, 20, 24})
        QTest::addRow("%d points", points) << points;
}

void TestDialogSizes::theHeightFitsTheActualWidth()
{
    QFETCH(int, points);
    const ScopedApplicationFont font(points);
    ZVScanResult network = networkNamed("The name with thirty-two letters");
    ViewDetailsDialog dialog(&network, nullptr);
    dialog.show();
    const int notesEnd = dialog.findChild<QLabel *>("label_9")->geometry().bottom();
    const int free = dialog.findChild<QDialogButtonBox *>("buttonBox")->y() - notesEnd;
    const int spacer = 40 + 2 * dialog.layout()->spacing();
    QVERIFY2(dialog.height() == 398 || free <= spacer, qPrintable(QString("%1 pixels are empty").arg(free)));
}

QTEST_MAIN(TestDialogSizes)
#include "tst_dialogsizes.moc"
