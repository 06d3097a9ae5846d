#include <memory>

#include <QScopeGuard>
#include <QSerialPort>
#include <QSignalSpy>
#include <QTest>

#include <linux/serial.h>
#include <umockdev.h>
#include <unistd.h>

#include "serial/portlist.h"
#include "serial/qextserialenumerator.h"
#include "serial/qextserialport.h"
#include "tests/support/fakeports.h"
#include "tests/support/libcinterposer.h"
#include "tests/support/messagespy.h"
#include "tests/support/udevfaultinjector.h"

/// Tests the list of ports, and the reports on ports that appear and disappear while other objects have them
/// open.
class TestQextSerialEnumerator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void portsAreEqualIfEveryFieldIs();
    void thePortsAreListed();
    void theListIsTheSameAsQts();
    void aPortOfAnOldKernelIsListedIfItHasAController_data();
    void aPortOfAnOldKernelIsListedIfItHasAController();
    void aPortIsListedByTheTypeThatTheSystemShows_data();
    void aPortIsListedByTheTypeThatTheSystemShows();
    void udevIsNotAskedAboutTheKernelsOwnTerminals();
    void withoutUdevOrTtysQtListsThePorts();
    void withoutUdevsDatabaseTheKernelsIdsAreUsed();
    void idsAreUsbIdsIfTheBusIsUsbOrUnknown_data();
    void idsAreUsbIdsIfTheBusIsUsbOrUnknown();
    void portsAreReportedOnceAndOnRequestOnly();
    void everyEnumeratorReportsARemoval();
    void aSlotMayDestroyEnumerators();
    void aRemovedPortIsClosedWhenItIsReported();
    void aPortOpenedDuringTheRemovalStaysOpen();
    void theRemovalOfAnotherPortLeavesTheLineOpen();
    void anOpenErrorIsReportedAgainAfterTheRemoval();
};

namespace
{
QextPortInfo reportedBy(const QSignalSpy &spy)
{
    return spy.value(0).value(0).value<QextPortInfo>();
}

/// An enumerator with notification enabled, and what it has reported since.
struct Reports {
    QextSerialEnumerator enumerator;
    QSignalSpy arrived{&enumerator, &QextSerialEnumerator::deviceDiscovered};
    QSignalSpy removed{&enumerator, &QextSerialEnumerator::deviceRemoved};

    Reports() { enumerator.setUpNotifications(); }
};

QStringList described(const QList<ListedPort> &ports)
{
    QStringList texts;
    for (const ListedPort &port : ports)
        texts += QStringLiteral("%1 at %2: %3, %4:%5")
                     .arg(port.name, port.location, port.description)
                     .arg(port.vendorID.value_or(-1))
                     .arg(port.productID.value_or(-1));
    return texts;
}

QStringList namesOfPorts()
{
    QStringList names;
    const QList<QextPortInfo> ports = QextSerialEnumerator::getPorts();
    for (const QextPortInfo &info : ports)
        names += info.portName;
    return names;
}

QStringList namesOfQtsPorts()
{
    QStringList names;
    const QList<ListedPort> ports = listedByQt();
    for (const ListedPort &port : ports)
        names += port.name;
    return names;
}

// The descriptors that this process has on terminals, including those of the test bed.
int terminalDescriptors()
{
    int count = 0;
    for (int descriptor = 0; descriptor < 1024; ++descriptor)
        count += ::isatty(descriptor);
    return count;
}
} // namespace

void TestQextSerialEnumerator::portsAreEqualIfEveryFieldIs()
{
    const QextPortInfo port = {"ttyUSB0", "/dev/ttyUSB0", "FT232R", "USB", 0x0403, 0x6001};
    QVERIFY(port == QextPortInfo(port));
    QVERIFY(!(port != QextPortInfo(port)));
    const QextPortInfo others[] = {
        {"ttyUSB1", "/dev/ttyUSB0", "FT232R", "USB", 0x0403, 0x6001},
        {"ttyUSB0", "/dev/ttyUSB1", "FT232R", "USB", 0x0403, 0x6001},
        {"ttyUSB0", "/dev/ttyUSB0", "PL2303", "USB", 0x0403, 0x6001},
        {"ttyUSB0", "/dev/ttyUSB0", "FT232R", "PCI", 0x0403, 0x6001},
        {"ttyUSB0", "/dev/ttyUSB0", "FT232R", "USB", 0x067b, 0x6001},
        {"ttyUSB0", "/dev/ttyUSB0", "FT232R", "USB", 0x0403, 0x2303},
    };
    for (const QextPortInfo &other : others) {
        QVERIFY(!(port == other));
        QVERIFY(port != other);
    }
}

