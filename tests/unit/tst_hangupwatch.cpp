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
/// A watched terminal without a port that reads from it, and the signals that the watch has emitted.
struct WatchedTerminal {
    WatchedTerminal() { watch.start(descriptor); }
    ~WatchedTerminal() { ::close(descriptor); }
    Q_DISABLE_COPY_MOVE(WatchedTerminal)

    /// Disconnects the device; returns whether the watch reports it.
    bool reportsHangUp()
    {
        terminal.hangUp();
        return hungUp.wait();
    }

    Pty terminal;
    const int descriptor =
        ::open(terminal.name().toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
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

    void receivedBytesAreNotReportedAsAHangUp();
    void unreadBytesDelayTheReport_data();
    void unreadBytesDelayTheReport();
    void aStoppedWatchReportsNothing();
    void aRestartedWatchIgnoresTheFirstPort();
    void aFileThatCannotBeWatchedIsIgnored();
    void aWatchReleasesItsDescriptors();
};

void TestHangUpWatch::receivedBytesAreNotReportedAsAHangUp()
{
    WatchedTerminal talking;
    WatchedTerminal silent;
    talking.terminal.send("the device is there");
    QVERIFY(silent.reportsHangUp());
    QCOMPARE(talking.hungUp.count(), 0);
    QCOMPARE(LibcInterposer::unreadQueries(), 1); // the other watch is not activated
}

void TestHangUpWatch::unreadBytesDelayTheReport_data()
{
    QTest::addColumn<int>("timesUnread");
    QTest::addColumn<int>("reportedAtCheck");
    QTest::newRow("until the bytes are read") << 5 << 6;
    QTest::newRow("for a limited time if the bytes stay unread") << 100000 << 100;
}

void TestHangUpWatch::unreadBytesDelayTheReport()
{
    QFETCH(int, timesUnread);
    QFETCH(int, reportedAtCheck);
    WatchedTerminal port;
    int checks = 0;
    connect(&port.watch, &HangUpWatch::hungUp, this, [&] {
        checks = LibcInterposer::unreadQueries();
        port.watch.stop();
    });
    port.terminal.hangUp();
    for (int round = 1; round <= 2; ++round) { // each start resets the count
        LibcInterposer::clear();
        LibcInterposer::simulateUnread(timesUnread);
        checks = 0;
        port.watch.start(port.descriptor);
        QTRY_COMPARE(checks, reportedAtCheck);
        QCOMPARE(port.hungUp.count(), round);
    }
}

void TestHangUpWatch::aStoppedWatchReportsNothing()
{
    WatchedTerminal stopped;
    WatchedTerminal watched;
    stopped.watch.stop();
    stopped.watch.stop(); // a second stop() has no effect
    MessageSpy log;
    QCoreApplication::processEvents();
    QCOMPARE(log.messages(), QStringList()); // Qt reports no warning either
    stopped.terminal.hangUp();
    QVERIFY(watched.reportsHangUp());
    QCOMPARE(stopped.hungUp.count(), 0);
}

void TestHangUpWatch::aRestartedWatchIgnoresTheFirstPort()
{
    WatchedTerminal first;
    WatchedTerminal second;
    WatchedTerminal third;
    first.watch.start(second.descriptor);
    first.terminal.hangUp();
    QVERIFY(third.reportsHangUp());
    QCOMPARE(first.hungUp.count(), 0);
    second.terminal.hangUp();
    QVERIFY(first.hungUp.wait());
}

void TestHangUpWatch::aFileThatCannotBeWatchedIsIgnored()
{
    QFile file(QStringLiteral("/proc/self/status"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    WatchedTerminal none;
    none.watch.start(file.handle());
    WatchedTerminal port;
    QVERIFY(port.reportsHangUp());
    QCOMPARE(none.hungUp.count(), 0);
}

void TestHangUpWatch::aWatchReleasesItsDescriptors()
{
    WatchedTerminal port;
    QFile file(QStringLiteral("/proc/self/status"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const qsizetype before = openDescriptors().size();
    {
        HangUpWatch watch;
        watch.start(port.descriptor);
        QCOMPARE(openDescriptors().size(), before + 1);
        watch.start(file.handle());
        QCOMPARE(openDescriptors().size(), before + 1);
        watch.stop();
        QCOMPARE(openDescriptors().size(), before);
        watch.start(port.descriptor);
    }
    QCOMPARE(openDescriptors().size(), before);
}

QTEST_GUILESS_MAIN(TestHangUpWatch)
#include "tst_hangupwatch.moc"
