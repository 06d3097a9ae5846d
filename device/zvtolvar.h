#pragma once

#include <QHash>
#include <QObject>
#include <QStringList>

#include "device/commstate.h"
#include "device/zvscanresult.h"
#include "serial/qextserialenumerator.h"

class QCoreXmlStreamReader;
class QextSerialPort;
class QFile;

/// The controller of one ZV Tolvar: finds its port, communicates with its console, stores what it reports as
/// text, and emits a signal for each change.
///
///     zvtolvar.cpp            the record: accessors and setters
///     zvtolvar_discovery.cpp  added and removed ports, opening
///     zvtolvar_link.cpp       the console: states, queue, pacing
///     zvtolvar_commands.cpp   the commands to the device
///     zvtolvar_replies.cpp    the reply documents
///     zvtolvar_networks.cpp   the scanned networks
///
/// The order of signals, slots and fields is fixed: it defines the numbers of the meta-object's entries. A
/// comment that begins with "kept:" marks behaviour that must not change; docs/compatibility.md lists it.
class ZVTolvar : public QObject
{
    Q_OBJECT
    // kept: no NOTIFY; the change signals are ordinary signals. clazy:excludeall=qproperty-without-notify
    Q_PROPERTY(QString systemID READ systemID WRITE setSystemID)
    Q_PROPERTY(QString status READ status WRITE setStatus)
    Q_PROPERTY(QString firmwareVersion READ firmwareVersion WRITE setFirmwareVersion)
    Q_PROPERTY(QString network READ network WRITE setNetwork)
    Q_PROPERTY(QString password READ password WRITE setPassword)
    Q_PROPERTY(bool isScanning READ scanning)

public:
    /// Starts to listen for added and removed ports; does not look for a device until findTolvar().
    explicit ZVTolvar(QObject *parent = nullptr);
    /// kept: closes no port and sends nothing. The wizard calls exitSetupMode() when it ends.
    ~ZVTolvar() override;

    QString systemID() const { return _systemID; }
    QString status() const { return _status; }
    /// For example "A060".
    QString firmwareVersion() const { return _firmwareVersion; }
    /// SSID that the device has joined, or is to join.
    QString network() const { return _network; }
    /// Passphrase to send; the device never reports it.
    QString password() const { return _password; }
    QString ipAddress() const { return _ipAddress; }
    /// "Y" for a static address.
    QString useStaticIP() const { return _useStaticIP; }
    QString mask() const { return _mask; }
    QString gateway() const { return _gateway; }
    QString dns() const { return _dns; }
    QString testResult() const { return _testResult; }
    QString upgradeResult() const { return _upgradeResult; }
    QString macAddress() const { return _macAddress; }
    /// Integer text: "0" is the internal antenna, any other number the external one.
    QString antenna() const { return _antenna; }
    QString uartTrace() const { return _uartTrace; }
    /// "Y" if on.
    QString sysLogOn() const { return _sysLogOn; }
    QString sysLogServer() const { return _sysLogServer; }

    /// The controller's own table by SSID, the same that scannedNetworkListChanged() carries.
    QHash<QString, ZVScanResult> *scannedNetworks() { return &_scannedNetworks; }
    /// Whether a scan is in progress.
    bool scanning() const { return _scanning; }
    /// kept: always true. Signals report the result of a test.
    bool networkTestOK() const { return true; }
    /// The number of the version, 60 for "A060"; 0 if there is none.
    int firmwareVersionAsInt() const;
    /// The antenna as shown to the user, translated.
    QString antennaDescription() const;
    /// Whether no device has reported its system ID, or the port of the device is dead. A port can be dead
    /// before its removal is reported.
    bool isGone() const;
    /// A copy of the record stored for \a ssid; if there is none, a record that is named "Not Found" and
    /// otherwise empty.
    ZVScanResult getScanResult(QString ssid) const;

