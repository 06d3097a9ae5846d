#include <cerrno>
#include <cstring>
#include <memory>

#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <dlfcn.h>
#include <sys/socket.h>
#include <unistd.h>

#include "serial/portwatcher_poll.h"
#include "serial/portwatcher_udev.h"
#include "serial/qextserialenumerator.h"
#include "serial/qextserialport.h"
#include "tests/support/fakeports.h"
#include "tests/support/pendingtimers.h"
#include "tests/support/udevfaultinjector.h"

namespace
{
bool receivingFails = false; // the next time, because events were lost
bool udevRuns = false;

template <typename Function>
Function *original(const char *name)
{
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}
} // namespace

// These functions replace those of the C library in the whole program.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" ssize_t recvmsg(int socket, msghdr *message, int flags)
{
    if (!std::exchange(receivingFails, false))
        return original<decltype(recvmsg)>("recvmsg")(socket, message, flags);
    errno = ENOBUFS;
    return -1;
}

extern "C" int access(const char *path, int mode)
{
    if (std::strcmp(path, "/run/udev/control") == 0) // it exists while udev runs
        return udevRuns ? 0 : -1;
    return original<decltype(access)>("access")(path, mode);
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

using MakeWatcher = std::unique_ptr<PortWatcher> (*)();

/// Tests that both ways to watch the ports report the same.
class TestPortWatcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { UdevFaultInjector::fail(UdevFaultInjector::None); }

    void withoutUdevTheListIsCompared();
    void portsAreReportedAsTheyAreListed_data() { watchers(); }
    void portsAreReportedAsTheyAreListed();
    void onlyNewPortsAreReported_data() { watchers(); }
    void onlyNewPortsAreReported();
    void anotherDeviceUnderTheSameNameReplacesTheFirst_data() { watchers(); }
    void anotherDeviceUnderTheSameNameReplacesTheFirst();
    void aPortRemovedBeforeItIsReportedIsNotReported();
    void lostEventsAreReplacedByAComparison();
    void anEventWithoutAnActionIsIgnored();
    void armFailsWithoutUdevsEvents_data();
    void armFailsWithoutUdevsEvents();
    void theListIsComparedOnceASecond();
    void aPortThatHangsUpIsReportedAgain_data() { failures(); }
    void aPortThatHangsUpIsReportedAgain();
    void aPortThatHangsUpAndIsRemovedIsReportedRemovedOnce_data() { failures(); }
    void aPortThatHangsUpAndIsRemovedIsReportedRemovedOnce();
    void aPortThatHangsUpAndIsReplacedIsReportedOnce();
    void aPortThatIsClosedByItsUserIsNotReported();
    void theWatcherIsSharedWhileItIsInUse();

private:
    static void watchers();
    static void failures();
};

namespace
{
/// A watcher, and what it reports, such as "removed ttyUSB0".
struct Reports {
    explicit Reports(std::shared_ptr<PortWatcher> reporter)
        : watcher(std::move(reporter))
    {
        QObject::connect(watcher.get(), &PortWatcher::arrived, &here, [this](const QextPortInfo &info) {
            infos += info;
            lines += "arrived " + info.portName;
        });
        QObject::connect(watcher.get(), &PortWatcher::removed, &here, [this](const QextPortInfo &info) {
            infos += info;
            lines += "removed " + info.portName;
        });
    }

    const std::shared_ptr<PortWatcher> watcher;
    QStringList lines;
    QList<QextPortInfo> infos;
    QObject here;
};

/// A plugged port that is open, while the shared watcher reports ports.
struct OpenPort {
    /// Makes the port hang up, and waits until it has closed.
    void hangUp()
    {
        computer.hangUp(name);
        QTRY_COMPARE(port.errorString(), QStringLiteral("the device hung up"));
    }

    FakePorts computer;
    const QString name = computer.plugUsb();
    const Reports reports{PortWatcher::shared()};
    QextSerialPort port{name};
    const bool isOpen = port.open(QIODevice::ReadWrite);
    const PendingTimers timers;
};

/// Like Reports, with a started watcher.
struct ArmedReports : Reports {
    explicit ArmedReports(std::shared_ptr<PortWatcher> reporter = std::make_shared<UdevPortWatcher>())
        : Reports(std::move(reporter))
    {
        if (!watcher->start())
            qFatal("cannot start the port watcher");
    }
};
} // namespace

void TestPortWatcher::watchers()
{
    QTest::addColumn<MakeWatcher>("make");
    QTest::newRow("udev") << MakeWatcher(
        []() -> std::unique_ptr<PortWatcher> { return std::make_unique<UdevPortWatcher>(); });
    QTest::newRow("polling") << MakeWatcher(
        []() -> std::unique_ptr<PortWatcher> { return std::make_unique<PollingPortWatcher>(); });
}

