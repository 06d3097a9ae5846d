#include <sys/ioctl.h>

#include <QFile>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>

#include "tests/support/libcinterposer.h"
#include "tests/support/linkfixture.h"
#include "tests/support/messagespy.h"
#include "tests/support/pendingtimers.h"
#include "tests/support/portinfos.h"
#include "tests/support/signalrecorder.h"
#include "tests/support/timingprobe.h"

/// Tests how the port of a recognised device is opened and its console woken, and the delays before that.
class TestOpening : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { _fixture.reset(); }

    void aDeviceIsOpenedASecondAfterItIsRecognised();
    void theConsoleIsWokenHalfASecondAfterTheOpening();
    void thePortIsSetUpForTheConsole();
    void thePortIsOpenedReadWriteAndHasNoParent();
    void aFailedOpeningIsTriedAgainASecondLater();
    void twoArrivalsWithinASecondMakeTwoAttemptsOnTheLaterPort();
    void aDeviceUnpluggedBeforeItsOpeningIsNotOpened();

    void theConsoleIsWokenAndAskedForItsStatus_data();
    void theConsoleIsWokenAndAskedForItsStatus();
    void theConsoleIsWokenEachSecondUntilItsPrompt();
    void theConsoleIsWokenInNoOtherState();
    void withoutAPortNothingIsSentAndTheTimerContinues();

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
    TimingProbe timing(1000, [this] { return inside().state() != NOT_CONNECTED; });
    _tolvar->onDeviceDiscovered(PortInfos::bridge(_fixture->pty.name()));
    timing.actionStarted();
    QCOMPARE(inside().port(), nullptr);
    QVERIFY(_timers->intervals().contains(1000));
    QTRY_VERIFY(timing.isOver());
    QCOMPARE(timing.verdict(), "in time");
    QCOMPARE(inside().state(), CANDIDATE_DEVICE_FOUND);
}

