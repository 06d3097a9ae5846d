#include <algorithm>

#include <QListView>
#include <QTest>

#include "device/zvtolvar.h"
#include "tests/faults/faultbench.h"

/// Scans as nobody has at home.
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
    TolvarSetup setup = tersestTolvar();
    constexpr int number = 500;
    for (int i = 1; i < number; ++i)
        setup.air += TolvarNetwork{"network " + QByteArray::number(i), "", "OPEN"};
    FaultBench bench(setup);
    // Looked at when the page has followed. Not when the scan is said to be over: on a slow computer a second
    // "get" is under way, and its reply ends a scan early.
    int listed = 0;
    QObject::connect(
        bench.wizard._tolvar, &ZVTolvar::scannedNetworkListChanged, &bench.wizard,
        [&] {
            const auto *list = bench.wizard.findChild<QListView *>(QStringLiteral("networkListView"));
            listed = std::max(listed, list->model()->rowCount());
        },
        Qt::QueuedConnection);
    QCOMPARE(bench.walkAgain(), QString());
    QCOMPARE(listed, number);
}

void TestLargeScans::anyByteInAName_data()
{
    QTest::addColumn<QByteArray>("ssid");
    constexpr int longest = 32; // bytes in an SSID, by the radio's standard
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
    TolvarSetup setup = tersestTolvar();
    setup.air = {TolvarNetwork{ssid, "b", "WPA2"}};
    FaultBench bench(setup, {QString::fromLatin1(ssid), QStringLiteral("b"), QString()});
    QCOMPARE(bench.walkAgain(), QString());
    QCOMPARE(bench.tolvar.state().saved.network, ssid);
}

void TestLargeScans::aNameOutsideAsciiCanBeTyped()
{
    const QByteArray ssid = "Caf\xE9 \xC4\xDF";
    TolvarSetup setup = tersestTolvar();
    setup.air = {TolvarNetwork{ssid, "b", "WPA2"}};
    setup.air.first().hidden = true; // no scan lists it
    FaultBench bench(setup, {QString::fromLatin1(ssid), QStringLiteral("b"), QString()});
    QCOMPARE(bench.walkAgain(), QString());
    QCOMPARE(bench.tolvar.state().saved.network, ssid);
}

// Both controllers ask a device for its status that is plugged in while the wizard runs. When the first reply
// has come the page can be left, and a scan that is started then takes the second reply's end for its own.
void TestLargeScans::theUserWaitsForAStatusReplyThatIsDue()
{
    TolvarSetup setup = tersestTolvar();
    setup.faults.garbageBeforeReplies = QByteArray(300, '.'); // a third of a second ahead of each reply
    FaultBench bench(setup);
    LineFaults slow;
    slow.reads = LineFaults::Single;
    qsizetype listed = -1;
    QObject::connect(bench.wizard._tolvar, &ZVTolvar::scanFinished, &bench.wizard, [&] {
        if (listed < 0)
            listed = bench.wizard._tolvar->scannedNetworks()->size();
    });
    bench.tolvar.setFaults(slow);
    QVERIFY(bench.tolvar.plug());
    bench.walk.start();
    QVERIFY(bench.waitFor([&] { return listed >= 0; }));
    QCOMPARE(listed, qsizetype(1));
    bench.walk.stop();
}

QTEST_MAIN(TestLargeScans)
#include "tst_largescans.moc"
