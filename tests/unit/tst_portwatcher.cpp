#include <memory>

#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include "serial/portwatcher_poll.h"
#include "serial/portwatcher_udev.h"
#include "serial/qextserialenumerator.h"
#include "serial/qextserialport.h"
#include "tests/support/fakeports.h"
#include "tests/support/pendingtimers.h"
#include "tests/support/udevfaultinjector.h"

using MakeWatcher = std::unique_ptr<PortWatcher> (*)();

/// Tests that both ways to watch the ports report the same.
class TestPortWatcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { UdevFaultInjector::fail(UdevFaultInjector::None); }

    void anArrivalIsToldInTheWordsOfTheList_data() { watchers(); }
    void anArrivalIsToldInTheWordsOfTheList();
    void aRemovalIsToldInTheWordsOfTheArrival_data() { watchers(); }
    void aRemovalIsToldInTheWordsOfTheArrival();
    void aPortPresentFromTheStartIsToldWhenItGoes_data() { watchers(); }
    void aPortPresentFromTheStartIsToldWhenItGoes();
    void severalAreToldEachOnce_data() { watchers(); }
    void severalAreToldEachOnce();
    void whatIsNoPortIsNotToldOf_data() { watchers(); }
    void whatIsNoPortIsNotToldOf();
    void aPortAnnouncedAgainIsNotToldAgain_data() { watchers(); }
    void aPortAnnouncedAgainIsNotToldAgain();
    void anotherDeviceUnderTheSameNameReplacesTheFirst_data() { watchers(); }
    void anotherDeviceUnderTheSameNameReplacesTheFirst();
    void aPortThatIsGoneAgainIsNotToldOf();
    void eventsThatWereLostAreMadeUpFor();
    void anEventThatSaysNotWhatHappenedIsPassedOver();
    void whereUdevCantBeHeardTheWatcherSaysSo_data();
    void whereUdevCantBeHeardTheWatcherSaysSo();
    void whereUdevCantBeHeardTheListIsComparedOnceASecond();
    void aPortThatHangsUpIsReportedAgain_data() { failures(); }
    void aPortThatHangsUpIsReportedAgain();
    void aPortThatHangsUpAndGoesIsReportedGoneOnce_data() { failures(); }
    void aPortThatHangsUpAndGoesIsReportedGoneOnce();
    void aPortThatIsClosedByItsUserIsNotReported();
    void theWatcherIsSharedWhileSomebodyHoldsIt();

private:
    static void watchers();
    static void failures();
};

namespace
{

// An armed watcher, and what it has reported.
struct Watch {
    explicit Watch(MakeWatcher make)
        : watcher(make())
        , arrived(watcher.get(), &PortWatcher::arrived)
        , removed(watcher.get(), &PortWatcher::removed)
        , armed(watcher->arm())
    {
    }

    std::unique_ptr<PortWatcher> watcher;
    QSignalSpy arrived;
    QSignalSpy removed;
    bool armed;
};

// The process's shared watcher, and what it reports.
struct SharedWatch {
    SharedWatch()
    {
        QObject::connect(watcher.get(), &PortWatcher::arrived, &here,
                         [this](const QextPortInfo &info) { reports += "arrived " + info.portName; });
        QObject::connect(watcher.get(), &PortWatcher::removed, &here,
                         [this](const QextPortInfo &info) { reports += "removed " + info.portName; });
    }

    mutable QStringList reports;
    std::shared_ptr<PortWatcher> watcher = PortWatcher::shared();
    QObject here;
};

QextPortInfo toldOf(const QSignalSpy &spy, int number)
{
    return spy.value(number).value(0).value<QextPortInfo>();
}

QextPortInfo listed(const QString &name)
{
    for (const QextPortInfo &info : QextSerialEnumerator::getPorts()) {
        if (info.portName == name)
            return info;
    }
    return {};
}

} // namespace

void TestPortWatcher::watchers()
{
    QTest::addColumn<MakeWatcher>("make");
    QTest::newRow("udev") << MakeWatcher(
        []() -> std::unique_ptr<PortWatcher> { return std::make_unique<UdevPortWatcher>(); });
    QTest::newRow("once a second") << MakeWatcher(
        []() -> std::unique_ptr<PortWatcher> { return std::make_unique<PollingPortWatcher>(); });
}

