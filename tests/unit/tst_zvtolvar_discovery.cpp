#include <termios.h>

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include "serial/qextserialport.h"
#include "simulator/pluggedport.h"
#include "simulator/usbtestbed.h"
#include "tests/support/messagerecorder.h"
#include "tests/support/pty.h"
#include "tests/support/zvtolvarinspector.h"

namespace
{
constexpr int Ftdi = 0x0403;
constexpr int Ft232 = 0x6001;

QextPortInfo bridge(const QString &portName, int vendorID = Ftdi, int productID = Ft232)
{
    QextPortInfo info;
    info.portName = portName;
    info.physName = "/dev/" + portName;
    info.friendName = "USB \"UART\"";
    info.enumName = "USB";
    info.vendorID = vendorID;
    info.productID = productID;
    return info;
}

QStringList description(const QString &portName, const QString &vendor = "403",
                        const QString &product = "6001")
{
    return {"D:port name: \"" + portName + "\" ",
            "D:friendly name: \"USB \"UART\"\" ",
            "D:physical name: \"/dev/" + portName + "\" ",
            "D:enumerator name: \"USB\" ",
            "D:vendor ID: \"" + vendor + "\" ",
            "D:product ID: \"" + product + "\" ",
            "D:=================================== "};
}
} // namespace

/// Finding the device's port, following it, and opening it.
class TestDiscovery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        _bed = std::make_unique<UsbTestbed>();
    } // one for all: it must outlive every open port
    void cleanupTestCase();
    void init();
    void cleanup();

    void onlyTheTwoBridgesAreADevice_data();
    void onlyTheTwoBridgesAreADevice();
    void aFoundDeviceIsOpenedASecondLaterAndWokenHalfASecondAfter();
    void theLineIsSetUpForTheConsole();
    void anArrivalPastNotConnectedIsLoggedAndIgnored();
    void theLaterOfTwoArrivalsWins();
    void unpluggedBeforeTheOpening();
    void theOpeningIsRetriedEverySecond();
    void unpluggedWhileOpeningFails();

    void aRemovalResetsEverything_data();
    void aRemovalResetsEverything();
    void theSignalsOfARemovalComeInTheirOrder();
    void theRemovalOfAnotherPortChangesNothing();
    void aRepluggedDeviceIsOpenedAnew();

    void noPortsAreListed();
    void theFirstRecognisedPortWins();
    void foreignPortsAreLeftAlone();
    void bothControllersOpenADevicePluggedInLater();

private:
    ZVTolvarInspector inside() const { return {*_tolvar}; }

    std::unique_ptr<UsbTestbed> _bed;
    std::unique_ptr<ZVTolvar> _tolvar;
    std::unique_ptr<MessageRecorder> _log;
};

void TestDiscovery::init()
{
    _tolvar = std::make_unique<ZVTolvar>();
    _log = std::make_unique<MessageRecorder>();
}

void TestDiscovery::cleanup()
{
    _log.reset();
    _tolvar.reset();
}

void TestDiscovery::cleanupTestCase()
{
    // The last test's ports hang up with the next turn of the event loop.
    QCoreApplication::processEvents();
    _bed.reset();
}

void TestDiscovery::onlyTheTwoBridgesAreADevice_data()
{
    QTest::addColumn<int>("vendor");
    QTest::addColumn<int>("product");
    QTest::addColumn<bool>("device");
    QTest::newRow("0403:6001") << 0x0403 << 0x6001 << true;
    QTest::newRow("067b:2303") << 0x067B << 0x2303 << true;
    QTest::newRow("0403:6015") << 0x0403 << 0x6015 << false;
    QTest::newRow("0403:6000") << 0x0403 << 0x6000 << false;
    QTest::newRow("0403:2303, the other's product") << 0x0403 << 0x2303 << false;
    QTest::newRow("067b:6001, the other's product") << 0x067B << 0x6001 << false;
    QTest::newRow("067b:2304") << 0x067B << 0x2304 << false;
    QTest::newRow("1a86:7523") << 0x1A86 << 0x7523 << false;
    QTest::newRow("not on USB") << 0 << 0 << false;
}

void TestDiscovery::onlyTheTwoBridgesAreADevice()
{
    QFETCH(int, vendor);
    QFETCH(int, product);
    QFETCH(bool, device);
    QSignalSpy candidate(_tolvar.get(), &ZVTolvar::candidateDeviceFound);
    _tolvar->onDeviceDiscovered(bridge("ttyX", vendor, product));
    QCOMPARE(candidate.count(), device ? 1 : 0);
    QCOMPARE(inside().portName(), device ? "ttyX" : "");
    QCOMPARE(inside().state(), NOT_CONNECTED);
    QCOMPARE(_log->messages(),
             QStringList{"D:****Device DISCOVERED: "} +
                 description("ttyX", QString::number(vendor, 16), QString::number(product, 16)));
}

