#include <QTest>

#include <csignal>

#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "simulator/fakeusbbus.h"

namespace
{
QString freshTty()
{
    return QStringLiteral("ttyUSB%1").arg(FakeUsbBus::takeTtyNumber());
}

// One tolvarsim process, without the preload library that this test itself may run under.
class Simulator
{
public:
    Simulator()
    {
        environment.remove(QStringLiteral("LD_PRELOAD"));
        environment.remove(QStringLiteral("UMOCKDEV_DIR"));
    }

    ~Simulator()
    {
        if (process.state() == QProcess::NotRunning)
            return;
        process.terminate();
        if (!process.waitForFinished(5000))
            process.kill();
        process.waitForFinished();
    }

    void start(const QStringList &arguments)
    {
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(TOLVARSIM), arguments);
    }

    // Runs a shell script that can use the device as $TTY, until both have ended.
    void run(const QStringList &options, const QString &script)
    {
        const QString tty = freshTty();
        environment.insert(QStringLiteral("TTY"), QStringLiteral("/dev/") + tty);
        start(QStringList{"--tty", tty} + options + QStringList{"--", "/bin/sh", "-c", script});
        finish();
    }

    void finish()
    {
        // The process may have ended while the test waited for something else.
        QVERIFY2(process.state() == QProcess::NotRunning || process.waitForFinished(20000),
                 qPrintable(process.errorString()));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        out += process.readAllStandardOutput();
        err += process.readAllStandardError();
    }

    // Waits until standard output contains \a text.
    bool waitForOutput(const QByteArray &text)
    {
        return QTest::qWaitFor([&] {
            out += process.readAllStandardOutput();
            return out.contains(text);
        });
    }

    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QByteArray out;
    QByteArray err;
};

// Returns a script that sends these lines, in printf's syntax, to the device, and ends.
QString sendScript(const QString &lines)
{
    return QStringLiteral("exec 3<>$TTY; printf '%1' >&3").arg(lines);
}
} // namespace

/// Tests the program tolvarsim: its options, its output and its exit status.
class TestTolvarSim : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itExitsWithTheStatusOfItsProgram_data();
    void itExitsWithTheStatusOfItsProgram();
    void expectationsAreChecked_data();
    void expectationsAreChecked();
    void invalidArgumentsAreReported_data();
    void invalidArgumentsAreReported();
    void aMissingWrapperIsReported();
    void itRunsUnderTheWrapperToo();
    void helpIsPrinted();
    void itPrintsTheConversation();
    void itPrintsTheConfigurationAtTheEnd();
    void optionsConfigureTheDevice_data();
    void optionsConfigureTheDevice();
    void theDeviceSendsTheGivenLogFile();
    void foreignPortsComeFirst();
    void theDeviceIsPluggedInAfterTheGivenDelay();
    void scansAreDelayed();
    void anInterruptEndsTheProgram();
    void aSignalUnplugsAndReplugsTheDevice();
};

void TestTolvarSim::itExitsWithTheStatusOfItsProgram_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<int>("status");
    QTest::newRow("success") << "true" << 0;
    QTest::newRow("failure") << "exit 7" << 7;
    QTest::newRow("killed") << "kill -9 $$" << 128 + SIGKILL;
}

void TestTolvarSim::itExitsWithTheStatusOfItsProgram()
{
    QFETCH(QString, script);
    Simulator simulator;
    simulator.run({}, script);
    QTEST(simulator.process.exitCode(), "status");
    QCOMPARE(simulator.err, QByteArray());
}

