#include <QFile>
#include <QTemporaryFile>
#include <QTest>

#include "tests/support/linkfixture.h"
#include "tests/support/messagespy.h"
#include "tests/support/pseudotranslator.h"
#include "tests/support/scopedconnection.h"
#include "tests/support/signalrecorder.h"

/// Tests the commands to the device: the lines, their order, and the signals between them. No device is
/// present, so the lines stay in the queue.
class TestCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { _tolvar = std::make_unique<ZVTolvar>(); }

    void aScanQueuesThreeLinesAndIsToldOfAfterTheSecond();
    void aScanIsUnderWayFromItsFirstLineOn();
    void aNetworkTestSendsNameAndPassphraseAsTheyAre_data();
    void aNetworkTestSendsNameAndPassphraseAsTheyAre();
    void aNetworkTestIsToldOfBeforeItsFirstLine();
    void aScanAndATestMayRunTogether();
    void savingTheConfigurationQueuesFiveLines_data();
    void savingTheConfigurationQueuesFiveLines();
    void theAntennaIsSentAsItIsStored_data();
    void theAntennaIsSentAsItIsStored();
    void theStaticAddressIsSentAloneToo();
    void aLogIsToldOfBeforeItsLineIsQueued();
    void aLaterLogFileTakesTheEarlierOnesPlace();
    void leavingSetupModeIsOneLine();
    void atThePromptEachLineGoesOutAtOnce();

    void theFirmwareVersionAsANumber_data();
    void theFirmwareVersionAsANumber();
    void theAntennaInWords_data();
    void theAntennaInWords();

private:
    QStringList queue() const { return inside().queue(); }
    ZVTolvarTestPeer inside() const { return {*_tolvar}; }

    std::unique_ptr<ZVTolvar> _tolvar;
};

void TestCommands::aScanQueuesThreeLinesAndIsToldOfAfterTheSecond()
{
    SignalRecorder diary(_tolvar.get());
    QStringList queuedWhenStarted;
    const ScopedConnection listener(_tolvar.get(), &ZVTolvar::scanStarted,
                                    [&] { queuedWhenStarted = queue(); });
    _tolvar->startScan();
    QCOMPARE(queue(), QStringList({"setuarttrace y\r\n", "save\r\n", "scan\r\n"}));
    QCOMPARE(queuedWhenStarted, QStringList({"setuarttrace y\r\n", "save\r\n"}));
    QCOMPARE(diary.take(), QStringList{"scanStarted"});
    QVERIFY(_tolvar->scanning());
    QVERIFY(!inside().testing());
}

void TestCommands::aScanIsUnderWayFromItsFirstLineOn()
{
    QList<bool> scanning;
    const MessageSpy witness([&](const QString &) { scanning += _tolvar->scanning(); });
    _tolvar->startScan();
    QCOMPARE(scanning, QList<bool>({true, true, true})); // one message per line
}

void TestCommands::aNetworkTestSendsNameAndPassphraseAsTheyAre_data()
{
    QTest::addColumn<QString>("network");
    QTest::addColumn<QString>("password");
    QTest::newRow("with blanks") << " My  Home "
                                 << " open sesame ";
    QTest::newRow("with quotes and markup") << "\"<&>'"
                                            << "a\"b\\c";
    QTest::newRow("both empty") << ""
                                << "";
}

void TestCommands::aNetworkTestSendsNameAndPassphraseAsTheyAre()
{
    QFETCH(QString, network);
    QFETCH(QString, password);
    _tolvar->setNetwork(network);
    _tolvar->setPassword(password);
    SignalRecorder diary(_tolvar.get());
    _tolvar->startNetworkTest();
    QCOMPARE(queue(),
             QStringList({"setssid " + network + "\r\n", "setpass " + password + "\r\n", "test\r\n"}));
    QCOMPARE(diary.take(), QStringList{"networkTestStarted"});
    QVERIFY(inside().testing());
    QVERIFY(!_tolvar->scanning());
}

