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

/// The controller of one ZV Tolvar: finds its port, talks to its console, keeps what it reports as text and
/// tells of each change.
///
///     zvtolvar.cpp            the record: accessors and setters
///     zvtolvar_discovery.cpp  ports coming and going, opening
///     zvtolvar_link.cpp       the console: states, queue, pacing
///     zvtolvar_commands.cpp   what the device can be told
///     zvtolvar_replies.cpp    the reply documents
///     zvtolvar_networks.cpp   the scanned networks
///
/// The order of signals, slots and fields is fixed: it numbers the meta-object's entries.
class ZVTolvar : public QObject
{
    Q_OBJECT
    // kept: no NOTIFY. The change signals are ordinary signals. clazy:excludeall=qproperty-without-notify
    Q_PROPERTY(QString systemID READ systemID WRITE setSystemID)
    Q_PROPERTY(QString status READ status WRITE setStatus)
    Q_PROPERTY(QString firmwareVersion READ firmwareVersion WRITE setFirmwareVersion)
    Q_PROPERTY(QString network READ network WRITE setNetwork)
    Q_PROPERTY(QString password READ password WRITE setPassword)
    Q_PROPERTY(bool isScanning READ scanning)

public:
    /// Listens for ports coming and going from here on; looks for no device until findTolvar().
    explicit ZVTolvar(QObject *parent = nullptr);
    /// kept: closes no port and tells the device nothing. Leaving setup mode is the wizard's business.
    ~ZVTolvar() override;

    QString systemID() const { return _systemID; }
    QString status() const { return _status; }
    /// Such as "A060".
    QString firmwareVersion() const { return _firmwareVersion; }
    /// SSID the device is, or is to be, joined to.
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
    /// "Y" when on.
    QString sysLogOn() const { return _sysLogOn; }
    QString sysLogServer() const { return _sysLogServer; }

    /// The controller's own table by SSID, the same that scannedNetworkListChanged() carries.
    QHash<QString, ZVScanResult> *scannedNetworks() { return &_scannedNetworks; }
    /// Whether a scan is in progress.
    bool scanning() const { return _scanning; }
    /// kept: always true. The verdict of a test comes by its signals.
    bool networkTestOK() const { return true; }
    /// The version's number, 60 for "A060"; 0 when there is none.
    int firmwareVersionAsInt() const;
    /// The antenna in the user's words, translated.
    QString antennaDescription() const;
    /// Whether no device is known, or the known one has been pulled out: its port is dead, though its removal
    /// may not have been reported yet.
    bool isGone() const;
    /// A copy of the record stored for \a ssid; a record named "Not Found" and otherwise empty when there is
    /// none.
    ZVScanResult getScanResult(QString ssid) const;

    /// Looks for the device among the ports present now. The first one wins; with none, nothing happens.
    void findTolvar();
    /// Queues one command line, its "\r\n" included; at the prompt, sends the oldest queued one at once.
    void submitCommand(const QString &command);
    /// Logs the link's state by name.
    void debug_commState();
    /// Feeds one received byte to the link.
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
    /// One whole reply, without its framing bytes; each byte is one character.
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
    /// A port with the device's ids is there; it is opened a second later.
    void candidateDeviceFound();
    void startingToWriteLog();
    void finishedWriteLog();

public Q_SLOTS:
    void onReadyRead();
    /// Sends the oldest queued command; blocks for 10 ms a byte. When the port does not take a byte, the rest
    /// of the command is not sent, and the next command begins with a line end.
    void onReadyForCommand();
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
    /// Has the device leave its setup mode.
    void exitSetupMode();
    /// Stores a record under its SSID; dropped when that SSID is known already.
    void addScannedNetwork(ZVScanResult &network);
    void clearScannedNetworks();
    /// Has the device scan for networks.
    void startScan();
    /// Has the device try network() with password(); one of the four verdicts follows.
    void startNetworkTest();
    /// Has the device keep network, passphrase, antenna and static address.
    void saveNetworkConfig();
    /// Has the device hand over its log, to be written to \a pFile, which is open for writing and from here
    /// on the controller's.
    void getLogFileTo(QFile *pFile);
    void commitAntennaSetting();
    void commitStaticIPSetting();
    void onDeviceDiscovered(const QextPortInfo &info);
    void onDeviceRemoved(const QextPortInfo &info);
    /// Wakes the console, once a second until a prompt is seen.
    void onTimerKickOffTlovarConsole();
    /// Opens the port, or tries again a second later.
    void onTimerOpenConnection();

private:
    Q_DISABLE_COPY_MOVE(ZVTolvar)
    friend struct ZVTolvarLink;      // the link's table and its actions
    friend struct ZVTolvarInspector; // what the tests may look at

    void parseResponsePuckData(QCoreXmlStreamReader &reader);
    void parseResponseScanResults(QCoreXmlStreamReader &reader);
    void parseNetworkTestResults(QCoreXmlStreamReader &reader);
    void parseLogFile(QCoreXmlStreamReader &reader);
    void skipUnknownElement(QCoreXmlStreamReader &reader);

    QextSerialPort *_port = nullptr; // kept: never closed or destroyed here, the line sees to that
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
    bool _connected = false; // kept: never set, never read
    bool _scanning = false;
    bool _testing = false;
    bool _eotHandshake = false; // kept: never set; the handshake it selects is inert
    QStringList _commandQueue;
    QString _currentCommand; // kept: recorded, never read
    CommState _commState = NOT_CONNECTED;
    bool _isLineOpen = false; // a command was cut: the device has a part of its line, and no line end
};