void TestPortWatcher::anArrivalIsToldInTheWordsOfTheList()
{
    QFETCH(MakeWatcher, make);
    FakePorts computer;
    computer.plugUsb(UsbBridge::foreignCh340());
    Watch watch(make);
    QVERIFY(watch.armed);
    const QString name = computer.plugUsb();
    QTRY_COMPARE(watch.arrived.count(), 1);
    const QextPortInfo told = toldOf(watch.arrived, 0);
    QCOMPARE(told.portName, name);
    QCOMPARE(told.physName, QLatin1String("/dev/") + name);
    QCOMPARE(told.friendName, QStringLiteral("FT232R USB UART"));
    QCOMPARE(told.enumName, QStringLiteral("USB"));
    QCOMPARE(told.vendorID, 0x0403);
    QCOMPARE(told.productID, 0x6001);
    QVERIFY(told == listed(name));
    QCOMPARE(watch.removed.count(), 0);
}

void TestPortWatcher::aRemovalIsToldInTheWordsOfTheArrival()
{
    QFETCH(MakeWatcher, make);
    FakePorts computer;
    Watch watch(make);
    const QString name = computer.plugUsb(UsbBridge::prolific());
    QTRY_COMPARE(watch.arrived.count(), 1);
    computer.unplug(name);
    QTRY_COMPARE(watch.removed.count(), 1);
    const QextPortInfo told = toldOf(watch.removed, 0);
    QVERIFY(told == toldOf(watch.arrived, 0));
    QCOMPARE(told.vendorID, 0x067b);
    QCOMPARE(told.productID, 0x2303);
    QCOMPARE(told.friendName, QStringLiteral("USB-Serial Controller"));
}

void TestPortWatcher::aPortPresentFromTheStartIsToldWhenItGoes()
{
    QFETCH(MakeWatcher, make);
    FakePorts computer;
    const QString name = computer.plugUsb();
    const QextPortInfo before = listed(name);
    Watch watch(make);
    computer.unplug(name);
    QTRY_COMPARE(watch.removed.count(), 1);
    QVERIFY(toldOf(watch.removed, 0) == before);
    QCOMPARE(before.vendorID, 0x0403);
    QCOMPARE(watch.arrived.count(), 0);
}

void TestPortWatcher::severalAreToldEachOnce()
{
    QFETCH(MakeWatcher, make);
    FakePorts computer;
    Watch watch(make);
    const QString first = computer.plugUsb();
    const QString second = computer.plugUsb(UsbBridge::prolific());
    QTRY_COMPARE(watch.arrived.count(), 2);
    QCOMPARE(QSet<QString>({toldOf(watch.arrived, 0).portName, toldOf(watch.arrived, 1).portName}),
             QSet<QString>({first, second}));
    computer.unplug(first);
    QTRY_COMPARE(watch.removed.count(), 1);
    QCOMPARE(toldOf(watch.removed, 0).portName, first);
    computer.unplug(second);
    QTRY_COMPARE(watch.removed.count(), 2);
    QCOMPARE(toldOf(watch.removed, 1).portName, second);
    QCOMPARE(watch.arrived.count(), 2);
}

void TestPortWatcher::whatIsNoPortIsNotToldOf()
{
    QFETCH(MakeWatcher, make);
    FakePorts computer;
    Watch watch(make);
    const QString phantom = computer.addPhantom();
    const QString console = QStringLiteral("tty0");
    computer.addVirtual(console);
    computer.plugOtherUsb();
    QVERIFY(QextSerialEnumerator::getPorts().isEmpty());
    computer.unplug(phantom);
    computer.unplug(console);
    // The watcher reports the next port, and only that one.
    const QString name = computer.plugUsb();
    QTRY_COMPARE(watch.arrived.count(), 1);
    QCOMPARE(toldOf(watch.arrived, 0).portName, name);
    QCOMPARE(watch.removed.count(), 0);
}

void TestPortWatcher::aPortAnnouncedAgainIsNotToldAgain()
{
    QFETCH(MakeWatcher, make);
    FakePorts computer;
    const QString first = computer.plugUsb();
    Watch watch(make);
    computer.announce(first, "add"); // as "udevadm trigger" does
    computer.announce(first, "change");
    const QString second = computer.plugUsb();
    QTRY_COMPARE(watch.arrived.count(), 1);
    QCOMPARE(toldOf(watch.arrived, 0).portName, second);
    QCOMPARE(watch.removed.count(), 0);
}