void TestPortWatcher::withoutUdevTheListIsCompared()
{
    // There are no mock ports yet, so the events would come through the kernel's socket.
    udevRuns = true;
    QVERIFY(UdevPortWatcher().start());
    QVERIFY(qobject_cast<UdevPortWatcher *>(PortWatcher::shared().get()));
    udevRuns = false;
    QVERIFY(!UdevPortWatcher().start());
    QVERIFY(qobject_cast<PollingPortWatcher *>(PortWatcher::shared().get()));
}

void TestPortWatcher::portsAreReportedAsTheyAreListed()
{
    QFETCH(MakeWatcher, make);
    FakePorts computer;
    const QString present = computer.plugUsb(UsbBridge::foreignCh340());
    ArmedReports reports(make());
    const QString first = computer.plugUsb();
    const QString second = computer.plugUsb(UsbBridge::prolific());
    QTRY_COMPARE(reports.lines, QStringList({"arrived " + first, "arrived " + second}));
    const QList<QextPortInfo> listed = QextSerialEnumerator::getPorts();
    for (const QString &name : {second, first, present}) {
        computer.unplug(name);
        QTRY_COMPARE(reports.lines.last(), "removed " + name);
    }
    QCOMPARE(reports.lines.size(), 5);
    QVERIFY(reports.infos == QList<QextPortInfo>({listed[1], listed[2], listed[2], listed[1], listed[0]}));
}

void TestPortWatcher::onlyNewPortsAreReported()
{
    QFETCH(MakeWatcher, make);
    FakePorts computer;
    const QString present = computer.plugUsb();
    ArmedReports reports(make());
    const QString phantom = computer.addPhantom();
    const QString console = QStringLiteral("tty0");
    computer.addVirtual(console);
    computer.plugOtherUsb();
    computer.unplug(phantom);
    computer.unplug(console);
    computer.announce(present, "add"); // as "udevadm trigger" does
    computer.announce(present, "change");
    const QString next = computer.plugUsb();
    QTRY_COMPARE(reports.lines, QStringList{"arrived " + next});
}

void TestPortWatcher::anotherDeviceUnderTheSameNameReplacesTheFirst()
{
    QFETCH(MakeWatcher, make);
    FakePorts computer;
    const QString name = computer.plugUsb();
    ArmedReports reports(make());
    computer.setProperty(name, "ID_VENDOR_ID", "067b");
    computer.announce(name, "add");
    QTRY_COMPARE(reports.lines, QStringList({"removed " + name, "arrived " + name}));
    QCOMPARE(reports.infos[0].vendorID, 0x0403);
    QCOMPARE(reports.infos[1].vendorID, 0x067b);
}

void TestPortWatcher::aPortRemovedBeforeItIsReportedIsNotReported()
{
    // The port appears and disappears while the event loop is busy.
    FakePorts computer;
    ArmedReports reports;
    computer.unplug(computer.plugUsb());
    const QString name = computer.plugUsb(UsbBridge::prolific());
    QTRY_COMPARE(reports.lines, QStringList{"arrived " + name});
}

void TestPortWatcher::lostEventsAreReplacedByAComparison()
{
    FakePorts computer;
    const QString stays = computer.plugUsb();
    const QString removed = computer.plugUsb();
    ArmedReports reports;
    // The first half of a replug is still in the socket; its second half and the other events are lost.
    computer.announce(stays, "remove");
    computer.unplug(removed);
    const QString added = computer.plugUsb(UsbBridge::prolific());
    receivingFails = true;
    QTRY_COMPARE(reports.lines, QStringList({"removed " + removed, "arrived " + added}));

    computer.unplug(added); // after everything that was in the socket
    QTRY_COMPARE(reports.lines.mid(2), QStringList{"removed " + added});
}

void TestPortWatcher::anEventWithoutAnActionIsIgnored()
{
    FakePorts computer;
    const QString port = computer.plugUsb();
    ArmedReports reports;
    UdevFaultInjector::fail(UdevFaultInjector::NoAction);
    computer.unplug(port);
    QTRY_VERIFY(UdevFaultInjector::actionReads() > 0);

    UdevFaultInjector::fail(UdevFaultInjector::None);
    const QString next = computer.plugUsb(UsbBridge::prolific());
    QTRY_COMPARE(reports.lines, QStringList{"arrived " + next});
}

void TestPortWatcher::armFailsWithoutUdevsEvents_data()
{
    QTest::addColumn<int>("failure");
    QTest::newRow("no udev context") << int(UdevFaultInjector::NoContext);
    QTest::newRow("no udev monitor") << int(UdevFaultInjector::NoMonitor);
    QTest::newRow("filter rejected") << int(UdevFaultInjector::NoFilter);
    QTest::newRow("receiving fails") << int(UdevFaultInjector::NoReceiving);
}

