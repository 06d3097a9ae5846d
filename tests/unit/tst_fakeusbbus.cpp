#include <QTest>

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <libudev.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QSerialPort>
#include <QSerialPortInfo>
#include <QSignalSpy>

#include "simulator/fakeusbbus.h"
#include "simulator/pluggedport.h"
#include "tests/support/plaintty.h"

namespace
{
// Runs this program again as a child process, to see the bed as another process does.
class Child
{
public:
    explicit Child(const QString &part)
    {
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QCoreApplication::applicationFilePath(), {part});
    }

    ~Child()
    {
        process.kill();
        process.waitForFinished();
    }

    // Returns the next line that the child prints; empty on a timeout.
    QByteArray line()
    {
        if (!QTest::qWaitFor([this] { return process.canReadLine(); }))
            return {};
        return process.readLine().trimmed();
    }

    QProcess process;
};

int listPorts()
{
    for (const QSerialPortInfo &port : QSerialPortInfo::availablePorts()) {
        printf("%s|%s|%04x:%04x|%s|%s|%s\n", qPrintable(port.portName()), qPrintable(port.systemLocation()),
               port.vendorIdentifier(), port.productIdentifier(), qPrintable(port.manufacturer()),
               qPrintable(port.description()), qPrintable(port.serialNumber()));
    }
    return 0;
}

// Prints tty events until the process is killed; prints "ready" before the first.
int watchPorts()
{
    udev *context = udev_new();
    udev_monitor *monitor = udev_monitor_new_from_netlink(context, "udev");
    udev_monitor_filter_add_match_subsystem_devtype(monitor, "tty", nullptr);
    udev_monitor_enable_receiving(monitor);
    puts("ready");
    fflush(stdout);
    pollfd readable{udev_monitor_get_fd(monitor), POLLIN, 0};
    while (poll(&readable, 1, -1) > 0) {
        udev_device *device = udev_monitor_receive_device(monitor);
        if (!device)
            continue;
        const auto property = [device](const char *name) {
            const char *value = udev_device_get_property_value(device, name);
            return value ? value : "-";
        };
        printf("%s|%s|%s:%s|%s|%s\n", udev_device_get_action(device), udev_device_get_devnode(device),
               property("ID_VENDOR_ID"), property("ID_MODEL_ID"), property("ID_MODEL"), property("ID_BUS"));
        fflush(stdout);
        udev_device_unref(device);
    }
    return 0;
}

// Opens a port as a plain program does, and reads until the line hangs up.
int holdPort(const QByteArray &device)
{
    const int line = open(device.constData(), O_RDWR | O_NOCTTY);
    puts(line >= 0 ? "open" : "refused");
    fflush(stdout);
    char byte = 0;
    while (read(line, &byte, 1) > 0) {
    }
    puts("hung up");
    return 0;
}

QByteArray contentOf(const QByteArray &path)
{
    QFile file(QFile::decodeName(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : "(unreadable)";
}
} // namespace

Q_DECLARE_METATYPE(UsbBridge)

class tst_FakeUsbBus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void childSeesPorts_data();
    void childSeesPorts();
    void childSeesSeveralPorts();
    void childSeesArrivalAndRemoval_data();
    void childSeesArrivalAndRemoval();
    void childIsHungUp();
    void sysfsIsRealistic();
    void lineIsRaw();
    void ttyNames();
    void bedsOneAfterAnother();
    void replugsWithoutEnd();
    void hostMayBlock();
    void longRepliesComeWhole();
    void serialPortSeesTheUnplugging();
    void deviceKeepsWhatIsSavedOverReplug();
    void waitsForWhatHappens();
    void foreignPortsListenOnly();
    void conversationIsTold();
};

void tst_FakeUsbBus::initTestCase()
{
    QVERIFY2(FakeUsbBus::isPossible(), "Run it under umockdev-wrapper.");
}

