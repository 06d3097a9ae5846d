#include "simulator/deviceconfig.h"

QList<TolvarNetwork> defaultAir()
{
    // clang-format off
    return {
        // ssid                              passphrase               security channel rssi   suites
        {"Workshop",                         "correct horse battery", "WPA2",  "6",    "-48", "CCMP"},
        {"Old Barn",                         "0123456789",            "WEP",   "11",   "-71", "WEP40"},
        {"Library",                          "",                      "OPEN",  "1",    "-66", "NONE"},
        {"Caf\xC3\xA9 Br\xC3\xBC" "cke",     "Milchkaffee",           "WPA2",  "3",    "-80", "CCMP TKIP"},
        {" Guest  House ",                   " two blanks  inside ",  "WPA",   "9",    "-59", "TKIP"},
        {"The name with thirty-two letters", "as long as it may be",  "WPA2",  "13",   "-85", "CCMP"},
    };
    // clang-format on
}

QByteArray defaultLogText()
{
    return "000000.012 boot: cold start, supply 3.29 V\n"
           "000000.034 boot: firmware A060, settings block 2 is good\n"
           "000000.310 wlan: radio up, 13 channels\n"
           "000002.871 wlan: joined \"Workshop\", channel 6, -48 dB\n"
           "000003.402 net: address 192.168.1.50 by DHCP\n"
           "000003.455 time: set from 192.168.1.1 & kept\n"
           "000120.007 usb: power found, setup mode\n";
}
