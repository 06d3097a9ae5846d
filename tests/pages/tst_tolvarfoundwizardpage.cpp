#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "pages/tolvarfoundwizardpage.h"
#include "tests/support/drawntext.h"
#include "tests/support/picturefile.h"
#include "tests/support/pseudotranslator.h"
#include "tests/support/scopedsettings.h"
#include "tests/support/wizardfixture.h"

/// Tests the device-found page, which shows what the device reported. Another test covers its log.
class TestFoundPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        _f = std::make_unique<WizardFixture>();
        _f->goTo(1);
    }
    void cleanup() { _f.reset(); }

    void theValuesStandThereOnEntry();
    void theConnectionsComeInTheirOrderBeforeTheValues();
    void theLabelsFollowTheDevice_data();
    void theLabelsFollowTheDevice();
    void aPictureThatTheDeviceNamesIsNotShown_data();
    void aPictureThatTheDeviceNamesIsNotShown();
    void theValuesBeginAtTheLeadingEdge_data();
    void theValuesBeginAtTheLeadingEdge();
    void theAddressLine_data();
    void theAddressLine();
    void theAddressFollowsItsOwnSignalAlone();
    void theAntennaSlotIgnoresItsArgument();
    void theDeviceTypeReadsUnknownWhateverTheDeviceReports();
    void theNextPageIsTheChoosePage();
    void theTextsOfTheAddressLineAreNotTranslated_data();
    void theTextsOfTheAddressLineAreNotTranslated();
    void everyEntryConnectsOnceMore_data();
    void everyEntryConnectsOnceMore();
    void afterASecondEntryTheProgressSlotsRunTwice();

private:
    QString text(const char *label) const { return _f->widget<QLabel>(label)->text(); }

    std::unique_ptr<WizardFixture> _f;
};

void TestFoundPage::theValuesStandThereOnEntry()
{
    WizardFixture f;
    f.status("<name>T-7</name><mode>SETUP</mode><firmware_version>A061</firmware_version><network_name>Home"
             "</network_name><mac_address>00:1F</mac_address><ip_address>10.0.0.7</ip_address><useStaticIP>Y"
             "</useStaticIP><ant>1</ant>");
    f.goTo(1);
    const auto label = [&f](const char *name) { return f.widget<QLabel>(name)->text(); };
    QCOMPARE(label("label_SystemId"), QStringLiteral("T-7"));
    QCOMPARE(label("label_Status"), QStringLiteral("SETUP"));
    QCOMPARE(label("label_Version"), QStringLiteral("A061"));
    QCOMPARE(label("label_Network"), QStringLiteral("Home"));
    QCOMPARE(label("label_MacAddress"), QStringLiteral("00:1F"));
    QCOMPARE(label("label_IPAddress"), QStringLiteral("Static:10.0.0.7"));
    QCOMPARE(label("label_ExternalAntenna"), QStringLiteral("External"));
    QCOMPARE(label("label_DeviceType"), QStringLiteral("Unknown"));
    QCOMPARE(label("label_LogWrite_progress"), QString());
    QVERIFY(f.widget<QPushButton>("pushButton_viewLog")->isEnabled());
    QVERIFY(f.canGoOn());
}

void TestFoundPage::theConnectionsComeInTheirOrderBeforeTheValues()
{
    WizardFixture f;
    f.status("<name>T-7</name>");
    QStringList order;
    f.tolvar.connected = [&](const QString &signal) {
        order += signal;
        QCOMPARE(f.page<TolvarFoundWizardPage>()->findChild<QLabel *>("label_SystemId")->text(),
                 QStringLiteral("Unknown"));
    };
    f.goTo(1);
    QCOMPARE(order, QStringList({"networkChanged(QString)", "systemIDChanged(QString)",
                                 "statusChanged(QString)", "firmwareVersionChanged(QString)",
                                 "ipAddressChanged(QString)", "macAddressChanged(QString)",
                                 "antennaChanged(QString)", "startingToWriteLog()", "finishedWriteLog()"}));
    QCOMPARE(f.widget<QLabel>("label_SystemId")->text(), QStringLiteral("T-7"));
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
    _f->status(children);
    QCOMPARE(text(label.constData()), shown);
}

