#include <QSignalSpy>
#include <QtTest>

#include "device/zvtolvar.h"

namespace
{
ZVScanResult network(const QString &ssid, const QString &rssi)
{
    return {ssid, "6", "N", "WPA2", "AES", "Y", rssi};
}

QStringList fields(const ZVScanResult &r)
{
    return {r.ssid, r.channel, r.adhoc, r.security, r.suites, r.wps, r.rssi};
}

using Table = QHash<QString, ZVScanResult> *;
const QStringList unknownNetwork = {"Not Found", "", "", "", "", "", ""};
} // namespace

/// The table of scanned networks.
class TestNetworks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { _tolvar = std::make_unique<ZVTolvar>(); }
    void allSevenFieldsAreKept();
    void theFirstRecordOfAnSsidStays();
    void anEmptySsidIsAKeyLikeAnyOther();
    void clearingTellsEvenWhenThereWasNothing();
    void anUnknownNetworkIsNotFound();
    void whatIsHandedOutIsACopy();
    void aNetworkNamedNotFoundLooksLikeAnUnknownOne();
    void theSignalCarriesTheControllersOwnTable();

private:
    std::unique_ptr<ZVTolvar> _tolvar;
};

void TestNetworks::allSevenFieldsAreKept()
{
    ZVScanResult record{"Home", "11", "Y", "WPA2 (PSK)", "U-AES M-AES", "N", "-61"};
    _tolvar->addScannedNetwork(record);
    QCOMPARE(fields(_tolvar->getScanResult("Home")),
             QStringList({"Home", "11", "Y", "WPA2 (PSK)", "U-AES M-AES", "N", "-61"}));
    QCOMPARE(fields(ZVScanResult()), QStringList({"", "", "", "", "", "", ""}));
}

void TestNetworks::theFirstRecordOfAnSsidStays()
{
    QSignalSpy changed(_tolvar.get(), &ZVTolvar::scannedNetworkListChanged);
    ZVScanResult weak = network("Home", "-80");
    ZVScanResult strong = network("Home", "-40");
    _tolvar->addScannedNetwork(weak);
    _tolvar->addScannedNetwork(strong);
    QCOMPARE(_tolvar->getScanResult("Home").rssi, QStringLiteral("-80"));
    QCOMPARE(_tolvar->scannedNetworks()->size(), 1);
    QCOMPARE(changed.count(), 1);
}

void TestNetworks::anEmptySsidIsAKeyLikeAnyOther()
{
    QSignalSpy changed(_tolvar.get(), &ZVTolvar::scannedNetworkListChanged);
    ZVScanResult first = network("", "-50");
    ZVScanResult second = network(QString(), "-30");
    _tolvar->addScannedNetwork(first);
    _tolvar->addScannedNetwork(second);
    QCOMPARE(_tolvar->scannedNetworks()->size(), 1);
    QCOMPARE(_tolvar->getScanResult("").rssi, QStringLiteral("-50"));
    QCOMPARE(changed.count(), 1);
}

void TestNetworks::clearingTellsEvenWhenThereWasNothing()
{
    QSignalSpy changed(_tolvar.get(), &ZVTolvar::scannedNetworkListChanged);
    _tolvar->clearScannedNetworks();
    QCOMPARE(changed.count(), 1);

    ZVScanResult record = network("Home", "-50");
    _tolvar->addScannedNetwork(record);
    _tolvar->clearScannedNetworks();
    QCOMPARE(changed.count(), 3);
    QVERIFY(_tolvar->scannedNetworks()->isEmpty());
}

void TestNetworks::anUnknownNetworkIsNotFound()
{
    QCOMPARE(fields(_tolvar->getScanResult("Home")), unknownNetwork);
    ZVScanResult record = network("Home", "-50");
    _tolvar->addScannedNetwork(record);
    QCOMPARE(fields(_tolvar->getScanResult("home")), unknownNetwork);
    QCOMPARE(fields(_tolvar->getScanResult("Home")), fields(record));
}

void TestNetworks::whatIsHandedOutIsACopy()
{
    ZVScanResult record = network("Home", "-50");
    _tolvar->addScannedNetwork(record);
    record.rssi = "0";
    ZVScanResult copy = _tolvar->getScanResult("Home");
    copy.rssi = "0";
    QCOMPARE(_tolvar->getScanResult("Home").rssi, QStringLiteral("-50"));
}

void TestNetworks::aNetworkNamedNotFoundLooksLikeAnUnknownOne()
{
    ZVScanResult record = network("Not Found", "-50");
    _tolvar->addScannedNetwork(record);
    QCOMPARE(_tolvar->getScanResult("Not Found").ssid, _tolvar->getScanResult("Home").ssid);
    QCOMPARE(_tolvar->getScanResult("Not Found").rssi, QStringLiteral("-50"));
}

void TestNetworks::theSignalCarriesTheControllersOwnTable()
{
    QList<qsizetype> sizes;
    connect(_tolvar.get(), &ZVTolvar::scannedNetworkListChanged, this, [&](Table table) {
        QCOMPARE(table, _tolvar->scannedNetworks());
        sizes += table->size(); // already as it is after the change
    });
    ZVScanResult home = network("Home", "-50");
    ZVScanResult guest = network("Guest", "-60");
    _tolvar->addScannedNetwork(home);
    _tolvar->addScannedNetwork(guest);
    _tolvar->clearScannedNetworks();
    QCOMPARE(sizes, QList<qsizetype>({1, 2, 0}));
}

QTEST_GUILESS_MAIN(TestNetworks)
#include "tst_zvtolvar_networks.moc"
