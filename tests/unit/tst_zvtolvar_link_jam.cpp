#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <atomic>
#include <thread>

#include <QTest>

#include "tests/support/linkfixture.h"
#include "tests/support/plaintty.h"

namespace
{
/// A port that accepts a given number of bytes, then rejects some, and then accepts a given number again.
class JammedPort : public QextSerialPort
{
public:
    explicit JammedPort(qint64 room, qint64 roomAfterwards = 0)
        : QextSerialPort(QStringLiteral("jammed"))
        , _room(room)
        , _roomAfterwards(roomAfterwards)
    {
        setOpenMode(ReadWrite | Unbuffered);
    }

    void setRoom(qint64 room) { _room = room; }
    QByteArray taken() const { return _taken; }

protected:
    qint64 writeData(const char *data, qint64 size) override
    {
        const qint64 count = std::min(size, _room);
        _taken.append(data, count);
        _room = count < size ? _roomAfterwards : _room - count;
        return count;
    }

private:
    qint64 _room;
    qint64 _roomAfterwards;
    QByteArray _taken;
};

constexpr qint64 Endless = 1000;
constexpr const char *Passphrase = "setpass secret words\r\n";
} // namespace

/// Tests commands that the line rejects, completely or in part.
class TestLinkJam : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aCommandEndsWhereTheLineTakesNoMore_data();
    void aCommandEndsWhereTheLineTakesNoMore();
    void theNextCommandBeginsOnALineOfItsOwn_data();
    void theNextCommandBeginsOnALineOfItsOwn();
    void aLineEndThatIsCutItselfIsSentAgain();
    void aNewDeviceHasNoOpenLine();
    void aDeadPortCutsEachCommandAtOnce();
    void noTailReachesADeviceThatStopsAndGoesOn();
};

void TestLinkJam::aCommandEndsWhereTheLineTakesNoMore_data()
{
    QTest::addColumn<int>("room");
    QTest::addColumn<QByteArray>("taken");
    QTest::addColumn<QStringList>("logged");
    const auto cutAfter = [](int count) {
        return QStringList{QStringLiteral("C:The command was cut: the port took %1 of 22 bytes ").arg(count)};
    };
    QTest::newRow("nothing is taken") << 0 << QByteArray() << cutAfter(0);
    QTest::newRow("the first byte is taken") << 1 << QByteArray("s") << cutAfter(1);
    QTest::newRow("half of it is taken") << 8 << QByteArray("setpass ") << cutAfter(8);
    QTest::newRow("the line feed is not taken") << 21 << QByteArray("setpass secret words\r") << cutAfter(21);
    QTest::newRow("all is taken") << 22 << QByteArray(Passphrase) << QStringList();
}

void TestLinkJam::aCommandEndsWhereTheLineTakesNoMore()
{
    QFETCH(int, room);
    LinkFixture fixture;
    JammedPort port(room, Endless);
    fixture.inside.port() = &port;
    fixture.tolvar.submitCommand(QString::fromLatin1(Passphrase));
    fixture.tolvar.onReadyForCommand();
    QTEST(port.taken(), "taken"); // and not the rest of a command, though the port accepts bytes again
    QTEST(fixture.log->messages(QStringLiteral("C:")), "logged");
}

void TestLinkJam::theNextCommandBeginsOnALineOfItsOwn_data()
{
    QTest::addColumn<int>("room");
    QTest::addColumn<QByteArray>("taken");
    QTest::newRow("nothing was taken") << 0 << QByteArray("save\r\nexit\r\n");
    QTest::newRow("a part was taken") << 11 << QByteArray("setpass sec\r\nsave\r\nexit\r\n");
    QTest::newRow("all was taken") << 22 << QByteArray("setpass secret words\r\nsave\r\nexit\r\n");
}

void TestLinkJam::theNextCommandBeginsOnALineOfItsOwn()
{
    QFETCH(int, room);
    LinkFixture fixture;
    JammedPort port(room);
    fixture.inside.port() = &port;
    fixture.inside.state() = IN_PROMPT;
    fixture.tolvar.submitCommand(QString::fromLatin1(Passphrase));
    port.setRoom(0);
    fixture.tolvar.submitCommand(QStringLiteral("test\r\n")); // lost as a whole
    port.setRoom(Endless);
    fixture.log->take();
    fixture.tolvar.submitCommand(QStringLiteral("save\r\n"));
    fixture.tolvar.submitCommand(QStringLiteral("exit\r\n"));
    QTEST(port.taken(), "taken");
    // The line end is not part of the command, and is not logged with it.
    QVERIFY(fixture.log->messages().contains(QStringLiteral("D:--> \"save\r\n\" ")));
    QCOMPARE(fixture.log->messages(QStringLiteral("C:")), QStringList());
}

