#include <QMetaMethod>
#include <QSignalSpy>
#include <QtTest>

#include "tests/support/zvtolvarinspector.h"

namespace
{
struct Member {
    const char *signature;
    const char *parameter; // name of the parameter, "" for none
};

// clang-format off
constexpr Member signalsInOrder[] = {
    { "systemIDChanged(QString)",            "" },
    { "statusChanged(QString)",              "" },
    { "firmwareVersionChanged(QString)",     "" },
    { "networkChanged(QString)",             "" },
    { "passwordChanged(QString)",            "" },
    { "ipAddressChanged(QString)",           "" },
    { "useStaticIPChanged(QString)",         "" },
    { "maskChanged(QString)",                "" },
    { "gatewayChanged(QString)",             "" },
    { "dnsChanged(QString)",                 "" },
    { "testResultChanged(QString)",          "" },
    { "upgradeResultChanged(QString)",       "" },
    { "macAddressChanged(QString)",          "" },
    { "antennaChanged(QString)",             "" },
    { "uartTraceChanged(QString)",           "" },
    { "sysLogOnChanged(QString)",            "" },
    { "sysLogServerChanged(QString)",        "" },
    { "readyForCommand()",                   "" },
    { "responseReceived(QString)",           "response" },
    { "scannedNetworkListChanged(QHash<QString,ZVScanResult>*)", "" },
    { "scanStarted()",                       "" },
    { "scanFinished()",                      "" },
    { "networkTestSsidNotFound()",           "" },
    { "networkTestPassphraseInvalid()",      "" },
    { "networkTestFound()",                  "" },
    { "networkTestSystemError()",            "" },
    { "networkTestFinished()",               "" },
    { "networkTestStarted()",                "" },
    { "candidateDeviceFound()",              "" },
    { "startingToWriteLog()",                "" },
    { "finishedWriteLog()",                  "" },
};

constexpr Member slotsInOrder[] = {
    { "onReadyRead()",                       "" },
    { "onReadyForCommand()",                 "" },
    { "onResponseReceived(QString)",         "aResponse" },
    { "setSystemID(QString)",                "" },
    { "setStatus(QString)",                  "" },
    { "setFirmwareVersion(QString)",         "" },
    { "setNetwork(QString)",                 "" },
    { "setPassword(QString)",                "" },
    { "setIPAddress(QString)",               "" },
    { "setUseStaticIP(QString)",             "" },
    { "setMask(QString)",                    "" },
    { "setGateway(QString)",                 "" },
    { "setDns(QString)",                     "" },
    { "setTestResult(QString)",              "" },
    { "setUpgradeResult(QString)",           "" },
    { "setMacAddress(QString)",              "" },
    { "setAntenna(QString)",                 "" },
    { "setUartTrace(QString)",               "" },
    { "setSysLogOn(QString)",                "" },
    { "setSysLogServer(QString)",            "" },
    { "exitSetupMode()",                     "" },
    { "addScannedNetwork(ZVScanResult&)",    "network" },
    { "clearScannedNetworks()",              "" },
    { "startScan()",                         "" },
    { "startNetworkTest()",                  "" },
    { "saveNetworkConfig()",                 "" },
    { "getLogFileTo(QFile*)",                "pFile" },
    { "commitAntennaSetting()",              "" },
    { "commitStaticIPSetting()",             "" },
    { "onDeviceDiscovered(QextPortInfo)",    "info" },
    { "onDeviceRemoved(QextPortInfo)",       "info" },
    { "onTimerKickOffTlovarConsole()",       "" },
    { "onTimerOpenConnection()",             "" },
};

struct Value {
    const char *name;
    void (ZVTolvar::*set)(const QString &);
    QString (ZVTolvar::*get)() const;
    void (ZVTolvar::*changed)(QString);
};

constexpr Value values[] = {
    { "system ID",        &ZVTolvar::setSystemID,        &ZVTolvar::systemID,        &ZVTolvar::systemIDChanged },
    { "status",           &ZVTolvar::setStatus,          &ZVTolvar::status,          &ZVTolvar::statusChanged },
    { "firmware version", &ZVTolvar::setFirmwareVersion, &ZVTolvar::firmwareVersion, &ZVTolvar::firmwareVersionChanged },
    { "network",          &ZVTolvar::setNetwork,         &ZVTolvar::network,         &ZVTolvar::networkChanged },
    { "password",         &ZVTolvar::setPassword,        &ZVTolvar::password,        &ZVTolvar::passwordChanged },
    { "IP address",       &ZVTolvar::setIPAddress,       &ZVTolvar::ipAddress,       &ZVTolvar::ipAddressChanged },
    { "use static IP",    &ZVTolvar::setUseStaticIP,     &ZVTolvar::useStaticIP,     &ZVTolvar::useStaticIPChanged },
    { "mask",             &ZVTolvar::setMask,            &ZVTolvar::mask,            &ZVTolvar::maskChanged },
    { "gateway",          &ZVTolvar::setGateway,         &ZVTolvar::gateway,         &ZVTolvar::gatewayChanged },
    { "DNS",              &ZVTolvar::setDns,             &ZVTolvar::dns,             &ZVTolvar::dnsChanged },
    { "test result",      &ZVTolvar::setTestResult,      &ZVTolvar::testResult,      &ZVTolvar::testResultChanged },
    { "upgrade result",   &ZVTolvar::setUpgradeResult,   &ZVTolvar::upgradeResult,   &ZVTolvar::upgradeResultChanged },
    { "MAC address",      &ZVTolvar::setMacAddress,      &ZVTolvar::macAddress,      &ZVTolvar::macAddressChanged },
    { "antenna",          &ZVTolvar::setAntenna,         &ZVTolvar::antenna,         &ZVTolvar::antennaChanged },
    { "UART trace",       &ZVTolvar::setUartTrace,       &ZVTolvar::uartTrace,       &ZVTolvar::uartTraceChanged },
    { "syslog on",        &ZVTolvar::setSysLogOn,        &ZVTolvar::sysLogOn,        &ZVTolvar::sysLogOnChanged },
    { "syslog server",    &ZVTolvar::setSysLogServer,    &ZVTolvar::sysLogServer,    &ZVTolvar::sysLogServerChanged },
};
// clang-format on

} // namespace

