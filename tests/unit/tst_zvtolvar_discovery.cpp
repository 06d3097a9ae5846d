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
/// The log lines for a port of the fake bus, with its ids in their displayed form.
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
    void initTestCase() { _bus = std::make_unique<FakeUsbBus>(); } // it must outlive every open port
    void cleanupTestCase();
    void init();
    void cleanup();

    void onlyTheTwoBridgesAreRecognised_data();
    void onlyTheTwoBridgesAreRecognised();
    void aRecognisedDeviceIsReportedBeforeItIsOpened();
    void anArrivalWhileConnectedIsLoggedAndIgnored();

    void foreignPortsAreLoggedAndListedAsNotFound();
    void ofTwoRecognisedPortsOnlyTheFirstIsUsedAndLogged();
    void bothControllersOpenADevicePluggedInLater();

private:
    ZVTolvarTestPeer inside() const { return {*_tolvar}; }

    std::unique_ptr<FakeUsbBus> _bus;
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
    _bus.reset();
}

void TestDiscovery::onlyTheTwoBridgesAreRecognised_data()
{
    QTest::addColumn<int>("vendor");
    QTest::addColumn<int>("product");
    QTest::addColumn<QString>("shownVendor");
    QTest::addColumn<QString>("shownProduct");
    QTest::addColumn<bool>("device");
    const auto row = [](const char *name, int vendor, int product, const char *shownVendor,
                        const char *shownProduct, bool device = false) {
        QTest::newRow(name) << vendor << product << QString(shownVendor) << QString(shownProduct) << device;
    };
    row("FT232", 0x0403, 0x6001, "403", "6001", true);
    row("PL2303", 0x067B, 0x2303, "67b", "2303", true);
    row("another FTDI product", 0x0403, 0x6015, "403", "6015");
    row("FTDI vendor with the PL2303 product id", 0x0403, 0x2303, "403", "2303");
    row("another vendor with the FT232 product id", 0x1A86, 0x6001, "1a86", "6001");
    row("not a USB port", 0, 0, "0", "0");
}

void TestDiscovery::onlyTheTwoBridgesAreRecognised()
{
    QFETCH(int, vendor);
    QFETCH(int, product);
    QFETCH(QString, shownVendor);
    QFETCH(QString, shownProduct);
    QFETCH(bool, device);
    const PendingTimers timers;
    SignalRecorder recorder(_tolvar.get());
    _tolvar->onDeviceDiscovered(PortInfos::bridge("ttyX", vendor, product));
    QCOMPARE(recorder.take(), device ? QStringList{"candidateDeviceFound"} : QStringList());
    QCOMPARE(timers.intervals(), device ? QList<int>{1000} : QList<int>());
    QCOMPARE(inside().portName(), device ? "ttyX" : "");
    QCOMPARE(inside().state(), NOT_CONNECTED); // until the port is open
    QCOMPARE(_log->messages(), QStringList{"D:****Device DISCOVERED: "} +
                                   PortInfos::description("ttyX", shownVendor, shownProduct));
}

void TestDiscovery::aRecognisedDeviceIsReportedBeforeItIsOpened()
{
    const PendingTimers timers;
    QString nameAtSignal;
    QList<int> timersAtSignal = {-1};
    qsizetype loggedAtSignal = 0;
    const ScopedConnection listener(_tolvar.get(), &ZVTolvar::candidateDeviceFound, [&] {
        nameAtSignal = inside().portName();
        timersAtSignal = timers.intervals();
        loggedAtSignal = _log->messages().size();
    });
    _tolvar->onDeviceDiscovered(PortInfos::bridge("ttyX"));
    QCOMPARE(nameAtSignal, QStringLiteral("ttyX"));
    QCOMPARE(timersAtSignal, QList<int>());
    QCOMPARE(loggedAtSignal, 8);
    QCOMPARE(timers.intervals(), QList<int>{1000});
}

