#include <QTest>

#include <sys/ioctl.h>

#include "tests/support/libcinterposer.h"
#include "tests/support/messagespy.h"
#include "tests/support/openedport.h"

/// Tests the line's settings, as requested from the system.
class TestQextSerialPortSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void settingsTakeEffect_data();
    void settingsTakeEffect();
    void settingsAreMadeInTheOrderOfTheDevice();
    void settingOneThingLeavesTheOthersAlone();
    void theDevicesSettingsLeaveNoMessage();
};

using Setter = void (*)(QextSerialPort &port);
using Check = bool (*)(const termios &asked);

void TestQextSerialPortSettings::settingsTakeEffect_data()
{
    QTest::addColumn<Setter>("set");
    QTest::addColumn<Check>("isSet");
    QTest::addColumn<QList<int>>("modemLines");

    const auto row = [](const char *name, Setter set, Check isSet) {
        QTest::newRow(name) << set << isSet << QList<int>{};
    };
    const auto modemRow = [](const char *name, Setter set, int line) {
        QTest::newRow(name) << set << Check([](const termios &) { return true; }) << QList<int>{line};
    };
    row(
        "9600 baud", [](auto &p) { p.setBaudRate(BAUD9600); },
        [](auto &t) { return cfgetospeed(&t) == B9600; });
    row(
        "19200 baud", [](auto &p) { p.setBaudRate(BAUD19200); },
        [](auto &t) { return cfgetospeed(&t) == B19200; });
    row(
        "38400 baud", [](auto &p) { p.setBaudRate(BAUD38400); },
        [](auto &t) { return cfgetospeed(&t) == B38400; });
    row(
        "57600 baud", [](auto &p) { p.setBaudRate(BAUD57600); },
        [](auto &t) { return cfgetospeed(&t) == B57600; });
    row(
        "115200 baud", [](auto &p) { p.setBaudRate(BAUD115200); },
        [](auto &t) { return cfgetospeed(&t) == B115200; });
    row(
        "no flow control", [](auto &p) { p.setFlowControl(FLOW_OFF); },
        [](auto &t) { return !(t.c_cflag & CRTSCTS) && !(t.c_iflag & (IXON | IXOFF)); });
    row(
        "hardware flow control", [](auto &p) { p.setFlowControl(FLOW_HARDWARE); },
        [](auto &t) { return (t.c_cflag & CRTSCTS) && !(t.c_iflag & (IXON | IXOFF)); });
    row(
        "XON and XOFF", [](auto &p) { p.setFlowControl(FLOW_XONXOFF); },
        [](auto &t) { return !(t.c_cflag & CRTSCTS) && (t.c_iflag & IXON) && (t.c_iflag & IXOFF); });
    row(
        "no parity", [](auto &p) { p.setParity(PAR_NONE); }, [](auto &t) { return !(t.c_cflag & PARENB); });
    row(
        "odd parity", [](auto &p) { p.setParity(PAR_ODD); },
        [](auto &t) { return (t.c_cflag & PARENB) && (t.c_cflag & PARODD) && !(t.c_cflag & CMSPAR); });
    row(
        "even parity", [](auto &p) { p.setParity(PAR_EVEN); },
        [](auto &t) { return (t.c_cflag & PARENB) && !(t.c_cflag & PARODD) && !(t.c_cflag & CMSPAR); });
    row(
        "mark parity", [](auto &p) { p.setParity(PAR_MARK); },
        [](auto &t) { return (t.c_cflag & PARENB) && (t.c_cflag & PARODD) && (t.c_cflag & CMSPAR); });
    row(
        "space parity", [](auto &p) { p.setParity(PAR_SPACE); },
        [](auto &t) { return (t.c_cflag & PARENB) && !(t.c_cflag & PARODD) && (t.c_cflag & CMSPAR); });
    row(
        "5 data bits", [](auto &p) { p.setDataBits(DATA_5); },
        [](auto &t) { return (t.c_cflag & CSIZE) == CS5; });
    row(
        "6 data bits", [](auto &p) { p.setDataBits(DATA_6); },
        [](auto &t) { return (t.c_cflag & CSIZE) == CS6; });
    row(
        "7 data bits", [](auto &p) { p.setDataBits(DATA_7); },
        [](auto &t) { return (t.c_cflag & CSIZE) == CS7; });
    row(
        "8 data bits", [](auto &p) { p.setDataBits(DATA_8); },
        [](auto &t) { return (t.c_cflag & CSIZE) == CS8; });
    row(
        "1 stop bit", [](auto &p) { p.setStopBits(STOP_1); }, [](auto &t) { return !(t.c_cflag & CSTOPB); });
    row(
        "1.5 stop bits, which the system has not, are left out", [](auto &p) { p.setStopBits(STOP_1_5); },
        [](auto &t) { return !(t.c_cflag & CSTOPB); });
    row(
        "2 stop bits", [](auto &p) { p.setStopBits(STOP_2); },
        [](auto &t) { return (t.c_cflag & CSTOPB) != 0; });
    modemRow(
        "DTR on", [](auto &p) { p.setDtr(); }, TIOCM_DTR);
    modemRow(
        "DTR off", [](auto &p) { p.setDtr(false); }, -TIOCM_DTR);
    modemRow(
        "RTS on", [](auto &p) { p.setRts(); }, TIOCM_RTS);
    modemRow(
        "RTS off", [](auto &p) { p.setRts(false); }, -TIOCM_RTS);
}

