#include <QLabel>
#include <QTest>

#include "device/zvscanresult.h"
#include "pages/viewdetailsdialog.h"
#include "tests/support/drawntext.h"
#include "tests/support/scopedsettings.h"
#include "tests/support/wizardfixture.h"

namespace
{
/// The device-found page and the details dialog, where each label that can do so shows \a value.
class ShownValues
{
public:
    explicit ShownValues(const QString &value)
        : _network{value, value, value, value, value, value, value}
        , _dialog(&_network)
    {
        const QString escaped = value.toHtmlEscaped();
        _f.status("<name>" + escaped + "</name><mode>" + escaped + "</mode><firmware_version>" + escaped +
                  "</firmware_version><network_name>" + escaped + "</network_name><mac_address>" + escaped +
                  "</mac_address><useStaticIP>Y</useStaticIP><ip_address>" + escaped + "</ip_address>");
        _f.goTo(1);
        for (const char *name :
             {"label_DeviceType", "label_SystemId", "label_Status", "label_Version", "label_Network",
              "label_MacAddress", "label_IPAddress", "label_ExternalAntenna"})
            labels += _f.widget<QLabel>(name);
        _dialog.show();
        for (const char *name : {"label_network", "label_channel", "label_adhoc", "label_security",
                                 "label_suites", "label_wps", "label_rssi"})
            labels += _dialog.findChild<QLabel *>(QLatin1String(name));
    }

    QList<QLabel *> labels;

private:
    WizardFixture _f;
    ZVScanResult _network;
    ViewDetailsDialog _dialog;
};
} // namespace

/// Tests how labels show texts from the device or a network, which can have any characters and any script.
/// The tests of other pages check their own labels.
class TestForeignText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void valuesAreDrawnAndAnnouncedLiterally();
    void valuesAreAlignedToTheLeadingEdge_data();
    void valuesAreAlignedToTheLeadingEdge();
};

void TestForeignText::valuesAreDrawnAndAnnouncedLiterally()
{
    const ShownValues values("AT&T && <b>bold &lt;");
    for (QLabel *label : values.labels) {
        QVERIFY2(isDrawnLiterally(*label, label->text()), qPrintable(label->objectName()));
        QCOMPARE(announced(*label), label->text());
    }
}

void TestForeignText::valuesAreAlignedToTheLeadingEdge_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addColumn<QString>("value");
    const QString latin = "Home";
    const QString arabic = QString::fromUtf8("\xd9\x85\xd9\x86\xd8\xb2\xd9\x84"); // "home"
    QTest::newRow("English, Latin value") << "en" << Qt::LeftToRight << latin;
    QTest::newRow("Arabic, Latin value") << "ar" << Qt::RightToLeft << latin;
    QTest::newRow("Arabic, Arabic value") << "ar" << Qt::RightToLeft << arabic;
    QTest::newRow("Arabic without Qt's translations, Latin value") << "ar" << Qt::LeftToRight << latin;
    QTest::newRow("Arabic without Qt's translations, Arabic value") << "ar" << Qt::LeftToRight << arabic;
}

void TestForeignText::valuesAreAlignedToTheLeadingEdge()
{
    QFETCH(QString, language);
    QFETCH(Qt::LayoutDirection, direction);
    QFETCH(QString, value);
    const ScopedLanguage program(language, direction);
    const ShownValues values(value);
    constexpr int sideBearing = 3; // of a glyph, in pixels
    for (QLabel *label : values.labels) {
        QVERIFY2(label->width() > 2 * label->sizeHint().width(),
                 "the label is too narrow to distinguish its edges");
        const int distance = distanceFromLeadingEdge(*label, direction);
        QVERIFY2(
            distance <= sideBearing,
            qPrintable(
                QString("%1 begins %2 pixels from the leading edge").arg(label->objectName()).arg(distance)));
    }
}

QTEST_MAIN(TestForeignText)
#include "tst_foreigntext.moc"
