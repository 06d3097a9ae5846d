#include <QCoreApplication>
#include <QTest>

#include "serial/qextserialport.h"
#include "simulator/fakeusbbus.h"
#include "simulator/pluggedport.h"
#include "tests/support/messagespy.h"
#include "tests/support/pendingtimers.h"
#include "tests/support/portinfos.h"
#include "tests/support/scopedconnection.h"
#include "tests/support/signalrecorder.h"
#include "tests/support/zvtolvartestpeer.h"

namespace
{
/// The log lines for a port of the bed, with its ids as they are displayed.
QStringList described(const QextPortInfo &info, const QString &vendor, const QString &product)
{
    return {"D:port name: \"" + info.portName + "\" ",
            "D:friendly name: \"" + info.friendName + "\" ",
            "D:physical name: \"/dev/" + info.portName + "\" ",
            "D:enumerator name: \"USB\" ",
            "D:vendor ID: \"" + vendor + "\" ",
            "D:product ID: \"" + product + "\" ",
            "D:=================================== "};
}
} // namespace

/// Tests how the device's port is found, and followed as it disappears and comes back.
class TestDiscovery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        _bed = std::make_unique<FakeUsbBus>();
    } // one bed for all tests: it must outlive every open port
    void cleanupTestCase();
    void init();
    void cleanup();

    void onlyTheTwoBridgesAreADevice_data();
    void onlyTheTwoBridgesAreADevice();
    void theNameOfAPortPlaysNoPart();
    void aRecognisedDeviceIsToldOfBeforeItsOpeningIsDue();
    void anArrivalPastNotConnectedIsLoggedAndIgnored_data();
    void anArrivalPastNotConnectedIsLoggedAndIgnored();

    void withoutPortsTheListIsItsHeadingAlone();
    void ofTwoRecognisedPortsOnlyTheFirstIsUsedAndLogged();
    void foreignPortsAreListedAsNotFound();
    void theListIsAskedForEachTime();

    void arrivalsAndRemovalsAreHeardOf();
    void aPortThatIsThereAlreadyIsNotAnArrival();
    void aRepluggedDeviceIsOpenedAnew();
    void bothControllersOpenADevicePluggedInLater();

private:
    ZVTolvarTestPeer inside() const { return {*_tolvar}; }

    std::unique_ptr<FakeUsbBus> _bed;
    std::unique_ptr<ZVTolvar> _tolvar;
    std::unique_ptr<MessageSpy> _log;
};

void TestDiscovery::init()
{
    _tolvar = std::make_unique<ZVTolvar>();
    _log = std::make_unique<MessageSpy>();
}

void TestDiscovery::cleanup()
{
    _log.reset();
    _tolvar.reset();
}

void TestDiscovery::cleanupTestCase()
{
    // The last test's ports hang up in the next iteration of the event loop.
    QCoreApplication::processEvents();
    _bed.reset();
}

void TestDiscovery::onlyTheTwoBridgesAreADevice_data()
{
    QTest::addColumn<int>("vendor");
    QTest::addColumn<int>("product");
    QTest::addColumn<QString>("shownVendor");
    QTest::addColumn<QString>("shownProduct");
    QTest::addColumn<bool>("device");
    QTest::newRow("0403:6001 is") << 0x0403 << 0x6001 << "403"
                                  << "6001" << true;
    QTest::newRow("067b:2303 is") << 0x067B << 0x2303 << "67b"
                                  << "2303" << true;
    QTest::newRow("0403:6015 is none") << 0x0403 << 0x6015 << "403"
                                       << "6015" << false;
    QTest::newRow("0403:6000 is none") << 0x0403 << 0x6000 << "403"
                                       << "6000" << false;
    QTest::newRow("0403:6002 is none") << 0x0403 << 0x6002 << "403"
                                       << "6002" << false;
    QTest::newRow("0402:6001 is none") << 0x0402 << 0x6001 << "402"
                                       << "6001" << false;
    QTest::newRow("0404:6001 is none") << 0x0404 << 0x6001 << "404"
                                       << "6001" << false;
    QTest::newRow("0403:2303 is none, the product is the other's") << 0x0403 << 0x2303 << "403"
                                                                   << "2303" << false;
    QTest::newRow("067b:6001 is none, the product is the other's") << 0x067B << 0x6001 << "67b"
                                                                   << "6001" << false;
    QTest::newRow("067b:2302 is none") << 0x067B << 0x2302 << "67b"
                                       << "2302" << false;
    QTest::newRow("067b:2304 is none") << 0x067B << 0x2304 << "67b"
                                       << "2304" << false;
    QTest::newRow("067a:2303 is none") << 0x067A << 0x2303 << "67a"
                                       << "2303" << false;
    QTest::newRow("067c:2303 is none") << 0x067C << 0x2303 << "67c"
                                       << "2303" << false;
    QTest::newRow("1a86:7523 is none") << 0x1A86 << 0x7523 << "1a86"
                                       << "7523" << false;
    QTest::newRow("a port that is not on USB is none") << 0 << 0 << "0"
                                                       << "0" << false;
}

