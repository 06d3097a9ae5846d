#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include "pages/tolvarfoundwizardpage.h"
#include "tests/support/messagerecorder.h"
#include "tests/support/modalanswers.h"
#include "tests/support/wizardfixture.h"

/// The device-found page: what the device reported, and the download of its log.
class TestFoundPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }
    void init();
    void cleanup();

    void theValuesStandThereOnEntry();
    void theLabelsFollowTheDevice_data();
    void theLabelsFollowTheDevice();
    void theAddressLine_data();
    void theAddressLine();
    void theDeviceTypeStaysUnknown();
    void theNextPageIsTheChoosePage();

    void oldFirmwareGivesNoLog_data();
    void oldFirmwareGivesNoLog();
    void theFirstNameIsTodays();
    void theMonthIsInTheSystemsLanguage();
    void theChosenNameIsOfferedAgain();
    void aCancelledDialogStartsAnew();
    void aDownload();
    void aFileThatCantBeOpenedLeavesTheButtonOff();
    void enteringAgainDoublesItsConnections();

private:
    QString text(const char *label) const { return _f->widget<QLabel>(label)->text(); }
    QPushButton *button() const { return _f->widget<QPushButton>("pushButton_viewLog"); }
    void click() const { QTest::mouseClick(button(), Qt::LeftButton); }
    static QString defaultName();

    /// Notes the name that the save dialog offers, then cancels it, or chooses \a path.
    ModalAnswers::Answer chooseFile(const QString &path);

    std::unique_ptr<QTemporaryDir> _folder;
    std::unique_ptr<MessageRecorder> _log;
    std::unique_ptr<WizardFixture> _f;
    QString _offered;
    QString _caption;
};

void TestFoundPage::init()
{
    _folder = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir::setCurrent(_folder->path()));
    _log = std::make_unique<MessageRecorder>();
    _f = std::make_unique<WizardFixture>();
    _f->goTo(1);
}

void TestFoundPage::cleanup()
{
    _f.reset();
    _log.reset();
    QDir::setCurrent(QDir::rootPath());
}

QString TestFoundPage::defaultName()
{
    static const char *months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const QDate today = QDate::currentDate();
    return QString("zvtolvar_log_%1%2%3.txt")
        .arg(today.day(), 2, 10, QChar('0'))
        .arg(months[today.month() - 1])
        .arg(today.year() % 100, 2, 10, QChar('0'));
}

ModalAnswers::Answer TestFoundPage::chooseFile(const QString &path)
{
    return [this, path](QDialog *dialog) {
        auto *chooser = qobject_cast<QFileDialog *>(dialog);
        QVERIFY2(chooser, "a save dialog was expected");
        _offered = chooser->selectedFiles().value(0);
        _caption = chooser->windowTitle();
        QCOMPARE(chooser->parentWidget(), &_f->wizard);
        QCOMPARE(chooser->acceptMode(), QFileDialog::AcceptSave);
        if (path.isEmpty())
            return chooser->reject();
        chooser->findChild<QLineEdit *>("fileNameEdit")->setText(path);
        dialog->accept(); // as its button does
    };
}

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

void TestFoundPage::theDeviceTypeStaysUnknown()
{
    _f->status("<name>T-8</name><mode>M</mode><device_type>Tolvar</device_type>");
    QCOMPARE(text("label_DeviceType"), QStringLiteral("Unknown"));
}

void TestFoundPage::theNextPageIsTheChoosePage()
{
    QCOMPARE(_f->wizard.currentPage()->nextId(), 3);
    QVERIFY(_f->wizard.currentPage()->isComplete());
}

void TestFoundPage::oldFirmwareGivesNoLog_data()
{
    QTest::addColumn<QString>("version");
    QTest::newRow("A059") << "A059";
    QTest::newRow("no version") << "";
    QTest::newRow("a negative number") << "A-60";
}

void TestFoundPage::oldFirmwareGivesNoLog()
{
    QFETCH(QString, version);
    _f->tolvar.setFirmwareVersion(version);
    ModalAnswers answers({[](QDialog *dialog) {
        auto *box = qobject_cast<QMessageBox *>(dialog);
        QVERIFY2(box, "a message box was expected");
        QCOMPARE(box->text(), QStringLiteral("Tolvar Log file only available on Firmware A060 or later"));
        QCOMPARE(box->parentWidget(), nullptr);
        QCOMPARE(box->windowTitle(), QString());
        QCOMPARE(box->icon(), QMessageBox::NoIcon);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok);
        box->accept();
    }});
    click();
    QCOMPARE(answers.opened(), 1);
    QVERIFY(button()->isEnabled());
    QVERIFY(_f->inside.queue().isEmpty());
    QCOMPARE(text("label_LogWrite_progress"), QString());
}

void TestFoundPage::theFirstNameIsTodays()
{
    ModalAnswers answers({chooseFile(QString())});
    click();
    QCOMPARE(answers.opened(), 1);
    QCOMPARE(_offered, _folder->filePath(defaultName()));
    QCOMPARE(_caption, QStringLiteral("Save Log to File"));
    QVERIFY(button()->isEnabled());
    QVERIFY(_f->inside.queue().isEmpty());
}

