#include <QApplication>
#include <QSet>
#include <QTest>

#include "simulator/fakeusbbus.h"
#include "tests/layout/allviews.h"
#include "tests/layout/appearance.h"
#include "tests/layout/fitting.h"
#include "tests/support/messagespy.h"

/// Tests that users can read all texts of the wizard.
class TestLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyTextCanBeRead_data();
    void everyTextCanBeRead();
};

void TestLayout::everyTextCanBeRead_data()
{
    QTest::addColumn<QString>("theme");
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("points");
    const auto add = [](const char *theme, const char *language, int points) {
        QTest::addRow("%s, %s, %d points", theme, language, points) << theme << language << points;
    };
    // The smallest size is the default where the desktop does not set one, 11 points that of many desktops.
    QList<const char *> languages = {"ar", "de", "en", "es", "fr", "it", "ja", "nl", "pl", "pt_BR", "zh_CN"};
    if (qEnvironmentVariable("QT_SCALE_FACTOR") != QLatin1String("1"))
        languages = {"en"};
    for (const int points : {9, 11, 16}) {
        for (const char *language : std::as_const(languages))
            add("light", language, points);
    }
    add("light", "en", 13);
    add("dark", "en", 9);
    add("contrast", "en", 9);
}

void TestLayout::everyTextCanBeRead()
{
    QFETCH(QString, theme);
    QFETCH(QString, language);
    QFETCH(int, points);
    const Appearance appearance{theme, language, points};
    if (!appearance.canBeDrawn())
        QSKIP("no installed font supports the language");
    apply(appearance);
    QStringList issues;
    QSet<QString> seen;
    const MessageSpy unprinted;
    showAllViews([&](const QString &view, QWidget *window) {
        seen += view;
        const QStringList found = layoutIssues(window, window->grab().toImage());
        for (const QString &issue : found)
            issues += view + ": " + issue;
    });
    QCOMPARE(seen.size(), 24);
    QVERIFY2(issues.isEmpty(), qPrintable(appearance.description() + '\n' + issues.join('\n')));
}

int main(int argc, char *argv[])
{
    const QApplication app(argc, argv);
    const FakeUsbBus nothingPluggedIn;
    TestLayout test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_layout.moc"