void TestQextSerialEnumerator::thePortsAreListed()
{
    FakePorts computer;
    const QString pci = computer.plugOnBus("pci", "0x8086", "0x1c3d");
    const QString prolific = computer.plugUsb(UsbBridge::prolific());
    const QList<QextPortInfo> ports = QextSerialEnumerator::getPorts();
    QCOMPARE(ports.size(), 2);
    const QextPortInfo card = {pci, "/dev/" + pci, {}, {}, 0, 0};
    const QextPortInfo bridge = {prolific, "/dev/" + prolific, "USB-Serial Controller", "USB", 0x067b,
                                 0x2303};
    QVERIFY(ports[0] == bridge);
    QVERIFY(ports[1] == card);
}

void TestQextSerialEnumerator::theListIsTheSameAsQts()
{
    FakePorts computer;
    computer.plugUsb();
    computer.plugUsb(UsbBridge::prolific());
    computer.plugOnBus("usb", "no number", "12345");
    computer.plugOnBus("pci", "0x8086", "0x1c3d");
    computer.plugOnBus("pnp", "0403", "");
    computer.plugOtherUsb();
    computer.addPhantom();
    computer.addPhantom(FakePorts::WithoutNode);
    const QStringList virtualPorts{"rfcomm0", "rfcomm255", "tnt0", "ttyGS0"};
    const QStringList noPorts{"console", "ptmx",  "rfcomm",    "rfcomm-1", "rfcomm256", "tty",  "tty0",
                              "tty63",   "ttyp0", "ttyprintk", "t",        "tt0",       "hvc0", "rfcommX"};
    for (const QString &name : virtualPorts + noPorts)
        computer.addVirtual(name);

    const auto listed = listedByUdev();
    QVERIFY(listed);
    QCOMPARE(described(*listed), described(listedByQt()));
    QCOMPARE(namesOfPorts(), namesOfQtsPorts());
    QCOMPARE(listed->size(), 5 + virtualPorts.size());
    for (const QString &name : virtualPorts)
        QVERIFY2(namesOfPorts().contains(name), qPrintable(name));
}

void TestQextSerialEnumerator::aPortOfAnOldKernelIsListedIfItHasAController_data()
{
    QTest::addColumn<FakePorts::Node>("node");
    QTest::addColumn<int>("controller");
    QTest::addColumn<bool>("isListed");
    QTest::newRow("controller, can be opened") << FakePorts::WithNode << PORT_16550A << true;
    QTest::newRow("controller, cannot be opened") << FakePorts::WithoutNode << PORT_16550A << false;
    QTest::newRow("no controller") << FakePorts::WithNode << PORT_UNKNOWN << false;
}

void TestQextSerialEnumerator::aPortOfAnOldKernelIsListedIfItHasAController()
{
    QFETCH(FakePorts::Node, node);
    QFETCH(int, controller);
    QFETCH(bool, isListed);
    FakePorts computer;
    const QString port = computer.addPhantom(node);
    LibcInterposer::simulateController(controller);
    const auto noMore = qScopeGuard([] { LibcInterposer::clear(); });
    const int before = terminalDescriptors();
    QCOMPARE(namesOfPorts(), isListed ? QStringList(port) : QStringList());
    QCOMPARE(terminalDescriptors(), before);
    QCOMPARE(namesOfQtsPorts(), namesOfPorts());
}

void TestQextSerialEnumerator::aPortIsListedByTheTypeThatTheSystemShows_data()
{
    QTest::addColumn<QByteArray>("driver");
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("isListed");
    QTest::newRow("no controller") << QByteArray("port") << PORT_UNKNOWN << false;
    QTest::newRow("controller") << QByteArray("port") << PORT_16550A << true;
    QTest::newRow("driver without a controller type") << QByteArray("other") << PORT_UNKNOWN << true;
}

void TestQextSerialEnumerator::aPortIsListedByTheTypeThatTheSystemShows()
{
    QFETCH(QByteArray, driver);
    QFETCH(int, type);
    QFETCH(bool, isListed);
    FakePorts computer;
    const QString port = computer.addPortOfDriver(driver.constData(), type);
    LibcInterposer::clear();
    QCOMPARE(namesOfPorts(), isListed ? QStringList(port) : QStringList());
    QCOMPARE(LibcInterposer::openings("/dev/" + port.toLatin1()),
             0); // opening the port would change its DTR line
}

