#include <QFile>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QTest>

#include "tests/support/linkfixture.h"
#include "tests/support/portinfos.h"
#include "tests/support/signalrecorder.h"

namespace
{
/// A member, and the effects of a call by its index on a controller that is ready: the signals, the first
/// message, the queued commands, and the bytes written to the port.
struct Member {
    const char *signature;
    const char *parameter; // its name as declared, "" for none
    const char *effect;
};

// clang-format off
constexpr Member members[] = {
    // signals
    { "systemIDChanged(QString)",          "",           "systemIDChanged:text" },
    { "statusChanged(QString)",            "",           "statusChanged:text" },
    { "firmwareVersionChanged(QString)",   "",           "firmwareVersionChanged:text" },
    { "networkChanged(QString)",           "",           "networkChanged:text" },
    { "passwordChanged(QString)",          "",           "passwordChanged:text" },
    { "ipAddressChanged(QString)",         "",           "ipAddressChanged:text" },
    { "useStaticIPChanged(QString)",       "",           "useStaticIPChanged:text" },
    { "maskChanged(QString)",              "",           "maskChanged:text" },
    { "gatewayChanged(QString)",           "",           "gatewayChanged:text" },
    { "dnsChanged(QString)",               "",           "dnsChanged:text" },
    { "testResultChanged(QString)",        "",           "testResultChanged:text" },
    { "upgradeResultChanged(QString)",     "",           "upgradeResultChanged:text" },
    { "macAddressChanged(QString)",        "",           "macAddressChanged:text" },
    { "antennaChanged(QString)",           "",           "antennaChanged:text" },
    { "uartTraceChanged(QString)",         "",           "uartTraceChanged:text" },
    { "sysLogOnChanged(QString)",          "",           "sysLogOnChanged:text" },
    { "sysLogServerChanged(QString)",      "",           "sysLogServerChanged:text" },
    { "readyForCommand()",                 "",           "readyForCommand|D:--> \"first\" " },
    { "responseReceived(QString)",         "response",   "responseReceived:text" },
    { "scannedNetworkListChanged(QHash<QString,ZVScanResult>*)", "",           "scannedNetworkListChanged:0" },
    { "scanStarted()",                     "",           "scanStarted" },
    { "scanFinished()",                    "",           "scanFinished" },
    { "networkTestSsidNotFound()",         "",           "networkTestSsidNotFound" },
    { "networkTestPassphraseInvalid()",    "",           "networkTestPassphraseInvalid" },
    { "networkTestFound()",                "",           "networkTestFound" },
    { "networkTestSystemError()",          "",           "networkTestSystemError" },
    { "networkTestFinished()",             "",           "networkTestFinished" },
    { "networkTestStarted()",              "",           "networkTestStarted" },
    { "candidateDeviceFound()",            "",           "candidateDeviceFound" },
    { "startingToWriteLog()",              "",           "startingToWriteLog" },
    { "finishedWriteLog()",                "",           "finishedWriteLog" },
    // slots
    { "onReadyRead()",                     "",           "W:received " },
    { "onReadyForCommand()",               "",           "D:--> \"first\" " },
    { "onResponseReceived(QString)",       "aResponse",  "statusChanged:replied" },
    { "setSystemID(QString)",              "",           "systemIDChanged:text" },
    { "setStatus(QString)",                "",           "statusChanged:text" },
    { "setFirmwareVersion(QString)",       "",           "firmwareVersionChanged:text" },
    { "setNetwork(QString)",               "",           "networkChanged:text" },
    { "setPassword(QString)",              "",           "passwordChanged:text" },
    { "setIPAddress(QString)",             "",           "ipAddressChanged:text" },
    { "setUseStaticIP(QString)",           "",           "useStaticIPChanged:text" },
    { "setMask(QString)",                  "",           "maskChanged:text" },
    { "setGateway(QString)",               "",           "gatewayChanged:text" },
    { "setDns(QString)",                   "",           "dnsChanged:text" },
    { "setTestResult(QString)",            "",           "testResultChanged:text" },
    { "setUpgradeResult(QString)",         "",           "upgradeResultChanged:text" },
    { "setMacAddress(QString)",            "",           "macAddressChanged:text" },
    { "setAntenna(QString)",               "",           "antennaChanged:text" },
    { "setUartTrace(QString)",             "",           "uartTraceChanged:text" },
    { "setSysLogOn(QString)",              "",           "sysLogOnChanged:text" },
    { "setSysLogServer(QString)",          "",           "sysLogServerChanged:text" },
    { "exitSetupMode()",                   "",           "exit\r\n" },
    { "addScannedNetwork(ZVScanResult&)",  "network",    "scannedNetworkListChanged:1" },
    { "clearScannedNetworks()",            "",           "scannedNetworkListChanged:0" },
    { "startScan()",                       "",           "scanStarted|setuarttrace y\r\n|save\r\n|scan\r\n" },
    { "startNetworkTest()",                "",           "networkTestStarted|setssid \r\n|setpass \r\n|test\r\n" },
    { "saveNetworkConfig()",               "",           "ant_select \r\n|setssid \r\n|setpass \r\n|setstaticip N\r\n|save\r\n" },
    { "getLogFileTo(QFile*)",              "pFile",      "startingToWriteLog|get_log_file\r\n" },
    { "commitAntennaSetting()",            "",           "ant_select \r\n" },
    { "commitStaticIPSetting()",           "",           "setstaticip N\r\n" },
    { "onDeviceDiscovered(QextPortInfo)",  "info",       "D:****Device DISCOVERED: " },
    { "onDeviceRemoved(QextPortInfo)",     "info",       "D:****Device REMOVED: " },
    { "onTimerKickOffTlovarConsole()",     "",           "get\r\n|woken" },
    { "onTimerOpenConnection()",           "",           "opened" },
};
// clang-format on
constexpr int signalCount = 31;

} // namespace

