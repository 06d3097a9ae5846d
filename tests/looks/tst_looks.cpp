#include <QApplication>
#include <QSet>
#include <QTest>

#include "simulator/usbtestbed.h"
#include "tests/looks/fitting.h"
#include "tests/looks/look.h"
#include "tests/looks/tour.h"

namespace
{
constexpr int defaultFont = 9; // in points, where no desktop says otherwise
constexpr int largerFont = 11; // as many desktops have it
constexpr int views = 24;

/// What the forms' fixed sizes leave no room for, by the font's size: "view: widget".
QSet<QString> cutOffByTheForms(int points)
{
    if (points < 16)
        return {};
    QSet<QString> known = {
        // The dialog is 362 pixels wide. The field stays disabled, and repeats what stands above it.
        QStringLiteral("advanced: lineEdit_syslogServer"),
        // The window is 580 pixels high, and the two other texts need the rest. It can be drawn larger.
        QStringLiteral("wep-warning: label_2"),
    };
    // The dialog is 400 x 398 pixels, and the notes below take what they need first. It can be drawn larger.
    for (const char *row :
         {"label", "label_2", "label_3", "label_4", "label_5", "label_6", "label_7", "label_network",
          "label_channel", "label_adhoc", "label_security", "label_suites", "label_wps", "label_rssi"})
        known += QStringLiteral("details: ") + QLatin1String(row);
    return known;
}

/// The messages of the program are many, and none is of interest here.
void ignore(QtMsgType, const QMessageLogContext &, const QString &) {}
} // namespace

/// The wizard as its users see it: all that it says can be read.
class TestLooks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyLanguageHasItsRoom_data();
    void everyLanguageHasItsRoom();
    void everyFontHasItsRoom_data();
    void everyFontHasItsRoom();
    void everyThemeCanBeRead_data();
    void everyThemeCanBeRead();

private:
    static void compare(const Look &look);
};

// Both ways: what no longer is cut off must leave the list.
void TestLooks::compare(const Look &look)
{
    if (!look.canBeDrawn())
        QSKIP("no font of this computer has the letters");
    putOn(look);
    QSet<QString> found;
    QStringList details;
    QSet<QString> seen;
    const QtMessageHandler handler = qInstallMessageHandler(ignore);
    tour([&](const QString &view, QWidget *window) {
        seen += view;
        const auto misfits = misfitsIn(window, window->grab().toImage());
        for (const Misfit &misfit : misfits) {
            found += view + ": " + misfit.widget;
            details += view + ": " + misfit.widget + ' ' + misfit.what + ": " + misfit.text;
        }
    });
    qInstallMessageHandler(handler);
    QCOMPARE(seen.size(), views);
    const QSet<QString> known = cutOffByTheForms(look.points);
    QVERIFY2((found - known).isEmpty(), qPrintable(look.inWords() + '\n' + details.join('\n')));
    for (const QString &view : known)
        QVERIFY2(found.contains(view), qPrintable("nothing is wrong any more: " + view));
}

void TestLooks::everyLanguageHasItsRoom_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("points");
    for (const int points : {defaultFont, largerFont})
        for (const char *language : {"ar", "de", "en", "es", "fr", "it", "ja", "nl", "pl", "pt_BR", "zh_CN"})
            QTest::addRow("%s, %d points", language, points) << QString::fromLatin1(language) << points;
}

void TestLooks::everyLanguageHasItsRoom()
{
    QFETCH(QString, language);
    QFETCH(int, points);
    compare({QStringLiteral("light"), language, points});
}

void TestLooks::everyFontHasItsRoom_data()
{
    QTest::addColumn<int>("points");
    for (const int points : {9, 11, 13, 16})
        QTest::addRow("%d points", points) << points;
}

void TestLooks::everyFontHasItsRoom()
{
    QFETCH(int, points);
    compare({QStringLiteral("light"), QStringLiteral("en"), points});
}

void TestLooks::everyThemeCanBeRead_data()
{
    QTest::addColumn<QString>("theme");
    QTest::newRow("dark") << QStringLiteral("dark");
    QTest::newRow("high contrast") << QStringLiteral("contrast");
}

void TestLooks::everyThemeCanBeRead()
{
    QFETCH(QString, theme);
    compare({theme, QStringLiteral("en"), defaultFont});
}

int main(int argc, char *argv[])
{
    const QApplication app(argc, argv);
    const UsbTestbed nothingPluggedIn;
    TestLooks test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_looks.moc"
