#include <QMetaMethod>
#include <QMetaProperty>
#include <QTest>

#include "tests/support/linkfixture.h"
#include "tests/support/pendingtimers.h"
#include "tests/support/signalrecorder.h"

namespace
{
struct Value {
    void (ZVTolvar::*set)(const QString &);
    const char *setter; // its name
    QString (ZVTolvar::*get)() const;
    const char *signal; // the name of the signal of a change
};

// clang-format off
constexpr Value values[] = {
    { &ZVTolvar::setSystemID,         "setSystemID",         &ZVTolvar::systemID,          "systemIDChanged"        },
    { &ZVTolvar::setStatus,           "setStatus",           &ZVTolvar::status,            "statusChanged"          },
    { &ZVTolvar::setFirmwareVersion,  "setFirmwareVersion",  &ZVTolvar::firmwareVersion,   "firmwareVersionChanged" },
    { &ZVTolvar::setNetwork,          "setNetwork",          &ZVTolvar::network,           "networkChanged"         },
    { &ZVTolvar::setPassword,         "setPassword",         &ZVTolvar::password,          "passwordChanged"        },
    { &ZVTolvar::setIPAddress,        "setIPAddress",        &ZVTolvar::ipAddress,         "ipAddressChanged"       },
    { &ZVTolvar::setUseStaticIP,      "setUseStaticIP",      &ZVTolvar::useStaticIP,       "useStaticIPChanged"     },
    { &ZVTolvar::setMask,             "setMask",             &ZVTolvar::mask,              "maskChanged"            },
    { &ZVTolvar::setGateway,          "setGateway",          &ZVTolvar::gateway,           "gatewayChanged"         },
    { &ZVTolvar::setDns,              "setDns",              &ZVTolvar::dns,               "dnsChanged"             },
    { &ZVTolvar::setTestResult,       "setTestResult",       &ZVTolvar::testResult,        "testResultChanged"      },
    { &ZVTolvar::setUpgradeResult,    "setUpgradeResult",    &ZVTolvar::upgradeResult,     "upgradeResultChanged"   },
    { &ZVTolvar::setMacAddress,       "setMacAddress",       &ZVTolvar::macAddress,        "macAddressChanged"      },
    { &ZVTolvar::setAntenna,          "setAntenna",          &ZVTolvar::antenna,           "antennaChanged"         },
    { &ZVTolvar::setUartTrace,        "setUartTrace",        &ZVTolvar::uartTrace,         "uartTraceChanged"       },
    { &ZVTolvar::setSysLogOn,         "setSysLogOn",         &ZVTolvar::sysLogOn,          "sysLogOnChanged"        },
    { &ZVTolvar::setSysLogServer,     "setSysLogServer",     &ZVTolvar::sysLogServer,      "sysLogServerChanged"    },
};
// clang-format on
} // namespace

/// Tests the controller's record of its device: the values, the signals that report their changes, and the
/// meta-object.
class TestZVTolvar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewControllerHasNoValuesAndNoTimers();
    void aControllerBelongsToItsParent();
    void aDestroyedControllerEmitsNothingAndLeavesItsPortOpen();
    void onlyAChangedValueIsStoredAndReported_data();
    void onlyAChangedValueIsStoredAndReported();
    void aValueIsStoredBeforeItIsReported();
    void theTestResultIsOkBeforeAnyTestAndAfterAFailedOne();

    void membersAndPropertiesKeepTheirOrder();
    void aPropertyWritesThroughItsSetter_data();
    void aPropertyWritesThroughItsSetter();
    void isScanningIsReadAsScanningAndCannotBeWritten();
};

void TestZVTolvar::aNewControllerHasNoValuesAndNoTimers()
{
    const PendingTimers timers;
    const MessageSpy log;
    ZVTolvar tolvar;
    const ZVTolvarTestPeer inside{tolvar};
    for (const Value &value : values)
        QVERIFY2((tolvar.*value.get)().isEmpty(), value.signal);
    QVERIFY(tolvar.scannedNetworks()->isEmpty());
    QVERIFY(inside.queue().isEmpty());
    QVERIFY(inside.portName().isEmpty());
    QCOMPARE(inside.port(), nullptr);
    QCOMPARE(inside.logFile(), nullptr);
    QCOMPARE(inside.state(), NOT_CONNECTED);
    QVERIFY(!tolvar.scanning());
    QVERIFY(!inside.testing());
    QVERIFY(!inside.connected());
    QVERIFY(!inside.eotHandshake());
    QCOMPARE(timers.intervals(), QList<int>());
    QCOMPARE(log.messages(), QStringList());
}

void TestZVTolvar::aControllerBelongsToItsParent()
{
    QObject parent;
    QCOMPARE((new ZVTolvar(&parent))->parent(), &parent);
}

void TestZVTolvar::aDestroyedControllerEmitsNothingAndLeavesItsPortOpen()
{
    Pty pty;
    QextSerialPort port(pty.name());
    QVERIFY(port.open(QIODevice::ReadWrite));
    auto tolvar = std::make_unique<ZVTolvar>();
    const ZVTolvarTestPeer inside{*tolvar};
    inside.port() = &port;
    inside.queue() = QStringList{"get\r\n"};
    const MessageSpy log;
    tolvar.reset();
    QCOMPARE(port.write("still open"), 10);
    QCOMPARE(pty.collected(), QByteArray("still open"));
    QCOMPARE(log.messages(), QStringList());
}

void TestZVTolvar::onlyAChangedValueIsStoredAndReported_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(std::size(values)); ++i)
        QTest::newRow(values[i].signal) << i;
}