/// Tests the controller's meta-object: the index and the name of each member.
class TestMembers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachMemberStandsAtItsIndex_data() { eachMember(); }
    void eachMemberStandsAtItsIndex();
    void noOtherMemberIsThere();
    void eachMemberIsReachedByItsIndex_data() { eachMember(); }
    void eachMemberIsReachedByItsIndex();
    void propertiesHaveTheirAccessorsAndNoNotifiers_data();
    void propertiesHaveTheirAccessorsAndNoNotifiers();

private:
    static void eachMember();
    static void call(ZVTolvar &tolvar, int index);
};

void TestMembers::eachMember()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(std::size(members)); ++i)
        QTest::addRow("%d is %s", i, members[i].signature) << i;
}

void TestMembers::eachMemberStandsAtItsIndex()
{
    QFETCH(int, index);
    const Member &member = members[index];
    const QMetaObject &meta = ZVTolvar::staticMetaObject;
    const QMetaMethod method = meta.method(meta.methodOffset() + index);
    QCOMPARE(method.methodSignature(), QByteArray(member.signature));
    QCOMPARE(method.methodType(), index < signalCount ? QMetaMethod::Signal : QMetaMethod::Slot);
    QCOMPARE(method.access(), QMetaMethod::Public);
    QCOMPARE(method.typeName(), "void");
    QCOMPARE(method.parameterNames().value(0), QByteArray(member.parameter));
}

void TestMembers::noOtherMemberIsThere()
{
    const QMetaObject &meta = ZVTolvar::staticMetaObject;
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
    QCOMPARE(meta.methodCount() - meta.methodOffset(), int(std::size(members)));
    QCOMPARE(int(std::size(members)), 64);
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 6);
    QCOMPARE(meta.enumeratorCount(), meta.enumeratorOffset());
    QCOMPARE(meta.classInfoCount(), meta.classInfoOffset());
    QCOMPARE(meta.constructorCount(), 0);
}

