#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include "tests/support/messagespy.h"
#include "tests/support/modaldialogresponder.h"
#include "tests/support/pseudotranslator.h"
#include "tests/support/widgetchangerecorder.h"
#include "tests/support/wizardfixture.h"

/// Tests the device-found page's download of the device's log.
class TestLogDownload : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }
    void init();
    void cleanup();

    void oldFirmwareGivesNoLog_data();
    void oldFirmwareGivesNoLog();
    void theFirmwareA060Suffices();
    void theFirstNameIsTodays();
    void theChosenNameIsOfferedAgain();
    void afterACancelTheDatedNameIsOfferedAgain();
    void theChosenNameOutlivesLeavingThePage();
    void aCancelledDialogIsSilent();
    void aDownload();
    void theStepsOfADownloadComeInTheirOrder();
    void aFileThatIsThereIsEmptied();
    void aFileThatCantBeOpenedLeavesTheButtonOff();
    void theButtonIsOffWhileTheDeviceWrites();
    void theTextsAreTranslated();

private:
    QString text(const char *label) const { return _f->widget<QLabel>(label)->text(); }
    QPushButton *button() const { return _f->widget<QPushButton>("pushButton_viewLog"); }
    void click() const { QTest::mouseClick(button(), Qt::LeftButton); }
    /// Fails unless a click opens the save dialog with a name that contains today's date.
    void clickOffersTheDatedName();
    /// Returns the language, such as "ar_EG", or "C". It is fixed when a program starts, so the test runs in
    /// several processes.
    static QString systemLanguage();
    static QString datedName(const QDate &day);

    /// Records the name that the save dialog offers, then cancels the dialog, or chooses \a path.
    ModalDialogResponder::Answer chooseFile(const QString &path);

    std::unique_ptr<QTemporaryDir> _folder;
    std::unique_ptr<MessageSpy> _log;
    std::unique_ptr<WizardFixture> _f;
    QString _offered;
    QString _caption;
};

void TestLogDownload::init()
{
    _folder = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir::setCurrent(_folder->path()));
    _log = std::make_unique<MessageSpy>();
    _f = std::make_unique<WizardFixture>();
    _f->goTo(1);
    _offered.clear();
    _caption.clear();
}

void TestLogDownload::cleanup()
{
    _f.reset();
    _log.reset();
    QDir::setCurrent(QDir::rootPath());
}

QString TestLogDownload::systemLanguage()
{
    return qEnvironmentVariable("LC_ALL").section('.', 0, 0);
}

QString TestLogDownload::datedName(const QDate &day)
{
    static const char *const months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    // The names of months in other languages differ between versions of Qt.
    const QString month = systemLanguage() == "C" ? QString::fromLatin1(months[day.month() - 1])
                                                  : QLocale(systemLanguage()).toString(day, "MMM");
    return QString("zvtolvar_log_%1%2%3.txt")
        .arg(day.day(), 2, 10, QChar('0'))
        .arg(month)
        .arg(day.year() % 100, 2, 10, QChar('0'));
}

void TestLogDownload::clickOffersTheDatedName()
{
    const QDate before = QDate::currentDate();
    _offered.clear();
    click();
    // Midnight may pass in between.
    const QStringList names = {_folder->filePath(datedName(before)),
                               _folder->filePath(datedName(QDate::currentDate()))};
    QVERIFY2(names.contains(_offered), qPrintable(_offered + " was offered, not " + names.constFirst()));
}

ModalDialogResponder::Answer TestLogDownload::chooseFile(const QString &path)
{
    return [this, path](QDialog *dialog) {
        auto *chooser = qobject_cast<QFileDialog *>(dialog);
        QVERIFY2(chooser, "a save dialog was expected");
        _offered = chooser->selectedFiles().value(0);
        _caption = chooser->windowTitle();
        QCOMPARE(chooser->parentWidget(), &_f->wizard);
        QCOMPARE(chooser->acceptMode(), QFileDialog::AcceptSave);
        QCOMPARE(chooser->options(), QFileDialog::Options());
        QCOMPARE(chooser->nameFilters(), QStringList{QFileDialog::tr("All Files (*)")});
        if (path.isEmpty())
            return chooser->reject();
        chooser->findChild<QLineEdit *>("fileNameEdit")->setText(path);
        dialog->accept(); // as its button does
    };
}

