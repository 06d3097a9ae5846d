#include <QFile>
#include <QTest>

#include "tests/support/pseudotranslator.h"
#include "tests/support/signalrecorder.h"
#include "tests/support/zvtolvartestpeer.h"

/// Tests the commands to the device: the lines, their order, and the signals between them. No device is
/// present, so the lines stay in the queue.
class TestCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void aScanQueuesThreeLinesAndIsReportedAfterTheSecond();
    void aNetworkTestSendsNameAndPassphraseUnchanged_data();
    void aNetworkTestSendsNameAndPassphraseUnchanged();
    void savingTheConfigurationQueuesFiveLines_data();
    void savingTheConfigurationQueuesFiveLines();
    void aLogDownloadIsReportedBeforeItsCommandIsQueued();
    void aLaterLogFileReplacesTheEarlierOne();

    void theFirmwareVersionIsReadAsANumber_data();
    void theFirmwareVersionIsReadAsANumber();
    void theAntennaIsDescribedInWords_data();
    void theAntennaIsDescribedInWords();

private:
    ZVTolvarTestPeer inside() const { return {*_tolvar}; }
    /// Makes the controller record its state at this signal, in _atSignal.
    void recordAt(void (ZVTolvar::*signal)());

    struct {
        QStringList queue = {"not recorded"};
        bool scanning = false;
        bool testing = false;
        QFile *logFile = nullptr;
    } _atSignal;
    std::unique_ptr<ZVTolvar> _tolvar;
    std::unique_ptr<SignalRecorder> _recorder;
};

void TestCommands::init()
{
    _tolvar = std::make_unique<ZVTolvar>();
    _recorder = std::make_unique<SignalRecorder>(_tolvar.get());
    _atSignal = {};
}

void TestCommands::recordAt(void (ZVTolvar::*signal)())
{
    connect(_tolvar.get(), signal, this, [this] {
        _atSignal = {inside().queue(), inside().scanning(), inside().testing(), inside().logFile()};
    });
}

void TestCommands::aScanQueuesThreeLinesAndIsReportedAfterTheSecond()
{
    recordAt(&ZVTolvar::scanStarted);
    _tolvar->startScan();
    QCOMPARE(inside().queue(), QStringList({"setuarttrace y\r\n", "save\r\n", "scan\r\n"}));
    QCOMPARE(_atSignal.queue, QStringList({"setuarttrace y\r\n", "save\r\n"}));
    QVERIFY(_atSignal.scanning);
    QVERIFY(!inside().testing());
    QCOMPARE(_recorder->take(), QStringList{"scanStarted"});
}

void TestCommands::aNetworkTestSendsNameAndPassphraseUnchanged_data()
{
    QTest::addColumn<QString>("network");
    QTest::addColumn<QString>("password");
    QTest::newRow("spaces and quotes") << QString(" My  \"Home ") << QString(" open sesame ");
    QTest::newRow("both empty") << QString() << QString();
}

void TestCommands::aNetworkTestSendsNameAndPassphraseUnchanged()
{
    QFETCH(QString, network);
    QFETCH(QString, password);
    _tolvar->setNetwork(network);
    _tolvar->setPassword(password);
    _recorder->take();
    recordAt(&ZVTolvar::networkTestStarted);
    _tolvar->startNetworkTest();
    QCOMPARE(inside().queue(),
             QStringList({"setssid " + network + "\r\n", "setpass " + password + "\r\n", "test\r\n"}));
    QCOMPARE(_recorder->take(), QStringList{"networkTestStarted"});
    QCOMPARE(_atSignal.queue, QStringList());
    QVERIFY(_atSignal.testing);
    QVERIFY(!_tolvar->scanning());
}

