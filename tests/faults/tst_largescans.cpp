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

QTEST_MAIN(TestLargeScans)
#include "tst_largescans.moc"
