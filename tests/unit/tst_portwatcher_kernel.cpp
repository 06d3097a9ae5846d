#include <QFile>
#include <QtEndian>
#include <QTest>

#include <libudev.h>
#include <linux/filter.h>
#include <linux/netlink.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include "serial/portwatcher_poll.h"
#include "serial/portwatcher_udev.h"
#include "serial/qextserialenumerator.h"
#include "tests/support/fakeports.h"

// The events are real here: they come through the kernel's socket, whose buffer can be full. Only the ports
// are mocks. The process has its own network namespace, so that no other program receives the events, and its
// own /run, where udev seems to run.

namespace
{
constexpr unsigned udevGroup = 2;
constexpr const char *udevControl = "/run/udev/control"; // exists while udev runs

/// The header that udev writes before the properties of an event.
struct Header {
    char prefix[8] = "libudev";
    unsigned magic = qToBigEndian(0xfeedcafeu);
    unsigned headerSize = sizeof(Header);
    unsigned propertiesOffset = sizeof(Header);
    unsigned propertiesSize = 0;
    unsigned subsystemHash = 0;
    unsigned rest[3] = {};
};
static_assert(sizeof(Header) == 40);

/// The hash of the subsystem "tty" in an event, read from the filter that udev creates for it.
unsigned ttyHash()
{
    udev *const context = udev_new();
    udev_monitor *const monitor = udev_monitor_new_from_netlink(context, "udev");
    udev_monitor_filter_add_match_subsystem_devtype(monitor, "tty", nullptr);
    udev_monitor_filter_update(monitor);
    sock_filter filter[64];
    socklen_t size = std::size(filter);
    unsigned hash = 0;
    if (::getsockopt(udev_monitor_get_fd(monitor), SOL_SOCKET, SO_GET_FILTER, filter, &size) == 0) {
        for (unsigned i = 0; i + 1 < size; ++i) {
            if (filter[i].code == (BPF_LD | BPF_W | BPF_ABS) &&
                filter[i].k == offsetof(Header, subsystemHash))
                hash = filter[i + 1].k;
        }
    }
    udev_monitor_unref(monitor);
    udev_unref(context);
    return qToBigEndian(hash);
}

/// Sends events as udev does.
class UdevSender
{
public:
    UdevSender()
        : _socket(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_KOBJECT_UEVENT))
        , _hash(ttyHash())
    {
    }
    ~UdevSender() { ::close(_socket); }
    Q_DISABLE_COPY_MOVE(UdevSender)

    void send(const QString &portName, const QByteArray &action) const
    {
        const QByteArray name = portName.toLatin1();
        QByteArray properties;
        for (const QByteArray &property :
             {"ACTION=" + action, "DEVPATH=/devices/somewhere/tty/" + name, QByteArray("SUBSYSTEM=tty"),
              "DEVNAME=/dev/" + name, QByteArray("SEQNUM=1")})
            properties += property + '\0';
        Header header;
        header.propertiesSize = static_cast<unsigned>(properties.size());
        header.subsystemHash = _hash;
        const QByteArray event =
            QByteArray(reinterpret_cast<const char *>(&header), sizeof header) + properties;
        sockaddr_nl everybody{};
        everybody.nl_family = AF_NETLINK;
        everybody.nl_groups = udevGroup;
        ::sendto(_socket, event.constData(), static_cast<size_t>(event.size()), 0,
                 reinterpret_cast<const sockaddr *>(&everybody), sizeof everybody);
    }

private:
    const int _socket;
    const unsigned _hash;
};

/// Reduces the buffers of this process's event sockets; udev makes them large enough for 300,000 events.
void shrinkSockets()
{
    constexpr int highest = 1024;
    const int smallest = 0; // the kernel raises it to its minimum
    for (int descriptor = 0; descriptor < highest; ++descriptor) {
        sockaddr_nl address{};
        socklen_t size = sizeof address;
        if (::getsockname(descriptor, reinterpret_cast<sockaddr *>(&address), &size) == 0 &&
            address.nl_family == AF_NETLINK && address.nl_groups == udevGroup)
            ::setsockopt(descriptor, SOL_SOCKET, SO_RCVBUF, &smallest, sizeof smallest);
    }
}