void tst_FakeUsbBus::childSeesPorts_data()
{
    QTest::addColumn<UsbBridge>("bridge");
    QTest::addColumn<QByteArray>("expected");

    QTest::newRow("FTDI") << UsbBridge::ftdi() << QByteArray("0403:6001|FTDI|FT232R USB UART|A6007T11");
    QTest::newRow("Prolific") << UsbBridge::prolific()
                              << QByteArray("067b:2303|Prolific Technology Inc.|USB-Serial Controller|");
    QTest::newRow("another FTDI") << UsbBridge::foreignFtdi()
                                  << QByteArray("0403:6015|FTDI|FT230X Basic UART|DN03XKQ2");
    QTest::newRow("CH340") << UsbBridge::foreignCh340() << QByteArray("1a86:7523|1a86|USB Serial|");
    QTest::newRow("ids of one digit")
        << UsbBridge{0x0001, 0x000A, "V", "P", "S", "ftdi_sio"} << QByteArray("0001:000a|V|P|S");
}

void tst_FakeUsbBus::childSeesPorts()
{
    QFETCH(UsbBridge, bridge);
    QFETCH(QByteArray, expected);
    FakeUsbBus bed;
    const QByteArray tty = bed.plug(bridge);
    QVERIFY(!tty.isEmpty());

    Child lister("list-ports");
    QVERIFY(lister.process.waitForFinished());
    QCOMPARE(lister.process.readAll(), tty + "|/dev/" + tty + '|' + expected + '\n');

    bed.unplug(tty);
    Child again("list-ports");
    QVERIFY(again.process.waitForFinished());
    QCOMPARE(again.process.readAll(), QByteArray());
}

void tst_FakeUsbBus::childSeesSeveralPorts()
{
    FakeUsbBus bed;
    const QByteArray first = bed.plug(UsbBridge::ftdi());
    const QByteArray second = bed.plug(UsbBridge::prolific());
    const QByteArray third = bed.plug(UsbBridge::ftdi());
    bed.unplug(second);

    Child lister("list-ports");
    QVERIFY(lister.process.waitForFinished());
    const QByteArray ports = lister.process.readAll();
    QCOMPARE(ports.count('\n'), 2);
    QVERIFY(ports.contains(first + "|/dev/" + first + "|0403:6001|"));
    QVERIFY(ports.contains(third + "|/dev/" + third + "|0403:6001|"));
}

void tst_FakeUsbBus::childSeesArrivalAndRemoval_data()
{
    QTest::addColumn<UsbBridge>("bridge");
    QTest::addColumn<QByteArray>("properties");

    QTest::newRow("FTDI") << UsbBridge::ftdi() << QByteArray("0403:6001|FT232R_USB_UART|usb");
    QTest::newRow("Prolific") << UsbBridge::prolific() << QByteArray("067b:2303|USB-Serial_Controller|usb");
}

void tst_FakeUsbBus::childSeesArrivalAndRemoval()
{
    QFETCH(UsbBridge, bridge);
    QFETCH(QByteArray, properties);
    FakeUsbBus bed;
    Child watcher("watch");
    QCOMPARE(watcher.line(), QByteArray("ready"));

    PluggedTolvar tolvar(bed, {}, bridge);
    for (int time = 0; time < 3; ++time) {
        const QByteArray removal = "remove|/dev/" + tolvar.ttyName() + '|' + properties;
        tolvar.plug();
        const QByteArray event = "|/dev/" + tolvar.ttyName() + '|' + properties;
        QByteArray told = watcher.line();
        if (told == removal)
            told = watcher.line(); // later versions of umockdev announce removals themselves, too
        QCOMPARE(told, "add" + event);
        tolvar.unplug();
        QCOMPARE(watcher.line(), "remove" + event);
    }
}

void tst_FakeUsbBus::childIsHungUp()
{
    FakeUsbBus bed;
    PluggedTolvar tolvar(bed);
    tolvar.plug();
    Child holder("hold:/dev/" + QString::fromLatin1(tolvar.ttyName()));
    QCOMPARE(holder.line(), QByteArray("open"));
    tolvar.unplug();
    QCOMPARE(holder.line(), QByteArray("hung up"));
}