void TestCommands::savingTheConfigurationQueuesFiveLines_data()
{
    QTest::addColumn<QString>("useStaticIP");
    QTest::addColumn<QString>("ipAddress");
    QTest::addColumn<QString>("staticIPLine");
    const auto row = [](const char *name, const char *useStaticIP, const char *ipAddress, const char *line) {
        QTest::newRow(name) << QString(useStaticIP) << QString(ipAddress) << QString(line);
    };
    row("lower-case y -> static address", "y", "10.0.0.7", "setstaticip Y 10.0.0.7\r\n");
    row("Y without an address -> trailing space", "Y", "", "setstaticip Y \r\n");
    row("empty -> no address", "", "10.0.0.7", "setstaticip N\r\n");
    row("Yes -> same as N", "Yes", "10.0.0.7", "setstaticip N\r\n");
}

void TestCommands::savingTheConfigurationQueuesFiveLines()
{
    QFETCH(QString, useStaticIP);
    QFETCH(QString, ipAddress);
    QFETCH(QString, staticIPLine);
    _tolvar->setNetwork("My Home");
    _tolvar->setPassword("open sesame");
    _tolvar->setAntenna(" 1");
    _tolvar->setUseStaticIP(useStaticIP);
    _tolvar->setIPAddress(ipAddress);
    _tolvar->setMask("255.0.0.0"); // this and the other values have no line
    _recorder->take();
    _tolvar->saveNetworkConfig();
    QCOMPARE(inside().queue(), QStringList({"ant_select  1\r\n", "setssid My Home\r\n",
                                            "setpass open sesame\r\n", staticIPLine, "save\r\n"}));
    QCOMPARE(_recorder->take(), QStringList());
    QVERIFY(!_tolvar->scanning());
    QVERIFY(!inside().testing());
}

void TestCommands::aLogDownloadIsReportedBeforeItsCommandIsQueued()
{
    QFile file;
    recordAt(&ZVTolvar::startingToWriteLog);
    _tolvar->getLogFileTo(&file);
    QCOMPARE(inside().queue(), QStringList({"get_log_file\r\n"}));
    QCOMPARE(_recorder->take(), QStringList{"startingToWriteLog"});
    QCOMPARE(_atSignal.queue, QStringList());
    QCOMPARE(_atSignal.logFile, &file);
}

void TestCommands::aLaterLogFileReplacesTheEarlierOne()
{
    QFile first("/dev/null");
    QFile second;
    QVERIFY(first.open(QIODevice::WriteOnly));
    _tolvar->getLogFileTo(&first);
    _tolvar->getLogFileTo(&second);
    QCOMPARE(inside().logFile(), &second);
    QVERIFY2(first.isOpen(), "the previous log file was closed");
}

void TestCommands::theFirmwareVersionIsReadAsANumber_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<int>("number");
    QTest::newRow("A060 -> 60") << "A060" << 60;
    QTest::newRow("7123 -> first character ignored") << "7123" << 123;
    QTest::newRow("not a number -> 0") << "A06b" << 0;
    QTest::newRow("empty -> 0") << "" << 0;
}

void TestCommands::theFirmwareVersionIsReadAsANumber()
{
    QFETCH(QString, version);
    _tolvar->setFirmwareVersion(version);
    QTEST(_tolvar->firmwareVersionAsInt(), "number");
}

void TestCommands::theAntennaIsDescribedInWords_data()
{
    QTest::addColumn<QString>("words");
    for (const char *antenna : {"0", "00", "Y"})
        QTest::newRow(antenna) << "ZVTolvar|Antenna selection label|Internal";
    for (const char *antenna : {"1", "2", "-1"})
        QTest::newRow(antenna) << "ZVTolvar|Antenna selection label|External";
}

void TestCommands::theAntennaIsDescribedInWords()
{
    const PseudoTranslator translator;
    _tolvar->setAntenna(QTest::currentDataTag());
    QTEST(_tolvar->antennaDescription(), "words");
}

QTEST_GUILESS_MAIN(TestCommands)
#include "tst_zvtolvar_commands.moc"
