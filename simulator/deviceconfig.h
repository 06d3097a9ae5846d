#pragma once

#include <QByteArray>
#include <QList>

/// One wireless network in range of the simulated device. Names may contain any byte; 0x00, 0x02 and 0x03 are
/// sent as '?' in documents.
struct TolvarNetwork {
    QByteArray ssid;
    QByteArray passphrase;      ///< passphrase to join; empty: the network is open and accepts any passphrase
    QByteArray security;        ///< "WPA2", "WEP", "OPEN" or any other value to report in a scan
    QByteArray channel = "6";   ///< radio channel
    QByteArray rssi = "-60";    ///< signal strength in dB
    QByteArray suites = "CCMP"; ///< cipher suites
    QByteArray wps = "N";       ///< "Y" if it offers WPS
    QByteArray adhoc = "N";     ///< "Y" if it has no access point
    bool hidden = false;        ///< can be joined, but is not listed in a scan
};

/// The settings that commands can change. "save" stores them; after a loss of power, the stored settings
/// apply.
struct TolvarConfiguration {
    QByteArray network;
    QByteArray passphrase;
    QByteArray antenna = "0";              ///< "0" internal, other numbers external
    QByteArray useStaticIP = "N";          ///< "Y" or "N"
    QByteArray ipAddress = "192.168.1.50"; ///< as last set or received
    QByteArray uartTrace = "N";            ///< "Y" or "N"
};

/// The delays of the device in milliseconds. With 0, it replies before receive() returns.
struct TolvarDelays {
    int prompt = 0; ///< from the end of a command to its prompt
    int scan = 0;
    int test = 0;
};

/// The faults of the device. By default there are none.
struct TolvarFaults {
    bool systemErrorOnTest = false;  ///< every test ends with result 3
    bool neverPrompts = false;       ///< the console works but sends no '>'
    bool promptsTwice = false;       ///< it sends each '>' twice
    QByteArray garbageBeforeReplies; ///< bytes before every reply, outside any document
    int cutRepliesAfter = -1; ///< number of bytes of a document to send, without end mark and prompt; -1: all
    bool malformedDocuments = false; ///< the last end tag of a document has the wrong name
    QList<QByteArray> deafTo;        ///< first words of lines that are echoed and otherwise ignored
};

/// Six networks that a device might find: WPA2, WEP and open ones, a UTF-8 name, spaces, 32 characters.
QList<TolvarNetwork> defaultAir();
/// A few lines in the format of the device's own log.
QByteArray defaultLogText();

/// The complete configuration of one simulated device. The defaults are the factory state.
struct DeviceConfig {
    QByteArray systemId = "TOLVAR-4711";
    QByteArray mode = "Setup";
    QByteArray firmwareDate = "Mar 14 2012";
    QByteArray firmwareVersion = "A060";
    QByteArray macAddress = "00:1E:C0:04:47:11";
    QByteArray mask = "255.255.255.0";
    QByteArray gateway = "192.168.1.1";
    QByteArray dns = "192.168.1.1";
    QByteArray testResult = "0"; ///< result of the last test before plug()
    QByteArray upgradeResult = "0";
    QByteArray sysLogOn = "N";
    QByteArray sysLogServer = "0.0.0.0";
    TolvarConfiguration configuration = {"Workshop", "correct horse battery"}; ///< its initial configuration
    QList<TolvarNetwork> air = defaultAir();
    QByteArray logText =
        defaultLogText();      ///< control characters other than tab and line ends are sent as '?'
    QByteArray extraStatusXml; ///< inserted unchanged after the first element of the status document
    QList<QByteArray> missingFromStatus; ///< names of status elements that the device does not send
    TolvarDelays delays;
    TolvarFaults faults;
};