void tst_FakeUsbBus::sysfsIsRealistic()
{
    FakeUsbBus bed;
    const QByteArray tty = bed.plug(UsbBridge::prolific());
    const QByteArray device = "/sys/class/tty/" + tty + "/device";
    // From the tty upwards: the serial port of the bridge, its interface, the bridge.
    QCOMPARE(QFileInfo(QFile::decodeName(device)).canonicalFilePath().section('/', -1).toLatin1(), tty);
    QCOMPARE(contentOf(device + "/../bInterfaceNumber"), QByteArray("00"));
    QCOMPARE(contentOf(device + "/../../idVendor"), QByteArray("067b"));
    QCOMPARE(contentOf(device + "/../../idProduct"), QByteArray("2303"));
    QCOMPARE(contentOf(device + "/../../manufacturer"), QByteArray("Prolific Technology Inc."));
    QCOMPARE(contentOf(device + "/../../product"), QByteArray("USB-Serial Controller"));
    QCOMPARE(contentOf(device + "/../../serial"), QByteArray("(unreadable)")); // the bridge has none
    QVERIFY(contentOf("/sys/class/tty/" + tty + "/dev").startsWith("188:"));
    QCOMPARE(QFileInfo(QFile::decodeName(device + "/driver")).symLinkTarget().section('/', -1),
             QStringLiteral("pl2303"));

    bed.unplug(tty);
    QVERIFY(!QFile::exists(QFile::decodeName("/sys/class/tty/" + tty)));
    QVERIFY(!QFile::exists(QFile::decodeName("/dev/" + tty)));
    QVERIFY(!QFile::exists(QStringLiteral("/sys/bus/usb/devices/1-1")));
}

void tst_FakeUsbBus::lineIsRaw()
{
    FakeUsbBus bed;
    const QByteArray tty = bed.plug(UsbBridge::ftdi());
    const PlainTty line(tty);
    termios settings{};
    QCOMPARE(tcgetattr(line.descriptor, &settings), 0);
    QCOMPARE(settings.c_lflag & tcflag_t(ECHO | ICANON | ISIG | IEXTEN), tcflag_t(0));
    QCOMPARE(settings.c_iflag & tcflag_t(ICRNL | INLCR | IGNCR | IXON | ISTRIP), tcflag_t(0));
    QCOMPARE(settings.c_oflag & tcflag_t(OPOST), tcflag_t(0));

    const QByteArray bytes("\x00\x02\x03\x04\r\n\x11\x13\x1A\x7F\xFF", 11);
    char read[32];
    QVERIFY(line.write(bytes));
    QCOMPARE(::read(bed.descriptor(tty), read, sizeof read), bytes.size());
    QCOMPARE(QByteArray(read, bytes.size()), bytes);
    QCOMPARE(::write(bed.descriptor(tty), bytes.constData(), size_t(bytes.size())), bytes.size());
    QCOMPARE(line.readUntil("\xFF"), bytes);
}

void tst_FakeUsbBus::ttyNames()
{
    QByteArray last;
    {
        FakeUsbBus bed;
        last = bed.plug(UsbBridge::ftdi());
        const QByteArray next = bed.plug(UsbBridge::ftdi());
        QCOMPARE(next.mid(6).toInt(), last.mid(6).toInt() + 1);
        last = next;
    }
    {
        FakeUsbBus bed; // continues where the last bed stopped
        QCOMPARE(bed.plug(UsbBridge::ftdi()).mid(6).toInt(), last.mid(6).toInt() + 1);
    }
    FakeUsbBus bed(42);
    QCOMPARE(bed.plug(UsbBridge::ftdi()), QByteArray("ttyUSB42"));
    QCOMPARE(bed.plug(UsbBridge::ftdi()), QByteArray("ttyUSB43"));
    bed.unplug("ttyUSB42");
    QCOMPARE(bed.plug(UsbBridge::ftdi()), QByteArray("ttyUSB44"));
    QCOMPARE(bed.descriptor("ttyUSB42"), -1);
    QVERIFY(bed.descriptor("ttyUSB43") >= 0);
    bed.unplug("ttyUSB42"); // already removed
}

void tst_FakeUsbBus::bedsOneAfterAnother()
{
    for (int time = 0; time < 10; ++time) {
        FakeUsbBus bed;
        PluggedTolvar tolvar(bed);
        QVERIFY(tolvar.plug());
        QCOMPARE(QSerialPortInfo::availablePorts().size(), 1);
        QCOMPARE(QSerialPortInfo::availablePorts().constFirst().portName().toLatin1(), tolvar.ttyName());
        const PlainTty line(tolvar.ttyName());
        QVERIFY(line.write("C\r\n"));
        QCOMPARE(line.readUntil(">"), QByteArray("\r\n>"));
        Child lister("list-ports");
        QVERIFY(lister.line().startsWith(tolvar.ttyName() + '|'));
    }
}

