#include <umockdev.h>

#include <memory>

#include <QFile>
#include <QScopeGuard>
#include <QSerialPort>
#include <QSerialPortInfo>
#include <QSignalSpy>
#include <QTest>

#include <linux/serial.h>
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
    void aComputerWithoutPortsHasAnEmptyList();
    void thePortsAreListed();
    void thePortsAreListedInTheSystemsOrder();
    void theListIsTheToolkits();
    void aPortOfItsDriversIsListedWithAControllerBehindIt_data();
    void aPortOfItsDriversIsListedWithAControllerBehindIt();
    void aPortIsListedByTheTypeThatTheSystemShows_data();
    void aPortIsListedByTheTypeThatTheSystemShows();
    void theKernelsOwnTerminalsAreNotAskedAbout();
    void whereUdevCantBeAskedTheToolkitIs();
    void whereTheSystemHasNoTtysTheToolkitIsAskedToo();
    void thisComputersListIsTheToolkits();
    void whereUdevKnowsNothingTheKernelsIdsAreTaken();
    void idsAreUsbIdsByTheBus_data();
    void idsAreUsbIdsByTheBus();
    void nothingIsToldBeforeItIsAskedFor();
    void askingTwiceTellsOnce();
    void everyEnumeratorIsTold();
    void anEnumeratorMayGoInsideASlot();
    void anEnumeratorThatComesLaterIsTold();
    void aRemovedPortIsClosedWhenItIsTold();
    void aPortOpenedInsideTheRemovalStaysOpen();
    void anotherPortsRemovalLeavesTheLineAlone();
    void aRefusalIsNamedAgainAfterThePortHasGone();
};

namespace
{

QextPortInfo toldOf(const QSignalSpy &spy)
{
    return spy.value(0).value(0).value<QextPortInfo>();
}

/// An enumerator with notification enabled, and what it has reported since.
struct Telling {
    QextSerialEnumerator enumerator;
    QSignalSpy arrived{&enumerator, &QextSerialEnumerator::deviceDiscovered};
    QSignalSpy removed{&enumerator, &QextSerialEnumerator::deviceRemoved};