void TestTolvarSim::expectationsAreChecked_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("lines");
    QTest::addColumn<QByteArray>("error"); // empty: the simulator succeeds
    const auto row = [](const char *name, const QStringList &options, const char *lines,
                        const char *error = "") {
        QTest::newRow(name) << options << QString(lines) << QByteArray(error);
    };
    const char *all = "C\\r\\nsetssid a b \\r\\nsetpass  \\303\\251\\r\\nsave\\r\\nexit\\r\\n";
    row("all expectations met", {"--expect-ssid", "a b ", "--expect-pass", " \u00E9", "--expect-exit"}, all);
    row("trailing space missing", {"--expect-ssid", "a b"}, all,
        "the saved network is \"a b \", not \"a b\"\n");
    row("different passphrase", {"--expect-pass", "x"}, all,
        "the saved passphrase is \" \u00E9\", not \"x\"\n");
    row("not saved", {"--expect-ssid", "x"}, "C\\r\\nsetssid x\\r\\n",
        "the saved network is \"Workshop\", not \"x\"\n");
    row("new session after exit", {"--expect-exit"}, "C\\r\\nexit\\r\\nC\\r\\n",
        "\"exit\" has not been received\n");
    row("empty passphrase", {"--expect-pass", ""}, "C\\r\\nsetpass \\r\\nsave\\r\\n");
    row("exit during a scan", {"--expect-exit", "--scan-delay", "700"}, "C\\r\\nscan\\r\\nexit\\r\\n");
}

void TestTolvarSim::expectationsAreChecked()
{
    QFETCH(QStringList, options);
    QFETCH(QString, lines);
    QFETCH(QByteArray, error);
    Simulator simulator;
    simulator.run(options, sendScript(lines));
    if (!error.isEmpty())
        error.prepend("tolvarsim: unexpected final state: ");
    QCOMPARE(simulator.err, error);
    QCOMPARE(simulator.process.exitCode(), error.isEmpty() ? 0 : 1);
}

void TestTolvarSim::invalidArgumentsAreReported_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("word");
    const auto row = [](const char *name, const QStringList &arguments, const char *word) {
        QTest::newRow(name) << arguments << QByteArray(word);
    };
    row("no program", {"--foreign", "--"}, "No program");
    row("unknown option", {"--colour", "true"}, "colour");
    row("delay is not a number", {"--scan-delay", "soon", "true"}, "soon");
    row("negative delay", {"--plug-after", "-1", "true"}, "-1");
    row("unknown bridge", {"--bridge", "rs232", "true"}, "rs232");
    row("vendor id is not a number", {"--vid", "ftdi", "true"}, "ftdi");
    row("product id out of range", {"--pid", "12345", "true"}, "12345");
    row("unsupported tty name", {"--tty", "ttyS0", "true"}, "ttyS0");
    row("network without a passphrase", {"--network", "Home", "true"}, "Home");
    row("missing log file", {"--log-file", "/nowhere/log", "true"}, "/nowhere/log");
    row("missing program", {"--", "/nowhere/program"}, "/nowhere/program");
}

void TestTolvarSim::invalidArgumentsAreReported()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, word);
    if (arguments.contains("--"))
        arguments = QStringList{"--tty", freshTty()} + arguments;
    Simulator simulator;
    simulator.start(arguments);
    simulator.finish();
    QCOMPARE(simulator.process.exitCode(), 2);
    QVERIFY2(simulator.err.startsWith("tolvarsim: "), simulator.err);
    QVERIFY2(simulator.err.contains(word), simulator.err);
    QCOMPARE(simulator.err.count('\n'), 1);
}

void TestTolvarSim::aMissingWrapperIsReported()
{
    Simulator simulator;
    simulator.environment.insert("PATH", "/nowhere");
    simulator.start({"/bin/true"});
    simulator.finish();
    QCOMPARE(simulator.process.exitCode(), 2);
    QVERIFY2(simulator.err.contains("umockdev-wrapper"), simulator.err);
    QCOMPARE(simulator.err.count('\n'), 1);
}

void TestTolvarSim::itRunsUnderTheWrapperToo()
{
    Simulator simulator;
    simulator.process.setProcessEnvironment(simulator.environment);
    simulator.process.start("umockdev-wrapper", {TOLVARSIM, "--tty", freshTty(), "/bin/sh", "-c", "exit 3"});
    simulator.finish();
    QCOMPARE(simulator.process.exitCode(), 3);
}

void TestTolvarSim::helpIsPrinted()
{
    Simulator simulator;
    simulator.start({"--help"});
    simulator.finish();
    QCOMPARE(simulator.process.exitCode(), 0);
    QVERIFY(simulator.out.contains("--expect-ssid"));
    QVERIFY(simulator.out.contains("PROGRAM [ARGS...]"));
}