void TestOpening::theConsoleIsWokenHalfASecondAfterTheOpening()
{
    TimingProbe timing(500, [this] { return inside().state() != CANDIDATE_DEVICE_FOUND; });
    open(_fixture->pty.name());
    timing.actionStarted();
    QCOMPARE(inside().state(), CANDIDATE_DEVICE_FOUND);
    QVERIFY(_timers->intervals().contains(500));
    QTRY_VERIFY(timing.isOver());
    QCOMPARE(timing.verdict(), "in time");
    QCOMPARE(_fixture->pty.collected(), QByteArray("C\r\n"));
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

void TestOpening::thePortIsOpenedReadWriteAndHasNoParent()
{
    open(_fixture->pty.name());
    QVERIFY(inside().port()->isReadable());
    QVERIFY(inside().port()->isWritable());
    QCOMPARE(inside().port()->parent(), nullptr);
    QCOMPARE(_fixture->log->messages(), QStringList());
    _fixture->pty.send("hello");
    QTRY_COMPARE(_fixture->log->messages("W:"), QStringList{"W:hello "});
}

void TestOpening::aFailedOpeningIsTriedAgainASecondLater()
{
    // The port does not exist yet; its name does, as a dangling symbolic link that becomes valid later.
    const QTemporaryDir folder;
    const QString name = folder.filePath("tty");
    SignalRecorder recorder(_tolvar);
    QPointer<QextSerialPort> firstAttempt;
    TimingProbe timing(1000, [&] { return inside().port() != firstAttempt; });
    open(name);
    firstAttempt = inside().port();
    timing.actionStarted();
    QVERIFY(firstAttempt);
    QVERIFY(!firstAttempt->isOpen());
    QCOMPARE(inside().state(), NOT_CONNECTED);
    QVERIFY(_timers->intervals().contains(1000));
    QVERIFY(!_timers->intervals().contains(500));
    QCOMPARE(_fixture->log->messages("D:") + _fixture->log->messages("W:"), QStringList());
    QVERIFY(QFile::link(_fixture->pty.name(), name));

    QTRY_VERIFY(timing.isOver());
    QCOMPARE(timing.verdict(), "in time");
    QCOMPARE(inside().state(), CANDIDATE_DEVICE_FOUND);
    QVERIFY2(firstAttempt, "the previous port object was destroyed");
    QVERIFY(inside().port()->isOpen());
    QCOMPARE(recorder.take(), QStringList());
}

void TestOpening::twoArrivalsWithinASecondMakeTwoAttemptsOnTheLaterPort()
{
    Pty first;
    Pty &second = _fixture->pty;
    SignalRecorder recorder(_tolvar);
    _tolvar->onDeviceDiscovered(PortInfos::bridge(first.name()));
    _tolvar->onDeviceDiscovered(PortInfos::bridge(second.name()));
    QCOMPARE(recorder.take(), QStringList({"candidateDeviceFound", "candidateDeviceFound"}));
    QCOMPARE(inside().portName(), second.name());
    QCOMPARE(_timers->intervals(), QList<int>({1000, 1000}));

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
    QCOMPARE(_timers->intervals(), QList<int>{1000}); // the timer is not stopped, but it has no effect
    QTRY_COMPARE(_timers->intervals(), QList<int>());
    QCOMPARE(inside().port(), nullptr);
    QCOMPARE(inside().state(), NOT_CONNECTED);
}

void TestOpening::theConsoleIsWokenAndAskedForItsStatus_data()
{
    QTest::addColumn<CommState>("state");
    QTest::newRow("first wake-up") << CANDIDATE_DEVICE_FOUND;
    QTest::newRow("repeated wake-up") << INITIAL_WAITING_FOR_CONSOLE_PROMPT;
}

void TestOpening::theConsoleIsWokenAndAskedForItsStatus()
{
    QFETCH(CommState, state);
    _fixture->connectPort();
    inside().state() = state;
    QByteArray wokenBefore;
    QList<int> timersBefore = {-1};
    const MessageSpy spy([&](const QString &) {
        wokenBefore = _fixture->pty.collected();
        timersBefore = _timers->intervals();
    });
    _tolvar->onTimerKickOffTlovarConsole();
    QCOMPARE(inside().state(), INITIAL_WAITING_FOR_CONSOLE_PROMPT);
    QCOMPARE(wokenBefore, QByteArray("C\r\n")); // before the status is requested
    QCOMPARE(inside().queue(), QStringList{"get\r\n"});
    QCOMPARE(_fixture->log->messages(),
             QStringList{"D:_commState =  \"INITIAL_WAITING_FOR_CONSOLE_PROMPT\" "});
    QCOMPARE(timersBefore, QList<int>()); // the next second begins when this wake-up is complete
    QCOMPARE(_timers->intervals(), QList<int>{1000});
}

void TestOpening::theConsoleIsWokenEachSecondUntilItsPrompt()
{
    _fixture->connectPort();
    inside().state() = CANDIDATE_DEVICE_FOUND;
    TimingProbe timing(1000, [this] { return inside().queue().size() == 2; });
    _tolvar->onTimerKickOffTlovarConsole();
    timing.actionStarted();
    QTRY_VERIFY(timing.isOver());
    QCOMPARE(timing.verdict(), "in time");
    QCOMPARE(_fixture->pty.collected(), QByteArray("C\r\nC\r\n"));

    _fixture->feed(">");
    QCOMPARE(_timers->intervals(), QList<int>{1000}); // the timer is not stopped, but it has no effect
    QTRY_COMPARE(_timers->intervals(), QList<int>());
    QCOMPARE(inside().state(), IN_PROMPT);
    QCOMPARE(_fixture->pty.collected(), QByteArray("C\r\nC\r\nget\r\n"));
    QCOMPARE(inside().queue(), QStringList{"get\r\n"});
}

void TestOpening::theConsoleIsWokenInNoOtherState()
{
    _fixture->connectPort();
    for (const int state : {0, 2, 4, 5, 6, 7}) {
        inside().state() = static_cast<CommState>(state);
        _tolvar->onTimerKickOffTlovarConsole();
        QCOMPARE(int(inside().state()), state);
    }
    QCOMPARE(_fixture->pty.collected(), QByteArray());
    QCOMPARE(inside().queue(), QStringList());
    QCOMPARE(_timers->intervals(), QList<int>());
}

void TestOpening::withoutAPortNothingIsSentAndTheTimerContinues()
{
    inside().state() = CANDIDATE_DEVICE_FOUND;
    _tolvar->onTimerKickOffTlovarConsole();
    QCOMPARE(inside().state(), INITIAL_WAITING_FOR_CONSOLE_PROMPT);
    QCOMPARE(inside().queue(), QStringList());
    QCOMPARE(_timers->intervals(), QList<int>{1000});
}

QTEST_GUILESS_MAIN(TestOpening)
#include "tst_zvtolvar_discovery_opening.moc"
