#pragma once

#include <QString>

/// One scanned network; each value is as the device sent it.
struct ZVScanResult {
    QString ssid;     ///< network name, and the key of the table
    QString channel;  ///< radio channel
    QString adhoc;    ///< ad-hoc flag
    QString security; ///< security protocol; a WEP network is recognized by "WEP" in it
    QString suites;   ///< cipher suites
    QString wps;      ///< WPS
    QString rssi;     ///< signal strength, dB
};
