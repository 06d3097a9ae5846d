#include "device/zvtolvar.h"

// The scanned networks: one record per SSID; the first one reported wins.

void ZVTolvar::addScannedNetwork(ZVScanResult &network)
{
    if (_scannedNetworks.contains(network.ssid))
        return;
    _scannedNetworks.insert(network.ssid, network);
    Q_EMIT scannedNetworkListChanged(&_scannedNetworks);
}

void ZVTolvar::clearScannedNetworks()
{
    _scannedNetworks = {};
    Q_EMIT scannedNetworkListChanged(&_scannedNetworks); // kept: also if it was already empty
}

ZVScanResult ZVTolvar::getScanResult(QString ssid) const
{
    ZVScanResult unknown;
    unknown.ssid = QStringLiteral("Not Found"); // kept: not translated; the details dialog shows it
    return _scannedNetworks.value(ssid, unknown);
}