void TestMembers::call(ZVTolvar &tolvar, int index)
{
    const QMetaObject &meta = ZVTolvar::staticMetaObject;
    QString text = QStringLiteral("text");
    QString reply = QStringLiteral("<puckdata><mode>replied</mode></puckdata>");
    ZVScanResult network;
    QextPortInfo info = PortInfos::bridge("ttyX");
    QFile *file = nullptr;
    QHash<QString, ZVScanResult> *table = tolvar.scannedNetworks();
    const QHash<QByteArray, void *> arguments = {{"QString", &text},
                                                 {"ZVScanResult&", &network},
                                                 {"QFile*", &file},
                                                 {"QextPortInfo", &info},
                                                 {"QHash<QString,ZVScanResult>*", &table}};
    const QMetaMethod method = meta.method(meta.methodOffset() + index);
    void *argument = arguments.value(method.parameterTypes().value(0));
    if (method.name() == "onResponseReceived")
        argument = &reply;
    void *resultAndArgument[] = {nullptr, argument};
    QMetaObject::metacall(&tolvar, QMetaObject::InvokeMetaMethod, method.methodIndex(), resultAndArgument);
}

void TestMembers::eachMemberIsReachedByItsIndex()
{
    QFETCH(int, index);
    // The port is open and has received data; a command is queued, and the console is due to be woken.
    LinkFixture fixture;
    fixture.connectPort();
    QextSerialPort *port = fixture.inside.port();
    disconnect(port, nullptr, &fixture.tolvar, nullptr);
    fixture.pty.send("received");
    QTRY_VERIFY(port->bytesAvailable() > 0);
    fixture.inside.portName() = fixture.pty.name();
    fixture.inside.state() = CANDIDATE_DEVICE_FOUND;
    fixture.inside.queue() = QStringList{"first"};
    SignalRecorder diary(&fixture.tolvar);

    call(fixture.tolvar, index);

    QStringList effect = diary.take();
    const QStringList messages = fixture.log->messages();
    for (const QString &message : messages) {
        if (!message.startsWith("D:_commState")) {
            effect += message;
            break;
        }
    }
    QStringList queue = fixture.inside.queue();
    queue.removeOne("first");
    effect += queue;
    if (fixture.pty.received().startsWith("C\r\n"))
        effect += "woken";
    if (fixture.inside.port() != port)
        effect += "opened";
    QCOMPARE(effect.join('|'), QString(members[index].effect));
}

void TestMembers::propertiesHaveTheirAccessorsAndNoNotifiers_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<bool>("writable");
    QTest::newRow("systemID") << 0 << QByteArray("QString") << true;
    QTest::newRow("status") << 1 << QByteArray("QString") << true;
    QTest::newRow("firmwareVersion") << 2 << QByteArray("QString") << true;
    QTest::newRow("network") << 3 << QByteArray("QString") << true;
    QTest::newRow("password") << 4 << QByteArray("QString") << true;
    QTest::newRow("isScanning") << 5 << QByteArray("bool") << false;
}

void TestMembers::propertiesHaveTheirAccessorsAndNoNotifiers()
{
    QFETCH(int, index);
    QFETCH(QByteArray, type);
    QFETCH(bool, writable);
    const QMetaObject &meta = ZVTolvar::staticMetaObject;
    const QMetaProperty property = meta.property(meta.propertyOffset() + index);
    QCOMPARE(property.name(), QTest::currentDataTag());
    QCOMPARE(property.typeName(), type.constData());
    QVERIFY(property.isReadable());
    QCOMPARE(property.isWritable(), writable);
    QVERIFY2(!property.hasNotifySignal(), "the change signals are ordinary signals");
    QVERIFY(!property.isResettable());
    QVERIFY(!property.isConstant());
    QVERIFY(!property.isFinal());
    QVERIFY(!property.isRequired());
    QVERIFY(!property.isBindable());
    QVERIFY(!property.isUser());
}

QTEST_GUILESS_MAIN(TestMembers)
#include "tst_zvtolvar_members.moc"