void TestDiscovery::onlyTheTwoBridgesAreADevice()
{
    QFETCH(int, vendor);
    QFETCH(int, product);
    QFETCH(QString, shownVendor);
    QFETCH(QString, shownProduct);
    QFETCH(bool, device);
    const PendingTimers timers;
    SignalRecorder diary(_tolvar.get());
    _tolvar->onDeviceDiscovered(PortInfos::bridge("ttyX", vendor, product));
    QCOMPARE(diary.take(), device ? QStringList{"candidateDeviceFound"} : QStringList());
    QCOMPARE(timers.underWay(), device ? QList<int>{1000} : QList<int>());
    QCOMPARE(inside().portName(), device ? "ttyX" : "");
    QCOMPARE(inside().state(), NOT_CONNECTED); // until the port is open
    QCOMPARE(_log->messages(), QStringList{"D:****Device DISCOVERED: "} +
                                   PortInfos::description("ttyX", shownVendor, shownProduct));
}

void TestDiscovery::theNameOfAPortPlaysNoPart()
{
    _tolvar->onDeviceDiscovered(PortInfos::bridge("Bluetooth"));
    QCOMPARE(inside().portName(), QStringLiteral("Bluetooth"));
}

void TestDiscovery::aRecognisedDeviceIsToldOfBeforeItsOpeningIsDue()
{
    const PendingTimers timers;
    QString nameWhenTold;
    QList<int> timersWhenTold = {-1};
    qsizetype loggedWhenTold = 0;
    const ScopedConnection listener(_tolvar.get(), &ZVTolvar::candidateDeviceFound, [&] {
        nameWhenTold = inside().portName();
        timersWhenTold = timers.underWay();
        loggedWhenTold = _log->messages().size();
    });
    _tolvar->onDeviceDiscovered(PortInfos::bridge("ttyX"));
    QCOMPARE(nameWhenTold, QStringLiteral("ttyX"));
    QCOMPARE(timersWhenTold, QList<int>());
    QCOMPARE(loggedWhenTold, 8);
    QCOMPARE(timers.underWay(), QList<int>{1000});
}

void TestDiscovery::anArrivalPastNotConnectedIsLoggedAndIgnored_data()
{
    QTest::addColumn<CommState>("state");
    for (int state = CANDIDATE_DEVICE_FOUND; state <= IN_RESPONSE_RECEIVE; ++state)
        QTest::addRow("in state %d", state) << static_cast<CommState>(state);
}

void TestDiscovery::anArrivalPastNotConnectedIsLoggedAndIgnored()
{
    QFETCH(CommState, state);
    inside().state() = state;
    inside().portName() = "ttyX";
    const PendingTimers timers;
    SignalRecorder diary(_tolvar.get());
    _tolvar->onDeviceDiscovered(PortInfos::bridge("ttyY"));
    QCOMPARE(diary.take(), QStringList());
    QCOMPARE(timers.underWay(), QList<int>());
    QCOMPARE(inside().portName(), QStringLiteral("ttyX"));
    QCOMPARE(inside().state(), state);
    QCOMPARE(_log->messages(), QStringList{"D:****Device DISCOVERED: "} + PortInfos::description("ttyY"));
}

void TestDiscovery::withoutPortsTheListIsItsHeadingAlone()
{
    SignalRecorder diary(_tolvar.get());
    _tolvar->findTolvar();
    QCOMPARE(_log->messages(), QStringList{"D:List of ports: "});
    QCOMPARE(diary.take(), QStringList());
}

void TestDiscovery::ofTwoRecognisedPortsOnlyTheFirstIsUsedAndLogged()
{
    ForeignPort foreign(*_bed);
    PluggedTolvar first(*_bed, DeviceConfig(), UsbBridge::prolific());
    PluggedTolvar second(*_bed);
    QVERIFY(foreign.plug());
    QVERIFY(first.plug());
    QVERIFY(second.plug());
    ZVTolvar late; // it sees the ports that are present, not those that arrived before
    SignalRecorder diary(&late);
    const QList<QextPortInfo> ports = QextSerialEnumerator::getPorts();
    QCOMPARE(ports.size(), 3);
    _log->take();
    late.findTolvar();

    QStringList expected = {"D:List of ports: "};
    QString found;
    for (const QextPortInfo &info : ports) {
        if (info.productID == 0x6015) {
            expected += described(info, "403", "6015") + QStringList{"D:Not Found "};
            continue;
        }
        const bool prolific = info.vendorID == 0x067B;
        const QStringList description = described(info, prolific ? "67b" : "403", prolific ? "2303" : "6001");
        expected += description + QStringList({"D:Found! ", "D:****Device DISCOVERED: "}) + description;
        found = info.portName;
        break; // the ports after it are never logged
    }
    QCOMPARE(_log->messages(), expected);
    QCOMPARE(diary.take(), QStringList{"candidateDeviceFound"});
    QCOMPARE(ZVTolvarTestPeer{late}.portName(), found);
}

