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

#include "tests/support/drawntext.h"
#include "tests/support/messagespy.h"
#include "tests/support/modaldialogresponder.h"
#include "tests/support/pseudotranslator.h"
#include "tests/support/wizardfixture.h"

namespace
{
constexpr char oddName[] = "AT&T && <b>log &lt;.txt";
}

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
    void theDefaultFileNameHasTodaysDate();
    void theChosenNameIsOfferedAgainUntilACancel();
    void aDownloadWritesTheLogAndShowsItsProgress();
    void anExistingFileIsEmptied();
    void aFileThatCannotBeOpenedLeavesTheButtonDisabled();

private:
    QPushButton *button() const { return _f->widget<QPushButton>("pushButton_viewLog"); }
    void click() const { QTest::mouseClick(button(), Qt::LeftButton); }
    /// Fails unless the page shows \a text literally, translated in the page's context.
    void verifyProgress(const QString &text) const;
    /// Fails unless \a dialog is a message box that shows \a text literally, translated in the page's
    /// context; closes it.
    static void verifyBox(QDialog *dialog, const QString &text);
    /// Fails unless a click opens the save dialog with a name that contains today's date.
    void verifyDatedName();
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

void TestLogDownload::verifyDatedName()
{
    const QDate before = QDate::currentDate();
    _offered.clear();
    click();
    // Midnight may pass in between.
    const QStringList names = {_folder->filePath(datedName(before)),
                               _folder->filePath(datedName(QDate::currentDate()))};
    QVERIFY2(names.contains(_offered),
             qPrintable(_offered + " was offered instead of " + names.constFirst()));
}

ModalDialogResponder::Answer TestLogDownload::chooseFile(const QString &path)
{
    return [this, path](QDialog *dialog) {
        auto *chooser = qobject_cast<QFileDialog *>(dialog);
        QVERIFY2(chooser, "no save dialog was opened");
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

void TestLogDownload::verifyProgress(const QString &text) const
{
    auto *label = _f->widget<QLabel>("label_LogWrite_progress");
    // The height of the page depends on the text.
    QTRY_COMPARE(label->height(), label->heightForWidth(label->width()));
    QVERIFY(isDrawnLiterally(*label, "TolvarFoundWizardPage|" + text));
    QCOMPARE(announced(*label), "TolvarFoundWizardPage|" + text);
}

void TestLogDownload::verifyBox(QDialog *dialog, const QString &text)
{
    auto *box = qobject_cast<QMessageBox *>(dialog);
    QVERIFY2(box, "no message box was opened");
    QCOMPARE(box->text(), "TolvarFoundWizardPage|" + text);
    QCOMPARE(box->textFormat(), Qt::PlainText);
    QCOMPARE(box->parentWidget(), nullptr);
    QCOMPARE(box->windowTitle(), QString());
    QCOMPARE(box->icon(), QMessageBox::NoIcon);
    QCOMPARE(box->standardButtons(), QMessageBox::Ok);
    box->accept();
}

void TestLogDownload::oldFirmwareGivesNoLog_data()
{
    QTest::addColumn<QString>("version");
    QTest::newRow("A059") << "A059";
    QTest::newRow("no version") << "";
    QTest::newRow("negative number") << "A-60";
}

void TestLogDownload::oldFirmwareGivesNoLog()
{
    QFETCH(QString, version);
    _f->tolvar.setFirmwareVersion(version);
    const PseudoTranslator translator;
    const ModalDialogResponder answers({[](QDialog *dialog) {
        verifyBox(dialog, "Save Log Message Box|Tolvar Log file only available on Firmware A060 or later");
    }});
    click();
    QCOMPARE(answers.left(), 0);
    QVERIFY(button()->isEnabled());
    QVERIFY(_f->inside.queue().isEmpty());
    QCOMPARE(_f->widget<QLabel>("label_LogWrite_progress")->text(), QString());
}

void TestLogDownload::theDefaultFileNameHasTodaysDate()
{
    QCOMPARE(QLocale::system().name(), systemLanguage());
    const ModalDialogResponder answers({chooseFile(QString())});
    verifyDatedName();
    QCOMPARE(answers.left(), 0);
    QVERIFY(button()->isEnabled());
    QVERIFY(_f->inside.queue().isEmpty());
    QCOMPARE(_log->messages("D:Opening"), QStringList());
    QCOMPARE(_f->widget<QLabel>("label_LogWrite_progress")->text(), QString());
}

void TestLogDownload::theChosenNameIsOfferedAgainUntilACancel()
{
    const QString path = _folder->filePath("x.txt");
    const ModalDialogResponder answers({chooseFile(path), chooseFile(QString()), chooseFile(QString())});
    click();
    _f->reply("<log_file>one</log_file>");
    _f->goBackAndEnterAgain();
    _offered.clear();
    click();
    QCOMPARE(_offered, path);
    verifyDatedName();
    QCOMPARE(answers.left(), 0);
}

void TestLogDownload::aDownloadWritesTheLogAndShowsItsProgress()
{
    const QString path = _folder->filePath(oddName);
    const PseudoTranslator translator;
    const ModalDialogResponder answers({chooseFile(path)});
    _log->take();
    click();
    QCOMPARE(_caption, QStringLiteral("TolvarFoundWizardPage|save log file Message Box|Save Log to File"));
    QCOMPARE(_log->messages().constFirst(), "D:Opening file: \"" + path + "\" ");
    QCOMPARE(_f->inside.queue(), QStringList{"get_log_file\r\n"});
    QVERIFY(!button()->isEnabled());
    verifyProgress("Progress String|Writing log file to: " + path);
    _f->reply("<log_file>one\ntwo\n</log_file>");
    QVERIFY(button()->isEnabled());
    verifyProgress("Progress String|Log file written to: " + path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("one\ntwo\n"));
}

void TestLogDownload::anExistingFileIsEmptied()
{
    const QString path = _folder->filePath("old.txt");
    const ModalDialogResponder answers({[&](QDialog *dialog) {
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

void TestLogDownload::aFileThatCannotBeOpenedLeavesTheButtonDisabled()
{
    const QString path = _folder->filePath(QLatin1String("gone/") + oddName);
    QVERIFY(QDir(_folder->path()).mkpath("gone"));
    const PseudoTranslator translator;
    const ModalDialogResponder answers(
        {[&](QDialog *dialog) {
             chooseFile(path)(dialog);
             // The save dialog itself rejects a folder that does not exist.
             QVERIFY(QDir(_folder->filePath("gone")).removeRecursively());
         },
         [&](QDialog *dialog) {
             QVERIFY2(!button()->isEnabled(), "the button is enabled while the file is opened");
             verifyBox(dialog,
                       "Message Box. File name and error string from QT translations|Couldn't open file: " +
                           path + ": QIODevice||No such file or directory");
         }});
    click();
    QCOMPARE(answers.left(), 0);
    QVERIFY2(!button()->isEnabled(), "the button is enabled after the open error");
    verifyProgress("|Opening file: " + path);
    QVERIFY(_f->inside.queue().isEmpty());
    QCOMPARE(_f->inside.logFile(), nullptr);
}

QTEST_MAIN(TestLogDownload)
#include "tst_tolvarfoundwizardpage_log.moc"