void TestQextSerialEnumerator::udevIsNotAskedAboutTheKernelsOwnTerminals()
{
    FakePorts computer;
    computer.plugUsb();
    for (const char *name : {"console", "ptmx", "tty", "tty0", "tty9", "tty63"})
        computer.addVirtual(QLatin1String(name));
    UdevFaultInjector::fail(UdevFaultInjector::None);
    QVERIFY(listedByUdev());
    // Udev is asked about this port only: a computer has 64 others, and each query takes time.
    QCOMPARE(UdevFaultInjector::deviceLookups(), 1);
}

void TestQextSerialEnumerator::withoutUdevOrTtysQtListsThePorts()
{
    {
        const std::unique_ptr<UMockdevTestbed, decltype(&g_object_unref)> bare(umockdev_testbed_new(),
                                                                               g_object_unref);
        QVERIFY(!listedByUdev());
    }
    FakePorts computer;
    computer.plugUsb();
    UdevFaultInjector::fail(UdevFaultInjector::NoContext);
    const auto again = qScopeGuard([] { UdevFaultInjector::fail(UdevFaultInjector::None); });
    QVERIFY(!listedByUdev());
    QCOMPARE(namesOfPorts(), namesOfQtsPorts());
}

void TestQextSerialEnumerator::withoutUdevsDatabaseTheKernelsIdsAreUsed()
{
    FakePorts computer;
    const QString port = computer.plugUsbWithoutUdev(UsbBridge::ftdi());
    const QList<QextPortInfo> ports = QextSerialEnumerator::getPorts();
    QCOMPARE(ports.size(), 1);
    const QextPortInfo expected = {port, "/dev/" + port, "FT232R USB UART", "USB", 0x0403, 0x6001};
    QVERIFY(ports.first() == expected);
}

void TestQextSerialEnumerator::idsAreUsbIdsIfTheBusIsUsbOrUnknown_data()
{
    QTest::addColumn<QByteArray>("bus");
    QTest::addColumn<QByteArray>("product");
    QTest::addColumn<bool>("isUsb");
    const auto row = [](const char *name, const QByteArray &bus, const QByteArray &product, bool isUsb) {
        QTest::newRow(name) << bus << product << isUsb;
    };
    row("usb-serial bus", "usb-serial", "6001", true);
    row("another bus", "pnp", "6001", false);
    row("unknown bus", "", "6001", true);
    row("USB without a product id", "usb", "", false);
}

void TestQextSerialEnumerator::idsAreUsbIdsIfTheBusIsUsbOrUnknown()
{
    QFETCH(QByteArray, bus);
    QFETCH(QByteArray, product);
    QFETCH(bool, isUsb);
    FakePorts computer;
    computer.plugOnBus(bus.isEmpty() ? nullptr : bus.constData(), "0403", product.constData());
    const QList<QextPortInfo> ports = QextSerialEnumerator::getPorts();
    QCOMPARE(ports.size(), 1);
    QCOMPARE(ports.first().enumName, isUsb ? QStringLiteral("USB") : QString());
    QCOMPARE(ports.first().vendorID, isUsb ? 0x0403 : 0);
    QCOMPARE(ports.first().productID, isUsb ? 0x6001 : 0);
}

void TestQextSerialEnumerator::portsAreReportedOnceAndOnRequestOnly()
{
    FakePorts computer;
    QextSerialEnumerator silent;
    const QSignalSpy silence(&silent, &QextSerialEnumerator::deviceDiscovered);
    Reports reports;
    reports.enumerator.setUpNotifications(); // the second time
    computer.plugUsb();
    QVERIFY(reports.arrived.wait());
    QCOMPARE(reports.arrived.count(), 1);
    QCOMPARE(silence.count(), 0);
}

void TestQextSerialEnumerator::everyEnumeratorReportsARemoval()
{
    FakePorts computer;
    Reports first;
    const QString name = computer.plugUsb();
    QVERIFY(first.arrived.wait());
    QCOMPARE(reportedBy(first.arrived).portName, name);

    const Reports later; // created after the arrival
    computer.unplug(name);
    QTRY_COMPARE(first.removed.count(), 1);
    QTRY_COMPARE(later.removed.count(), 1);
    QVERIFY(reportedBy(first.removed) == reportedBy(first.arrived));
    QVERIFY(reportedBy(later.removed) == reportedBy(first.arrived));
    QCOMPARE(later.arrived.count(), 0);
}