/// Returns how many events were lost because this process's socket was full.
int lostEvents()
{
    QFile sockets(QStringLiteral("/proc/self/net/netlink"));
    if (!sockets.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> lines = sockets.readAll().split('\n');
    int lost = 0;
    for (const QByteArray &line : lines) {
        const QList<QByteArray> words =
            line.simplified().split(' '); // address, protocol, pid, groups, ... drops
        if (words.value(1).toInt() == NETLINK_KOBJECT_UEVENT &&
            words.value(3).toUInt(nullptr, 16) == udevGroup)
            lost += words.value(8).toInt();
    }
    return lost;
}

QStringList namesOfPorts()
{
    QStringList names;
    const QList<QextPortInfo> ports = QextSerialEnumerator::getPorts();
    for (const QextPortInfo &info : ports)
        names += info.portName;
    return names;
}

bool makeOwnSystem()
{
    return ::unshare(CLONE_NEWNET | CLONE_NEWNS) == 0 &&
           ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount("none", "/run", "tmpfs", 0, "mode=0755") == 0 && ::mkdir("/run/udev", 0755) == 0;
}

/// Makes udev appear to run, or not.
void setUdevRunning(bool runs)
{
    if (runs)
        ::mknod(udevControl, S_IFREG | 0600, 0);
    else
        ::unlink(udevControl);
}
} // namespace

/// Tests the watcher on the kernel's own socket, with udev and without.
class TestPortWatcherKernel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void whatWasReportedBeforeTheLossDoesNotUndoTheComparison();
    void whereUdevDoesNotRunTheListIsCompared();
};

void TestPortWatcherKernel::initTestCase()
{
    if (!makeOwnSystem())
        QSKIP("only root can send events, and needs a network of its own for it");
}

void TestPortWatcherKernel::whatWasReportedBeforeTheLossDoesNotUndoTheComparison()
{
    setUdevRunning(true);
    UdevPortWatcher watcher; // created before there are mock ports and mock events
    QVERIFY(watcher.arm());
    const QStringList realPorts = namesOfPorts();
    QStringList reports;
    const auto record = [&](const QString &what, const QString &portName) {
        if (!realPorts.contains(portName)) // the real ports disappear as soon as there are mock ones
            reports += what + portName;
    };
    connect(&watcher, &PortWatcher::arrived, this,
            [&](const QextPortInfo &info) { record(QStringLiteral("arrived "), info.portName); });
    connect(&watcher, &PortWatcher::removed, this,
            [&](const QextPortInfo &info) { record(QStringLiteral("removed "), info.portName); });
    const UdevSender udev;
    FakePorts computer;
    const QString stays = computer.plugUsb();
    const QString goes = computer.plugUsb();
    udev.send(stays, "add");
    udev.send(goes, "add");
    QTRY_COMPARE(reports, QStringList({"arrived " + stays, "arrived " + goes}));
    reports.clear();

    // The second half of a replug is lost, and then a removal and an arrival are lost.
    shrinkSockets();
    udev.send(stays, "remove");
    for (int sent = 0; lostEvents() == 0 && sent < 100000; ++sent)
        udev.send(QStringLiteral("ttyUSB0"), "change");
    QVERIFY2(lostEvents() > 0, "the socket was expected to be full");
    udev.send(stays, "add");
    computer.unplug(goes);
    const QString comes = computer.plugUsb(UsbBridge::prolific());
    QTRY_COMPARE(reports.size(), 2);
    QCOMPARE(reports, QStringList({"removed " + goes, "arrived " + comes}));
    reports.clear();

    udev.send(comes, "remove"); // after everything that was in the socket
    QTRY_VERIFY(!reports.isEmpty());
    QCOMPARE(reports, QStringList{"removed " + comes});
}

void TestPortWatcherKernel::whereUdevDoesNotRunTheListIsCompared()
{
    setUdevRunning(true);
    QVERIFY(UdevPortWatcher().arm());
    QVERIFY(qobject_cast<UdevPortWatcher *>(PortWatcher::shared().get()));
    setUdevRunning(false);
    QVERIFY(!UdevPortWatcher().arm());
    QVERIFY(qobject_cast<PollingPortWatcher *>(PortWatcher::shared().get()));
}

QTEST_GUILESS_MAIN(TestPortWatcherKernel)
#include "tst_portwatcher_kernel.moc"
