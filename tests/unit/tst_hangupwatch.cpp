#include <QFile>
#include <QSignalSpy>
#include <QTest>

#include <fcntl.h>
#include <unistd.h>

#include "serial/hangupwatch.h"
#include "tests/support/descriptors.h"
#include "tests/support/messagerecorder.h"
#include "tests/support/pty.h"
#include "tests/support/ttycalls.h"

namespace
{
/// A terminal that is open, without a port to read from it.
class OpenTerminal
{
public:
    OpenTerminal()
        : _descriptor(
              ::open(terminal.name().toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
    {
    }
    ~OpenTerminal() { ::close(_descriptor); }
    Q_DISABLE_COPY_MOVE(OpenTerminal)

    int descriptor() const { return _descriptor; }

    Pty terminal;

private:
    int _descriptor;
};
} // namespace

/// The watch on an open port's other end.
class TestHangUpWatch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { TtyCalls::clear(); }
    void cleanup() { TtyCalls::clear(); }

    void aHangUpIsToldOf();
    void receivedBytesAreNoHangUp();
    void theLastWordsAreReadFirst_data();
    void theLastWordsAreReadFirst();
    void aStoppedWatchTellsNothing();
    void aWatchStartedAnewLeavesTheFirstPort();
    void whatCantBeWatchedIsLeftAlone();
    void aWatchGivesBackWhatItTook();
    void aWatchMayBeStoppedByWhomItTells();
};

void TestHangUpWatch::aHangUpIsToldOf()
{
    OpenTerminal port;
    HangUpWatch watch;
    QSignalSpy hungUp(&watch, &HangUpWatch::hungUp);
    watch.start(port.descriptor());
    port.terminal.hangUp();
    QVERIFY(hungUp.wait());
}

void TestHangUpWatch::receivedBytesAreNoHangUp()
{
    OpenTerminal talking;
    OpenTerminal silent;
    HangUpWatch watch;
    HangUpWatch other;
    QSignalSpy hungUp(&watch, &HangUpWatch::hungUp);
    QSignalSpy otherHungUp(&other, &HangUpWatch::hungUp);
    watch.start(talking.descriptor());
    other.start(silent.descriptor());
    talking.terminal.send("the device is there");
    silent.terminal.hangUp();
    QVERIFY(otherHungUp.wait());
    QCOMPARE(hungUp.count(), 0);
    QCOMPARE(TtyCalls::questionsForUnread(), 1); // it was not even woken
}

void TestHangUpWatch::theLastWordsAreReadFirst_data()
{
    QTest::addColumn<int>("timesUnread");
    QTest::addColumn<int>("toldAtLook");
    QTest::newRow("nothing is left to be read") << 0 << 1;
    QTest::newRow("the port reads them soon") << 5 << 6;
    QTest::newRow("the port reads them at the last moment") << 99 << 100;
    QTest::newRow("nobody ever reads them") << 100000 << 100;
}

void TestHangUpWatch::theLastWordsAreReadFirst()
{
    QFETCH(int, timesUnread);
    QFETCH(int, toldAtLook);
    OpenTerminal port;
    HangUpWatch watch;
    port.terminal.hangUp();
    for (int round = 1; round <= 2; ++round) { // each start counts anew
        TtyCalls::clear();
        TtyCalls::pretendUnread(timesUnread);
        int looks = 0;
        QObject listener;
        connect(&watch, &HangUpWatch::hungUp, &listener, [&] {
            looks = TtyCalls::questionsForUnread();
            watch.stop();
        });
        watch.start(port.descriptor());
        QTRY_COMPARE(looks, toldAtLook);
    }
}

void TestHangUpWatch::aStoppedWatchTellsNothing()
{
    OpenTerminal port;
    HangUpWatch stopped;
    HangUpWatch watching;
    QSignalSpy stoppedHungUp(&stopped, &HangUpWatch::hungUp);
    QSignalSpy hungUp(&watching, &HangUpWatch::hungUp);
    stopped.start(port.descriptor());
    watching.start(port.descriptor());
    stopped.stop();
    stopped.stop(); // twice is once
    MessageRecorder log;
    QCoreApplication::processEvents();
    QCOMPARE(log.messages(), QStringList()); // the toolkit finds nothing amiss either
    port.terminal.hangUp();
    QVERIFY(hungUp.wait());
    QCOMPARE(stoppedHungUp.count(), 0);
}

void TestHangUpWatch::aWatchStartedAnewLeavesTheFirstPort()
{
    OpenTerminal first;
    OpenTerminal second;
    HangUpWatch watch;
    HangUpWatch other;
    QSignalSpy hungUp(&watch, &HangUpWatch::hungUp);
    QSignalSpy firstHungUp(&other, &HangUpWatch::hungUp);
    watch.start(first.descriptor());
    watch.start(second.descriptor());
    other.start(first.descriptor());
    first.terminal.hangUp();
    QVERIFY(firstHungUp.wait());
    QCOMPARE(hungUp.count(), 0);
    second.terminal.hangUp();
    QVERIFY(hungUp.wait());
}

void TestHangUpWatch::whatCantBeWatchedIsLeftAlone()
{
    QFile file(QStringLiteral("/proc/self/status"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    OpenTerminal port;
    HangUpWatch watch;
    HangUpWatch other;
    QSignalSpy hungUp(&watch, &HangUpWatch::hungUp);
    QSignalSpy otherHungUp(&other, &HangUpWatch::hungUp);
    watch.start(file.handle());
    other.start(port.descriptor());
    port.terminal.hangUp();
    QVERIFY(otherHungUp.wait());
    QCOMPARE(hungUp.count(), 0);
}

void TestHangUpWatch::aWatchGivesBackWhatItTook()
{
    OpenTerminal port;
    QFile file(QStringLiteral("/proc/self/status"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const qsizetype before = openDescriptors().size();
    {
        HangUpWatch watch;
        watch.start(port.descriptor());
        QCOMPARE(openDescriptors().size(), before + 1);
        watch.start(file.handle());
        QCOMPARE(openDescriptors().size(), before + 1);
        watch.stop();
        QCOMPARE(openDescriptors().size(), before);
        watch.start(port.descriptor());
    }
    QCOMPARE(openDescriptors().size(), before);
}

void TestHangUpWatch::aWatchMayBeStoppedByWhomItTells()
{
    OpenTerminal port;
    auto watch = std::make_unique<HangUpWatch>();
    int told = 0;
    connect(watch.get(), &HangUpWatch::hungUp, this, [&] {
        ++told;
        watch->stop();
    });
    watch->start(port.descriptor());
    port.terminal.hangUp();
    QTRY_COMPARE(told, 1);
    HangUpWatch other; // comes after whatever the first would still have to tell
    QSignalSpy otherHungUp(&other, &HangUpWatch::hungUp);
    other.start(port.descriptor());
    QVERIFY(otherHungUp.wait());
    QCOMPARE(told, 1);
}

QTEST_GUILESS_MAIN(TestHangUpWatch)
#include "tst_hangupwatch.moc"
