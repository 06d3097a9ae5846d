#include <QTest>

#include "serial/qextserialport.h"
#include "tests/support/linkfixture.h"
#include "tests/support/pendingtimers.h"
#include "tests/support/signalrecorder.h"

namespace
{
struct Value {
    const char *name;
    void (ZVTolvar::*set)(const QString &);
    QString (ZVTolvar::*get)() const;
    void (ZVTolvar::*changed)(QString);
    const char *signal; // its name
};

// clang-format off
constexpr Value values[] = {
    { "system ID",              &ZVTolvar::setSystemID,           &ZVTolvar::systemID,        &ZVTolvar::systemIDChanged,          "systemIDChanged" },
    { "status",                 &ZVTolvar::setStatus,             &ZVTolvar::status,          &ZVTolvar::statusChanged,            "statusChanged" },
    { "firmware version",       &ZVTolvar::setFirmwareVersion,    &ZVTolvar::firmwareVersion, &ZVTolvar::firmwareVersionChanged,   "firmwareVersionChanged" },
    { "network",                &ZVTolvar::setNetwork,            &ZVTolvar::network,         &ZVTolvar::networkChanged,           "networkChanged" },
    { "password",               &ZVTolvar::setPassword,           &ZVTolvar::password,        &ZVTolvar::passwordChanged,          "passwordChanged" },
    { "IP address",             &ZVTolvar::setIPAddress,          &ZVTolvar::ipAddress,       &ZVTolvar::ipAddressChanged,         "ipAddressChanged" },
    { "choice of a static IP",  &ZVTolvar::setUseStaticIP,        &ZVTolvar::useStaticIP,     &ZVTolvar::useStaticIPChanged,       "useStaticIPChanged" },
    { "mask",                   &ZVTolvar::setMask,               &ZVTolvar::mask,            &ZVTolvar::maskChanged,              "maskChanged" },
    { "gateway",                &ZVTolvar::setGateway,            &ZVTolvar::gateway,         &ZVTolvar::gatewayChanged,           "gatewayChanged" },
    { "DNS server",             &ZVTolvar::setDns,                &ZVTolvar::dns,             &ZVTolvar::dnsChanged,               "dnsChanged" },
    { "test result",            &ZVTolvar::setTestResult,         &ZVTolvar::testResult,      &ZVTolvar::testResultChanged,        "testResultChanged" },
    { "upgrade result",         &ZVTolvar::setUpgradeResult,      &ZVTolvar::upgradeResult,   &ZVTolvar::upgradeResultChanged,     "upgradeResultChanged" },
    { "MAC address",            &ZVTolvar::setMacAddress,         &ZVTolvar::macAddress,      &ZVTolvar::macAddressChanged,        "macAddressChanged" },
    { "antenna",                &ZVTolvar::setAntenna,            &ZVTolvar::antenna,         &ZVTolvar::antennaChanged,           "antennaChanged" },
    { "UART trace",             &ZVTolvar::setUartTrace,          &ZVTolvar::uartTrace,       &ZVTolvar::uartTraceChanged,         "uartTraceChanged" },
    { "syslog switch",          &ZVTolvar::setSysLogOn,           &ZVTolvar::sysLogOn,        &ZVTolvar::sysLogOnChanged,          "sysLogOnChanged" },
    { "syslog server",          &ZVTolvar::setSysLogServer,       &ZVTolvar::sysLogServer,    &ZVTolvar::sysLogServerChanged,      "sysLogServerChanged" },
};
// clang-format on

QString told(const Value &value, const QString &text)
{
    return QLatin1String(value.signal) + QLatin1Char(':') + text;
}
} // namespace

/// Tests the controller's record of its device: the values, and the signals that report their changes.
class TestZVTolvar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewControllerKnowsNothing();
    void aNewControllerWaitsForNothing();
    void aControllerBelongsToItsParent();
    void aControllerGoesWithoutAWordAndLeavesItsPortOpen();

    void aNewTextIsStoredAsItIsAndToldOfOnce_data() { eachValue(); }
    void aNewTextIsStoredAsItIsAndToldOfOnce();
    void theTextItAlreadyHoldsIsNoChange_data() { eachValue(); }
    void theTextItAlreadyHoldsIsNoChange();
    void anEmptyTextOnAValueThatWasNeverSetIsNoChange_data() { eachValue(); }
    void anEmptyTextOnAValueThatWasNeverSetIsNoChange();
    void anEmptiedValueIsAChange_data() { eachValue(); }
    void anEmptiedValueIsAChange();
    void aChangeIsStoredBeforeItIsToldOf_data() { eachValue(); }
    void aChangeIsStoredBeforeItIsToldOf();

    void aPropertyWritesThroughItsSetter_data();
    void aPropertyWritesThroughItsSetter();
    void isScanningIsReadAsScanning();
    void isScanningCannotBeWritten_data();
    void isScanningCannotBeWritten();
    void aTestIsSaidToBeOkBeforeAnyAndAfterAFailedOne();

private:
    static void eachValue();
};

void TestZVTolvar::eachValue()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(std::size(values)); ++i)
        QTest::addRow("the %s", values[i].name) << i;
}