void TestDiscovery::foreignPortsAreListedAsNotFound()
{
    ForeignPort ftdi(*_bed);
    ForeignPort ch340(*_bed, UsbBridge::foreignCh340());
    QVERIFY(ftdi.plug());
    QVERIFY(ch340.plug());
    QTRY_COMPARE(_log->messages().count("D:****Device DISCOVERED: "), 2);
    const QList<QextPortInfo> ports = QextSerialEnumerator::getPorts();
    QCOMPARE(ports.size(), 2);
    _log->take();
    SignalRecorder diary(_tolvar.get());
    _tolvar->findTolvar();

    QStringList expected = {"D:List of ports: "};
    for (const QextPortInfo &info : ports) {
        const bool isFtdi = info.vendorID == 0x0403;
        expected += described(info, isFtdi ? "403" : "1a86", isFtdi ? "6015" : "7523");
        expected += "D:Not Found ";
    }
    QCOMPARE(_log->messages(), expected);
    QCOMPARE(diary.take(), QStringList());
    QCOMPARE(inside().portName(), QString());
}

void TestDiscovery::theListIsAskedForEachTime()
{
    _tolvar->findTolvar();
    ForeignPort foreign(*_bed);
    QVERIFY(foreign.plug());
    QTRY_COMPARE(_log->messages().count("D:****Device DISCOVERED: "), 1);
    _log->take();
    _tolvar->findTolvar();
    QCOMPARE(_log->messages().count("D:Not Found "), 1);
}

void TestDiscovery::arrivalsAndRemovalsAreHeardOf()
{
    ForeignPort foreign(*_bed);
    QVERIFY(foreign.plug());
    QTRY_COMPARE(_log->messages().count("D:****Device DISCOVERED: "), 1);
    const QextPortInfo info = QextSerialEnumerator::getPorts().value(0);
    QCOMPARE(_log->take(), QStringList{"D:****Device DISCOVERED: "} + described(info, "403", "6015"));
    foreign.unplug();
    QTRY_COMPARE(_log->messages().count("D:****Device REMOVED: "), 1);
    QCOMPARE(_log->messages(),
             QStringList{"D:****Device REMOVED: "} + described(info, "403", "6015") + QStringList{"D:\"\" "});
}

void TestDiscovery::aPortThatIsThereAlreadyIsNotAnArrival()
{
    PluggedTolvar device(*_bed);
    QVERIFY(device.plug());
    QTRY_COMPARE(_log->messages().count("D:****Device DISCOVERED: "), 1); // by the earlier controller
    _tolvar.reset();
    _log->take();
    ZVTolvar late;
    ForeignPort foreign(*_bed);
    QVERIFY(foreign.plug());
    QTRY_COMPARE(_log->messages().count("D:****Device DISCOVERED: "), 1); // and of no earlier device
    QVERIFY(_log->messages().contains("D:product ID: \"6015\" "));
    QCOMPARE(ZVTolvarTestPeer{late}.portName(), QString());
}

void TestDiscovery::aRepluggedDeviceIsOpenedAnew()
{
    PluggedTolvar device(*_bed);
    QVERIFY(device.plug());
    QTRY_COMPARE(_tolvar->systemID(), QStringLiteral("TOLVAR-4711"));
    const QString firstName = inside().portName();
    device.unplug();
    QTRY_COMPARE(_tolvar->systemID(), QString());
    QCOMPARE(inside().portName(), QString());
    QVERIFY(device.plug());
    QTRY_COMPARE(_tolvar->systemID(), QStringLiteral("TOLVAR-4711"));
    QVERIFY(inside().portName() != firstName);
    QVERIFY(inside().state() != NOT_CONNECTED);
}

void TestDiscovery::bothControllersOpenADevicePluggedInLater()
{
    ZVTolvar other;
    PluggedTolvar device(*_bed);
    QVERIFY(device.plug());
    QTRY_COMPARE(_tolvar->systemID(), QStringLiteral("TOLVAR-4711"));
    QTRY_COMPARE(other.systemID(), QStringLiteral("TOLVAR-4711"));
    QVERIFY(device.waitFor([](const TolvarState &state) { return state.lineTexts().count("get") == 2; }));
    QCOMPARE(device.state().lineTexts().count("C"), 2);
    QCOMPARE(inside().portName(), ZVTolvarTestPeer{other}.portName());
    QVERIFY(_log->messages("C:Opening").isEmpty()); // neither controller locked the other one out

    device.unplug();
    QTRY_COMPARE(_tolvar->systemID(), QString());
    QTRY_COMPARE(other.systemID(), QString());
}

QTEST_GUILESS_MAIN(TestDiscovery)
#include "tst_zvtolvar_discovery.moc"