/// The record that a controller keeps of its device: values, change signals, and the numbering of its
/// members.
class TestZVTolvar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void membersStandAtTheirIndices();
    void propertiesHaveAccessorsAndNoNotifiers();
    void aNewControllerKnowsNothing();
    void eachValue_data();
    void eachValue();
    void aPropertyWritesThroughItsSetter_data();
    void aPropertyWritesThroughItsSetter();
    void isScanningCanBeReadOnly();
    void aTestIsAlwaysSaidToBeOK();
    void aSlotIsReachedByItsIndex();
};

void TestZVTolvar::membersStandAtTheirIndices()
{
    const QMetaObject &meta = ZVTolvar::staticMetaObject;
    int index = meta.methodOffset();
    const auto compare = [&](const auto &members, QMetaMethod::MethodType type) {
        for (const Member &member : members) {
            const QMetaMethod method = meta.method(index++);
            QCOMPARE(method.methodSignature(), QByteArray(member.signature));
            QCOMPARE(method.methodType(), type);
            QCOMPARE(method.access(), QMetaMethod::Public);
            if (*member.parameter)
                QCOMPARE(method.parameterNames().constFirst(), QByteArray(member.parameter));
        }
    };
    compare(signalsInOrder, QMetaMethod::Signal);
    compare(slotsInOrder, QMetaMethod::Slot);
    QCOMPARE(index, meta.methodCount());
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 64);
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
}

void TestZVTolvar::propertiesHaveAccessorsAndNoNotifiers()
{
    const QMetaObject &meta = ZVTolvar::staticMetaObject;
    const struct {
        const char *name;
        const char *type;
        bool writable;
    } expected[] = {{"systemID", "QString", true},        {"status", "QString", true},
                    {"firmwareVersion", "QString", true}, {"network", "QString", true},
                    {"password", "QString", true},        {"isScanning", "bool", false}};
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), int(std::size(expected)));
    int index = meta.propertyOffset();
    for (const auto &property : expected) {
        const QMetaProperty found = meta.property(index++);
        QCOMPARE(found.name(), property.name);
        QCOMPARE(found.typeName(), property.type);
        QVERIFY2(found.isReadable(), property.name);
        QCOMPARE(found.isWritable(), property.writable);
        QVERIFY2(!found.hasNotifySignal(), property.name);
    }
}

void TestZVTolvar::aNewControllerKnowsNothing()
{
    ZVTolvar tolvar;
    const ZVTolvarInspector inside{tolvar};
    for (const Value &value : values)
        QVERIFY2((tolvar.*value.get)().isEmpty(), value.name);
    QVERIFY(tolvar.scannedNetworks()->isEmpty());
    QVERIFY(inside.queue().isEmpty());
    QVERIFY(inside.currentCommand().isEmpty());
    QVERIFY(inside.response().isEmpty());
    QVERIFY(inside.portName().isEmpty());
    QCOMPARE(inside.port(), nullptr);
    QCOMPARE(inside.logFile(), nullptr);
    QCOMPARE(inside.state(), NOT_CONNECTED);
    QVERIFY(!tolvar.scanning());
    QVERIFY(!inside.testing());
    QVERIFY(!inside.connected());
    QVERIFY(!inside.eotHandshake());
}

