#pragma once

#include <QString>

/// One scanned network, each value as the device wrote it.
struct ZVScanResult {
    QString ssid;     ///< network name, and the key of the table
    QString channel;  ///< radio channel
    QString adhoc;    ///< ad-hoc flag
    QString security; ///< security protocol; "WEP" is looked for here
    QString suites;   ///< cipher suites
    QString wps;      ///< WPS
    QString rssi;     ///< signal strength, dB
};