void TestFoundPage::theMonthIsInTheSystemsLanguage()
{
    // Run once more with a Japanese locale, whose months never look like English ones.
    if (QLocale::system().language() != QLocale::Japanese)
        QSKIP("the system speaks no Japanese in this run");
    ModalAnswers answers({chooseFile(QString())});
    click();
    const QDate today = QDate::currentDate();
    QCOMPARE(_offered, _folder->filePath(QString::fromUtf8("zvtolvar_log_%1%2\xe6\x9c\x88%3.txt")
                                             .arg(today.day(), 2, 10, QChar('0'))
                                             .arg(today.month())
                                             .arg(today.year() % 100, 2, 10, QChar('0'))));
}

void TestFoundPage::theChosenNameIsOfferedAgain()
{
    const QString path = _folder->filePath("x.txt");
    ModalAnswers answers({chooseFile(path), chooseFile(QString()), chooseFile(QString())});
    click();
    _f->reply("<log_file>one</log_file>");
    _offered.clear();
    click();
    QCOMPARE(_offered, path);
    click(); // after a cancel, today's name again
    QCOMPARE(_offered, _folder->filePath(defaultName()));
    QCOMPARE(answers.left(), 0);
}

void TestFoundPage::aCancelledDialogStartsAnew()
{
    ModalAnswers answers({chooseFile(QString()), chooseFile(QString())});
    click();
    QVERIFY(button()->isEnabled());
    QCOMPARE(text("label_LogWrite_progress"), QString());
    _offered.clear();
    click();
    QCOMPARE(_offered, _folder->filePath(defaultName()));
}

void TestFoundPage::aDownload()
{
    const QString path = _folder->filePath("tolvar.txt");
    ModalAnswers answers({chooseFile(path)});
    _log->take();
    click();
    QCOMPARE(_log->messages().constFirst(), "D:Opening file: \"" + path + "\" ");
    QCOMPARE(_f->inside.queue(), QStringList{"get_log_file\r\n"});
    QVERIFY(!button()->isEnabled());
    QCOMPARE(text("label_LogWrite_progress"), "Writing log file to: " + path);
    _f->reply("<log_file>one\ntwo\n</log_file>");
    QVERIFY(button()->isEnabled());
    QCOMPARE(text("label_LogWrite_progress"), "Log file written to: " + path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("one\ntwo\n"));
}

void TestFoundPage::aFileThatCantBeOpenedLeavesTheButtonOff()
{
    const QString path = _folder->filePath("no/such/folder.txt");
    // The save dialog itself refuses a folder that isn't there; the folder goes away behind its back instead.
    QVERIFY(QDir(_folder->path()).mkpath("no/such"));
    QString shown;
    ModalAnswers answers({[&](QDialog *dialog) {
                              chooseFile(path)(dialog);
                              QVERIFY(QDir(_folder->filePath("no")).removeRecursively());
                          },
                          [&](QDialog *dialog) {
                              auto *box = qobject_cast<QMessageBox *>(dialog);
                              QVERIFY2(box, "a message box was expected");
                              shown = box->text();
                              QCOMPARE(box->parentWidget(), nullptr);
                              QVERIFY2(!button()->isEnabled(), "the button is off before the file is opened");
                              QCOMPARE(text("label_LogWrite_progress"), "Opening file: " + path);
                              box->accept();
                          }});
    click();
    QCOMPARE(shown, "Couldn't open file: " + path + ": No such file or directory");
    QVERIFY2(!button()->isEnabled(), "it stays off for the rest of the run");
    QCOMPARE(text("label_LogWrite_progress"), "Opening file: " + path);
    QVERIFY(_f->inside.queue().isEmpty());
    QCOMPARE(_f->inside.logFile(), nullptr);
}

void TestFoundPage::enteringAgainDoublesItsConnections()
{
    const char *const signalNames[] = {
        SIGNAL(networkChanged(QString)),   SIGNAL(systemIDChanged(QString)),
        SIGNAL(statusChanged(QString)),    SIGNAL(firmwareVersionChanged(QString)),
        SIGNAL(ipAddressChanged(QString)), SIGNAL(macAddressChanged(QString)),
        SIGNAL(antennaChanged(QString)),   SIGNAL(startingToWriteLog()),
        SIGNAL(finishedWriteLog())};
    QList<int> before;
    for (const char *name : signalNames)
        before += _f->listeners(name);
    _f->wizard.back();
    _f->wizard.next();
    QCOMPARE(_f->wizard.currentId(), 1);
    for (size_t i = 0; i < std::size(signalNames); ++i)
        QVERIFY2(_f->listeners(signalNames[i]) == before.at(qsizetype(i)) + 1, signalNames[i]);
    Q_EMIT _f->tolvar.startingToWriteLog();
    QVERIFY(!button()->isEnabled());
    Q_EMIT _f->tolvar.finishedWriteLog();
    QVERIFY(button()->isEnabled());
}

QTEST_MAIN(TestFoundPage)
#include "tst_tolvarfoundwizardpage.moc"