void TestPortWatcher::anotherDeviceUnderTheSameNameReplacesTheFirst()
{
    QFETCH(MakeWatcher, make);
    FakePorts computer;
    const QString name = computer.plugUsb();
    Watch watch(make);
    QStringList order;
    connect(watch.watcher.get(), &PortWatcher::removed, this, [&](const QextPortInfo &info) {
        order.append(QStringLiteral("removed %1").arg(info.vendorID, 0, 16));
    });
    connect(watch.watcher.get(), &PortWatcher::arrived, this, [&](const QextPortInfo &info) {
        order.append(QStringLiteral("arrived %1").arg(info.vendorID, 0, 16));
    });
    computer.setProperty(name, "ID_VENDOR_ID", "067b");
    computer.announce(name, "add");
    QTRY_COMPARE(order, QStringList({QStringLiteral("removed 403"), QStringLiteral("arrived 67b")}));
}

void TestPortWatcher::aPortThatIsGoneAgainIsNotToldOf()
{
    // The port appears and disappears while the event loop is busy.
    FakePorts computer;
    UdevPortWatcher watcher;
    QSignalSpy arrived(&watcher, &PortWatcher::arrived);
    QSignalSpy removed(&watcher, &PortWatcher::removed);
    QVERIFY(watcher.arm());
    computer.unplug(computer.plugUsb());
    const QString name = computer.plugUsb(UsbBridge::prolific());
    QTRY_COMPARE(arrived.count(), 1);
    QCOMPARE(toldOf(arrived, 0).portName, name);
    QCOMPARE(removed.count(), 0);
}

void TestPortWatcher::anEventThatSaysNotWhatHappenedIsPassedOver()
{
    FakePorts computer;
    const QString port = computer.plugUsb();
    UdevPortWatcher watcher;
    QSignalSpy arrived(&watcher, &PortWatcher::arrived);
    QSignalSpy removed(&watcher, &PortWatcher::removed);
    QVERIFY(watcher.arm());
    UdevFaultInjector::fail(UdevFaultInjector::NoAction);
    computer.unplug(port);
    QTRY_VERIFY(UdevFaultInjector::timesTold() > 0);

    UdevFaultInjector::fail(UdevFaultInjector::None);
    const QString come = computer.plugUsb(UsbBridge::prolific());
    QTRY_COMPARE(arrived.count(), 1);
    QCOMPARE(toldOf(arrived, 0).portName, come);
    QCOMPARE(removed.count(), 0);
}

void TestPortWatcher::eventsThatWereLostAreMadeUpFor()
{
    FakePorts computer;
    const QString gone = computer.plugUsb();
    const QString stays = computer.plugUsb();
    UdevPortWatcher watcher;
    QSignalSpy arrived(&watcher, &PortWatcher::arrived);
    QSignalSpy removed(&watcher, &PortWatcher::removed);
    QVERIFY(watcher.arm());
    UdevFaultInjector::fail(UdevFaultInjector::EventsLost);
    computer.unplug(gone);
    const QString come = computer.plugUsb(UsbBridge::prolific());
    QTRY_COMPARE(removed.count(), 1);
    QTRY_COMPARE(arrived.count(), 1);
    QCOMPARE(toldOf(removed, 0).portName, gone);
    QCOMPARE(toldOf(arrived, 0).portName, come);

    UdevFaultInjector::fail(UdevFaultInjector::None); // afterwards everything works as before
    computer.unplug(stays);
    QTRY_COMPARE(removed.count(), 2);
    QCOMPARE(toldOf(removed, 1).portName, stays);
    QCOMPARE(arrived.count(), 1);
}

void TestPortWatcher::whereUdevCantBeHeardTheWatcherSaysSo_data()
{
    QTest::addColumn<int>("failure");
    QTest::addColumn<bool>("arms");
    QTest::newRow("udev can be heard") << int(UdevFaultInjector::None) << true;
    QTest::newRow("udev can't be had") << int(UdevFaultInjector::NoContext) << false;
    QTest::newRow("nobody tells") << int(UdevFaultInjector::NoMonitor) << false;
    QTest::newRow("there is no filter") << int(UdevFaultInjector::NoFilter) << false;
    QTest::newRow("the socket can't be heard") << int(UdevFaultInjector::NoReceiving) << false;
}