void TestDiscovery::aFoundDeviceIsOpenedASecondLaterAndWokenHalfASecondAfter()
{
    Pty pty;
    QElapsedTimer clock;
    clock.start();
    _tolvar->onDeviceDiscovered(bridge(pty.name()));
    QCOMPARE(inside().port(), nullptr);
    QTRY_COMPARE(inside().state(), CANDIDATE_DEVICE_FOUND);
    const qint64 opened = clock.elapsed();
    QVERIFY2(opened >= 1000, "a device is opened 1000 ms after it is recognised");
    QTRY_COMPARE(pty.collected(), QByteArray("C\r\n"));
    const qint64 woken = clock.elapsed();
    QVERIFY2(woken - opened >= 495,
             "a console is woken 500 ms after its port is opened"); // both ends seen late
    QVERIFY2(woken >= 1500, "a console is woken 1500 ms after its device is recognised");
    pty.send(">");
    QTRY_COMPARE(pty.collected(), QByteArray("C\r\nget\r\n")); // what comes from the port reaches the link
}

void TestDiscovery::theLineIsSetUpForTheConsole()
{
    Pty pty;
    _tolvar->onDeviceDiscovered(bridge(pty.name()));
    QTRY_COMPARE(inside().state(), CANDIDATE_DEVICE_FOUND);
    const termios line = pty.settings();
    QCOMPARE(cfgetospeed(&line), speed_t(B115200));
    QCOMPARE(cfgetispeed(&line), speed_t(B115200));
    QCOMPARE(line.c_cflag & CSIZE, tcflag_t(CS8));
    QCOMPARE(line.c_cflag & (PARENB | CSTOPB | CRTSCTS), tcflag_t(0));
    QCOMPARE(line.c_iflag & (IXON | IXOFF), tcflag_t(0));
    QVERIFY(inside().port()->openMode() & QIODevice::ReadWrite);
}

void TestDiscovery::anArrivalPastNotConnectedIsLoggedAndIgnored()
{
    inside().state() = CANDIDATE_DEVICE_FOUND;
    QSignalSpy candidate(_tolvar.get(), &ZVTolvar::candidateDeviceFound);
    _tolvar->onDeviceDiscovered(bridge("ttyX"));
    QVERIFY(candidate.isEmpty());
    QCOMPARE(inside().portName(), QString());
    QCOMPARE(_log->messages(), QStringList{"D:****Device DISCOVERED: "} + description("ttyX"));
}

void TestDiscovery::theLaterOfTwoArrivalsWins()
{
    Pty first;
    Pty second;
    QSignalSpy candidate(_tolvar.get(), &ZVTolvar::candidateDeviceFound);
    _tolvar->onDeviceDiscovered(bridge(first.name()));
    _tolvar->onDeviceDiscovered(bridge(second.name()));
    QCOMPARE(candidate.count(), 2);
    QCOMPARE(inside().portName(), second.name());

    // Each timer opens it once. Both chains wake the console, and the first prompt ends both.
    QTRY_COMPARE(second.collected(), QByteArray("C\r\nC\r\n"));
    QCOMPARE(first.collected(), QByteArray());
    QCOMPARE(inside().queue(), QStringList({"get\r\n", "get\r\n"}));
    second.send(">");
    QTRY_COMPARE(second.collected(), QByteArray("C\r\nC\r\nget\r\n"));
    second.send("\x02<puckdata><name>T</name></puckdata>\x03");
    QTRY_COMPARE(_tolvar->systemID(), QStringLiteral("T")); // read once, though two port objects tell of it
}

void TestDiscovery::unpluggedBeforeTheOpening()
{
    Pty pty;
    _tolvar->onDeviceDiscovered(bridge(pty.name()));
    _tolvar->onDeviceRemoved(bridge(pty.name()));
    // Another arrival would be opened by now: the first one's timer has fired before.
    Pty later;
    _tolvar->onDeviceDiscovered(bridge(later.name()));
    _tolvar->onDeviceRemoved(bridge(later.name()));
    QTimer fired;
    fired.setSingleShot(true);
    fired.start(1100);
    QTRY_VERIFY(!fired.isActive());
    QCOMPARE(inside().port(), nullptr);
    QCOMPARE(inside().state(), NOT_CONNECTED);
}