void TestCommands::aNetworkTestIsToldOfBeforeItsFirstLine()
{
    QStringList queuedWhenStarted = {"not told of"};
    bool testingWhenStarted = false;
    const ScopedConnection listener(_tolvar.get(), &ZVTolvar::networkTestStarted, [&] {
        queuedWhenStarted = queue();
        testingWhenStarted = inside().testing();
    });
    _tolvar->startNetworkTest();
    QCOMPARE(queuedWhenStarted, QStringList());
    QVERIFY(testingWhenStarted);
}

void TestCommands::aScanAndATestMayRunTogether()
{
    _tolvar->startScan();
    _tolvar->startNetworkTest();
    QVERIFY(_tolvar->scanning());
    QVERIFY(inside().testing());
    QCOMPARE(queue(), QStringList({"setuarttrace y\r\n", "save\r\n", "scan\r\n", "setssid \r\n",
                                   "setpass \r\n", "test\r\n"}));
}

void TestCommands::savingTheConfigurationQueuesFiveLines_data()
{
    QTest::addColumn<QString>("useStaticIP");
    QTest::addColumn<QString>("ipAddress");
    QTest::addColumn<QString>("staticIPLine");
    QTest::newRow("a lower-case y is a static address") << "y"
                                                        << "10.0.0.7"
                                                        << "setstaticip Y 10.0.0.7\r\n";
    QTest::newRow("Y is a static address") << "Y"
                                           << "192.168.1.5"
                                           << "setstaticip Y 192.168.1.5\r\n";
    QTest::newRow("Y without an address keeps its blank") << "Y"
                                                          << ""
                                                          << "setstaticip Y \r\n";
    QTest::newRow("N sends no address") << "N"
                                        << "10.0.0.7"
                                        << "setstaticip N\r\n";
    QTest::newRow("empty counts as N") << ""
                                       << "10.0.0.7"
                                       << "setstaticip N\r\n";
    QTest::newRow("a word counts as N") << "Yes"
                                        << "10.0.0.7"
                                        << "setstaticip N\r\n";
}

void TestCommands::savingTheConfigurationQueuesFiveLines()
{
    QFETCH(QString, useStaticIP);
    QFETCH(QString, ipAddress);
    QFETCH(QString, staticIPLine);
    _tolvar->setNetwork("My Home");
    _tolvar->setPassword("open sesame");
    _tolvar->setAntenna("1");
    _tolvar->setUseStaticIP(useStaticIP);
    _tolvar->setIPAddress(ipAddress);
    SignalRecorder diary(_tolvar.get());
    _tolvar->saveNetworkConfig();
    QCOMPARE(queue(), QStringList({"ant_select 1\r\n", "setssid My Home\r\n", "setpass open sesame\r\n",
                                   staticIPLine, "save\r\n"}));
    QCOMPARE(diary.take(), QStringList());
    QVERIFY(!_tolvar->scanning());
    QVERIFY(!inside().testing());
}

void TestCommands::theAntennaIsSentAsItIsStored_data()
{
    QTest::addColumn<QString>("antenna");
    QTest::addColumn<QString>("line");
    QTest::newRow("a number") << "2"
                              << "ant_select 2\r\n";
    QTest::newRow("any text") << " x y"
                              << "ant_select  x y\r\n";
    QTest::newRow("nothing keeps the blank") << ""
                                             << "ant_select \r\n";
}

void TestCommands::theAntennaIsSentAsItIsStored()
{
    QFETCH(QString, antenna);
    QFETCH(QString, line);
    _tolvar->setAntenna(antenna);
    _tolvar->commitAntennaSetting();
    QCOMPARE(queue(), QStringList{line});
}

void TestCommands::theStaticAddressIsSentAloneToo()
{
    _tolvar->setUseStaticIP("Y");
    _tolvar->setIPAddress("10.0.0.7");
    _tolvar->setMask("255.0.0.0");
    _tolvar->setGateway("10.0.0.1");
    _tolvar->setDns("10.0.0.2");
    _tolvar->commitStaticIPSetting();
    _tolvar->setUseStaticIP("N");
    _tolvar->commitStaticIPSetting();
    QCOMPARE(queue(), QStringList({"setstaticip Y 10.0.0.7\r\n", "setstaticip N\r\n"}));
}