void TestFoundPage::aPictureThatTheDeviceNamesIsNotShown_data()
{
    QTest::addColumn<QString>("element");
    for (const char *element :
         {"name", "mode", "firmware_version", "network_name", "mac_address", "ip_address"})
        QTest::addRow("in %s", element) << QString(element);
}

void TestFoundPage::aPictureThatTheDeviceNamesIsNotShown()
{
    QFETCH(QString, element);
    const PictureFile picture;
    const QString value = picture.markup().toHtmlEscaped();
    _f->status("<useStaticIP>Y</useStaticIP><" + element + ">" + value + "</" + element + ">");
    QVERIFY(!picture.isSeenIn(*_f->wizard.currentPage()));
}

void TestFoundPage::theValuesBeginAtTheLeadingEdge_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addColumn<QString>("value");
    const QString arabic = QString::fromUtf8("\xd9\x85\xd9\x86\xd8\xb2\xd9\x84"); // "home"
    QTest::newRow("English, a Latin value") << "en" << Qt::LeftToRight << "Home";
    QTest::newRow("Arabic, a Latin value") << "ar" << Qt::RightToLeft << "Home";
    QTest::newRow("Arabic, an Arabic value") << "ar" << Qt::RightToLeft << arabic;
    QTest::newRow("Arabic without Qt's strings, a Latin value") << "ar" << Qt::LeftToRight << "Home";
    QTest::newRow("Arabic without Qt's strings, an Arabic value") << "ar" << Qt::LeftToRight << arabic;
}

void TestFoundPage::theValuesBeginAtTheLeadingEdge()
{
    QFETCH(QString, language);
    QFETCH(Qt::LayoutDirection, direction);
    QFETCH(QString, value);
    const LanguageOf program(language, direction);
    WizardFixture f;
    f.status("<name>" + value + "</name><mode>" + value + "</mode><firmware_version>" + value +
             "</firmware_version><network_name>" + value + "</network_name><mac_address>" + value +
             "</mac_address><useStaticIP>Y</useStaticIP><ip_address>" + value + "</ip_address>");
    f.goTo(1);
    constexpr int sideBearing = 3; // of a letter
    for (const char *name :
         {"label_DeviceType", "label_SystemId", "label_Status", "label_Version", "label_Network",
          "label_MacAddress", "label_IPAddress", "label_ExternalAntenna"}) {
        auto *label = f.widget<QLabel>(name);
        QVERIFY2(label->width() > 2 * label->sizeHint().width(), "else both edges are one");
        const int distance = distanceFromLeadingEdge(*label, direction);
        QVERIFY2(distance <= sideBearing,
                 qPrintable(QString("%1 begins %2 pixels off").arg(name).arg(distance)));
    }
}

void TestFoundPage::theAddressLine_data()
{
    QTest::addColumn<QString>("flag");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("shown");
    QTest::newRow("Y is static, no blank between") << "Y"
                                                   << "10.0.0.7"
                                                   << "Static:10.0.0.7";
    QTest::newRow("Y without an address") << "Y"
                                          << ""
                                          << "Static:";
    QTest::newRow("a lower-case y is DHCP") << "y"
                                            << "10.0.0.7"
                                            << "DHCP";
    QTest::newRow("N is DHCP") << "N"
                               << "10.0.0.7"
                               << "DHCP";
    QTest::newRow("nothing is DHCP") << ""
                                     << ""
                                     << "DHCP";
    QTest::newRow("Yes is DHCP") << "Yes"
                                 << "10.0.0.7"
                                 << "DHCP";
}

void TestFoundPage::theAddressLine()
{
    QFETCH(QString, flag);
    QFETCH(QString, address);
    QFETCH(QString, shown);
    _f->tolvar.setUseStaticIP(flag);
    _f->tolvar.setIPAddress(address);
    QVERIFY(
        QMetaObject::invokeMethod(_f->wizard.currentPage(), "onIpAddressChanged", Q_ARG(QString, "ignored")));
    QCOMPARE(text("label_IPAddress"), shown);
}

