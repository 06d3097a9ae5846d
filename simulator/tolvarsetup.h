#pragma once

#include <QByteArray>
#include <QList>

/// One wireless network within the simulated device's reach. Names may hold any byte; 0x00, 0x02 and 0x03 are
/// sent as
/// '?' in documents.
struct TolvarNetwork {
    QByteArray ssid;
    QByteArray passphrase;    ///< what joining takes; when empty the network is open and any passphrase does
    QByteArray security;      ///< "WPA2", "WEP", "OPEN" or whatever else a scan shall tell
    QByteArray channel = "6"; ///< radio channel
    QByteArray rssi = "-60";  ///< signal strength in dB
    QByteArray suites = "CCMP"; ///< cipher suites
    QByteArray wps = "N";       ///< whether it offers WPS
    QByteArray adhoc = "N";     ///< whether it has no access point
    bool hidden = false;        ///< can be joined, but no scan lists it
};

/// What the device can be told to keep. "save" keeps it for good, a loss of power brings the saved one back.
struct TolvarConfiguration {
    QByteArray network;
    QByteArray passphrase;
    QByteArray antenna = "0";              ///< "0" internal, other numbers external
    QByteArray useStaticIP = "N";          ///< "Y" or "N"
    QByteArray ipAddress = "192.168.1.50"; ///< as it was last told or got it
    QByteArray uartTrace = "N";            ///< "Y" or "N"
};

/// How long the device takes, in milliseconds; 0 answers before receive() returns.
struct TolvarDelays {
    int prompt = 0; ///< from the end of a command to its prompt
    int scan = 0;
    int test = 0;
};

/// What can go wrong with the device. None of it does by default.
struct TolvarFaults {
    bool systemErrorOnTest = false;  ///< every test ends with result 3
    bool neverPrompts = false;       ///< the console works but shows no '>'
    bool promptsTwice = false;       ///< it shows each '>' once more
    QByteArray garbageBeforeReplies; ///< unframed bytes ahead of every reply
    int cutRepliesAfter = -1; ///< that many bytes of a document are sent, no end mark, no prompt; -1: all
    bool malformedDocuments = false; ///< the last end tag of a document has a wrong name
    QList<QByteArray> deafTo;        ///< first words of lines that get an echo and nothing else
};

/// Six networks a device might see: WPA2, WEP and open ones, a UTF-8 name, blanks, 32 characters.
QList<TolvarNetwork> defaultAir();
/// A few lines as the device's own log has them.
QByteArray defaultLogText();

/// Everything that makes one simulated device, as it leaves the works.
struct TolvarSetup {
    QByteArray systemId = "TOLVAR-4711";
    QByteArray mode = "Setup";
    QByteArray firmwareDate = "Mar 14 2012";
    QByteArray firmwareVersion = "A060";
    QByteArray macAddress = "00:1E:C0:04:47:11";
    QByteArray mask = "255.255.255.0";
    QByteArray gateway = "192.168.1.1";
    QByteArray dns = "192.168.1.1";
    QByteArray testResult = "0"; ///< of the last test before it was plugged in
    QByteArray upgradeResult = "0";
    QByteArray sysLogOn = "N";
    QByteArray sysLogServer = "0.0.0.0";
    TolvarConfiguration configuration = {"Workshop", "correct horse battery"}; ///< what it holds at first
    QList<TolvarNetwork> air = defaultAir();
    QByteArray logText =
        defaultLogText();      ///< control characters other than tab and line ends are sent as '?'
    QByteArray extraStatusXml; ///< put into the status document after its first element, as it stands
    QList<QByteArray> missingFromStatus; ///< names of status elements the device does not know
    TolvarDelays delays;
    TolvarFaults faults;
};
