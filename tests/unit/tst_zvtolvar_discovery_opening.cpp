#include <sys/ioctl.h>

#include <QElapsedTimer>
#include <QFile>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>

#include "tests/support/libcinterposer.h"
#include "tests/support/linkfixture.h"
#include "tests/support/pendingtimers.h"
#include "tests/support/portinfos.h"
#include "tests/support/signalrecorder.h"
#include "tests/support/timingprobe.h"

/// Tests how the port of a recognised device is opened, and the delays before that.
class TestOpening : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { _fixture.reset(); }

    void aDeviceIsOpenedASecondAfterItIsRecognised();
    void theConsoleIsWokenHalfASecondAfterTheOpening();
    void aFoundDeviceIsOpenedWokenAndAsked();
    void thePortIsSetUpForTheConsole();
    void thePortIsOpenedForBothWaysAndBelongsToNobody();
    void whatTheOpenedPortReceivesReachesTheLink();

    void aFailedOpeningIsTriedAgainASecondLater();
    void aFailedOpeningChangesNothingElse();
    void twoArrivalsWithinASecondMakeTwoAttemptsOnTheLaterPort();
    void aDeviceUnpluggedBeforeItsOpeningIsNotOpened();
    void aDeviceUnpluggedWhileItsOpeningFailsIsNotTriedAgain();
    void withoutANameNothingIsOpened();

private:
    ZVTolvarTestPeer inside() const { return _fixture->inside; }
    /// Makes the controller open its port now, as its timer does.
    void open(const QString &portName)
    {
        inside().portName() = portName;
        _tolvar->onTimerOpenConnection();
    }

    std::unique_ptr<LinkFixture> _fixture;
    std::unique_ptr<PendingTimers> _timers;
    ZVTolvar *_tolvar = nullptr;
};

void TestOpening::init()
{
    _fixture = std::make_unique<LinkFixture>();
    _timers = std::make_unique<PendingTimers>();
    _tolvar = &_fixture->tolvar;
}

void TestOpening::aDeviceIsOpenedASecondAfterItIsRecognised()
{
    const auto isOpen = [this] { return inside().state() != NOT_CONNECTED; };
    TimingProbe timing(1000, isOpen);
    _tolvar->onDeviceDiscovered(PortInfos::bridge(_fixture->pty.name()));
    timing.hasBegun();
    QCOMPARE(inside().port(), nullptr);
    QVERIFY(_timers->underWay().contains(1000));
    QTRY_VERIFY(timing.isOver());
    QCOMPARE(timing.verdict(), "in time");
    QCOMPARE(inside().state(), CANDIDATE_DEVICE_FOUND);
}

void TestOpening::theConsoleIsWokenHalfASecondAfterTheOpening()
{
    const auto isWoken = [this] { return inside().state() != CANDIDATE_DEVICE_FOUND; };
    TimingProbe timing(500, isWoken);
    open(_fixture->pty.name());
    timing.hasBegun();
    QCOMPARE(inside().state(), CANDIDATE_DEVICE_FOUND);
    QVERIFY(_timers->underWay().contains(500));
    QTRY_VERIFY(timing.isOver());
    QCOMPARE(timing.verdict(), "in time");
    QCOMPARE(_fixture->pty.collected(), QByteArray("C\r\n"));
    QCOMPARE(_timers->underWay(), QList<int>{1000}); // and every second from now on
}

void TestOpening::aFoundDeviceIsOpenedWokenAndAsked()
{
    QElapsedTimer clock;
    clock.start();
    _tolvar->onDeviceDiscovered(PortInfos::bridge(_fixture->pty.name()));
    QTRY_COMPARE(_fixture->pty.collected(), QByteArray("C\r\n"));
    QVERIFY2(clock.elapsed() >= 1500, "a device is opened after 1000 ms and woken after 500 more");
    _fixture->pty.send(">");
    QTRY_COMPARE(_fixture->pty.collected(), QByteArray("C\r\nget\r\n"));
    _fixture->pty.send("get\r\n\x02<puckdata><name>T</name></puckdata>\x03\r\n>");
    QTRY_COMPARE(_tolvar->systemID(), QStringLiteral("T"));
}

void TestOpening::thePortIsSetUpForTheConsole()
{
    // Another object has the line open with different settings.
    QextSerialPort other(_fixture->pty.name());
    QVERIFY(other.open(QIODevice::ReadWrite));
    LibcInterposer::clear();
    LibcInterposer::keepFrame();
    other.setBaudRate(BAUD9600);
    other.setParity(PAR_EVEN);
    other.setDataBits(DATA_7);
    other.setStopBits(STOP_2);
    other.setFlowControl(FLOW_HARDWARE);
    constexpr tcflag_t all = CSIZE | PARENB | CSTOPB | CRTSCTS;
    QCOMPARE(LibcInterposer::lastSettings().c_cflag & all, tcflag_t(CS7 | PARENB | CSTOPB | CRTSCTS));
    const qsizetype others = LibcInterposer::order().size();

    open(_fixture->pty.name());
    QCOMPARE(LibcInterposer::order().mid(others),
             QStringList({"baud rate", "flow control", "parity", "data bits", "stop bits", "DTR", "RTS"}));
    const termios asked = LibcInterposer::lastSettings();
    QCOMPARE(cfgetospeed(&asked), speed_t(B115200));
    QCOMPARE(cfgetispeed(&asked), speed_t(B115200));
    QCOMPARE(asked.c_cflag & all, tcflag_t(CS8)); // no parity, one stop bit, no flow control
    QCOMPARE(asked.c_iflag & (IXON | IXOFF), tcflag_t(0));
    QCOMPARE(LibcInterposer::modemLines(), QList<int>({-TIOCM_DTR, -TIOCM_RTS}));
    LibcInterposer::clear();
}