void TestDiscovery::theOpeningIsRetriedEverySecond()
{
    // The port is not there yet; its name is, by a link that comes to life.
    QTemporaryDir folder;
    const QString name = folder.filePath("tty");
    QElapsedTimer clock;
    clock.start();
    _tolvar->onDeviceDiscovered(bridge(name));
    QTRY_VERIFY(inside().port());
    QCOMPARE(inside().state(), NOT_CONNECTED);
    const QextSerialPort *firstAttempt = inside().port();

    Pty pty;
    QVERIFY(QFile::link(pty.name(), name));
    QTRY_COMPARE(inside().state(), CANDIDATE_DEVICE_FOUND);
    QVERIFY2(clock.elapsed() >= 2000, "a failed opening is tried again 1000 ms later");
    QVERIFY(inside().port() != firstAttempt);
}

void TestDiscovery::unpluggedWhileOpeningFails()
{
    const QString name = "/dev/no-such-tty";
    _tolvar->onDeviceDiscovered(bridge(name));
    QTRY_VERIFY(inside().port());
    _tolvar->onDeviceRemoved(bridge(name));
    QCOMPARE(inside().port(), nullptr);
    QTimer fired;
    fired.setSingleShot(true);
    fired.start(1100);
    QTRY_VERIFY(!fired.isActive());
    QCOMPARE(inside().port(), nullptr); // no attempt after the removal
}

void TestDiscovery::aRemovalResetsEverything_data()
{
    QTest::addColumn<int>("state");
    for (int state = NOT_CONNECTED; state <= IN_RESPONSE_RECEIVE; ++state)
        QTest::addRow("in state %d", state) << state;
}

void TestDiscovery::aRemovalResetsEverything()
{
    QFETCH(int, state);
    const ZVTolvarInspector in = inside();
    Pty pty;
    QextSerialPort port(pty.name());
    QVERIFY(port.open(QIODevice::ReadWrite));
    in.port() = &port;
    in.portName() = "ttyX";
    in.state() = static_cast<CommState>(state);
    in.queue() = QStringList{"get\r\n"};
    in.response() = "half a rep";
    in.currentCommand() = "scan\r\n";
    in.scanning() = in.testing() = in.connected() = true;
    _tolvar->onResponseReceived(
        "<puckdata><name>T</name><mode>M</mode><firmware_version>A060</firmware_version>"
        "<network_name>N</network_name><ip_address>1.2.3.4</ip_address><ant>1</ant>"
        "</puckdata>");
    _tolvar->onResponseReceived("<scan_results><scan SSID=\"A\"/></scan_results>");
    _tolvar->setPassword("P");
    _log->take();

    _tolvar->onDeviceRemoved(bridge("ttyX"));

    QCOMPARE(_log->messages(),
             QStringList{"D:****Device REMOVED: "} + description("ttyX") + QStringList{"D:\"ttyX\" "});
    QCOMPARE(in.port(), nullptr);
    QVERIFY2(port.isOpen(), "the port object is left as it is");
    QVERIFY(in.queue().isEmpty());
    QCOMPARE(in.portName(), QString());
    QCOMPARE(in.state(), NOT_CONNECTED);
    for (const QString &value : {_tolvar->systemID(), _tolvar->status(), _tolvar->firmwareVersion(),
                                 _tolvar->network(), _tolvar->password()})
        QCOMPARE(value, QString());
    QCOMPARE(_tolvar->ipAddress(), QStringLiteral("1.2.3.4"));
    QCOMPARE(_tolvar->antenna(), QStringLiteral("1"));
    QVERIFY(_tolvar->scannedNetworks()->isEmpty());
    QVERIFY(!in.connected() && !in.scanning() && !in.testing());
    QCOMPARE(in.response(), QStringLiteral("half a rep"));
    QCOMPARE(in.currentCommand(), QStringLiteral("scan\r\n"));
}

void TestDiscovery::theSignalsOfARemovalComeInTheirOrder()
{
    const ZVTolvarInspector in = inside();
    in.portName() = "ttyX";
    in.scanning() = true;
    _tolvar->setSystemID("T");
    _tolvar->setStatus("M");
    _tolvar->setFirmwareVersion("A060");
    _tolvar->setNetwork("N");
    _tolvar->setPassword("P");
    QStringList order;
    connect(_tolvar.get(), &ZVTolvar::systemIDChanged, this, [&] {
        order += "systemID";
        QCOMPARE(in.portName(), QString()); // the link is reset before the pages hear of it
        QCOMPARE(in.state(), NOT_CONNECTED);
    });
    connect(_tolvar.get(), &ZVTolvar::statusChanged, this, [&] { order += "status"; });
    connect(_tolvar.get(), &ZVTolvar::firmwareVersionChanged, this, [&] { order += "firmware"; });
    connect(_tolvar.get(), &ZVTolvar::networkChanged, this, [&] { order += "network"; });
    connect(_tolvar.get(), &ZVTolvar::passwordChanged, this, [&] { order += "password"; });
    connect(_tolvar.get(), &ZVTolvar::scannedNetworkListChanged, this, [&] {
        order += "table";
        QVERIFY2(in.scanning(), "the modes end last");
    });
    _tolvar->onDeviceRemoved(bridge("ttyX"));
    QCOMPARE(order, QStringList({"systemID", "status", "firmware", "network", "password", "table"}));
}

