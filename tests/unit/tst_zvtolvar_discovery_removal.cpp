#include <QPointer>
#include <QTest>

#include "tests/support/linkfixture.h"
#include "tests/support/messagespy.h"
#include "tests/support/pendingtimers.h"
#include "tests/support/portinfos.h"
#include "tests/support/scopedconnection.h"
#include "tests/support/signalrecorder.h"

/// Tests the removal of the device's port, and of another port.
class TestRemoval : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { _fixture.reset(); }

    void aRemovalResetsTheLinkAndTheDevicesIdentity();
    void aRemovalKeepsAllOtherValues();
    void aRemovalLeavesThePortObjectUnchanged();
    void aDeviceWithADeadPortIsGoneBeforeItsRemoval();
    void theRemovalIsLoggedBeforeAnythingIsReset();
    void theLinkIsResetBeforeTheFirstSignalAndTheModesAfterTheLast();
    void theRemovalOfAnotherPortChangesNothing();

private:
    ZVTolvarTestPeer inside() const { return _fixture->inside; }
    void remove(const QString &portName) { _tolvar->onDeviceRemoved(PortInfos::bridge(portName)); }

    std::unique_ptr<LinkFixture> _fixture;
    ZVTolvar *_tolvar = nullptr;
};

// Sets up a device at ttyX in the middle of its work.
void TestRemoval::init()
{
    _fixture = std::make_unique<LinkFixture>();
    _tolvar = &_fixture->tolvar;
    _fixture->connectPort();
    _tolvar->onResponseReceived(
        "<puckdata><name>T</name><mode>M</mode><firmware_version>A060</firmware_version>"
        "<network_name>N</network_name><ip_address>1.2.3.4</ip_address><useStaticIP>Y</useStaticIP>"
        "<mask>5</mask><gateway>6</gateway><dns>7</dns><mac_address>8</mac_address>"
        "<test_result>9</test_result><upgrade_result>10</upgrade_result><ant>1</ant><trc>11</trc>"
        "<sl_on>12</sl_on><sl_ip>13</sl_ip></puckdata>");
    _tolvar->onResponseReceived("<scan_results><scan SSID=\"A\"/></scan_results>");
    _tolvar->setPassword("P");
    const ZVTolvarTestPeer in = inside();
    in.portName() = "ttyX";
    in.state() = IN_PROMPT;
    in.queue() = QStringList{"get\r\n"};
    in.response() = "half a rep";
    in.currentCommand() = "scan\r\n";
    in.scanning() = in.testing() = in.connected() = true;
}

void TestRemoval::aRemovalResetsTheLinkAndTheDevicesIdentity()
{
    const PendingTimers timers;
    SignalRecorder recorder(_tolvar);
    remove("ttyX");
    QCOMPARE(inside().port(), nullptr);
    QCOMPARE(inside().queue(), QStringList());
    QCOMPARE(inside().portName(), QString());
    QCOMPARE(inside().state(), NOT_CONNECTED);
    QVERIFY(!inside().connected() && !inside().scanning() && !inside().testing());
    QCOMPARE(timers.intervals(), QList<int>());
    QCOMPARE(recorder.take(),
             QStringList({"systemIDChanged:", "statusChanged:", "firmwareVersionChanged:", "networkChanged:",
                          "passwordChanged:", "scannedNetworkListChanged:0"}));
}

void TestRemoval::aRemovalKeepsAllOtherValues()
{
    remove("ttyX");
    QCOMPARE(inside().response(), QStringLiteral("half a rep"));
    QCOMPARE(inside().currentCommand(), QStringLiteral("scan\r\n"));
    QCOMPARE(
        QStringList({_tolvar->ipAddress(), _tolvar->useStaticIP(), _tolvar->mask(), _tolvar->gateway(),
                     _tolvar->dns(), _tolvar->macAddress(), _tolvar->testResult(), _tolvar->upgradeResult(),
                     _tolvar->antenna(), _tolvar->uartTrace(), _tolvar->sysLogOn(), _tolvar->sysLogServer()}),
        QStringList({"1.2.3.4", "Y", "5", "6", "7", "8", "9", "10", "1", "11", "12", "13"}));
}

void TestRemoval::aRemovalLeavesThePortObjectUnchanged()
{
    const QPointer<QextSerialPort> port = inside().port();
    remove("ttyX");
    QVERIFY(port);
    QVERIFY(port->isOpen());
    // The port still receives bytes, but the controller no longer handles them.
    _fixture->log->take();
    _fixture->pty.send(">");
    QTRY_VERIFY(port->bytesAvailable() > 0);
    QCOMPARE(_fixture->log->messages(), QStringList());
    QCOMPARE(inside().state(), NOT_CONNECTED);
}

void TestRemoval::aDeviceWithADeadPortIsGoneBeforeItsRemoval()
{
    QVERIFY(!_tolvar->isGone());
    _fixture->pty.hangUp();
    QTRY_VERIFY(_tolvar->isGone());
    QCOMPARE(_tolvar->systemID(), QStringLiteral("T"));
    remove("ttyX");
    QVERIFY(_tolvar->isGone());
}

void TestRemoval::theRemovalIsLoggedBeforeAnythingIsReset()
{
    bool isReset = false;
    const MessageSpy spy([&](const QString &) {
        isReset = isReset || !inside().port() || inside().queue().isEmpty() ||
                  inside().portName().isEmpty() || inside().state() != IN_PROMPT;
    });
    SignalRecorder recorder(_tolvar);
    remove("ttyX");
    QCOMPARE(_fixture->log->messages(), QStringList{"D:****Device REMOVED: "} +
                                            PortInfos::description("ttyX") + QStringList{"D:\"ttyX\" "});
    QVERIFY(!isReset);
}

void TestRemoval::theLinkIsResetBeforeTheFirstSignalAndTheModesAfterTheLast()
{
    int reported = 0;
    const ScopedConnection first(_tolvar, &ZVTolvar::systemIDChanged, [&] {
        ++reported;
        QCOMPARE(inside().port(), nullptr);
        QCOMPARE(inside().queue(), QStringList());
        QCOMPARE(inside().portName(), QString());
        QCOMPARE(inside().state(), NOT_CONNECTED);
        QCOMPARE(_tolvar->status(), QStringLiteral("M")); // the next one in turn
    });
    const ScopedConnection last(_tolvar, &ZVTolvar::scannedNetworkListChanged, [&] {
        ++reported;
        QVERIFY(inside().connected() && inside().scanning() && inside().testing());
    });
    remove("ttyX");
    QCOMPARE(reported, 2);
}

void TestRemoval::theRemovalOfAnotherPortChangesNothing()
{
    SignalRecorder recorder(_tolvar);
    QextSerialPort *port = inside().port();
    remove("ttyY");
    QCOMPARE(_fixture->log->messages(), QStringList{"D:****Device REMOVED: "} +
                                            PortInfos::description("ttyY") + QStringList{"D:\"ttyX\" "});
    QCOMPARE(recorder.take(), QStringList());
    QCOMPARE(inside().portName(), QStringLiteral("ttyX"));
    QCOMPARE(inside().port(), port);
    QCOMPARE(inside().state(), IN_PROMPT);
    QCOMPARE(inside().queue(), QStringList{"get\r\n"});
    QVERIFY(inside().connected() && inside().scanning() && inside().testing());
    QCOMPARE(_tolvar->systemID(), QStringLiteral("T"));
}

QTEST_GUILESS_MAIN(TestRemoval)
#include "tst_zvtolvar_discovery_removal.moc"
