#include <algorithm>

#include <QListView>
#include <QTest>

#include "device/zvtolvar.h"
#include "tests/faults/faultfixture.h"

/// Tests scans that are larger than any real one.
class TestLargeScans : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fiveHundredNetworks();
    void anyByteInAName_data();
    void anyByteInAName();
    void aNameOutsideAsciiCanBeTyped();
    void theUserWaitsForAStatusReplyThatIsDue();
};

void TestLargeScans::fiveHundredNetworks()
{
    DeviceConfig setup = tersestTolvar();
    constexpr int number = 500;
    for (int i = 1; i < number; ++i)
        setup.air += TolvarNetwork{"network " + QByteArray::number(i), "", "OPEN"};
    int listed = 0;
    FaultFixture fixture(setup);
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

void TestLargeScans::anyByteInAName_data()
{
    QTest::addColumn<QByteArray>("ssid");
    constexpr int longest = 32; // bytes in an SSID, by the Wi-Fi standard
    for (int first = 0x20; first < 0x100; first += longest) {
        QByteArray ssid;
        for (int byte = first; byte < first + longest; ++byte)
            ssid += static_cast<char>(byte);
        QTest::addRow("0x%02X to 0x%02X", static_cast<unsigned>(first),
                      static_cast<unsigned>(first + longest - 1))
            << ssid;
    }
}

void TestLargeScans::anyByteInAName()
{
    QFETCH(QByteArray, ssid);
    DeviceConfig setup = tersestTolvar();
    setup.air = {TolvarNetwork{ssid, "b", "WPA2"}};
    FaultFixture fixture(setup, {QString::fromLatin1(ssid), QStringLiteral("b"), QString()});
    QCOMPARE(fixture.walkAgain(), QString());
    QCOMPARE(fixture.tolvar.state().saved.network, ssid);
}

void TestLargeScans::aNameOutsideAsciiCanBeTyped()
{
    const QByteArray ssid = "Caf\xE9 \xC4\xDF";
    DeviceConfig setup = tersestTolvar();
    setup.air = {TolvarNetwork{ssid, "b", "WPA2"}};
    setup.air.first().hidden = true; // no scan lists it
    FaultFixture fixture(setup, {QString::fromLatin1(ssid), QStringLiteral("b"), QString()});
    QCOMPARE(fixture.walkAgain(), QString());
    QCOMPARE(fixture.tolvar.state().saved.network, ssid);
}

// When a device is plugged in while the wizard runs, both controllers request its status. After the first
// reply the user can leave the page, and a scan that is started then mistakes the end of the second reply for
// its own.
void TestLargeScans::theUserWaitsForAStatusReplyThatIsDue()
{
    DeviceConfig setup = tersestTolvar();
    setup.faults.garbageBeforeReplies = QByteArray(300, '.'); // a third of a second before each reply
    qsizetype listed = -1;
    FaultFixture fixture(setup);
    LineFaults slow;
    slow.reads = LineFaults::Single;
    QObject::connect(fixture.wizard._tolvar, &ZVTolvar::scanFinished, &fixture.wizard, [&] {
        if (listed < 0)
            listed = fixture.wizard._tolvar->scannedNetworks()->size();
    });
    fixture.tolvar.setFaults(slow);
    QVERIFY(fixture.tolvar.plug());
    fixture.walk.start();
    QVERIFY(fixture.waitFor([&] { return listed >= 0; }));
    QCOMPARE(listed, qsizetype(1));
    fixture.walk.stop();
}

QTEST_MAIN(TestLargeScans)
#include "tst_largescans.moc"