void TestDiscovery::anArrivalWhileConnectedIsLoggedAndIgnored()
{
    inside().state() = CANDIDATE_DEVICE_FOUND;
    inside().portName() = "ttyX";
    const PendingTimers timers;
    SignalRecorder recorder(_tolvar.get());
    _tolvar->onDeviceDiscovered(PortInfos::bridge("ttyY"));
    QCOMPARE(recorder.take(), QStringList());
    QCOMPARE(timers.intervals(), QList<int>());
    QCOMPARE(inside().portName(), QStringLiteral("ttyX"));
    QCOMPARE(_log->messages(), QStringList{"D:****Device DISCOVERED: "} + PortInfos::description("ttyY"));
}

void TestDiscovery::foreignPortsAreLoggedAndListedAsNotFound()
{
    ForeignPort foreign(*_bus);
    QVERIFY(foreign.plug());
    QTRY_COMPARE(_log->messages().count("D:****Device DISCOVERED: "), 1);
    const QStringList description = described(QextSerialEnumerator::getPorts().value(0), "403", "6015");
    QCOMPARE(_log->take(), QStringList{"D:****Device DISCOVERED: "} + description);

    SignalRecorder recorder(_tolvar.get());
    _tolvar->findTolvar();
    QCOMPARE(_log->take(), QStringList{"D:List of ports: "} + description + QStringList{"D:Not Found "});
    QCOMPARE(recorder.take(), QStringList());
    QCOMPARE(inside().portName(), QString());

    foreign.unplug();
    QTRY_COMPARE(_log->messages().count("D:****Device REMOVED: "), 1);
    QCOMPARE(_log->take(), QStringList{"D:****Device REMOVED: "} + description + QStringList{"D:\"\" "});
    _tolvar->findTolvar();
    QCOMPARE(_log->take(), QStringList{"D:List of ports: "});

    ForeignPort another(*_bus, UsbBridge::foreignCh340());
    QVERIFY(foreign.plug());
    QVERIFY(another.plug());
    _tolvar->findTolvar();
    QCOMPARE(_log->messages().count("D:Not Found "), 2);
}

void TestDiscovery::ofTwoRecognisedPortsOnlyTheFirstIsUsedAndLogged()
{
    PluggedTolvar first(*_bus, DeviceConfig(), UsbBridge::prolific());
    PluggedTolvar second(*_bus);
    QVERIFY(first.plug());
    QVERIFY(second.plug());
    ZVTolvar late; // it sees the ports that are present, not those that arrived before
    SignalRecorder recorder(&late);
    const QList<QextPortInfo> ports = QextSerialEnumerator::getPorts();
    QCOMPARE(ports.size(), 2);
    _log->take();
    late.findTolvar();

    const bool isProlific = ports.first().vendorID == 0x067B;
    const QStringList description =
        described(ports.first(), isProlific ? "67b" : "403", isProlific ? "2303" : "6001");
    QCOMPARE(_log->messages(), QStringList{"D:List of ports: "} + description +
                                   QStringList({"D:Found! ", "D:****Device DISCOVERED: "}) + description);
    QCOMPARE(recorder.take(), QStringList{"candidateDeviceFound"});
    QCOMPARE(ZVTolvarTestPeer{late}.portName(), ports.first().portName);
}

void TestDiscovery::bothControllersOpenADevicePluggedInLater()
{
    ZVTolvar other;
    PluggedTolvar device(*_bus);
    for (qsizetype times = 1; times <= 2; ++times) { // and when it is plugged in again
        QVERIFY(device.plug());
        QTRY_COMPARE(_tolvar->systemID(), QStringLiteral("TOLVAR-4711"));
        QTRY_COMPARE(other.systemID(), QStringLiteral("TOLVAR-4711"));
        QVERIFY(device.waitFor(
            [times](const TolvarState &state) { return state.lineTexts().count("get") == 2 * times; }));
        QCOMPARE(device.state().lineTexts().count("C"), 2 * times);
        QCOMPARE(inside().portName().toLatin1(), device.ttyName());
        QCOMPARE(ZVTolvarTestPeer{other}.portName().toLatin1(), device.ttyName());
        QVERIFY(_log->messages("C:Opening").isEmpty()); // neither controller locked the other one out

        device.unplug();
        QTRY_COMPARE(_tolvar->systemID(), QString());
        QTRY_COMPARE(other.systemID(), QString());
    }
}

QTEST_GUILESS_MAIN(TestDiscovery)
#include "tst_zvtolvar_discovery.moc"