void TestQextSerialEnumerator::aSlotMayDestroyEnumerators()
{
    FakePorts computer;
    auto one = std::make_unique<QextSerialEnumerator>();
    auto other = std::make_unique<QextSerialEnumerator>();
    one->setUpNotifications();
    other->setUpNotifications();
    int reports = 0;
    connect(one.get(), &QextSerialEnumerator::deviceDiscovered, this, [&] {
        ++reports;
        other.reset();
        one.reset();
    });
    computer.plugUsb();
    QTRY_COMPARE(reports, 1);
    QCoreApplication::processEvents();

    Reports third;
    computer.plugUsb();
    QVERIFY(third.arrived.wait());
    QCOMPARE(reports, 1);
}

void TestQextSerialEnumerator::aRemovedPortIsClosedWhenItIsReported()
{
    MessageSpy log;
    FakePorts computer;
    const Reports one;
    const Reports other;
    const QString name = computer.plugUsb();
    const int before = terminalDescriptors();
    QextSerialPort port(name);
    QVERIFY(port.open(QIODevice::ReadWrite));
    QCOMPARE(terminalDescriptors(), before + 1);
    QCOMPARE(::write(computer.deviceDescriptor(name), ">", 1), 1);
    QTRY_COMPARE(port.bytesAvailable(), 1);

    int reports = 0;
    const auto look = [&] {
        ++reports;
        QCOMPARE(terminalDescriptors(), before);
        QCOMPARE(port.bytesAvailable(), 0);
        QCOMPARE(port.write("x"), -1);
    };
    connect(&one.enumerator, &QextSerialEnumerator::deviceRemoved, this, look);
    connect(&other.enumerator, &QextSerialEnumerator::deviceRemoved, this, look);
    computer.announce(name, "remove"); // the test bed's end stays open, so that no hang-up closes the line
    QTRY_COMPARE(reports, 2);
    QCOMPARE(log.messages(), QStringList{"C:The port " + name + " was closed: the port was removed"});
}

void TestQextSerialEnumerator::aPortOpenedDuringTheRemovalStaysOpen()
{
    // When the second enumerator reports that the first device is gone, the next device may already have its
    // name.
    FakePorts computer;
    Reports one;
    Reports other;
    const QString name = computer.plugUsb();
    QVERIFY(one.arrived.wait());
    QextSerialPort port(name);
    connect(&one.enumerator, &QextSerialEnumerator::deviceRemoved, &port,
            [&port] { port.open(QIODevice::ReadWrite); });
    computer.announce(name, "remove");
    QVERIFY(other.removed.wait());
    QCOMPARE(port.write("x"), 1);
}

void TestQextSerialEnumerator::theRemovalOfAnotherPortLeavesTheLineOpen()
{
    FakePorts computer;
    Reports reports;
    const QString name = computer.plugUsb();
    const QString another = computer.plugUsb();
    QTRY_COMPARE(reports.arrived.count(), 2);
    QextSerialPort port(name);
    QVERIFY(port.open(QIODevice::ReadWrite));
    computer.unplug(another);
    QVERIFY(reports.removed.wait());
    QCOMPARE(port.write("x"), 1);
}

void TestQextSerialEnumerator::anOpenErrorIsReportedAgainAfterTheRemoval()
{
    FakePorts computer;
    Reports reports;
    const QString name = computer.plugUsb();
    QVERIFY(reports.arrived.wait());
    QSerialPort otherProgram(name);
    QVERIFY(otherProgram.open(QIODevice::ReadWrite));

    MessageSpy log;
    QVERIFY(!QextSerialPort(name).open(QIODevice::ReadWrite));
    QCOMPARE(log.take().size(), 1);
    QVERIFY(!QextSerialPort(name).open(QIODevice::ReadWrite));
    QCOMPARE(log.take(), QStringList());
    computer.announce(name, "remove");
    QVERIFY(reports.removed.wait());
    QVERIFY(!QextSerialPort(name).open(QIODevice::ReadWrite));
    QCOMPARE(log.take().size(), 1);
}

QTEST_GUILESS_MAIN(TestQextSerialEnumerator)
#include "tst_qextserialenumerator.moc"