void TestZVTolvar::onlyAChangedValueIsStoredAndReported()
{
    QFETCH(int, index);
    const Value &value = values[index];
    ZVTolvar tolvar;
    SignalRecorder recorder(&tolvar);
    // Null and empty texts are equal.
    for (const QString &text : {QString(), QString(""), QString(" as it  came "), QString(" as it  came "),
                                QString(" AS IT  CAME "), QString(), QString("")}) {
        (tolvar.*value.set)(text);
        QCOMPARE((tolvar.*value.get)(), text);
    }
    const QString reported = QLatin1String(value.signal) + QLatin1Char(':');
    QCOMPARE(recorder.take(),
             QStringList({reported + " as it  came ", reported + " AS IT  CAME ", reported}));

    (tolvar.*value.set)("text");
    for (const Value &other : values)
        QVERIFY2(&other == &value || (tolvar.*other.get)().isEmpty(), other.signal);
}

void TestZVTolvar::aValueIsStoredBeforeItIsReported()
{
    ZVTolvar tolvar;
    QString seen;
    connect(&tolvar, &ZVTolvar::networkChanged, this, [&] { seen = tolvar.network(); });
    tolvar.setNetwork("text");
    QCOMPARE(seen, QStringLiteral("text"));
}

void TestZVTolvar::theTestResultIsOkBeforeAnyTestAndAfterAFailedOne()
{
    ZVTolvar tolvar;
    QVERIFY(tolvar.networkTestOK());
    tolvar.onResponseReceived("<networktest_results><status result=\"1\"/></networktest_results>");
    QVERIFY(tolvar.networkTestOK());
}

void TestZVTolvar::membersAndPropertiesKeepTheirOrder()
{
    const QMetaObject &meta = ZVTolvar::staticMetaObject;
    QByteArrayList members[2]; // signals and slots
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        QCOMPARE(method.access(), QMetaMethod::Public);
        QVERIFY2(method.methodType() == QMetaMethod::Slot || members[1].isEmpty(),
                 "a signal follows a slot in the meta-object");
        members[method.methodType() == QMetaMethod::Slot] += method.methodSignature();
    }
    QByteArrayList properties;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        properties += QByteArray(property.typeName()) + ' ' + property.name();
        QVERIFY2(!property.hasNotifySignal(), "the property has a NOTIFY signal");
    }

    const QByteArray tableChanged = "scannedNetworkListChanged(QHash<QString,ZVScanResult>*)";
    QByteArrayList slotsInOrder = {"onReadyRead()", "onReadyForCommand()", "onResponseReceived(QString)"};
    QByteArrayList signalsInOrder;
    // A value that is added later has its signal and its setter at the end of the lists.
    for (const Value *value = values; value < values + 17; ++value) {
        signalsInOrder += QByteArray(value->signal) + "(QString)";
        slotsInOrder += QByteArray(value->setter) + "(QString)";
    }
    signalsInOrder += {"readyForCommand()",
                       "responseReceived(QString)",
                       tableChanged,
                       "scanStarted()",
                       "scanFinished()",
                       "networkTestSsidNotFound()",
                       "networkTestPassphraseInvalid()",
                       "networkTestFound()",
                       "networkTestSystemError()",
                       "networkTestFinished()",
                       "networkTestStarted()",
                       "candidateDeviceFound()",
                       "startingToWriteLog()",
                       "finishedWriteLog()"};
    slotsInOrder += {"exitSetupMode()",
                     "addScannedNetwork(ZVScanResult&)",
                     "clearScannedNetworks()",
                     "startScan()",
                     "startNetworkTest()",
                     "saveNetworkConfig()",
                     "getLogFileTo(QFile*)",
                     "commitAntennaSetting()",
                     "commitStaticIPSetting()",
                     "onDeviceDiscovered(QextPortInfo)",
                     "onDeviceRemoved(QextPortInfo)",
                     "onTimerKickOffTlovarConsole()",
                     "onTimerOpenConnection()"};
    QCOMPARE(members[0], signalsInOrder);
    QCOMPARE(members[1], slotsInOrder);
    QCOMPARE(properties, QByteArrayList({"QString systemID", "QString status", "QString firmwareVersion",
                                         "QString network", "QString password", "bool isScanning"}));
}

void TestZVTolvar::aPropertyWritesThroughItsSetter_data()
{
    QTest::addColumn<QString>("signal");
    for (const char *name : {"systemID", "status", "firmwareVersion", "network", "password"})
        QTest::newRow(name) << QString(name) + "Changed";
}

void TestZVTolvar::aPropertyWritesThroughItsSetter()
{
    QFETCH(QString, signal);
    ZVTolvar tolvar;
    SignalRecorder recorder(&tolvar);
    QVERIFY(tolvar.setProperty(QTest::currentDataTag(), QStringLiteral("text")));
    QCOMPARE(tolvar.property(QTest::currentDataTag()), QVariant(QStringLiteral("text")));
    QCOMPARE(recorder.take(), QStringList{signal + ":text"});
}

void TestZVTolvar::isScanningIsReadAsScanningAndCannotBeWritten()
{
    ZVTolvar tolvar;
    for (const bool scanning : {true, false}) {
        ZVTolvarTestPeer{tolvar}.scanning() = scanning;
        QVERIFY(!tolvar.setProperty("isScanning", !scanning));
        QCOMPARE(tolvar.scanning(), scanning);
        QCOMPARE(tolvar.property("isScanning"), QVariant(scanning));
    }
}

QTEST_GUILESS_MAIN(TestZVTolvar)
#include "tst_zvtolvar.moc"