void TestTolvarSim::itPrintsTheConversation()
{
    const QString script = sendScript("C\\r\\nget_log_file\\r\\nsetssid \\351\\001\\r\\nexit\\r\\n");
    Simulator brief;
    brief.run({}, script);
    QVERIFY(brief.out.contains("] > C\n"));
    QVERIFY(brief.out.contains("] > get_log_file\n"));
    QVERIFY(brief.out.contains("] > setssid \u00E9\\x01\n")); // not valid UTF-8, so it is read as Latin-1
    QVERIFY(brief.out.contains("] * left setup mode\n"));
    static const QRegularExpression sentLog("\\] < <log_file> \\d+ bytes\n");
    QVERIFY(sentLog.match(brief.out).hasMatch());
    QVERIFY(!brief.out.contains("cold start"));

    Simulator verbose;
    verbose.run({"--verbose"}, script);
    QVERIFY(verbose.out.contains("cold start"));
    QVERIFY(verbose.out.contains("] < >\n"));
}

void TestTolvarSim::itPrintsTheConfigurationAtTheEnd()
{
    Simulator simulator;
    simulator.run({}, sendScript("C\\r\\nsetssid a  b \\r\\nsetpass p\\r\\nant_select 1\\r\\n"
                                 "setstaticip Y 10.0.0.7\\r\\nsave\\r\\nsetssid unsaved\\r\\nexit\\r\\n"));
    const QByteArray holds = simulator.out.mid(simulator.out.indexOf("the device holds"));
    QVERIFY2(holds.contains("network     \"a  b \"\n"), holds);
    QVERIFY2(holds.contains("passphrase  \"p\"\n"), holds);
    QVERIFY2(holds.contains("antenna     1\n"), holds);
    QVERIFY2(holds.contains("static IP   10.0.0.7\n"), holds);
    QVERIFY2(holds.contains("it has left setup mode\n"), holds);
}

void TestTolvarSim::optionsConfigureTheDevice_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("lines");
    QTest::addColumn<QByteArray>("shown");
    const auto row = [](const char *name, const QStringList &options, const char *lines, const char *shown) {
        QTest::newRow(name) << options << QString(lines) << QByteArray(shown);
    };
    const char *scan = "scan\\r\\n";
    row("firmware", {"--firmware", "A058"}, "get\\r\\n", "<firmware_version>A058</firmware_version>");
    row("default networks", {}, scan, "SSID=\"Workshop\"");
    row("two networks", {"--network", "Home=secret", "--network", "B=x:WEP"}, scan,
        "SSID=\"B\" channel=\"6\" adhoc=\"N\" sec=\"WEP\"");
    row("open network", {"--network", " Caf\u00E9 ="}, scan,
        "<scan SSID=\" Caf\u00E9 \" channel=\"6\" adhoc=\"N\" sec=\"OPEN\"");
    row("passphrase with '=' and ':'", {"--network", "H=a=b:c:WPA"},
        "setssid H\\r\\nsetpass a=b:c\\r\\ntest\\r\\n", "result=\"0\"");
    row("passphrase with an unknown security suffix", {"--network", "H=a:B"},
        "setssid H\\r\\nsetpass a:B\\r\\ntest\\r\\n", "result=\"0\"");
    row("system error", {"--system-error"}, "test\\r\\n", "result=\"3\"");
}

void TestTolvarSim::optionsConfigureTheDevice()
{
    QFETCH(QStringList, options);
    QFETCH(QString, lines);
    QFETCH(QByteArray, shown);
    Simulator simulator;
    simulator.run(options + QStringList{"--no-scan-delay", "--verbose"}, sendScript("C\\r\\n" + lines));
    QVERIFY2(simulator.out.contains(shown), simulator.out);
    if (options.contains("--network"))
        QVERIFY(!simulator.out.contains("SSID=\"Workshop\""));
}

