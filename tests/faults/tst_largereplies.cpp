#include <QFile>
#include <QListView>
#include <QTemporaryDir>
#include <QTest>

#include "device/zvtolvar.h"
#include "tests/faults/faultfixture.h"
#include "tests/support/filecontents.h"

/// Tests the whole wizard with replies that are larger or more unusual than real ones.
class TestLargeReplies : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fiveHundredNetworks();
    void aNameOutsideAscii_data();
    void aNameOutsideAscii();
    void aLogOfFourMegabytesIsWrittenCompletely();
    void aLogThatDoesNotFitOnTheDiskDoesNotBlockTheUser();
};

void TestLargeReplies::fiveHundredNetworks()
{
    DeviceConfig config = tersestTolvar();
    constexpr int number = 500;
    for (int i = 1; i < number; ++i)
        config.air += TolvarNetwork{"network " + QByteArray::number(i), "", "OPEN"};
    int listed = 0;
    FaultFixture fixture(config);
    // Checked when the page has been updated, not when the scan is reported as finished: on a slow computer a
    // second "get" is in progress, and its reply ends a scan early.
    QObject::connect(
        fixture.wizard._tolvar, &ZVTolvar::scannedNetworkListChanged, &fixture.wizard,
        [&] {
            const auto *list = fixture.wizard.findChild<QListView *>(QStringLiteral("networkListView"));
            listed = std::max(listed, list->model()->rowCount());
        },
        Qt::QueuedConnection);
    QCOMPARE(fixture.walkAgain(), QString());
    QCOMPARE(listed, number);
}

void TestLargeReplies::aNameOutsideAscii_data()
{
    QTest::addColumn<bool>("hidden");
    QTest::newRow("is chosen from the list") << false;
    QTest::newRow("is typed") << true;
}

void TestLargeReplies::aNameOutsideAscii()
{
    const QByteArray ssid = "Caf\xE9 \xC4\xDF <&> \"!\"";
    DeviceConfig config = tersestTolvar();
    config.air = {TolvarNetwork{ssid, "b", "WPA2"}};
    QFETCH(bool, hidden);
    config.air.first().hidden = hidden; // then no scan lists it
    FaultFixture fixture(config, {QString::fromLatin1(ssid), QStringLiteral("b"), QString()});
    QCOMPARE(fixture.walkAgain(), QString());
}

void TestLargeReplies::aLogOfFourMegabytesIsWrittenCompletely()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("log.txt"));
    DeviceConfig config = tersestTolvar();
    config.logText.clear();
    constexpr qsizetype length = 4L * 1024 * 1024;
    for (int number = 0; config.logText.size() < length; ++number)
        config.logText += "line " + QByteArray::number(number) + " of a <long> & dull story\n";
    FaultFixture fixture(config, {QStringLiteral("B"), QStringLiteral("b"), path});
    QCOMPARE(fixture.walkAgain(), QString());
    QVERIFY(contents(path) == config.logText);
}

void TestLargeReplies::aLogThatDoesNotFitOnTheDiskDoesNotBlockTheUser()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("log.txt"));
    QVERIFY(QFile::link(QStringLiteral("/dev/full"), path));
    FaultFixture fixture(tersestTolvar(), {QStringLiteral("B"), QStringLiteral("b"), path});
    QCOMPARE(fixture.walkAgain(), QString());
    QCOMPARE(fixture.robot.messages(), QStringList());
}

QTEST_MAIN(TestLargeReplies)
#include "tst_largereplies.moc"
