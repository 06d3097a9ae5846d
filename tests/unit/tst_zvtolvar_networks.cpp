#include <QTest>

#include "tests/support/scopedconnection.h"
#include "tests/support/signalrecorder.h"

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

QStringList unknownNetwork()
{
    return {"Not Found", "", "", "", "", "", ""};
}
} // namespace

/// Tests the table of scanned networks.
class TestNetworks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        _tolvar = std::make_unique<ZVTolvar>();
        _diary = std::make_unique<SignalRecorder>(_tolvar.get());
    }

    void aDefaultRecordIsEmpty();
    void allSevenFieldsAreKept();
    void eachNewNetworkIsToldOf();
    void theFirstRecordOfAnSsidStays();
    void anEmptySsidIsAKeyLikeAnyOther();
    void clearingTellsEvenWhenThereWasNothing();
    void clearingReleasesEveryRecord();
    void onAnEmptyTableEveryNetworkIsNotFound();
    void anSsidThatIsNotInTheTableIsNotFound();
    void whatIsHandedOutIsACopy();
    void whatIsHandedInIsCopied();
    void aNetworkNamedNotFoundHasTheSsidOfAnUnknownOne();
    void theSignalCarriesTheControllersOwnTable();

private:
    std::unique_ptr<ZVTolvar> _tolvar;
    std::unique_ptr<SignalRecorder> _diary;
};

void TestNetworks::aDefaultRecordIsEmpty()
{
    QCOMPARE(fields(ZVScanResult()), QStringList({"", "", "", "", "", "", ""}));
}

void TestNetworks::allSevenFieldsAreKept()
{
    ZVScanResult record;
    record.ssid = "Home";
    record.channel = "11";
    record.adhoc = "Y";
    record.security = "WPA2 (PSK)";
    record.suites = "U-AES M-AES";
    record.wps = "N";
    record.rssi = "-61";
    _tolvar->addScannedNetwork(record);
    QCOMPARE(fields(_tolvar->getScanResult("Home")),
             QStringList({"Home", "11", "Y", "WPA2 (PSK)", "U-AES M-AES", "N", "-61"}));
}

void TestNetworks::eachNewNetworkIsToldOf()
{
    ZVScanResult home = network("Home", "-50");
    ZVScanResult guest = network("Guest", "-60");
    _tolvar->addScannedNetwork(home);
    _tolvar->addScannedNetwork(guest);
    QCOMPARE(_diary->take(), QStringList({"scannedNetworkListChanged:1", "scannedNetworkListChanged:2"}));
}

void TestNetworks::theFirstRecordOfAnSsidStays()
{
    ZVScanResult weak = network("Home", "-80");
    ZVScanResult strong = network("Home", "-40");
    _tolvar->addScannedNetwork(weak);
    _tolvar->addScannedNetwork(strong);
    QCOMPARE(_tolvar->getScanResult("Home").rssi, QStringLiteral("-80"));
    QCOMPARE(_tolvar->scannedNetworks()->size(), 1);
    QCOMPARE(_diary->take(), QStringList{"scannedNetworkListChanged:1"});
}

void TestNetworks::anEmptySsidIsAKeyLikeAnyOther()
{
    ZVScanResult first = network("", "-50");
    ZVScanResult second = network(QString(), "-30");
    _tolvar->addScannedNetwork(first);
    _tolvar->addScannedNetwork(second);
    QCOMPARE(_tolvar->scannedNetworks()->keys(), QStringList{""});
    QCOMPARE(_tolvar->getScanResult("").rssi, QStringLiteral("-50"));
    QCOMPARE(_diary->take(), QStringList{"scannedNetworkListChanged:1"});
}

void TestNetworks::clearingTellsEvenWhenThereWasNothing()
{
    _tolvar->clearScannedNetworks();
    QCOMPARE(_diary->take(), QStringList{"scannedNetworkListChanged:0"});
}

void TestNetworks::clearingReleasesEveryRecord()
{
    ZVScanResult home = network("Home", "-50");
    ZVScanResult guest = network("Guest", "-60");
    _tolvar->addScannedNetwork(home);
    _tolvar->addScannedNetwork(guest);
    _diary->take();
    _tolvar->clearScannedNetworks();
    QVERIFY(_tolvar->scannedNetworks()->isEmpty());
    QCOMPARE(fields(_tolvar->getScanResult("Home")), unknownNetwork());
    QCOMPARE(_diary->take(), QStringList{"scannedNetworkListChanged:0"});
}

void TestNetworks::onAnEmptyTableEveryNetworkIsNotFound()
{
    QCOMPARE(fields(_tolvar->getScanResult("Home")), unknownNetwork());
    QCOMPARE(fields(_tolvar->getScanResult("")), unknownNetwork());
}

void TestNetworks::anSsidThatIsNotInTheTableIsNotFound()
{
    ZVScanResult record = network("Home", "-50");
    _tolvar->addScannedNetwork(record);
    QCOMPARE(fields(_tolvar->getScanResult("home")), unknownNetwork());
    QCOMPARE(fields(_tolvar->getScanResult("")), unknownNetwork());
    QCOMPARE(fields(_tolvar->getScanResult("Home")), fields(record));
    QCOMPARE(_tolvar->scannedNetworks()->size(), 1); // a lookup adds nothing
}

void TestNetworks::whatIsHandedOutIsACopy()
{
    ZVScanResult record = network("Home", "-50");
    _tolvar->addScannedNetwork(record);
    ZVScanResult copy = _tolvar->getScanResult("Home");
    copy.rssi = "0";
    QCOMPARE(_tolvar->getScanResult("Home").rssi, QStringLiteral("-50"));
}

void TestNetworks::whatIsHandedInIsCopied()
{
    ZVScanResult record = network("Home", "-50");
    _tolvar->addScannedNetwork(record);
    QCOMPARE(fields(record), fields(network("Home", "-50"))); // and left unchanged
    record.rssi = "0";
    QCOMPARE(_tolvar->getScanResult("Home").rssi, QStringLiteral("-50"));
}

void TestNetworks::aNetworkNamedNotFoundHasTheSsidOfAnUnknownOne()
{
    ZVScanResult record = network("Not Found", "-50");
    _tolvar->addScannedNetwork(record);
    QCOMPARE(_tolvar->getScanResult("Not Found").ssid, _tolvar->getScanResult("Home").ssid);
    QCOMPARE(_tolvar->getScanResult("Not Found").rssi, QStringLiteral("-50"));
}

void TestNetworks::theSignalCarriesTheControllersOwnTable()
{
    int told = 0;
    const ScopedConnection listener(_tolvar.get(), &ZVTolvar::scannedNetworkListChanged,
                                    [&](const QHash<QString, ZVScanResult> *table) {
                                        QCOMPARE(table, _tolvar->scannedNetworks());
                                        ++told;
                                    });
    ZVScanResult home = network("Home", "-50");
    _tolvar->addScannedNetwork(home);
    _tolvar->clearScannedNetworks();
    QCOMPARE(told, 2);
}

QTEST_GUILESS_MAIN(TestNetworks)
#include "tst_zvtolvar_networks.moc"