void TestLinkJam::aLineEndThatIsCutItselfIsSentAgain()
{
    LinkFixture fixture;
    JammedPort port(1);
    fixture.inside.port() = &port;
    fixture.inside.state() = IN_PROMPT;
    fixture.tolvar.submitCommand(QStringLiteral("exit\r\n"));
    port.setRoom(1);
    fixture.log->take();
    fixture.tolvar.submitCommand(QStringLiteral("test\r\n"));
    QCOMPARE(fixture.log->messages(QStringLiteral("C:")),
             QStringList{"C:The command was cut: the port took 0 of 6 bytes "});
    port.setRoom(Endless);
    fixture.tolvar.submitCommand(QStringLiteral("save\r\n"));
    QCOMPARE(port.taken(), QByteArray("e\r\r\nsave\r\n"));
}

void TestLinkJam::aNewDeviceHasNoOpenLine()
{
    LinkFixture fixture;
    JammedPort first(3);
    fixture.inside.port() = &first;
    fixture.inside.portName() = QStringLiteral("jammed");
    fixture.tolvar.submitCommand(QStringLiteral("save\r\n"));
    fixture.tolvar.onReadyForCommand();
    QextPortInfo gone;
    gone.portName = QStringLiteral("jammed");
    fixture.tolvar.onDeviceRemoved(gone);

    JammedPort second(Endless);
    fixture.inside.port() = &second;
    fixture.tolvar.submitCommand(QStringLiteral("get\r\n"));
    fixture.tolvar.onReadyForCommand();
    QCOMPARE(second.taken(), QByteArray("get\r\n"));
}

void TestLinkJam::aDeadPortCutsEachCommandAtOnce()
{
    LinkFixture fixture;
    fixture.connectPort();
    fixture.inside.state() = IN_PROMPT;
    fixture.pty.hangUp();
    fixture.tolvar.submitCommand(QStringLiteral("save\r\n"));
    fixture.tolvar.submitCommand(QStringLiteral("exit\r\n"));
    QCOMPARE(fixture.log->messages(QStringLiteral("C:The command")),
             QStringList({"C:The command was cut: the port took 0 of 6 bytes ",
                          "C:The command was cut: the port took 0 of 6 bytes "}));
}

void TestLinkJam::noTailReachesADeviceThatStopsAndGoesOn()
{
    LinkFixture fixture;
    const PlainTty line(
        fixture.pty.portName().toLatin1()); // opened first, because the port allows only one program
    fixture.connectPort();
    fixture.inside.state() = IN_PROMPT;
    // The device stops the line in the middle of the command, as with flow control that was never enabled.
    const QByteArray command =
        "setpass " + QByteArray(200, 's') + "\r\n"; // long enough for a very busy computer
    QByteArray received;
    std::atomic<bool> isStopped = false;
    std::thread device([&] {
        while (!received.contains("sss")) {
            pollfd end{fixture.pty.device(), POLLIN, 0};
            if (::poll(&end, 1, 5000) <= 0)
                return;
            received += fixture.pty.received();
        }
        isStopped = ::tcflow(line.descriptor, TCOOFF) == 0;
    });
    fixture.tolvar.submitCommand(QString::fromLatin1(command));
    device.join();
    QVERIFY(isStopped);
    received += fixture.pty.received();
    QVERIFY2(command.startsWith(received) && received.size() < command.size() - 2, received.constData());
    QCOMPARE(
        fixture.log->messages(QStringLiteral("C:")),
        QStringList{
            QStringLiteral("C:The command was cut: the port took %1 of 210 bytes ").arg(received.size())});

    QCOMPARE(::tcflow(line.descriptor, TCOON), 0);
    fixture.tolvar.submitCommand(QStringLiteral("get\r\n"));
    QCOMPARE(fixture.pty.received(), QByteArray("\r\nget\r\n"));
}

QTEST_GUILESS_MAIN(TestLinkJam)
#include "tst_zvtolvar_link_jam.moc"
