#include <sys/ioctl.h>

#include <QElapsedTimer>
#include <QFile>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>

#include "tests/support/lapse.h"
#include "tests/support/linkbench.h"
#include "tests/support/portinfos.h"
#include "tests/support/signaldiary.h"
#include "tests/support/singleshots.h"
#include "tests/support/ttycalls.h"

/// Opening a recognised device's port, and what is waited for on the way.
class TestOpening : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { _bench.reset(); }

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
    ZVTolvarInspector inside() const { return _bench->inside; }
    /// Has the controller open its port now, as its timer would.
    void open(const QString &portName)
    {
        inside().portName() = portName;
        _tolvar->onTimerOpenConnection();
    }

    std::unique_ptr<LinkBench> _bench;
    std::unique_ptr<SingleShots> _timers;
    ZVTolvar *_tolvar = nullptr;
};

void TestOpening::init()
{
    _bench = std::make_unique<LinkBench>();
    _timers = std::make_unique<SingleShots>();
    _tolvar = &_bench->tolvar;
}

void TestOpening::aDeviceIsOpenedASecondAfterItIsRecognised()
{
    const auto isOpen = [this] { return inside().state() != NOT_CONNECTED; };
    Lapse lapse(1000, isOpen);
    _tolvar->onDeviceDiscovered(PortInfos::bridge(_bench->pty.name()));
    lapse.hasBegun();
    QCOMPARE(inside().port(), nullptr);
    QVERIFY(_timers->underWay().contains(1000));
    QTRY_VERIFY(lapse.isOver());
    QCOMPARE(lapse.verdict(), "in time");
    QCOMPARE(inside().state(), CANDIDATE_DEVICE_FOUND);
}

void TestOpening::theConsoleIsWokenHalfASecondAfterTheOpening()
{
    const auto isWoken = [this] { return inside().state() != CANDIDATE_DEVICE_FOUND; };
    Lapse lapse(500, isWoken);
    open(_bench->pty.name());
    lapse.hasBegun();
    QCOMPARE(inside().state(), CANDIDATE_DEVICE_FOUND);
    QVERIFY(_timers->underWay().contains(500));
    QTRY_VERIFY(lapse.isOver());
    QCOMPARE(lapse.verdict(), "in time");
    QCOMPARE(_bench->pty.collected(), QByteArray("C\r\n"));
    QCOMPARE(_timers->underWay(), QList<int>{1000}); // and each second from here on
}

void TestOpening::aFoundDeviceIsOpenedWokenAndAsked()
{
    QElapsedTimer clock;
    clock.start();
    _tolvar->onDeviceDiscovered(PortInfos::bridge(_bench->pty.name()));
    QTRY_COMPARE(_bench->pty.collected(), QByteArray("C\r\n"));
    QVERIFY2(clock.elapsed() >= 1500, "a device is opened after 1000 ms and woken after 500 more");
    _bench->pty.send(">");
    QTRY_COMPARE(_bench->pty.collected(), QByteArray("C\r\nget\r\n"));
    _bench->pty.send("get\r\n\x02<puckdata><name>T</name></puckdata>\x03\r\n>");
    QTRY_COMPARE(_tolvar->systemID(), QStringLiteral("T"));
}

void TestOpening::thePortIsSetUpForTheConsole()
{
    // Somebody else has the line in quite another way.
    QextSerialPort other(_bench->pty.name());
    QVERIFY(other.open(QIODevice::ReadWrite));
    TtyCalls::clear();
    TtyCalls::keepFrame();
    other.setBaudRate(BAUD9600);
    other.setParity(PAR_EVEN);
    other.setDataBits(DATA_7);
    other.setStopBits(STOP_2);
    other.setFlowControl(FLOW_HARDWARE);
    constexpr tcflag_t all = CSIZE | PARENB | CSTOPB | CRTSCTS;
    QCOMPARE(TtyCalls::lastSettings().c_cflag & all, tcflag_t(CS7 | PARENB | CSTOPB | CRTSCTS));
    const qsizetype others = TtyCalls::order().size();

    open(_bench->pty.name());
    QCOMPARE(TtyCalls::order().mid(others),
             QStringList({"baud rate", "flow control", "parity", "data bits", "stop bits", "DTR", "RTS"}));
    const termios asked = TtyCalls::lastSettings();
    QCOMPARE(cfgetospeed(&asked), speed_t(B115200));
    QCOMPARE(cfgetispeed(&asked), speed_t(B115200));
    QCOMPARE(asked.c_cflag & all, tcflag_t(CS8)); // no parity, one stop bit, no flow control
    QCOMPARE(asked.c_iflag & (IXON | IXOFF), tcflag_t(0));
    QCOMPARE(TtyCalls::modemLines(), QList<int>({-TIOCM_DTR, -TIOCM_RTS}));
    TtyCalls::clear();
}