void TestTolvarSim::theDeviceSendsTheGivenLogFile()
{
    QTemporaryDir folder;
    QFile file(folder.filePath("device.log"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("first line\nsecond line\n");
    file.close();
    Simulator simulator;
    simulator.run({"--log-file", file.fileName(), "--verbose"}, sendScript("C\\r\\nget_log_file\\r\\n"));
    QVERIFY2(simulator.out.contains("<log_file>first line\n"), simulator.out);
    QVERIFY2(simulator.out.contains("    second line\n"), simulator.out);
}

void TestTolvarSim::foreignPortsComeFirst()
{
    Simulator simulator;
    simulator.run({"--foreign", "--bridge", "prolific"},
                  "for tty in /sys/class/tty/ttyUSB*; do"
                  " echo port $(cat $tty/device/../../idVendor):$(cat $tty/device/../../idProduct); done");
    QByteArray ports;
    for (const QByteArray &line : simulator.out.split('\n')) {
        if (line.startsWith("port "))
            ports += line.mid(5) + ' ';
    }
    QCOMPARE(ports, QByteArray("0403:6015 1a86:7523 067b:2303 "));

    Simulator renamed;
    renamed.run({"--vid", "0x1234", "--pid", "abcd"}, "cat /sys/class/tty/*/device/../../id*");
    QVERIFY2(renamed.out.contains("abcd\n1234\n"), renamed.out);
}

void TestTolvarSim::theDeviceIsPluggedInAfterTheGivenDelay()
{
    Simulator simulator;
    simulator.run({"--plug-after", "300"},
                  "test -e $TTY && echo early; while ! test -e $TTY; do sleep 0.05; done; echo there");
    QVERIFY2(!simulator.out.contains("early"), simulator.out);
    QVERIFY2(simulator.out.contains("there"), simulator.out);
    QCOMPARE(simulator.process.exitCode(), 0);
}

void TestTolvarSim::scansAreDelayed()
{
    // The simulator ends when the device has processed its input, so it cannot take less time.
    const auto timeOfScan = [](const QStringList &options) {
        Simulator simulator;
        QElapsedTimer clock;
        clock.start();
        simulator.run(options, sendScript("C\\r\\nscan\\r\\n"));
        return simulator.out.contains("< <scan_results>") ? clock.elapsed() : -1;
    };
    QVERIFY(timeOfScan({"--scan-delay", "600"}) >= 600);
    QVERIFY(timeOfScan({}) >= 2500);
}

void TestTolvarSim::anInterruptEndsTheProgram()
{
    Simulator simulator;
    simulator.start({"--tty", freshTty(), "--", "/bin/sh", "-c", "echo up $$; exec sleep 60"});
    static const QRegularExpression childUp("up (\\d+)\n");
    QVERIFY(QTest::qWaitFor([&] {
        simulator.out += simulator.process.readAllStandardOutput();
        return childUp.match(simulator.out).hasMatch();
    }));
    const int child = childUp.match(simulator.out).captured(1).toInt();
    kill(static_cast<pid_t>(simulator.process.processId()), SIGINT);
    simulator.finish();
    QCOMPARE(simulator.process.exitCode(), 128 + SIGTERM);
    QVERIFY(simulator.out.contains("the device holds"));
    QCOMPARE(kill(child, 0), -1); // the process has ended
}

void TestTolvarSim::aSignalUnplugsAndReplugsTheDevice()
{
    const QString tty = freshTty();
    const QString next = freshTty(); // used by the replug
    Simulator simulator;
    simulator.start({"--tty", tty, "--", "/bin/sh", "-c",
                     QString("exec 3<>/dev/%1; printf 'C\\r\\nsetssid kept\\r\\nsave\\r\\n' >&3;"
                             "echo saved; while ! test -e /dev/%2; do sleep 0.05; done;"
                             "exec 4<>/dev/%2; printf 'C\\r\\nexit\\r\\n' >&4")
                         .arg(tty, next)});
    QVERIFY(simulator.waitForOutput("> save\n"));
    kill(static_cast<pid_t>(simulator.process.processId()), SIGUSR1);
    QVERIFY(simulator.waitForOutput("* lost power\n"));
    kill(static_cast<pid_t>(simulator.process.processId()), SIGUSR1);
    QVERIFY(simulator.waitForOutput("* plugged in as " + next.toLatin1()));
    simulator.finish();
    QCOMPARE(simulator.process.exitCode(), 0);
    QVERIFY2(simulator.out.contains("network     \"kept\"\n"), simulator.out);
    QVERIFY2(simulator.out.contains("it has left setup mode\n"), simulator.out);
}

QTEST_GUILESS_MAIN(TestTolvarSim)
#include "tst_tolvarsim.moc"