void TestLogDownload::oldFirmwareGivesNoLog_data()
{
    QTest::addColumn<QString>("version");
    QTest::newRow("A059 is refused") << "A059";
    QTest::newRow("no version is refused") << "";
    QTest::newRow("a negative number is refused") << "A-60";
}

void TestLogDownload::oldFirmwareGivesNoLog()
{
    QFETCH(QString, version);
    _f->tolvar.setFirmwareVersion(version);
    ModalDialogResponder answers({[](QDialog *dialog) {
        auto *box = qobject_cast<QMessageBox *>(dialog);
        QVERIFY2(box, "a message box was expected");
        QCOMPARE(box->text(), QStringLiteral("Tolvar Log file only available on Firmware A060 or later"));
        QCOMPARE(box->textFormat(), Qt::PlainText);
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

void TestLogDownload::theFirstNameIsTodays()
{
    QCOMPARE(QLocale::system().name(), systemLanguage());
    ModalDialogResponder answers({chooseFile(QString())});
    clickOffersTheDatedName();
    QCOMPARE(answers.opened(), 1);
    QCOMPARE(_caption, QStringLiteral("Save Log to File"));
    QVERIFY(button()->isEnabled());
    QVERIFY(_f->inside.queue().isEmpty());
}

void TestLogDownload::theFirmwareA060Suffices()
{
    QCOMPARE(_f->tolvar.firmwareVersion(), QStringLiteral("A060"));
    ModalDialogResponder answers({chooseFile(QString())});
    click();
    QCOMPARE(answers.opened(), 1);
    QVERIFY2(!_offered.isEmpty(), "a save dialog was expected, not a refusal");
}

void TestLogDownload::theChosenNameIsOfferedAgain()
{
    const QString path = _folder->filePath("x.txt");
    ModalDialogResponder answers({chooseFile(path), chooseFile(QString())});
    click();
    _f->reply("<log_file>one</log_file>");
    _offered.clear();
    click();
    QCOMPARE(_offered, path);
    QCOMPARE(answers.left(), 0);
}

void TestLogDownload::afterACancelTheDatedNameIsOfferedAgain()
{
    ModalDialogResponder answers(
        {chooseFile(_folder->filePath("x.txt")), chooseFile(QString()), chooseFile(QString())});
    click();
    _f->reply("<log_file>one</log_file>");
    click();
    clickOffersTheDatedName();
    QCOMPARE(answers.left(), 0);
}

void TestLogDownload::theChosenNameOutlivesLeavingThePage()
{
    const QString path = _folder->filePath("x.txt");
    ModalDialogResponder answers({chooseFile(path), chooseFile(QString())});
    click();
    _f->reply("<log_file>one</log_file>");
    _f->goBackAndEnterAgain();
    _offered.clear();
    click();
    QCOMPARE(_offered, path);
    QCOMPARE(text("label_LogWrite_progress"), "Log file written to: " + path);
}

void TestLogDownload::aCancelledDialogIsSilent()
{
    ModalDialogResponder answers({chooseFile(QString())});
    _log->take();
    click();
    QCOMPARE(answers.opened(), 1);
    QVERIFY(button()->isEnabled());
    QCOMPARE(text("label_LogWrite_progress"), QString());
    QVERIFY(_f->inside.queue().isEmpty());
    QCOMPARE(_log->messages("D:Opening"), QStringList());
}

void TestLogDownload::theStepsOfADownloadComeInTheirOrder()
{
    const QString path = _folder->filePath("tolvar.txt");
    WidgetChangeRecorder steps(_f->wizard.currentPage());
    steps.tellAlso([&path] { return QFile::exists(path) ? "with a file" : "without a file"; });
    _log->setCallback([&steps](const QString &message) { steps.note(message); });
    connect(&_f->tolvar, &ZVTolvar::startingToWriteLog, &steps,
            [this, &steps] { steps.note("the controller has " + _f->inside.queue().join('/').trimmed()); });
    ModalDialogResponder answers({[&](QDialog *dialog) {
        chooseFile(path)(dialog);
        steps.note("the name is chosen");
    }});
    click();
    QStringList seen = steps.take();
    seen = seen.mid(seen.indexOf("the name is chosen, without a file"));
    QCOMPARE(
        seen.mid(0, 5),
        QStringList({"the name is chosen, without a file", "pushButton_viewLog is disabled, without a file",
                     "label_LogWrite_progress says \"Opening file: " + path + "\", without a file",
                     "D:Opening file: \"" + path + "\" , without a file",
                     "label_LogWrite_progress says \"Writing log file to: " + path + "\", with a file"}));
}

void TestLogDownload::aDownload()
{
    const QString path = _folder->filePath("tolvar.txt");
    ModalDialogResponder answers({chooseFile(path)});
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

void TestLogDownload::aFileThatIsThereIsEmptied()
{
    const QString path = _folder->filePath("old.txt");
    ModalDialogResponder answers({[&](QDialog *dialog) {
        chooseFile(path)(dialog);
        // The file is created after the dialog's check; otherwise the dialog would ask.
        QFile old(path);
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write("something longer than the new log");
    }});
    click();
    QVERIFY(_f->inside.logFile());
    QCOMPARE(_f->inside.logFile()->fileName(), path);
    QCOMPARE(_f->inside.logFile()->openMode(), QIODevice::WriteOnly | QIODevice::Text);
    QCOMPARE(QFile(path).size(), 0);
}

void TestLogDownload::aFileThatCantBeOpenedLeavesTheButtonOff()
{
    const QString path = _folder->filePath("no/such/folder.txt");
    // The save dialog itself rejects a folder that does not exist, so the folder is removed after the
    // dialog's check.
    QVERIFY(QDir(_folder->path()).mkpath("no/such"));
    QString shown;
    ModalDialogResponder answers({[&](QDialog *dialog) {
                                      chooseFile(path)(dialog);
                                      QVERIFY(QDir(_folder->filePath("no")).removeRecursively());
                                  },
                                  [&](QDialog *dialog) {
                                      auto *box = qobject_cast<QMessageBox *>(dialog);
                                      QVERIFY2(box, "a message box was expected");
                                      shown = box->text();
                                      QCOMPARE(box->parentWidget(), nullptr);
                                      QVERIFY2(!button()->isEnabled(),
                                               "the button is off before the file is opened");
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

void TestLogDownload::theButtonIsOffWhileTheDeviceWrites()
{
    WidgetChangeRecorder steps(_f->wizard.currentPage());
    Q_EMIT _f->tolvar.startingToWriteLog();
    QVERIFY(!button()->isEnabled());
    Q_EMIT _f->tolvar.finishedWriteLog();
    QVERIFY(button()->isEnabled());
    QCOMPARE(steps.take(), QStringList({"pushButton_viewLog is disabled",
                                        R"(label_LogWrite_progress says "Writing log file to: ")",
                                        "pushButton_viewLog is enabled",
                                        R"(label_LogWrite_progress says "Log file written to: ")"}));
}

void TestLogDownload::theTextsAreTranslated()
{
    // The offered folder is removed while the second dialog is open, so that the file cannot be opened.
    QVERIFY(QDir(_folder->path()).mkpath("gone"));
    const QString path = _folder->filePath("gone/x.txt");
    const QString good = _folder->filePath("x.txt");
    const PseudoTranslator translator;
    QStringList shown;
    const ModalDialogResponder::Answer readBox = [&shown](QDialog *dialog) {
        auto *box = qobject_cast<QMessageBox *>(dialog);
        QVERIFY2(box, "a message box was expected");
        shown += box->text();
        box->accept();
    };
    ModalDialogResponder answers({readBox,
                                  [&](QDialog *dialog) {
                                      chooseFile(good)(dialog);
                                      shown += _caption;
                                  },
                                  [&](QDialog *dialog) {
                                      chooseFile(path)(dialog);
                                      QVERIFY(QDir(_folder->filePath("gone")).removeRecursively());
                                  },
                                  readBox});
    _f->tolvar.setFirmwareVersion("A059");
    click();
    _f->tolvar.setFirmwareVersion("A060");
    click();
    shown += text("label_LogWrite_progress");
    _f->reply("<log_file>one</log_file>");
    shown += text("label_LogWrite_progress");
    click();
    shown += text("label_LogWrite_progress");
    const QString page = "TolvarFoundWizardPage|";
    const QString refused = "Tolvar Log file only available on Firmware A060 or later";
    const QString failed =
        "Message Box. File name and error string from QT translations|Couldn't open file: ";
    QCOMPARE(shown, QStringList({page + "Save Log Message Box|" + refused,
                                 page + "save log file Message Box|Save Log to File",
                                 page + "Progress String|Writing log file to: " + good,
                                 page + "Progress String|Log file written to: " + good,
                                 page + failed + path + ": QIODevice||No such file or directory",
                                 page + "|Opening file: " + path}));
}

QTEST_MAIN(TestLogDownload)
#include "tst_tolvarfoundwizardpage_log.moc"