void TestPortWatcher::armFailsWithoutUdevsEvents()
{
    QFETCH(int, failure);
    FakePorts computer;
    UdevFaultInjector::fail(static_cast<UdevFaultInjector::Failure>(failure));
    QVERIFY(!UdevPortWatcher().start());
}

void TestPortWatcher::theListIsComparedOnceASecond()
{
    FakePorts computer;
    UdevFaultInjector::fail(UdevFaultInjector::NoReceiving);
    // Timers of one thread fire in the order in which they are due, even if all of them are late.
    QTimer early;
    QTimer late;
    for (QTimer *timer : {&early, &late}) {
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
    }
    early.start(800);
    const std::shared_ptr<PortWatcher> watcher = PortWatcher::shared();
    late.start(1500);
    QSignalSpy arrived(watcher.get(), &PortWatcher::arrived);
    connect(watcher.get(), &PortWatcher::arrived, &early, [&] {
        QVERIFY2(!early.isActive(), "the arrival is reported before 0.8 s");
        QVERIFY2(late.isActive(), "the arrival is reported after 1.5 s");
    });
    computer.plugUsb();
    QVERIFY(arrived.wait());
}

void TestPortWatcher::failures()
{
    QTest::addColumn<int>("failure");
    QTest::newRow("udev") << int(UdevFaultInjector::None);
    QTest::newRow("polling") << int(UdevFaultInjector::NoReceiving);
}

void TestPortWatcher::aPortThatHangsUpIsReportedAgain()
{
    QFETCH(int, failure);
    FakePorts computer;
    UdevFaultInjector::fail(static_cast<UdevFaultInjector::Failure>(failure));
    const QString name = computer.plugUsb();
    computer.plugUsb(UsbBridge::prolific()); // it is not reported
    const Reports reports(PortWatcher::shared());
    QextSerialPort first(name);
    QVERIFY(first.open(QIODevice::ReadWrite));
    QextSerialPort second(name);
    QVERIFY(second.open(QIODevice::ReadWrite)); // one line, so one report
    computer.hangUp(name);
    QTRY_COMPARE(reports.lines, QStringList({"removed " + name, "arrived " + name}));
}

void TestPortWatcher::aPortThatHangsUpAndIsRemovedIsReportedRemovedOnce()
{
    QFETCH(int, failure);
    UdevFaultInjector::fail(static_cast<UdevFaultInjector::Failure>(failure));
    OpenPort open;
    QVERIFY(open.isOpen);
    open.hangUp();
    QCOMPARE(open.reports.lines, QStringList());
    open.computer.unplug(open.name);
    QTRY_COMPARE(open.reports.lines, QStringList{"removed " + open.name});
    QTRY_COMPARE(open.timers.intervals(), QList<int>());
    QCOMPARE(open.reports.lines, QStringList{"removed " + open.name});
}

void TestPortWatcher::aPortThatHangsUpAndIsReplacedIsReportedOnce()
{
    OpenPort open;
    QVERIFY(open.isOpen);
    open.hangUp();
    open.computer.announce(open.name, "add"); // another device with the same description
    const QStringList replacement{"removed " + open.name, "arrived " + open.name};
    QTRY_COMPARE(open.reports.lines, replacement);
    QCOMPARE(open.timers.intervals().size(), 1); // reported at once, not a second after the hang-up
    QTRY_COMPARE(open.timers.intervals(), QList<int>());
    QCOMPARE(open.reports.lines, replacement);
}

void TestPortWatcher::aPortThatIsClosedByItsUserIsNotReported()
{
    OpenPort open;
    QVERIFY(open.isOpen);
    open.port.close();
    QCOMPARE(open.timers.intervals(), QList<int>());
    const QString next = open.computer.plugUsb(UsbBridge::prolific());
    QTRY_COMPARE(open.reports.lines, QStringList{"arrived " + next});
}

void TestPortWatcher::theWatcherIsSharedWhileItIsInUse()
{
    FakePorts computer;
    std::shared_ptr<PortWatcher> one = PortWatcher::shared();
    QVERIFY(qobject_cast<UdevPortWatcher *>(one.get()));
    QCOMPARE(PortWatcher::shared(), one);
    QSignalSpy gone(one.get(), &QObject::destroyed);
    one.reset();
    QCOMPARE(gone.count(), 0); // the watcher's last owner may be one of its own slots
    QVERIFY(gone.wait());
}

QTEST_GUILESS_MAIN(TestPortWatcher)
#include "tst_portwatcher.moc"