void TestDiscovery::theRemovalOfAnotherPortChangesNothing()
{
    const ZVTolvarInspector in = inside();
    in.portName() = "ttyX";
    in.state() = IN_PROMPT;
    in.queue() = QStringList{"get\r\n"};
    _tolvar->setSystemID("T");
    QSignalSpy table(_tolvar.get(), &ZVTolvar::scannedNetworkListChanged);
    _tolvar->onDeviceRemoved(bridge("ttyY"));
    QCOMPARE(_log->messages(),
             QStringList{"D:****Device REMOVED: "} + description("ttyY") + QStringList{"D:\"ttyX\" "});
    QCOMPARE(in.portName(), QStringLiteral("ttyX"));
    QCOMPARE(in.state(), IN_PROMPT);
    QCOMPARE(in.queue().size(), 1);
    QCOMPARE(_tolvar->systemID(), QStringLiteral("T"));
    QVERIFY(table.isEmpty());
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
    QCOMPARE(inside().state() == NOT_CONNECTED, false);
}

void TestDiscovery::noPortsAreListed()
{
    _tolvar->findTolvar();
    QCOMPARE(_log->messages(), QStringList{"D:List of ports: "});
}

void TestDiscovery::theFirstRecognisedPortWins()
{
    ForeignPort foreign(*_bed);
    PluggedTolvar first(*_bed, TolvarSetup(), UsbBridge::prolific());
    PluggedTolvar second(*_bed);
    QVERIFY(foreign.plug());
    QVERIFY(first.plug());
    QVERIFY(second.plug());
    ZVTolvar late; // it sees what is present, not what arrived before
    QSignalSpy candidate(&late, &ZVTolvar::candidateDeviceFound);
    const QList<QextPortInfo> ports = QextSerialEnumerator::getPorts();
    QCOMPARE(ports.size(), 3);
    _log->take();
    late.findTolvar();

    QStringList expected = {"D:List of ports: "};
    const auto describe = [&expected](const QextPortInfo &info) {
        expected += "D:port name: \"" + info.portName + "\" ";
        expected += "D:friendly name: \"" + info.friendName + "\" ";
        expected += "D:physical name: \"/dev/" + info.portName + "\" ";
        expected += "D:enumerator name: \"USB\" ";
        expected += "D:vendor ID: \"" + QString::number(info.vendorID, 16) + "\" ";
        expected += "D:product ID: \"" + QString::number(info.productID, 16) + "\" ";
        expected += "D:=================================== ";
    };
    QString found;
    for (const QextPortInfo &info : ports) {
        describe(info);
        if (info.productID == 0x6015) {
            expected += "D:Not Found ";
            continue;
        }
        expected += "D:Found! ";
        expected += "D:****Device DISCOVERED: ";
        describe(info);
        found = info.portName;
        break; // the ones after it are never logged
    }
    QCOMPARE(_log->messages(), expected);
    QCOMPARE(candidate.count(), 1);
    QCOMPARE(ZVTolvarInspector{late}.portName(), found);
}

void TestDiscovery::foreignPortsAreLeftAlone()
{
    ForeignPort ftdi(*_bed);
    ForeignPort ch340(*_bed, UsbBridge::foreignCh340());
    QVERIFY(ftdi.plug());
    QVERIFY(ch340.plug());
    QTRY_COMPARE(_log->messages().count("D:****Device DISCOVERED: "), 2);
    _log->take();
    _tolvar->findTolvar();
    QCOMPARE(_log->messages().count("D:Not Found "), 2);
    QVERIFY(!_log->messages().contains("D:Found! "));
    QCOMPARE(inside().portName(), QString());
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
    QCOMPARE(inside().portName(), ZVTolvarInspector{other}.portName());
    QVERIFY(_log->messages("C:").isEmpty()); // neither was locked out by the other

    device.unplug();
    QTRY_COMPARE(_tolvar->systemID(), QString());
    QTRY_COMPARE(other.systemID(), QString());
}

QTEST_GUILESS_MAIN(TestDiscovery)
#include "tst_zvtolvar_discovery.moc"