    Telling() { enumerator.setUpNotifications(); }
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

QStringList namesOfToolkitsPorts()
{
    QStringList names;
    const QList<QSerialPortInfo> available = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &info : available)
        names += info.portName();
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

void TestQextSerialEnumerator::aComputerWithoutPortsHasAnEmptyList()
{
    FakePorts computer;
    computer.addPhantom();
    QVERIFY(QextSerialEnumerator::getPorts().isEmpty());
}

void TestQextSerialEnumerator::thePortsAreListed()
{
    FakePorts computer;
    const QString pci = computer.plugOnBus("pci", "0x8086", "0x1c3d");
    const QString ftdi = computer.plugUsb();
    const QString prolific = computer.plugUsb(UsbBridge::prolific());
    QHash<QString, QextPortInfo> ports;
    for (const QextPortInfo &info : QextSerialEnumerator::getPorts())
        ports.insert(info.portName, info);
    QCOMPARE(ports.size(), 3);
    const auto usb = QStringLiteral("USB");
    const QLatin1String dev("/dev/");
    QVERIFY(ports.value(ftdi) ==
            (QextPortInfo{ftdi, dev + ftdi, QStringLiteral("FT232R USB UART"), usb, 0x0403, 0x6001}));
    QVERIFY(ports.value(prolific) ==
            (QextPortInfo{prolific, dev + prolific, QStringLiteral("USB-Serial Controller"), usb, 0x067b,
                          0x2303}));
    QVERIFY(ports.value(pci) == (QextPortInfo{pci, dev + pci, QString(), QString(), 0, 0}));
}

void TestQextSerialEnumerator::thePortsAreListedInTheSystemsOrder()
{
    FakePorts computer;
    for (int i = 0; i < 5; ++i)
        computer.plugUsb();
    QCOMPARE(namesOfToolkitsPorts().size(), 5);
    QCOMPARE(namesOfPorts(), namesOfToolkitsPorts());
}

void TestQextSerialEnumerator::theListIsTheToolkits()
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
    QStringList withoutDevice;
    for (const ListedPort &port : *listed) {
        if (virtualPorts.contains(port.name) || noPorts.contains(port.name))
            withoutDevice += port.name;
    }
    QCOMPARE(withoutDevice, virtualPorts);
    QCOMPARE(listed->size(), 5 + virtualPorts.size());
}

void TestQextSerialEnumerator::aPortOfItsDriversIsListedWithAControllerBehindIt_data()
{
    QTest::addColumn<FakePorts::Node>("node");
    QTest::addColumn<int>("controller");
    QTest::addColumn<bool>("isListed");
    QTest::newRow("one that can be opened") << FakePorts::WithNode << PORT_16550A << true;
    QTest::newRow("one that can't") << FakePorts::WithoutNode << PORT_16550A << false;
    QTest::newRow("none") << FakePorts::WithNode << PORT_UNKNOWN << false;
}

void TestQextSerialEnumerator::aPortOfItsDriversIsListedWithAControllerBehindIt()
{
    QFETCH(FakePorts::Node, node);
    QFETCH(int, controller);
    QFETCH(bool, isListed);
    FakePorts computer;
    const QString port = computer.addPhantom(node);
    LibcInterposer::pretendController(controller);
    const auto noMore = qScopeGuard([] { LibcInterposer::clear(); });
    const int before = terminalDescriptors();
    QCOMPARE(namesOfPorts(), isListed ? QStringList(port) : QStringList());
    QCOMPARE(terminalDescriptors(), before);
    QCOMPARE(namesOfToolkitsPorts(), isListed ? QStringList(port) : QStringList());
}

void TestQextSerialEnumerator::aPortIsListedByTheTypeThatTheSystemShows_data()
{
    QTest::addColumn<QByteArray>("driver");
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("isListed");
    QTest::newRow("nothing is behind it") << QByteArray("serial8250") << PORT_UNKNOWN << false;
    QTest::newRow("a controller is behind it") << QByteArray("serial8250") << PORT_16550A << true;
    QTest::newRow("a later kernel's, nothing") << QByteArray("port") << PORT_UNKNOWN << false;
    QTest::newRow("a later kernel's, a controller") << QByteArray("port") << PORT_16550A << true;
    QTest::newRow("another driver's port has no type") << QByteArray("other") << PORT_UNKNOWN << true;
}

void TestQextSerialEnumerator::aPortIsListedByTheTypeThatTheSystemShows()
{
    QFETCH(QByteArray, driver);
    QFETCH(int, type);
    QFETCH(bool, isListed);
    FakePorts computer;
    const QString port = computer.addPortOfDriver(driver, type);
    LibcInterposer::clear();
    QCOMPARE(namesOfPorts(), isListed ? QStringList(port) : QStringList());
    QCOMPARE(LibcInterposer::openings("/dev/" + port.toLatin1()),
             0); // opening the port would change its DTR line
}

void TestQextSerialEnumerator::theKernelsOwnTerminalsAreNotAskedAbout()
{
    FakePorts computer;
    computer.plugUsb();
    for (const char *name : {"console", "ptmx", "tty", "tty0", "tty9", "tty63"})
        computer.addVirtual(QLatin1String(name));
    UdevFaultInjector::fail(UdevFaultInjector::None);
    QVERIFY(listedByUdev());
    // Udev is asked about this port only: a computer has 64 others, and each query takes time.
    QCOMPARE(UdevFaultInjector::timesAsked(), 1);
}

void TestQextSerialEnumerator::whereUdevCantBeAskedTheToolkitIs()
{
    FakePorts computer;
    computer.plugUsb();
    UdevFaultInjector::fail(UdevFaultInjector::NoContext);
    const auto again = qScopeGuard([] { UdevFaultInjector::fail(UdevFaultInjector::None); });
    QVERIFY(!listedByUdev());
    QCOMPARE(namesOfPorts(), namesOfToolkitsPorts());
}

void TestQextSerialEnumerator::whereTheSystemHasNoTtysTheToolkitIsAskedToo()
{
    const std::unique_ptr<UMockdevTestbed, decltype(&g_object_unref)> bare(umockdev_testbed_new(),
                                                                           g_object_unref);
    QVERIFY(!listedByUdev());
    QCOMPARE(namesOfPorts(), namesOfToolkitsPorts());
}

void TestQextSerialEnumerator::thisComputersListIsTheToolkits()
{
    // Without mock ports. Qt also lists the ports that a current kernel offers without any hardware.
    const auto listed = listedByUdev();
    if (!listed)
        return;
    QList<ListedPort> expected;
    const QList<ListedPort> portsOfQt = listedByQt();
    for (const ListedPort &port : portsOfQt) {
        QFile type(QStringLiteral("/sys/class/tty/%1/type").arg(port.name));
        if (!type.open(QIODevice::ReadOnly) || type.readAll() != "0\n")
            expected += port;
    }
    QCOMPARE(described(*listed), described(expected));
}

void TestQextSerialEnumerator::whereUdevKnowsNothingTheKernelsIdsAreTaken()
{
    FakePorts computer;
    const QString port = computer.plugUsbWithoutUdev(UsbBridge::ftdi());
    const QList<QextPortInfo> ports = QextSerialEnumerator::getPorts();
    QCOMPARE(ports.size(), 1);
    QVERIFY(ports.first() == (QextPortInfo{port, "/dev/" + port, QStringLiteral("FT232R USB UART"),
                                           QStringLiteral("USB"), 0x0403, 0x6001}));
}

void TestQextSerialEnumerator::idsAreUsbIdsByTheBus_data()
{
    QTest::addColumn<QByteArray>("bus");
    QTest::addColumn<QByteArray>("product");
    QTest::addColumn<bool>("isUsb");
    QTest::newRow("a port on USB") << QByteArray("usb") << QByteArray("6001") << true;
    QTest::newRow("a port that a bridge's driver made")
        << QByteArray("usb-serial") << QByteArray("6001") << true;
    QTest::newRow("a port on another bus") << QByteArray("pnp") << QByteArray("6001") << false;
    QTest::newRow("a port on a bus that isn't named") << QByteArray() << QByteArray("6001") << true;
    QTest::newRow("a port on USB without a product id") << QByteArray("usb") << QByteArray() << false;
}

void TestQextSerialEnumerator::idsAreUsbIdsByTheBus()
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

void TestQextSerialEnumerator::nothingIsToldBeforeItIsAskedFor()
{
    FakePorts computer;
    QextSerialEnumerator silent;
    QextSerialEnumerator telling;
    QSignalSpy silence(&silent, &QextSerialEnumerator::deviceDiscovered);
    QSignalSpy told(&telling, &QextSerialEnumerator::deviceDiscovered);
    telling.setUpNotifications();
    computer.plugUsb();
    QVERIFY(told.wait());
    QCOMPARE(silence.count(), 0);
}

void TestQextSerialEnumerator::askingTwiceTellsOnce()
{
    FakePorts computer;
    QextSerialEnumerator enumerator;
    enumerator.setUpNotifications();
    enumerator.setUpNotifications();
    QSignalSpy told(&enumerator, &QextSerialEnumerator::deviceDiscovered);
    computer.plugUsb();
    QVERIFY(told.wait());
    QCOMPARE(told.count(), 1);
}

void TestQextSerialEnumerator::everyEnumeratorIsTold()
{
    FakePorts computer;
    const Telling one;
    const Telling other;
    const QString name = computer.plugUsb();
    QTRY_COMPARE(one.arrived.count(), 1);
    QTRY_COMPARE(other.arrived.count(), 1);
    computer.unplug(name);
    QTRY_COMPARE(one.removed.count(), 1);
    QTRY_COMPARE(other.removed.count(), 1);
    const QextPortInfo arrived = toldOf(one.arrived);
    QCOMPARE(arrived.portName, name);
    QVERIFY(toldOf(other.arrived) == arrived);
    QVERIFY(toldOf(one.removed) == arrived);
    QVERIFY(toldOf(other.removed) == arrived);
    QCOMPARE(one.arrived.count() + other.arrived.count(), 2);
}

void TestQextSerialEnumerator::anEnumeratorMayGoInsideASlot()
{
    FakePorts computer;
    auto one = std::make_unique<QextSerialEnumerator>();
    auto other = std::make_unique<QextSerialEnumerator>();
    one->setUpNotifications();
    other->setUpNotifications();
    int told = 0;
    connect(one.get(), &QextSerialEnumerator::deviceDiscovered, this, [&] {
        ++told;
        other.reset();
        one.reset();
    });
    computer.plugUsb();
    QTRY_COMPARE(told, 1);
    QCoreApplication::processEvents();

    Telling third;
    computer.plugUsb();
    QVERIFY(third.arrived.wait());
    QCOMPARE(told, 1);
}

void TestQextSerialEnumerator::anEnumeratorThatComesLaterIsTold()
{
    FakePorts computer;
    Telling first;
    const QString name = computer.plugUsb();
    QVERIFY(first.arrived.wait());

    Telling later;
    computer.unplug(name);
    QVERIFY(later.removed.wait());
    QVERIFY(toldOf(later.removed) == toldOf(first.arrived));
    QCOMPARE(later.arrived.count(), 0);
}

void TestQextSerialEnumerator::aRemovedPortIsClosedWhenItIsTold()
{
    MessageSpy log;
    FakePorts computer;
    const Telling one;
    const Telling other;
    const QString name = computer.plugUsb();
    const int before = terminalDescriptors();

    QextSerialPort first(name);
    QextSerialPort second(name);
    QVERIFY(first.open(QIODevice::ReadWrite));
    QVERIFY(second.open(QIODevice::ReadWrite));
    QCOMPARE(terminalDescriptors(), before + 1);
    QCOMPARE(::write(computer.deviceDescriptor(name), ">", 1), 1);
    QTRY_COMPARE(second.bytesAvailable(), 1);

    int told = 0;
    const auto look = [&] {
        ++told;
        QCOMPARE(terminalDescriptors(), before);
        QCOMPARE(first.bytesAvailable(), 0);
        QCOMPARE(second.bytesAvailable(), 0);
        QCOMPARE(first.write("x"), -1);
        QCOMPARE(second.write("x"), -1);
    };
    connect(&one.enumerator, &QextSerialEnumerator::deviceRemoved, this, look);
    connect(&other.enumerator, &QextSerialEnumerator::deviceRemoved, this, look);
    computer.announce(name, "remove"); // the test bed's end stays open, so that no hang-up closes the line
    QTRY_COMPARE(told, 2);
    QCOMPARE(log.messages(), QStringList{"C:The port " + name + " was closed: the port was removed"});
}

void TestQextSerialEnumerator::aPortOpenedInsideTheRemovalStaysOpen()
{
    // When the second enumerator reports that the first device is gone, the next device may already have its
    // name.
    FakePorts computer;
    Telling one;
    Telling other;
    const QString name = computer.plugUsb();
    QVERIFY(one.arrived.wait());
    QextSerialPort port(name);
    connect(&one.enumerator, &QextSerialEnumerator::deviceRemoved, &port,
            [&port] { port.open(QIODevice::ReadWrite); });
    computer.announce(name, "remove");
    QVERIFY(other.removed.wait());
    QCOMPARE(port.write("x"), 1);
}

void TestQextSerialEnumerator::anotherPortsRemovalLeavesTheLineAlone()
{
    FakePorts computer;
    Telling told;
    const QString name = computer.plugUsb();
    const QString another = computer.plugUsb();
    QTRY_COMPARE(told.arrived.count(), 2);
    QextSerialPort port(name);
    QVERIFY(port.open(QIODevice::ReadWrite));
    computer.unplug(another);
    QVERIFY(told.removed.wait());
    QCOMPARE(toldOf(told.removed).portName, another);
    QCOMPARE(port.write("x"), 1);
    QCOMPARE(::write(computer.deviceDescriptor(name), ">", 1), 1);
    QTRY_COMPARE(port.bytesAvailable(), 1);
}

void TestQextSerialEnumerator::aRefusalIsNamedAgainAfterThePortHasGone()
{
    FakePorts computer;
    Telling told;
    const QString name = computer.plugUsb();
    QVERIFY(told.arrived.wait());
    QSerialPort otherProgram(name);
    QVERIFY(otherProgram.open(QIODevice::ReadWrite));

    MessageSpy log;
    QVERIFY(!QextSerialPort(name).open(QIODevice::ReadWrite));
    QVERIFY(!QextSerialPort(name).open(QIODevice::ReadWrite));
    const QStringList once = log.take();
    QCOMPARE(once.size(), 1);
    QVERIFY(once.first().startsWith("C:Opening the port " + name + " failed: Device or resource busy; "));
    computer.announce(name, "remove");
    QVERIFY(told.removed.wait());
    QVERIFY(!QextSerialPort(name).open(QIODevice::ReadWrite));
    QCOMPARE(log.take(), once);
}

QTEST_GUILESS_MAIN(TestQextSerialEnumerator)
#include "tst_qextserialenumerator.moc"