void TestZVTolvar::eachValue_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(std::size(values)); ++i)
        QTest::addRow("the %s", values[i].name) << i;
}

void TestZVTolvar::eachValue()
{
    QFETCH(int, index);
    const Value &value = values[index];
    ZVTolvar tolvar;
    QString seenDuringTheSignal;
    connect(&tolvar, value.changed, &tolvar, [&] { seenDuringTheSignal = (tolvar.*value.get)(); });
    QSignalSpy changed(&tolvar, value.changed);
    QVERIFY(changed.isValid());

    (tolvar.*value.set)(QString());
    (tolvar.*value.set)(QLatin1String(""));
    QVERIFY2(changed.isEmpty(), "an empty text on a value that was never set is no change");

    (tolvar.*value.set)(QStringLiteral(" as it came "));
    QCOMPARE((tolvar.*value.get)(), QStringLiteral(" as it came "));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.takeFirst(), QVariantList{QStringLiteral(" as it came ")});
    QCOMPARE(seenDuringTheSignal, QStringLiteral(" as it came "));

    (tolvar.*value.set)(QStringLiteral(" as it came "));
    QVERIFY2(changed.isEmpty(), "the text it already holds is no change");

    (tolvar.*value.set)(QString());
    QCOMPARE(changed.takeFirst(), QVariantList{QString()});
    for (const Value &other : values)
        QVERIFY2((tolvar.*other.get)().isEmpty(), other.name);
}

void TestZVTolvar::aPropertyWritesThroughItsSetter_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("index");
    QTest::newRow("systemID") << QByteArray("systemID") << 0;
    QTest::newRow("status") << QByteArray("status") << 1;
    QTest::newRow("firmwareVersion") << QByteArray("firmwareVersion") << 2;
    QTest::newRow("network") << QByteArray("network") << 3;
    QTest::newRow("password") << QByteArray("password") << 4;
}

void TestZVTolvar::aPropertyWritesThroughItsSetter()
{
    QFETCH(QByteArray, name);
    QFETCH(int, index);
    ZVTolvar tolvar;
    QSignalSpy changed(&tolvar, values[index].changed);
    QVERIFY(tolvar.setProperty(name.constData(), QStringLiteral("text")));
    QCOMPARE((tolvar.*values[index].get)(), QStringLiteral("text"));
    QCOMPARE(tolvar.property(name.constData()), QVariant(QStringLiteral("text")));
    QCOMPARE(changed.count(), 1);
}

void TestZVTolvar::isScanningCanBeReadOnly()
{
    ZVTolvar tolvar;
    QCOMPARE(tolvar.property("isScanning"), QVariant(false));
    QVERIFY(!tolvar.setProperty("isScanning", true));
    QVERIFY(!tolvar.scanning());
    tolvar.startScan();
    QCOMPARE(tolvar.property("isScanning"), QVariant(true));
    QVERIFY(!tolvar.setProperty("isScanning", false));
    QVERIFY(tolvar.scanning());
}

void TestZVTolvar::aTestIsAlwaysSaidToBeOK()
{
    ZVTolvar tolvar;
    QVERIFY(tolvar.networkTestOK());
    tolvar.onResponseReceived(
        QStringLiteral("<networktest_results><status result=\"1\"/></networktest_results>"));
    QVERIFY(tolvar.networkTestOK());
}

void TestZVTolvar::aSlotIsReachedByItsIndex()
{
    ZVTolvar tolvar;
    const QMetaObject &meta = ZVTolvar::staticMetaObject;
    QSignalSpy started(&tolvar, &ZVTolvar::startingToWriteLog);
    QVERIFY(meta.method(meta.methodOffset() + 29).invoke(&tolvar));
    QCOMPARE(started.count(), 1);
    QVERIFY(meta.method(meta.methodOffset() + 54).invoke(&tolvar));
    QCOMPARE(ZVTolvarInspector{tolvar}.queue(), QStringList({"setuarttrace y\r\n", "save\r\n", "scan\r\n"}));
    QVERIFY(
        meta.method(meta.methodOffset() + 39).invoke(&tolvar, Q_ARG(QString, QStringLiteral("10.0.0.7"))));
    QCOMPARE(tolvar.ipAddress(), QStringLiteral("10.0.0.7"));
}

QTEST_GUILESS_MAIN(TestZVTolvar)
#include "tst_zvtolvar.moc"