void TestCommands::aLogIsToldOfBeforeItsLineIsQueued()
{
    QFile file;
    QStringList queuedWhenStarted = {"not told of"};
    const QFile *fileWhenStarted = nullptr;
    const ScopedConnection listener(_tolvar.get(), &ZVTolvar::startingToWriteLog, [&] {
        queuedWhenStarted = queue();
        fileWhenStarted = inside().logFile();
    });
    SignalRecorder diary(_tolvar.get());
    _tolvar->getLogFileTo(&file);
    QCOMPARE(queue(), QStringList({"get_log_file\r\n"}));
    QCOMPARE(queuedWhenStarted, QStringList());
    QCOMPARE(fileWhenStarted, &file);
    QCOMPARE(diary.take(), QStringList{"startingToWriteLog"});
}

void TestCommands::aLaterLogFileTakesTheEarlierOnesPlace()
{
    QTemporaryFile first;
    QTemporaryFile second;
    QVERIFY(first.open());
    _tolvar->getLogFileTo(&first);
    _tolvar->getLogFileTo(&second);
    QCOMPARE(inside().logFile(), &second);
    QVERIFY2(first.isOpen(), "the earlier file is left as it is");
}

void TestCommands::leavingSetupModeIsOneLine()
{
    _tolvar->exitSetupMode();
    QCOMPARE(queue(), QStringList({"exit\r\n"}));
}

void TestCommands::atThePromptEachLineGoesOutAtOnce()
{
    LinkFixture fixture;
    fixture.connectPort();
    fixture.inside.state() = IN_PROMPT;
    QByteArray sentWhenStarted;
    connect(&fixture.tolvar, &ZVTolvar::scanStarted, this,
            [&] { sentWhenStarted = fixture.pty.collected(); });
    fixture.tolvar.startScan();
    QCOMPARE(sentWhenStarted, QByteArray("setuarttrace y\r\nsave\r\n"));
    QCOMPARE(fixture.pty.collected(), QByteArray("setuarttrace y\r\nsave\r\nscan\r\n"));
}

void TestCommands::theFirmwareVersionAsANumber_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<int>("number");
    QTest::newRow("A060 is 60") << "A060" << 60;
    QTest::newRow("A059 is 59") << "A059" << 59;
    QTest::newRow("any first character is dropped") << "7123" << 123;
    QTest::newRow("digits alone lose their first: 60 is 0") << "60" << 0;
    QTest::newRow("not all digits is 0") << "A06b" << 0;
    QTest::newRow("a negative number stays one") << "A-61" << -61;
    QTest::newRow("a letter alone is 0") << "A" << 0;
    QTest::newRow("a leading zero is no octal") << "A010" << 10;
    QTest::newRow("hexadecimal digits are none") << "A0x3C" << 0;
    QTest::newRow("empty is 0") << "" << 0;
}

void TestCommands::theFirmwareVersionAsANumber()
{
    QFETCH(QString, version);
    QFETCH(int, number);
    _tolvar->setFirmwareVersion(version);
    QCOMPARE(_tolvar->firmwareVersionAsInt(), number);
    QCOMPARE(_tolvar->firmwareVersion(), version);
}

void TestCommands::theAntennaInWords_data()
{
    QTest::addColumn<QString>("antenna");
    QTest::addColumn<QString>("words");
    const auto internal = [](const char *row, const QString &antenna) {
        QTest::newRow(row) << antenna << "Internal";
    };
    const auto external = [](const char *row, const QString &antenna) {
        QTest::newRow(row) << antenna << "External";
    };
    internal("0 is internal", "0");
    internal("00 is internal", "00");
    internal("empty is internal", "");
    internal("Y is no number and internal", "Y");
    internal("0x1 is no decimal number and internal", "0x1");
    external("1 is external", "1");
    external("2 is external", "2");
    external("-1 is external", "-1");
}

void TestCommands::theAntennaInWords()
{
    QFETCH(QString, antenna);
    QFETCH(QString, words);
    _tolvar->setAntenna(antenna);
    QCOMPARE(_tolvar->antennaDescription(), words);

    PseudoTranslator translator;
    QCOMPARE(_tolvar->antennaDescription(), "ZVTolvar|Antenna selection label|" + words);
}

QTEST_GUILESS_MAIN(TestCommands)
#include "tst_zvtolvar_commands.moc"