void TestZVTolvar::aNewControllerKnowsNothing()
{
    ZVTolvar tolvar;
    const ZVTolvarTestPeer inside{tolvar};
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

void TestZVTolvar::aNewControllerWaitsForNothing()
{
    const PendingTimers timers;
    const MessageSpy log;
    const ZVTolvar tolvar;
    QCOMPARE(timers.underWay(), QList<int>());
    QCOMPARE(log.messages(), QStringList());
}

void TestZVTolvar::aControllerBelongsToItsParent()
{
    QObject parent;
    QCOMPARE((new ZVTolvar(&parent))->parent(), &parent);
    QCOMPARE(ZVTolvar().parent(), nullptr);
}

void TestZVTolvar::aControllerGoesWithoutAWordAndLeavesItsPortOpen()
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
    QVERIFY2(port.isOpen(), "the port object is left as it is");
    QCOMPARE(port.write("still open"), 10);
    QCOMPARE(pty.collected(), QByteArray("still open"));
    QCOMPARE(log.messages(), QStringList());
}

void TestZVTolvar::aNewTextIsStoredAsItIsAndToldOfOnce()
{
    QFETCH(int, index);
    const Value &value = values[index];
    ZVTolvar tolvar;
    SignalRecorder diary(&tolvar);
    for (const char *text : {" as it  came ", "another"}) {
        (tolvar.*value.set)(text);
        QCOMPARE((tolvar.*value.get)(), QString(text));
        QCOMPARE(diary.take(), QStringList{told(value, text)});
    }
    for (const Value &other : values)
        QVERIFY2(&other == &value || (tolvar.*other.get)().isEmpty(), other.name);
}

void TestZVTolvar::theTextItAlreadyHoldsIsNoChange()
{
    QFETCH(int, index);
    const Value &value = values[index];
    ZVTolvar tolvar;
    (tolvar.*value.set)("text");
    SignalRecorder diary(&tolvar);
    (tolvar.*value.set)("text");
    QCOMPARE(diary.take(), QStringList());
    (tolvar.*value.set)("TEXT");
    QCOMPARE(diary.take(), QStringList{told(value, "TEXT")});
}

void TestZVTolvar::anEmptyTextOnAValueThatWasNeverSetIsNoChange()
{
    QFETCH(int, index);
    const Value &value = values[index];
    ZVTolvar tolvar;
    SignalRecorder diary(&tolvar);
    (tolvar.*value.set)(QString());
    (tolvar.*value.set)(QLatin1String(""));
    QCOMPARE(diary.take(), QStringList());
}

void TestZVTolvar::anEmptiedValueIsAChange()
{
    QFETCH(int, index);
    const Value &value = values[index];
    ZVTolvar tolvar;
    (tolvar.*value.set)("text");
    SignalRecorder diary(&tolvar);
    (tolvar.*value.set)(QString());
    QCOMPARE((tolvar.*value.get)(), QString());
    QCOMPARE(diary.take(), QStringList{told(value, QString())});
    (tolvar.*value.set)(QLatin1String(""));
    QCOMPARE(diary.take(), QStringList()); // null and empty are equal
}

void TestZVTolvar::aChangeIsStoredBeforeItIsToldOf()
{
    QFETCH(int, index);
    const Value &value = values[index];
    ZVTolvar tolvar;
    QStringList seen;
    connect(&tolvar, value.changed, this, [&] { seen += (tolvar.*value.get)(); });
    (tolvar.*value.set)("text");
    QCOMPARE(seen, QStringList{"text"});
}

void TestZVTolvar::aPropertyWritesThroughItsSetter_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("systemID") << 0;
    QTest::newRow("status") << 1;
    QTest::newRow("firmwareVersion") << 2;
    QTest::newRow("network") << 3;
    QTest::newRow("password") << 4;
}

void TestZVTolvar::aPropertyWritesThroughItsSetter()
{
    QFETCH(int, index);
    const Value &value = values[index];
    ZVTolvar tolvar;
    SignalRecorder diary(&tolvar);
    QVERIFY(tolvar.setProperty(QTest::currentDataTag(), QStringLiteral("text")));
    QCOMPARE((tolvar.*value.get)(), QStringLiteral("text"));
    QCOMPARE(tolvar.property(QTest::currentDataTag()), QVariant(QStringLiteral("text")));
    QCOMPARE(diary.take(), QStringList{told(value, "text")});
}

void TestZVTolvar::isScanningIsReadAsScanning()
{
    ZVTolvar tolvar;
    const ZVTolvarTestPeer inside{tolvar};
    for (const bool scanning : {false, true, false}) {
        inside.scanning() = scanning;
        inside.testing() = !scanning;
        QCOMPARE(tolvar.scanning(), scanning);
        QCOMPARE(tolvar.property("isScanning"), QVariant(scanning));
    }
}

void TestZVTolvar::isScanningCannotBeWritten_data()
{
    QTest::addColumn<bool>("scanning");
    QTest::newRow("while nothing is scanned") << false;
    QTest::newRow("during a scan") << true;
}

void TestZVTolvar::isScanningCannotBeWritten()
{
    QFETCH(bool, scanning);
    ZVTolvar tolvar;
    ZVTolvarTestPeer{tolvar}.scanning() = scanning;
    SignalRecorder diary(&tolvar);
    QVERIFY(!tolvar.setProperty("isScanning", !scanning));
    QCOMPARE(tolvar.scanning(), scanning);
    QCOMPARE(diary.take(), QStringList());
}

void TestZVTolvar::aTestIsSaidToBeOkBeforeAnyAndAfterAFailedOne()
{
    ZVTolvar tolvar;
    QVERIFY(tolvar.networkTestOK());
    tolvar.startNetworkTest();
    QVERIFY(tolvar.networkTestOK());
    tolvar.onResponseReceived("<networktest_results><status result=\"1\"/></networktest_results>");
    QVERIFY(tolvar.networkTestOK());
}

QTEST_GUILESS_MAIN(TestZVTolvar)
#include "tst_zvtolvar.moc"
