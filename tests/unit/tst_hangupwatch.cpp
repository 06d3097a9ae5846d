#include <QFile>
#include <QSignalSpy>
#include <QTest>

#include <fcntl.h>
#include <unistd.h>

#include "serial/hangupwatch.h"
#include "tests/support/descriptors.h"
#include "tests/support/libcinterposer.h"
#include "tests/support/messagespy.h"
#include "tests/support/pty.h"

namespace
{
/// An open terminal, without a port that reads from it.
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

/// A watched terminal, and the signals that the watch has emitted.
struct WatchedTerminal : OpenTerminal {
    WatchedTerminal() { watch.start(descriptor()); }
    /// Disconnects the device; returns whether the watch reports it.
    bool tellsOfItsEnd()
    {
        terminal.hangUp();
        return hungUp.wait();
    }

    HangUpWatch watch;
    QSignalSpy hungUp{&watch, &HangUpWatch::hungUp};
};
} // namespace

/// Tests the watch for a hang-up of an open port.
class TestHangUpWatch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { LibcInterposer::clear(); }
    void cleanup() { LibcInterposer::clear(); }

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
    WatchedTerminal port;
    QVERIFY(port.tellsOfItsEnd());
}

void TestHangUpWatch::receivedBytesAreNoHangUp()
{
    WatchedTerminal talking;
    WatchedTerminal silent;
    talking.terminal.send("the device is there");
    QVERIFY(silent.tellsOfItsEnd());
    QCOMPARE(talking.hungUp.count(), 0);
    QCOMPARE(LibcInterposer::questionsForUnread(), 1); // the other watch did not even wake up
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
    for (int round = 1; round <= 2; ++round) { // each start counts again from the beginning
        LibcInterposer::clear();
        LibcInterposer::pretendUnread(timesUnread);
        int looks = 0;
        QObject listener;
        connect(&watch, &HangUpWatch::hungUp, &listener, [&] {
            looks = LibcInterposer::questionsForUnread();
            watch.stop();
        });
        watch.start(port.descriptor());
        QTRY_COMPARE(looks, toldAtLook);
    }
}

void TestHangUpWatch::aStoppedWatchTellsNothing()
{
    WatchedTerminal stopped;
    WatchedTerminal watched;
    stopped.watch.stop();
    stopped.watch.stop(); // a second stop() has no effect
    MessageSpy log;
    QCoreApplication::processEvents();
    QCOMPARE(log.messages(), QStringList()); // Qt reports no warning either
    stopped.terminal.hangUp();
    QVERIFY(watched.tellsOfItsEnd());
    QCOMPARE(stopped.hungUp.count(), 0);
}

void TestHangUpWatch::aWatchStartedAnewLeavesTheFirstPort()
{
    WatchedTerminal first;
    WatchedTerminal second;
    WatchedTerminal third;
    first.watch.start(second.descriptor());
    first.terminal.hangUp();
    QVERIFY(third.tellsOfItsEnd());
    QCOMPARE(first.hungUp.count(), 0);
    second.terminal.hangUp();
    QVERIFY(first.hungUp.wait());
}

void TestHangUpWatch::whatCantBeWatchedIsLeftAlone()
{
    QFile file(QStringLiteral("/proc/self/status"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    HangUpWatch watch;
    QSignalSpy hungUp(&watch, &HangUpWatch::hungUp);
    watch.start(file.handle());
    WatchedTerminal port;
    QVERIFY(port.tellsOfItsEnd());
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
    WatchedTerminal port;
    WatchedTerminal other;
    connect(&port.watch, &HangUpWatch::hungUp, &port.watch, &HangUpWatch::stop);
    QVERIFY(port.tellsOfItsEnd());
    QVERIFY(other.tellsOfItsEnd()); // after anything that the first watch could still report
    QCOMPARE(port.hungUp.count(), 1);
}

QTEST_GUILESS_MAIN(TestHangUpWatch)
#include "tst_hangupwatch.moc"
