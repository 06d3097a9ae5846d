#include <QFile>
#include <QSignalSpy>
#include <QtTest>

#include "tests/support/zvtolvarinspector.h"

/// What the device can be told: the lines, their order, and the signals between them. No device is there, so
/// that the lines stay in the queue.
class TestCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { _tolvar = std::make_unique<ZVTolvar>(); }
    void aScan();
    void aNetworkTestSendsNameAndPassphraseAsTheyAre_data();
    void aNetworkTestSendsNameAndPassphraseAsTheyAre();
    void savingTheConfiguration_data();
    void savingTheConfiguration();
    void theAntennaAlone();
    void theLog();
    void leavingSetupMode();
    void aScanAndATestMayRunTogether();
    void theFirmwareVersionAsANumber_data();
    void theFirmwareVersionAsANumber();
    void theAntennaInWords_data();
    void theAntennaInWords();

private:
    QStringList queue() const { return ZVTolvarInspector{*_tolvar}.queue(); }

    std::unique_ptr<ZVTolvar> _tolvar;
};

void TestCommands::aScan()
{
    QStringList queuedWhenStarted;
    bool scanningWhenStarted = false;
    connect(_tolvar.get(), &ZVTolvar::scanStarted, this, [&] {
        queuedWhenStarted = queue();
        scanningWhenStarted = _tolvar->scanning();
    });
    QSignalSpy started(_tolvar.get(), &ZVTolvar::scanStarted);
    _tolvar->startScan();
    QCOMPARE(queue(), QStringList({"setuarttrace y\r\n", "save\r\n", "scan\r\n"}));
    QCOMPARE(queuedWhenStarted, QStringList({"setuarttrace y\r\n", "save\r\n"}));
    QCOMPARE(started.count(), 1);
    QVERIFY(scanningWhenStarted);
    QVERIFY(_tolvar->scanning());
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
    bool queuedNothingYet = false;
    bool testingAlready = false;
    connect(_tolvar.get(), &ZVTolvar::networkTestStarted, this, [&] {
        queuedNothingYet = queue().isEmpty();
        testingAlready = ZVTolvarInspector{*_tolvar}.testing();
    });
    QSignalSpy started(_tolvar.get(), &ZVTolvar::networkTestStarted);
    _tolvar->startNetworkTest();
    QCOMPARE(queue(),
             QStringList({"setssid " + network + "\r\n", "setpass " + password + "\r\n", "test\r\n"}));
    QVERIFY2(queuedNothingYet, "the test is announced before its first line is queued");
    QVERIFY(testingAlready);
    QCOMPARE(started.count(), 1);
    QVERIFY(ZVTolvarInspector{*_tolvar}.testing());
}

void TestCommands::savingTheConfiguration_data()
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

void TestCommands::savingTheConfiguration()
{
    QFETCH(QString, useStaticIP);
    QFETCH(QString, ipAddress);
    QFETCH(QString, staticIPLine);
    _tolvar->setNetwork("My Home");
    _tolvar->setPassword("open sesame");
    _tolvar->setAntenna("1");
    _tolvar->setUseStaticIP(useStaticIP);
    _tolvar->setIPAddress(ipAddress);
    _tolvar->saveNetworkConfig();
    QCOMPARE(queue(), QStringList({"ant_select 1\r\n", "setssid My Home\r\n", "setpass open sesame\r\n",
                                   staticIPLine, "save\r\n"}));
    QVERIFY(!_tolvar->scanning());
    QVERIFY(!ZVTolvarInspector{*_tolvar}.testing());
}

void TestCommands::theAntennaAlone()
{
    _tolvar->commitAntennaSetting();
    _tolvar->setAntenna("2");
    _tolvar->commitAntennaSetting();
    QCOMPARE(queue(), QStringList({"ant_select \r\n", "ant_select 2\r\n"}));
}

void TestCommands::theLog()
{
    QFile first;
    QFile second;
    const ZVTolvarInspector inside{*_tolvar};
    bool queuedNothingYet = false;
    const QFile *fileWhenStarted = nullptr;
    connect(_tolvar.get(), &ZVTolvar::startingToWriteLog, this, [&] {
        queuedNothingYet = queue().isEmpty();
        fileWhenStarted = inside.logFile();
    });
    _tolvar->getLogFileTo(&first);
    QCOMPARE(queue(), QStringList({"get_log_file\r\n"}));
    QVERIFY2(queuedNothingYet, "the log is announced before its line is queued");
    QCOMPARE(fileWhenStarted, &first);
    _tolvar->getLogFileTo(&second);
    QCOMPARE(inside.logFile(), &second);
    inside.logFile() = nullptr;
}

void TestCommands::leavingSetupMode()
{
    _tolvar->exitSetupMode();
    QCOMPARE(queue(), QStringList({"exit\r\n"}));
}

void TestCommands::aScanAndATestMayRunTogether()
{
    _tolvar->startScan();
    _tolvar->startNetworkTest();
    QVERIFY(_tolvar->scanning());
    QVERIFY(ZVTolvarInspector{*_tolvar}.testing());
    QCOMPARE(queue().size(), 6);
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
    QTest::newRow("0 is internal") << "0"
                                   << "Internal";
    QTest::newRow("empty is internal") << ""
                                       << "Internal";
    QTest::newRow("Y is no number and internal") << "Y"
                                                 << "Internal";
    QTest::newRow("1 is external") << "1"
                                   << "External";
    QTest::newRow("2 is external") << "2"
                                   << "External";
    QTest::newRow("-1 is external") << "-1"
                                    << "External";
}

void TestCommands::theAntennaInWords()
{
    QFETCH(QString, antenna);
    QFETCH(QString, words);
    _tolvar->setAntenna(antenna);
    QCOMPARE(_tolvar->antennaDescription(), words);
}

QTEST_GUILESS_MAIN(TestCommands)
#include "tst_zvtolvar_commands.moc"