void TestPortWatcher::whereUdevCantBeHeardTheWatcherSaysSo()
{
    QFETCH(int, failure);
    QFETCH(bool, arms);
    FakePorts computer;
    UdevFaultInjector::fail(static_cast<UdevFaultInjector::Failure>(failure));
    UdevPortWatcher watcher;
    QCOMPARE(watcher.arm(), arms);
}

void TestPortWatcher::whereUdevCantBeHeardTheListIsComparedOnceASecond()
{
    FakePorts computer;
    UdevFaultInjector::fail(UdevFaultInjector::NoReceiving);
    // Timers of one thread fire in the order in which they are due, even if all of them are late.
    bool isTooEarly = true;
    bool isTooLate = false;
    bool toldTooEarly = false;
    bool toldTooLate = false;
    QObject here; // deletes the timers and what they set
    QTimer::singleShot(800, Qt::PreciseTimer, &here, [&] { isTooEarly = false; });
    const std::shared_ptr<PortWatcher> watcher = PortWatcher::shared();
    QTimer::singleShot(1500, Qt::PreciseTimer, &here, [&] { isTooLate = true; });
    QSignalSpy arrived(watcher.get(), &PortWatcher::arrived);
    connect(watcher.get(), &PortWatcher::arrived, &here, [&] {
        toldTooEarly = isTooEarly;
        toldTooLate = isTooLate;
    });
    const QString name = computer.plugUsb();
    QVERIFY(arrived.wait());
    QCOMPARE(toldOf(arrived, 0).portName, name);
    QVERIFY2(!toldTooEarly, "not before 0.8 seconds");
    QVERIFY2(!toldTooLate, "before 1.5 seconds");
}

void TestPortWatcher::failures()
{
    QTest::addColumn<int>("failure");
    QTest::newRow("udev") << int(UdevFaultInjector::None);
    QTest::newRow("once a second") << int(UdevFaultInjector::NoReceiving);
}

void TestPortWatcher::aPortThatHangsUpIsReportedAgain()
{
    QFETCH(int, failure);
    FakePorts computer;
    UdevFaultInjector::fail(static_cast<UdevFaultInjector::Failure>(failure));
    const QString name = computer.plugUsb();
    computer.plugUsb(UsbBridge::prolific()); // it is not reported
    const SharedWatch watch;
    QextSerialPort first(name);
    QVERIFY(first.open(QIODevice::ReadWrite));
    QextSerialPort second(name);
    QVERIFY(second.open(QIODevice::ReadWrite)); // one line, so one report
    computer.hangUp(name);
    QTRY_COMPARE(watch.reports, QStringList({"removed " + name, "arrived " + name}));
}

void TestPortWatcher::aPortThatHangsUpAndGoesIsReportedGoneOnce()
{
    QFETCH(int, failure);
    FakePorts computer;
    UdevFaultInjector::fail(static_cast<UdevFaultInjector::Failure>(failure));
    const QString name = computer.plugUsb();
    const SharedWatch watch;
    QextSerialPort port(name);
    QVERIFY(port.open(QIODevice::ReadWrite));
    const PendingTimers timers;
    computer.hangUp(name);
    QTRY_VERIFY(port.write("x") == -1 && port.errorString() == QLatin1String("the device hung up"));
    QCOMPARE(watch.reports, QStringList());
    computer.unplug(name);
    QTRY_COMPARE(watch.reports, QStringList{"removed " + name});
    QTRY_COMPARE(timers.underWay(), QList<int>());
    QCOMPARE(watch.reports, QStringList{"removed " + name});
}

void TestPortWatcher::aPortThatIsClosedByItsUserIsNotReported()
{
    FakePorts computer;
    const QString name = computer.plugUsb();
    const SharedWatch watch;
    QextSerialPort port(name);
    QVERIFY(port.open(QIODevice::ReadWrite));
    const PendingTimers timers;
    port.close();
    QCOMPARE(timers.underWay(), QList<int>());
    const QString next = computer.plugUsb(UsbBridge::prolific());
    QTRY_COMPARE(watch.reports, QStringList{"arrived " + next});
}

void TestPortWatcher::theWatcherIsSharedWhileSomebodyHoldsIt()
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