void TestOpening::thePortIsOpenedForBothWaysAndBelongsToNobody()
{
    open(_fixture->pty.name());
    const QextSerialPort *port = inside().port();
    QVERIFY(port->isOpen());
    QVERIFY(port->isReadable());
    QVERIFY(port->isWritable());
    QCOMPARE(port->parent(), nullptr);
    QCOMPARE(_fixture->log->messages(), QStringList());
}

void TestOpening::whatTheOpenedPortReceivesReachesTheLink()
{
    open(_fixture->pty.name());
    _fixture->pty.send("hello");
    QTRY_COMPARE(_fixture->log->messages("W:"), QStringList{"W:hello "});
}

void TestOpening::aFailedOpeningIsTriedAgainASecondLater()
{
    // The port does not exist yet; its name does, as a dangling symbolic link that becomes valid later.
    const QTemporaryDir folder;
    const QString name = folder.filePath("tty");
    QPointer<QextSerialPort> firstAttempt;
    const auto isTriedAgain = [&] { return inside().port() != firstAttempt; };
    TimingProbe timing(1000, isTriedAgain);
    open(name);
    firstAttempt = inside().port();
    timing.hasBegun();
    QVERIFY(firstAttempt);
    QVERIFY(_timers->underWay().contains(1000));
    QVERIFY(!_timers->underWay().contains(500));
    QVERIFY(QFile::link(_fixture->pty.name(), name));

    QTRY_VERIFY(timing.isOver());
    QCOMPARE(timing.verdict(), "in time");
    QCOMPARE(inside().state(), CANDIDATE_DEVICE_FOUND);
    QVERIFY2(firstAttempt, "the earlier port object is dropped, not destroyed");
    QVERIFY(inside().port()->isOpen());
}

void TestOpening::aFailedOpeningChangesNothingElse()
{
    SignalRecorder diary(_tolvar);
    open("no-such-tty");
    QVERIFY(inside().port());
    QVERIFY(!inside().port()->isOpen());
    QCOMPARE(inside().state(), NOT_CONNECTED);
    QCOMPARE(inside().portName(), QStringLiteral("no-such-tty"));
    QCOMPARE(_timers->underWay(), QList<int>{1000});
    QCOMPARE(diary.take(), QStringList());
    QCOMPARE(_fixture->log->messages("D:"), QStringList());
    QCOMPARE(_fixture->log->messages("W:"), QStringList());
}

void TestOpening::twoArrivalsWithinASecondMakeTwoAttemptsOnTheLaterPort()
{
    Pty first;
    Pty &second = _fixture->pty;
    SignalRecorder diary(_tolvar);
    _tolvar->onDeviceDiscovered(PortInfos::bridge(first.name()));
    _tolvar->onDeviceDiscovered(PortInfos::bridge(second.name()));
    QCOMPARE(diary.take(), QStringList({"candidateDeviceFound", "candidateDeviceFound"}));
    QCOMPARE(inside().portName(), second.name());
    QCOMPARE(_timers->underWay(), QList<int>({1000, 1000}));

    // Each timer opens the port once. Both timer chains wake the console, and the first prompt ends both.
    QTRY_COMPARE(second.collected(), QByteArray("C\r\nC\r\n"));
    QCOMPARE(first.collected(), QByteArray());
    QCOMPARE(inside().queue(), QStringList({"get\r\n", "get\r\n"}));
    second.send(">");
    QTRY_COMPARE(second.collected(), QByteArray("C\r\nC\r\nget\r\n"));
    second.send("\x02<puckdata><name>T</name></puckdata>\x03");
    QTRY_COMPARE(_tolvar->systemID(), QStringLiteral("T")); // read once, though two port objects report it
}

void TestOpening::aDeviceUnpluggedBeforeItsOpeningIsNotOpened()
{
    const QextPortInfo device = PortInfos::bridge(_fixture->pty.name());
    _tolvar->onDeviceDiscovered(device);
    _tolvar->onDeviceRemoved(device);
    QCOMPARE(_timers->underWay(), QList<int>{1000}); // the timer is not stopped, but it has no effect
    QTRY_COMPARE(_timers->underWay(), QList<int>());
    QCOMPARE(inside().port(), nullptr);
    QCOMPARE(inside().state(), NOT_CONNECTED);
}

void TestOpening::aDeviceUnpluggedWhileItsOpeningFailsIsNotTriedAgain()
{
    open("no-such-tty");
    QVERIFY(inside().port());
    _tolvar->onDeviceRemoved(PortInfos::bridge("no-such-tty"));
    QCOMPARE(inside().port(), nullptr);
    QCOMPARE(_timers->underWay(), QList<int>{1000});
    QTRY_COMPARE(_timers->underWay(), QList<int>()); // the first timer after the removal is the last
    QCOMPARE(inside().port(), nullptr);
}

void TestOpening::withoutANameNothingIsOpened()
{
    open(QString());
    QCOMPARE(inside().port(), nullptr);
    QCOMPARE(inside().state(), NOT_CONNECTED);
    QCOMPARE(_timers->underWay(), QList<int>());
    QCOMPARE(_fixture->log->messages(), QStringList());
}

QTEST_GUILESS_MAIN(TestOpening)
#include "tst_zvtolvar_discovery_opening.moc"