    /// Looks for the device among the ports present now. The first match wins; without a match, nothing
    /// happens.
    void findTolvar();
    /// Queues one command line, including its "\r\n"; at the prompt, sends the oldest queued one at once.
    void submitCommand(const QString &command);
    /// Logs the name of the link's state.
    void debug_commState();
    /// Passes one received byte to the link.
    void handleReceived(char c);

Q_SIGNALS:
    void systemIDChanged(QString);
    void statusChanged(QString);
    void firmwareVersionChanged(QString);
    void networkChanged(QString);
    void passwordChanged(QString);
    void ipAddressChanged(QString);
    void useStaticIPChanged(QString);
    void maskChanged(QString);
    void gatewayChanged(QString);
    void dnsChanged(QString);
    void testResultChanged(QString);
    void upgradeResultChanged(QString);
    void macAddressChanged(QString);
    void antennaChanged(QString);
    void uartTraceChanged(QString);
    void sysLogOnChanged(QString);
    void sysLogServerChanged(QString);
    /// The console shows its prompt.
    void readyForCommand();
    /// One complete reply, without its framing bytes; each byte is one character.
    void responseReceived(const QString &response);
    /// The table was emptied, or one network was added. Carries the controller's own table.
    void scannedNetworkListChanged(QHash<QString, ZVScanResult> *);
    void scanStarted();
    void scanFinished();
    void networkTestSsidNotFound();
    void networkTestPassphraseInvalid();
    void networkTestFound();
    void networkTestSystemError();
    void networkTestFinished();
    void networkTestStarted();
    /// A port with the device's ids is present; it is opened a second later.
    void candidateDeviceFound();
    void startingToWriteLog();
    void finishedWriteLog();

public Q_SLOTS:
    /// Logs the bytes that the port has received as a warning, and passes them to the link.
    void onReadyRead();
    /// Sends the oldest queued command; blocks for 10 ms per byte. If the port does not take a byte, the rest
    /// of the command is not sent, and the next command begins with a line end.
    void onReadyForCommand();
    /// Reads one reply document: stores its values and emits their signals. Does not return if the root
    /// element is unknown (docs/compatibility.md).
    void onResponseReceived(const QString &aResponse);
    void setSystemID(const QString &);
    void setStatus(const QString &);
    void setFirmwareVersion(const QString &);
    void setNetwork(const QString &);
    void setPassword(const QString &);
    void setIPAddress(const QString &);
    void setUseStaticIP(const QString &);
    void setMask(const QString &);
    void setGateway(const QString &);
    void setDns(const QString &);
    void setTestResult(const QString &);
    void setUpgradeResult(const QString &);
    void setMacAddress(const QString &);
    void setAntenna(const QString &);
    void setUartTrace(const QString &);
    void setSysLogOn(const QString &);
    void setSysLogServer(const QString &);
    /// Makes the device leave its setup mode.
    void exitSetupMode();
    /// Stores a record under its SSID; drops it if that SSID is already known.
    void addScannedNetwork(ZVScanResult &network);
    void clearScannedNetworks();
    /// Makes the device scan for networks.
    void startScan();
    /// Makes the device try network() with password(). The reply emits one of the four verdict signals (none
    /// if its result code is not 0 to 3), and then networkTestFinished().
    void startNetworkTest();
    /// Makes the device save network, passphrase, antenna and static address.
    void saveNetworkConfig();
    /// Requests the device's log and writes it to \a pFile, which is open for writing. The controller takes
    /// ownership of the file.
    void getLogFileTo(QFile *pFile);
    /// Sends antenna() to the device.
    void commitAntennaSetting();
    /// Makes the device use the static address ipAddress() if useStaticIP() is "Y" or "y", otherwise DHCP.
    void commitStaticIPSetting();
    /// If the port has the device's ids and no port is open: emits candidateDeviceFound(), and opens the port
    /// a second later.
    void onDeviceDiscovered(const QextPortInfo &info);
    /// If it is the device's port: forgets the port, the queued commands, the scanned networks, the system
    /// ID, status, firmware version, network and passphrase. The other values remain.
    void onDeviceRemoved(const QextPortInfo &info);
    /// Wakes the console, once a second until a prompt is seen.
    void onTimerKickOffTlovarConsole();
    /// Opens the port, or retries a second later.
    void onTimerOpenConnection();

private:
    Q_DISABLE_COPY_MOVE(ZVTolvar)
    friend struct ZVTolvarLink;     // the link's table and its actions
    friend struct ZVTolvarTestPeer; // the tests' access to private members

    void parseResponsePuckData(QCoreXmlStreamReader &reader);
    void parseResponseScanResults(QCoreXmlStreamReader &reader);
    void parseNetworkTestResults(QCoreXmlStreamReader &reader);
    void parseLogFile(QCoreXmlStreamReader &reader);
    void skipUnknownElement(QCoreXmlStreamReader &reader);

    QextSerialPort *_port = nullptr; // kept: never closed or destroyed here; SerialLine closes it
    QextSerialEnumerator _enumerator;
    QString _portName;
    QString _response;
    QString _systemID;
    QString _status;
    QString _firmwareVersion;
    QString _network;
    QString _password;
    QString _ipAddress;
    QString _useStaticIP;
    QString _mask;
    QString _gateway;
    QString _dns;
    QString _testResult;
    QString _upgradeResult;
    QString _macAddress;
    QString _antenna;
    QString _uartTrace;
    QString _sysLogOn;
    QString _sysLogServer;
    QFile *_logFile = nullptr;
    QHash<QString, ZVScanResult> _scannedNetworks;
    bool _connected = false; // kept: only ever set to false, never read
    bool _scanning = false;
    bool _testing = false;
    bool _eotHandshake = false; // kept: never set; the handshake that it selects is not used
    QStringList _commandQueue;
    QString _currentCommand; // kept: only onReadyForCommand() uses it
    CommState _commState = NOT_CONNECTED;
    bool _isLineOpen = false; // a command was cut: the device has received part of a line, but no line end
};