void TestFoundPage::theAddressFollowsItsOwnSignalAlone()
{
    _f->tolvar.setIPAddress("10.0.0.7");
    _f->tolvar.setUseStaticIP("Y");
    QCOMPARE(text("label_IPAddress"), QStringLiteral("DHCP"));
    _f->tolvar.setIPAddress("10.0.0.8");
    QCOMPARE(text("label_IPAddress"), QStringLiteral("Static:10.0.0.8"));
}

void TestFoundPage::theAntennaSlotIgnoresItsArgument()
{
    _f->tolvar.setAntenna("1");
    QVERIFY(QMetaObject::invokeMethod(_f->wizard.currentPage(), "OnAntennaChanged", Q_ARG(QString, "0")));
    QCOMPARE(text("label_ExternalAntenna"), QStringLiteral("External"));
}

void TestFoundPage::theDeviceTypeReadsUnknownWhateverTheDeviceReports()
{
    _f->status("<name>T-8</name><mode>M</mode><device_type>Tolvar</device_type>");
    QCOMPARE(text("label_DeviceType"), QStringLiteral("Unknown"));
}

void TestFoundPage::theNextPageIsTheChoosePage()
{
    QCOMPARE(_f->wizard.currentPage()->nextId(), 3);
    QVERIFY(_f->wizard.currentPage()->isComplete());
}

void TestFoundPage::theTextsOfTheAddressLineAreNotTranslated_data()
{
    QTest::addColumn<QString>("flag");
    QTest::addColumn<QString>("shown");
    QTest::newRow("a static address") << "Y"
                                      << "Static:10.0.0.7";
    QTest::newRow("any other") << "N"
                               << "DHCP";
}

void TestFoundPage::theTextsOfTheAddressLineAreNotTranslated()
{
    QFETCH(QString, flag);
    QFETCH(QString, shown);
    const PseudoTranslator translator;
    _f->tolvar.setUseStaticIP(flag);
    _f->tolvar.setIPAddress("10.0.0.7");
    QCOMPARE(text("label_IPAddress"), shown);
}

void TestFoundPage::everyEntryConnectsOnceMore_data()
{
    QTest::addColumn<QByteArray>("signal");
    QTest::newRow("the network") << QByteArray("networkChanged(QString)");
    QTest::newRow("the system ID") << QByteArray("systemIDChanged(QString)");
    QTest::newRow("the status") << QByteArray("statusChanged(QString)");
    QTest::newRow("the firmware version") << QByteArray("firmwareVersionChanged(QString)");
    QTest::newRow("the IP address") << QByteArray("ipAddressChanged(QString)");
    QTest::newRow("the MAC address") << QByteArray("macAddressChanged(QString)");
    QTest::newRow("the antenna") << QByteArray("antennaChanged(QString)");
    QTest::newRow("the log's begin") << QByteArray("startingToWriteLog()");
    QTest::newRow("the log's end") << QByteArray("finishedWriteLog()");
}

void TestFoundPage::everyEntryConnectsOnceMore()
{
    QFETCH(QByteArray, signal);
    WizardFixture f;
    const int before = f.listeners("the controller", signal);
    QVERIFY2(before >= 0, "the controller has no such signal");
    f.goTo(1);
    QCOMPARE(f.listeners("the controller", signal), before + 1);
    f.goBackAndEnterAgain();
    QCOMPARE(f.listeners("the controller", signal), before + 2);
}

void TestFoundPage::afterASecondEntryTheProgressSlotsRunTwice()
{
    _f->goBackAndEnterAgain();
    const PseudoTranslator translator;
    Q_EMIT _f->tolvar.startingToWriteLog();
    Q_EMIT _f->tolvar.finishedWriteLog();
    const QString writing = "TolvarFoundWizardPage|Progress String|Writing log file to: %1";
    const QString written = "TolvarFoundWizardPage|Progress String|Log file written to: %1";
    QCOMPARE(translator.asked("TolvarFoundWizardPage"), QStringList({writing, writing, written, written}));
}

QTEST_MAIN(TestFoundPage)
#include "tst_tolvarfoundwizardpage.moc"
