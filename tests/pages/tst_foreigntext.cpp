#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include "app/console_dialog.h"
#include "device/zvscanresult.h"
#include "pages/viewdetailsdialog.h"
#include "tests/support/drawntext.h"
#include "tests/support/modaldialogresponder.h"
#include "tests/support/wizardfixture.h"

namespace
{
/// Returns what is wrong with the way in which \a label shows \a text; empty when nothing is.
QString faultOf(QLabel *label, const QString &text)
{
    if (!label)
        return QStringLiteral("there is no such label");
    QStringList faults;
    if (!isDrawnLiterally(*label, text))
        faults += label->objectName() + QStringLiteral(" draws another text");
    if (announced(*label) != text)
        faults += label->objectName() + QStringLiteral(" is announced as ") + announced(*label);
    return faults.join(QStringLiteral(", "));
}
} // namespace

/// Tests that texts from the device, from a network or from the file system are shown unchanged, whatever
/// characters they contain. The tests check what is drawn and what a screen reader says.
class TestForeignText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    void theValuesOfTheDevice_data() { texts(); }
    void theValuesOfTheDevice();
    void theDetailsOfANetwork_data() { texts(); }
    void theDetailsOfANetwork();
    void theNetworkThatIsTested_data() { texts(); }
    void theNetworkThatIsTested();
    void theConsolesKeyWorksWhateverNetworkIsTested_data() { texts(); }
    void theConsolesKeyWorksWhateverNetworkIsTested();
    void thePathOfALog_data() { texts(); }
    void thePathOfALog();
    void thePathOfAFileThatCantBeOpened_data() { texts(); }
    void thePathOfAFileThatCantBeOpened();

private:
    static void texts();
    /// Enters \a path in the save dialog and accepts it; calls \a andThen afterwards.
    static ModalDialogResponder::Answer saveAs(const QString &path,
                                               const std::function<void()> &andThen = {});
};

void TestForeignText::texts()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("an ampersand before a letter") << "AT&T WiFi";
    QTest::newRow("an ampersand before the letter of a button") << "B&Cafe";
    QTest::newRow("an ampersand before a blank") << "Tom & Jerry";
    QTest::newRow("two ampersands") << "R&&D";
    QTest::newRow("an ampersand at the end") << "Black&";
    QTest::newRow("a tag") << "<b>bold";
    QTest::newRow("an entity") << "less &lt; more";
}

void TestForeignText::theValuesOfTheDevice()
{
    QFETCH(QString, text);
    WizardFixture f;
    const QString value = text.toHtmlEscaped();
    f.status("<name>" + value + "</name><mode>" + value + "</mode><firmware_version>" + value +
             "</firmware_version><network_name>" + value + "</network_name><mac_address>" + value +
             "</mac_address><useStaticIP>Y</useStaticIP><ip_address>" + value + "</ip_address>");
    f.goTo(1);
    for (const char *label :
         {"label_SystemId", "label_Status", "label_Version", "label_Network", "label_MacAddress"})
        QCOMPARE(faultOf(f.widget<QLabel>(label), text), QString());
    QCOMPARE(faultOf(f.widget<QLabel>("label_IPAddress"), "Static:" + text), QString());
}

void TestForeignText::theDetailsOfANetwork()
{
    QFETCH(QString, text);
    ZVScanResult network{text, text, text, text, text, text, text};
    ViewDetailsDialog dialog(&network);
    dialog.show();
    for (const char *label : {"label_network", "label_channel", "label_adhoc", "label_security",
                              "label_suites", "label_wps", "label_rssi"})
        QCOMPARE(faultOf(dialog.findChild<QLabel *>(QLatin1String(label)), text), QString());
}

void TestForeignText::theNetworkThatIsTested()
{
    QFETCH(QString, text);
    WizardFixture f;
    f.goTo(1);
    f.tolvar.setNetwork(text);
    f.goTo(4);
    const QString shown = "Please wait while ZV Tolvar tests the connection to network: " + text + "\n";
    QCOMPARE(faultOf(f.widget<QLabel>("label"), shown), QString());
}

void TestForeignText::theConsolesKeyWorksWhateverNetworkIsTested()
{
    QFETCH(QString, text);
    WizardFixture f;
    f.goTo(1);
    f.tolvar.setNetwork(text);
    f.goTo(4);
    QTest::keyClick(&f.wizard, Qt::Key_C, Qt::AltModifier);
    QTRY_VERIFY(f.wizard.findChild<console_dialog *>()
                    ->isVisible()); // a key press keeps the button down for a moment
}

ModalDialogResponder::Answer TestForeignText::saveAs(const QString &path,
                                                     const std::function<void()> &andThen)
{
    return [path, andThen](QDialog *dialog) {
        auto *chooser = qobject_cast<QFileDialog *>(dialog);
        QVERIFY2(chooser, "a save dialog was expected");
        chooser->findChild<QLineEdit *>("fileNameEdit")->setText(path);
        dialog->accept();
        if (andThen)
            andThen();
    };
}

void TestForeignText::thePathOfALog()
{
    QFETCH(QString, text);
    const QTemporaryDir folder;
    const QString path = folder.filePath(text);
    WizardFixture f;
    f.goTo(1);
    const ModalDialogResponder answers({saveAs(path)});
    f.widget<QPushButton>("pushButton_viewLog")->click();
    auto *progress = f.widget<QLabel>("label_LogWrite_progress");
    QTRY_COMPARE(progress->height(),
                 progress->heightForWidth(progress->width())); // the height of the page depends on its text
    QCOMPARE(faultOf(progress, "Writing log file to: " + path), QString());
    f.reply("<log_file>one</log_file>");
    QCOMPARE(faultOf(progress, "Log file written to: " + path), QString());
}

void TestForeignText::thePathOfAFileThatCantBeOpened()
{
    QFETCH(QString, text);
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkpath("gone"));
    const QString path = folder.filePath("gone/" + text);
    WizardFixture f;
    f.goTo(1);
    auto *progress = f.widget<QLabel>("label_LogWrite_progress");
    const auto removeTheFolder = [&folder] { QDir(folder.filePath("gone")).removeRecursively(); };
    const auto lookAtTheBox = [&](QDialog *dialog) {
        auto *label = dialog->findChild<QLabel *>("qt_msgbox_label");
        QCOMPARE(faultOf(label, "Couldn't open file: " + path + ": No such file or directory"), QString());
        QCOMPARE(faultOf(progress, "Opening file: " + path), QString());
        dialog->accept();
    };
    const ModalDialogResponder answers({saveAs(path, removeTheFolder), lookAtTheBox});
    f.widget<QPushButton>("pushButton_viewLog")->click();
    QCOMPARE(answers.left(), 0);
}

QTEST_MAIN(TestForeignText)
#include "tst_foreigntext.moc"