void tst_FakeUsbBus::replugsWithoutEnd()
{
    FakeUsbBus bed;
    PluggedTolvar tolvar(bed);
    QByteArray last;
    for (int time = 1; time <= 50; ++time) {
        QVERIFY(tolvar.replug());
        QVERIFY(tolvar.ttyName() != last);
        last = tolvar.ttyName();
        const PlainTty line(last);
        QVERIFY(line.write("C\r\n"));
        QCOMPARE(line.readUntil(">"), QByteArray("\r\n>"));
        QCOMPARE(tolvar.state().sessions, time);
        tolvar.unplug();
        QVERIFY(line.isHungUp());
        QCOMPARE(QSerialPortInfo::availablePorts().size(), 0);
    }
}

void tst_FakeUsbBus::hostMayBlock()
{
    FakeUsbBus bed;
    DeviceConfig setup;
    setup.delays.scan = 50;
    PluggedTolvar tolvar(bed, setup);
    tolvar.plug();
    const PlainTty line(tolvar.ttyName());
    QVERIFY(line.write("C\r\n"));
    QCOMPARE(line.readUntil(">"), QByteArray("\r\n>"));

    // Sends at the host's pace without an event loop, and records each byte's time of arrival.
    constexpr int pause = 10; // milliseconds
    const QByteArray command = "scan\r\n";
    for (const char byte : command) {
        const qsizetype before = tolvar.state().bytes.size();
        QVERIFY(line.write(QByteArray(1, byte)));
        while (tolvar.state().bytes.size() == before)
            QTest::qSleep(1);
        QTest::qSleep(pause);
    }
    QVERIFY(line.readUntil("\x03\r\n>").contains("<scan_results>"));
    const QList<TolvarByte> bytes = tolvar.state().bytes.mid(3);
    QCOMPARE(bytes.size(), 6);
    for (qsizetype i = 1; i < bytes.size(); ++i)
        QVERIFY(bytes.at(i).time - bytes.at(i - 1).time >= pause * qint64{1000000});
}

void tst_FakeUsbBus::longRepliesComeWhole()
{
    FakeUsbBus bed;
    DeviceConfig setup;
    setup.logText.clear();
    for (int number = 0; number < 20000; ++number)
        setup.logText += "line " + QByteArray::number(number) + '\n';
    PluggedTolvar tolvar(bed, setup);
    tolvar.plug();
    const PlainTty line(tolvar.ttyName());
    QVERIFY(line.write("C\r\nget_log_file\r\nsave\r\n"));
    // More bytes than the line can hold are sent before the first one is read.
    QVERIFY(tolvar.waitFor([](const TolvarState &state) { return state.lines.size() == 3; }));
    QTest::qWait(50);
    const QByteArray expected =
        "\r\n>get_log_file\r\n\x02<log_file>" + setup.logText + "</log_file>\x03\r\n>save\r\n\r\n>";
    QCOMPARE(line.readUntil("save\r\n\r\n>"), expected);
}

void tst_FakeUsbBus::serialPortSeesTheUnplugging()
{
    FakeUsbBus bed;
    PluggedTolvar tolvar(bed);
    tolvar.plug();
    QSerialPort port(QString::fromLatin1(tolvar.ttyName()));
    port.setBaudRate(115200);
    QVERIFY2(port.open(QIODevice::ReadWrite), qPrintable(port.errorString()));
    port.write("C\r\n");
    QTRY_COMPARE(port.bytesAvailable(), 3);
    QCOMPARE(port.readAll(), QByteArray("\r\n>"));
    tolvar.unplug();
    // Whether the library reports the hang-up depends on its version; the tty always reports it.
    const auto hasHungUp = [&port] {
        pollfd tty{port.handle(), 0, 0};
        return ::poll(&tty, 1, 0) == 1 && (tty.revents & POLLHUP);
    };
    QVERIFY(hasHungUp());
    port.close();
}