void TestQextSerialPortSettings::settingsTakeEffect()
{
    QFETCH(Setter, set);
    QFETCH(Check, isSet);
    QFETCH(QList<int>, modemLines);
    MessageSpy log;
    {
        Pty terminal;
        QextSerialPort port(terminal.portName());
        LibcInterposer::clear();
        set(port);
        QCOMPARE(LibcInterposer::modemLines(), QList<int>{});
        QVERIFY(port.open(QIODevice::ReadWrite));
        QVERIFY2(isSet(LibcInterposer::lastSettings()), "set before the open");
        QCOMPARE(LibcInterposer::modemLines(), modemLines);
    }
    {
        Pty terminal;
        const PortPointer first = openedPort(terminal);
        LibcInterposer::clear();
        set(*first);
        if (modemLines.isEmpty())
            QVERIFY2(isSet(LibcInterposer::lastSettings()), "set on the open port");
        QCOMPARE(LibcInterposer::modemLines(), modemLines);
        // The line has the settings of the object that opened or set them last.
        QextSerialPort second(terminal.portName());
        set(second);
        LibcInterposer::clear();
        QVERIFY(second.open(QIODevice::ReadWrite));
        if (modemLines.isEmpty())
            QVERIFY2(isSet(LibcInterposer::lastSettings()), "set by who opened it later");
        QCOMPARE(LibcInterposer::modemLines(), modemLines);
    }
    QCOMPARE(log.messages(), QStringList());
}

void TestQextSerialPortSettings::settingsAreMadeInTheOrderOfTheDevice()
{
    Pty terminal;
    QextSerialPort port(terminal.portName());
    port.setRts(false);
    port.setDtr(false);
    port.setStopBits(STOP_2);
    port.setDataBits(DATA_7);
    port.setParity(PAR_ODD);
    port.setFlowControl(FLOW_XONXOFF);
    port.setBaudRate(BAUD19200);
    LibcInterposer::clear();
    QVERIFY(port.open(QIODevice::ReadWrite));
    const QStringList order{"baud rate", "flow control", "parity", "data bits", "stop bits", "DTR", "RTS"};
    const QStringList made = LibcInterposer::order();
    // The settings that open() makes come first.
    QCOMPARE(made.mid(made.size() - order.size()), order);
}

void TestQextSerialPortSettings::settingOneThingLeavesTheOthersAlone()
{
    Pty terminal;
    QextSerialPort first(terminal.portName());
    first.setBaudRate(BAUD9600);
    QVERIFY(first.open(QIODevice::ReadWrite));
    const PortPointer second = openedPort(terminal);
    second->setBaudRate(BAUD57600);
    LibcInterposer::clear();
    first.setStopBits(STOP_2);
    QCOMPARE(LibcInterposer::order(), QStringList{"stop bits"});
    const termios asked = LibcInterposer::lastSettings();
    QCOMPARE(cfgetospeed(&asked), speed_t(B57600));
}

void TestQextSerialPortSettings::theDevicesSettingsLeaveNoMessage()
{
    MessageSpy log;
    Pty terminal;
    QextSerialPort port(terminal.portName());
    port.setBaudRate(BAUD115200);
    port.setFlowControl(FLOW_OFF);
    port.setParity(PAR_NONE);
    port.setDataBits(DATA_8);
    port.setStopBits(STOP_1);
    port.setDtr(false);
    port.setRts(false);
    QVERIFY(port.open(QIODevice::ReadWrite));
    termios settings;
    QCOMPARE(::tcgetattr(terminal.device(), &settings), 0);
    QCOMPARE(cfgetospeed(&settings), speed_t(B115200));
    QCOMPARE(cfgetispeed(&settings), speed_t(B115200));
    terminal.send("\r\n\x03\x11\x13"); // bytes that a terminal could swallow or change
    QTRY_COMPARE(port.bytesAvailable(), 5);
    QCOMPARE(port.readAll(), QByteArray("\r\n\x03\x11\x13"));
    port.close();
    QCOMPARE(log.messages(), QStringList());
}

QTEST_GUILESS_MAIN(TestQextSerialPortSettings)
#include "tst_qextserialport_settings.moc"
