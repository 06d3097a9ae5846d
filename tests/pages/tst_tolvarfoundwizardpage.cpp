#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "tests/support/pseudotranslator.h"
#include "tests/support/wizardfixture.h"

/// Tests the device-found page, which shows what the device reported. Another test covers its log.
class TestFoundPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { _f = std::make_unique<WizardFixture>(); }
    void cleanup() { _f.reset(); }

    void theValuesAreShownOnEntry();
    void theLabelsFollowTheDevice_data();
    void theLabelsFollowTheDevice();
    void theAddressLineShowsStaticOrDhcp_data();
    void theAddressLineShowsStaticOrDhcp();
    void theAddressFollowsItsOwnSignalAlone();

private:
    QString text(const char *label) const { return _f->widget<QLabel>(label)->text(); }

    std::unique_ptr<WizardFixture> _f;
};

void TestFoundPage::theValuesAreShownOnEntry()
{
    _f->status(
        "<name>T-7</name><mode>SETUP</mode><firmware_version>A061</firmware_version><network_name>Home"
        "</network_name><mac_address>00:1F</mac_address><ip_address>10.0.0.7</ip_address><useStaticIP>Y"
        "</useStaticIP><ant>1</ant>");
    _f->goTo(1);
    QCOMPARE(text("label_SystemId"), QStringLiteral("T-7"));
    QCOMPARE(text("label_Status"), QStringLiteral("SETUP"));
    QCOMPARE(text("label_Version"), QStringLiteral("A061"));
    QCOMPARE(text("label_Network"), QStringLiteral("Home"));
    QCOMPARE(text("label_MacAddress"), QStringLiteral("00:1F"));
    QCOMPARE(text("label_IPAddress"), QStringLiteral("Static:10.0.0.7"));
    QCOMPARE(text("label_ExternalAntenna"), QStringLiteral("External"));
    QCOMPARE(text("label_DeviceType"), QStringLiteral("Unknown"));
    QVERIFY(_f->widget<QPushButton>("pushButton_viewLog")->isEnabled());
    QVERIFY(_f->canContinue());
}

void TestFoundPage::theLabelsFollowTheDevice_data()
{
    QTest::addColumn<QString>("children");
    QTest::addColumn<QByteArray>("label");
    QTest::addColumn<QString>("shown");
    QTest::newRow("network") << "<network_name> N </network_name>" << QByteArray("label_Network") << " N ";
    QTest::newRow("system ID") << "<name>T-8</name>" << QByteArray("label_SystemId") << "T-8";
    QTest::newRow("status") << "<mode>M</mode>" << QByteArray("label_Status") << "M";
    QTest::newRow("firmware") << "<firmware_version>A1</firmware_version>" << QByteArray("label_Version")
                              << "A1";
    QTest::newRow("address") << "<useStaticIP>Y</useStaticIP><ip_address>1.2.3.4</ip_address>"
                             << QByteArray("label_IPAddress") << "Static:1.2.3.4";
    QTest::newRow("MAC") << "<mac_address>00</mac_address>" << QByteArray("label_MacAddress") << "00";
    QTest::newRow("antenna") << "<ant>2</ant>" << QByteArray("label_ExternalAntenna") << "External";
}

void TestFoundPage::theLabelsFollowTheDevice()
{
    QFETCH(QString, children);
    QFETCH(QByteArray, label);
    QFETCH(QString, shown);
    _f->goTo(1);
    _f->status(children);
    QCOMPARE(text(label.constData()), shown);
}

void TestFoundPage::theAddressLineShowsStaticOrDhcp_data()
{
    QTest::addColumn<QByteArray>("flag");
    QTest::addColumn<QString>("shown");
    QTest::newRow("Y -> static, no space") << QByteArray("Y") << "Static:10.0.0.7";
    QTest::newRow("y -> DHCP") << QByteArray("y") << "DHCP";
    QTest::newRow("N -> DHCP") << QByteArray("N") << "DHCP";
    QTest::newRow("empty -> DHCP") << QByteArray() << "DHCP";
    QTest::newRow("Yes -> DHCP") << QByteArray("Yes") << "DHCP";
}

void TestFoundPage::theAddressLineShowsStaticOrDhcp()
{
    QFETCH(QByteArray, flag);
    QFETCH(QString, shown);
    _f->goTo(1);
    const PseudoTranslator translator; // the line is not translated
    _f->tolvar.setUseStaticIP(flag);
    _f->tolvar.setIPAddress("10.0.0.7");
    QCOMPARE(text("label_IPAddress"), shown);
}

void TestFoundPage::theAddressFollowsItsOwnSignalAlone()
{
    _f->goTo(1);
    _f->tolvar.setIPAddress("10.0.0.7");
    _f->tolvar.setUseStaticIP("Y");
    QCOMPARE(text("label_IPAddress"), QStringLiteral("DHCP"));
    _f->tolvar.setIPAddress(QString());
    QCOMPARE(text("label_IPAddress"), QStringLiteral("Static:"));
}

QTEST_MAIN(TestFoundPage)
#include "tst_tolvarfoundwizardpage.moc"