void tst_FakeUsbBus::deviceKeepsWhatIsSavedOverReplug()
{
    FakeUsbBus bed;
    PluggedTolvar tolvar(bed);
    tolvar.plug();
    QVERIFY(!tolvar.plug()); // it is already plugged in
    {
        const PlainTty line(tolvar.ttyName());
        QVERIFY(line.write("C\r\nsetssid kept\r\nsave\r\nsetssid lost\r\n"));
        QVERIFY(tolvar.waitFor([](const TolvarState &state) { return state.pending.network == "lost"; }));
    }
    QVERIFY(tolvar.replug());
    QVERIFY(tolvar.isPlugged());
    QCOMPARE(tolvar.state().pending.network, QByteArray("kept"));
    QVERIFY(!tolvar.state().awake);
    const PlainTty line(tolvar.ttyName());
    QVERIFY(line.write("C\r\nget\r\nexit\r\n"));
    QVERIFY(tolvar.waitFor([](const TolvarState &state) { return state.exited; }));
    QVERIFY(line.readUntil("exit\r\n").contains("<network_name>kept</network_name>"));
    QCOMPARE(tolvar.state().lineTexts(),
             QList<QByteArray>({"C", "setssid kept", "save", "setssid lost", "C", "get", "exit"}));
}

void tst_FakeUsbBus::waitsForWhatHappens()
{
    FakeUsbBus bed;
    PluggedTolvar tolvar(bed);
    tolvar.plug();
    const PlainTty line(tolvar.ttyName());
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!tolvar.waitFor([](const TolvarState &state) { return state.awake; }, 60));
    QVERIFY(clock.elapsed() >= 60);

    // Events of the host are processed while it waits: here one of them wakes the device.
    QTimer::singleShot(20, &tolvar, [&line] { line.write("C\r\n"); });
    QVERIFY(tolvar.waitFor([](const TolvarState &state) { return state.awake; }));
    QVERIFY(tolvar.waitFor([](const TolvarState &state) { return state.awake; }, 0));

    tolvar.reconfigure([](DeviceConfig &setup) { setup.firmwareVersion = "A058"; });
    QVERIFY(line.write("get\r\n"));
    QVERIFY(line.readUntil("\x03\r\n>").contains("A058"));
}

void tst_FakeUsbBus::foreignPortsListenOnly()
{
    FakeUsbBus bed;
    ForeignPort first(bed);
    ForeignPort second(bed, UsbBridge::foreignCh340());
    QVERIFY(first.plug());
    QVERIFY(second.plug());
    const PlainTty line(second.ttyName());
    QVERIFY(line.write("C\r\nget\r\n"));
    QVERIFY(second.waitUntil([&second] { return second.received() == "C\r\nget\r\n"; }));
    QCOMPARE(first.received(), QByteArray());
    pollfd readable{line.descriptor, POLLIN, 0};
    QCOMPARE(poll(&readable, 1, 50), 0);
    second.unplug();
    QVERIFY(line.isHungUp());
}

void tst_FakeUsbBus::conversationIsTold()
{
    FakeUsbBus bed;
    PluggedTolvar tolvar(bed);
    QSignalSpy spy(&tolvar, &PluggedTolvar::conversation);
    tolvar.plug();
    const PlainTty line(tolvar.ttyName());
    QVERIFY(line.write("C\r\nget_log_file\r\nexit\r\n"));
    QTRY_COMPARE(spy.size(), 8);
    QList<SimulatedTolvar::Speech> kinds;
    for (const QVariantList &said : std::as_const(spy))
        kinds += said.at(0).value<SimulatedTolvar::Speech>();
    std::sort(kinds.begin(), kinds.end()); // lines are reported as they arrive, in one piece or in three
    using Tolvar = SimulatedTolvar;
    QCOMPARE(kinds,
             QList<Tolvar::Speech>({Tolvar::HostLine, Tolvar::HostLine, Tolvar::HostLine, Tolvar::Reply,
                                    Tolvar::Prompt, Tolvar::Prompt, Tolvar::Note, Tolvar::Note}));
    QCOMPARE(spy.first().at(1).toByteArray(), QByteArray("C"));
    QCOMPARE(spy.last().at(1).toByteArray(), QByteArray("left setup mode"));
}

int main(int argc, char **argv)
{
    const QByteArray part = argc > 1 ? argv[1] : "";
    if (part == "list-ports")
        return listPorts();
    if (part == "watch")
        return watchPorts();
    if (part.startsWith("hold:"))
        return holdPort(part.mid(5));
    QCoreApplication application(argc, argv);
    tst_FakeUsbBus test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_fakeusbbus.moc"
