#include <QApplication>
#include <QSet>
#include <QTest>

#include "simulator/fakeusbbus.h"
#include "tests/layout/appearance.h"
#include "tests/layout/fitting.h"
#include "tests/layout/tour.h"

namespace
{
// In points.
constexpr int defaultFont = 9; // where the desktop does not set one
constexpr int largerFont = 11; // the size on many desktops
constexpr int largestFont = 16;
constexpr int views = 24;

/// Drops the program's messages: there are many, and none matters here.
void ignore(QtMsgType, const QMessageLogContext &, const QString &) {}
} // namespace

/// Tests that users can read all texts of the wizard.
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
    static void compare(const Appearance &look);
};

void TestLooks::compare(const Appearance &look)
{
    if (!look.canBeDrawn())
        QSKIP("no font of this computer has the letters");
    apply(look);
    QStringList misfits;
    QSet<QString> seen;
    const QtMessageHandler handler = qInstallMessageHandler(ignore);
    tour([&](const QString &view, QWidget *window) {
        seen += view;
        const auto found = misfitsIn(window, window->grab().toImage());
        for (const LayoutIssue &misfit : found)
            misfits += view + ": " + misfit.widget + ' ' + misfit.what + ": " + misfit.text;
    });
    qInstallMessageHandler(handler);
    QCOMPARE(seen.size(), views);
    QVERIFY2(misfits.isEmpty(), qPrintable(look.inWords() + '\n' + misfits.join('\n')));
}

void TestLooks::everyLanguageHasItsRoom_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("points");
    for (const int points : {defaultFont, largerFont, largestFont})
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
    for (const int points : {defaultFont, largerFont, 13, largestFont})
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
    const FakeUsbBus nothingPluggedIn;
    TestLooks test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_looks.moc"