void TestOpening::thePortIsOpenedForBothWaysAndBelongsToNobody()
{
    open(_bench->pty.name());
    const QextSerialPort *port = inside().port();
    QVERIFY(port->isOpen());
    QVERIFY(port->isReadable());
    QVERIFY(port->isWritable());
    QCOMPARE(port->parent(), nullptr);
    QCOMPARE(_bench->log->messages(), QStringList());
}

void TestOpening::whatTheOpenedPortReceivesReachesTheLink()
{
    open(_bench->pty.name());
    _bench->pty.send("hello");
    QTRY_COMPARE(_bench->log->messages("W:"), QStringList{"W:hello "});
}

void TestOpening::aFailedOpeningIsTriedAgainASecondLater()
{
    // The port is not there yet; its name is, by a link that comes to life.
    const QTemporaryDir folder;
    const QString name = folder.filePath("tty");
    QPointer<QextSerialPort> firstAttempt;
    const auto isTriedAgain = [&] { return inside().port() != firstAttempt; };
    Lapse lapse(1000, isTriedAgain);
    open(name);
    firstAttempt = inside().port();
    lapse.hasBegun();
    QVERIFY(firstAttempt);
    QVERIFY(_timers->underWay().contains(1000));
    QVERIFY(!_timers->underWay().contains(500));
    QVERIFY(QFile::link(_bench->pty.name(), name));

    QTRY_VERIFY(lapse.isOver());
    QCOMPARE(lapse.verdict(), "in time");
    QCOMPARE(inside().state(), CANDIDATE_DEVICE_FOUND);
    QVERIFY2(firstAttempt, "the earlier port object is dropped, not destroyed");
    QVERIFY(inside().port()->isOpen());
}

void TestOpening::aFailedOpeningChangesNothingElse()
{
    SignalDiary diary(_tolvar);
    open("no-such-tty");
    QVERIFY(inside().port());
    QVERIFY(!inside().port()->isOpen());
    QCOMPARE(inside().state(), NOT_CONNECTED);
    QCOMPARE(inside().portName(), QStringLiteral("no-such-tty"));
    QCOMPARE(_timers->underWay(), QList<int>{1000});
    QCOMPARE(diary.take(), QStringList());
    QCOMPARE(_bench->log->messages("D:"), QStringList());
    QCOMPARE(_bench->log->messages("W:"), QStringList());
}

void TestOpening::twoArrivalsWithinASecondMakeTwoAttemptsOnTheLaterPort()
{
    Pty first;
    Pty &second = _bench->pty;
    SignalDiary diary(_tolvar);
    _tolvar->onDeviceDiscovered(PortInfos::bridge(first.name()));
    _tolvar->onDeviceDiscovered(PortInfos::bridge(second.name()));
    QCOMPARE(diary.take(), QStringList({"candidateDeviceFound", "candidateDeviceFound"}));
    QCOMPARE(inside().portName(), second.name());
    QCOMPARE(_timers->underWay(), QList<int>({1000, 1000}));

    // Each timer opens it once. Both chains wake the console, and the first prompt ends both.
    QTRY_COMPARE(second.collected(), QByteArray("C\r\nC\r\n"));
    QCOMPARE(first.collected(), QByteArray());
    QCOMPARE(inside().queue(), QStringList({"get\r\n", "get\r\n"}));
    second.send(">");
    QTRY_COMPARE(second.collected(), QByteArray("C\r\nC\r\nget\r\n"));
    second.send("\x02<puckdata><name>T</name></puckdata>\x03");
    QTRY_COMPARE(_tolvar->systemID(), QStringLiteral("T")); // read once, though two port objects tell of it
}

void TestOpening::aDeviceUnpluggedBeforeItsOpeningIsNotOpened()
{
    const QextPortInfo device = PortInfos::bridge(_bench->pty.name());
    _tolvar->onDeviceDiscovered(device);
    _tolvar->onDeviceRemoved(device);
    QCOMPARE(_timers->underWay(), QList<int>{1000}); // it isn't stopped, it comes to nothing
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
    QCOMPARE(_bench->log->messages(), QStringList());
}

QTEST_GUILESS_MAIN(TestOpening)
#include "tst_zvtolvar_discovery_opening.moc"
