#include <QRegularExpression>
#include <QTest>

#include "app/console_dialog.h"
#include "device/zvtolvar.h"
#include "pages/advanceddialog.h"
#include "pages/choosenetworkwizardpage.h"
#include "pages/connecttlovarwizardpage.h"
#include "pages/testnetworkwizardpage.h"
#include "pages/tolvarfoundwizardpage.h"
#include "pages/tolvarnotfoundwizardpage.h"
#include "pages/viewdetailsdialog.h"
#include "pages/wepwarningwizardpage.h"
#include "tests/pages/formoutline.h"
#include "tests/support/pseudotranslator.h"

namespace
{
template <typename Widget>
std::unique_ptr<QWidget> make(QWidget *window)
{
    return std::make_unique<Widget>(window);
}

std::unique_ptr<QWidget> makeAdvancedDialog(QWidget *window)
{
    static ZVTolvar controller;
    return std::make_unique<AdvancedDialog>(&controller, window);
}

std::unique_ptr<QWidget> makeDetailsDialog(QWidget *window)
{
    ZVScanResult network;
    return std::make_unique<ViewDetailsDialog>(&network, window);
}

struct Form {
    std::unique_ptr<QWidget> (*make)(QWidget *window);
    QSize size;
    const char *outline; ///< as in FormOutline; a line that begins with ".." continues the one before
};

// moc would take the two slashes of an address for a comment, so they are on two lines.
// clang-format off
const Form forms[] = {
    {make<console_dialog>, {613, 278}, R"(
QDialog console_dialog windowTitle=tr("Console Log") sizeGripEnabled=true
QVBoxLayout verticalLayout
  QTextBrowser textBrowser_log_console accessibleName=tr("Console Log")
)"},
    {make<ConnectTlovarWizardPage>, {606, 502}, R"(
slot void onSystemIDChanged(QString) sysID
slot void onCandidateDeviceFound()
QWizardPage ConnectTlovarWizardPage windowTitle=tr("Connecting to Tolvar") title=tr("Identifying ZV Tolvar")
QVBoxLayout verticalLayout_2
  QVBoxLayout verticalLayout
    spacer 20x40 Minimum/Expanding
    QLabel label_Step2 font=bold text=tr("Please plug an Orvane Device into the computer before starting this
        .. utility. ") alignment=AlignCenter wordWrap=true
    spacer 20x40 Minimum/Expanding
    QLabel label_OnlyOne_2 text=tr("If you have more than one device, run this setup wizard with each unit
        .. individually.") alignment=AlignCenter wordWrap=true
    spacer 20x40 Minimum/Expanding
    QLabel label_progress text=tr("TextLabel") alignment=AlignCenter
    QProgressBar connectionProgressBar accessibleName=tr("Identifying ZV Tolvar") maximum=0
    spacer 20x40 Minimum/Expanding
)"},
    {make<TolvarFoundWizardPage>, {606, 502}, R"(
slot void OnAntennaChanged(QString)
slot void onIpAddressChanged(QString)
slot void onViewLogClicked()
slot void onStartLogWrite()
slot void onFinishLogWrite()
QWizardPage TolvarFoundWizardPage windowTitle=tr("Found ZV Tolvar") title=tr("Identifying ZV Tolvar")
QVBoxLayout verticalLayout_2
  QVBoxLayout verticalLayout
    QLabel label font=bold text=tr("Found Device")
    QGridLayout gridLayout
      0,0 1x1 QLabel label_DeviceTypeTitle text=tr("Device Type:")
      0,1 1x1 QLabel label_DeviceType text=tr("Unknown")
      1,0 1x1 QLabel label_SystemIdTitle text=tr("System ID:")
      1,1 1x1 QLabel label_SystemId text=tr("Unknown") textFormat=PlainText
      2,0 1x1 QLabel label_StatusTitle text=tr("Status:")
      2,1 1x1 QLabel label_Status text=tr("Unknown") textFormat=PlainText
      3,0 1x1 QLabel label_VersionTitle text=tr("Firmware Version:")
      3,1 1x1 QLabel label_Version text=tr("Unknown") textFormat=PlainText
      4,0 1x1 QLabel label_NetworkTitle text=tr("Network:")
      4,1 1x1 QLabel label_Network text=tr("Unknown") textFormat=PlainText
      5,0 1x1 QLabel label_MacAddressTitle text=tr("MAC Address:")
      5,1 1x1 QLabel label_MacAddress text=tr("Unknown") textFormat=PlainText
      6,0 1x1 QLabel label_IPAddressTitle text=tr("IP Address:")
      6,1 1x1 QLabel label_IPAddress text=tr("Unknown") textFormat=PlainText
      7,0 1x1 QLabel label_ExternalAntennaTitle text=tr("Antenna:")
      7,1 1x1 QLabel label_ExternalAntenna text=tr("Unknown")
    QLabel label_LogWrite_progress textFormat=PlainText wordWrap=true
    QHBoxLayout horizontalLayout
      spacer 40x20 Expanding/Minimum
      QPushButton pushButton_viewLog text=tr("Get Tolvar Log File") autoDefault=true clicked(bool)
)"},
    {make<TolvarNotFoundWizardPage>, {606, 502}, R"(
QWizardPage TolvarNotFoundWizardPage windowTitle=tr("Tolvar not Found") title=tr("Identifying ZV Tolvars")
QVBoxLayout verticalLayout_2
  QVBoxLayout verticalLayout
    spacer 20x25 Minimum/Expanding
    QLabel label_NoTolvars font=bold text=tr("No ZV Devices were detected.  ") alignment=AlignCenter wordWrap=true
    spacer 20x25 Minimum/Expanding
    QLabel label text=tr("Please go back to previous screen and make sure the unit is plugged into one of the usb
        .. ports on this computer and try again") alignment=AlignCenter wordWrap=true
    spacer 20x25 Minimum/Expanding
)"},
    {make<ChooseNetworkWizardPage>, {606, 353}, R"(
slot void OnNetworkListDoubleClicked(QModelIndex) ind
slot void OnNetworkListClicked(QModelIndex) ind
slot void OnRefreshButtonClicked()
slot void OnAdvancedButtonClicked()
slot void OnViewDetailsButtonClicked()
slot void onStartScan()
slot void onFinishScan()
slot void OnPasswordEditingFinished()
slot void OnNetworkEditingFinished()
slot void OnExternalAntennaClicked(bool)
slot void OnNetworkNameChanged(QString) name
slot void OnAntennaChanged(QString) val
slot void OnScannedNetworkListChanged(QHash<QString,ZVScanResult>*)
QWizardPage ChooseNetworkWizardPage windowTitle=tr("Choose Network") title=tr("ZV Tolvar Configuration")
QVBoxLayout verticalLayout_3
  QLabel label_NetworkSettings font=bold text=tr("Found Networks:") wordWrap=true
  QHBoxLayout horizontalLayout
    QListView networkListView accessibleName=tr("Found Networks:") editTriggers=NoEditTriggers isWrapping=true
        .. wordWrap=true
    QVBoxLayout verticalLayout
      QPushButton refreshButton text=tr("Look for Networks...")
      QPushButton viewDetailsButton text=tr("View Network Details...") autoDefault=true
      spacer 20x40 Minimum/Expanding
      QCheckBox checkBox_useExternalAntenna enabled=false text=tr("Use External Antenna") checked=true
      QLabel label_NetworkNameTitle text=tr("Network") buddy=input_NetworkName
      QLineEdit input_NetworkName sizePolicy=Minimum/Fixed minimumSize=200x25
      QLabel label_PasswordTitle text=tr("Passphrase") buddy=input_Password
      QLineEdit input_Password sizePolicy=Minimum/Fixed minimumSize=200x25
  spacer 577x9 Minimum/Expanding
  QProgressBar progressBar accessibleName=tr("Look for Networks...") maximum=0 hidden
)"},
    {make<WEPWarningWizardPage>, {486, 314}, R"(
QWizardPage WEPWarningWizardPage windowTitle=tr("WEP warning") title=tr("Warning - Selected Network is configured
    .. for WEP security")
QVBoxLayout verticalLayout_2
  QVBoxLayout verticalLayout
    spacer 20x40 Minimum/Expanding
    QLabel label_2 text=tr("The WiFi Alliance, the body that provides 'certified WiFi' marks, do not recommend the
        .. use of WEP for security on networks. WEP provides no protection against unauthorized access. The WiFi
        .. alliance will be 'disallowing' WEP and TKIP security in thier certification process starting 2011. We
        .. strongly recommend changing your security to WPA2.") wordWrap=true
    spacer 20x40 Minimum/Expanding
    QLabel label_4 text=tr("See <a
        .. href="https://www.wi-fi.org/knowledge-center/faq/is-wep-secure">https:/
        ../www.wi-fi.org/knowledge-center/faq/is-wep-secure</a> for more details.") wordWrap=true
    spacer 20x40 Minimum/Expanding
    QLabel label_3 text=tr("In addition, although ZV Tolvar can connect to some WEP networks, we have had some
        .. reports of instability and poor performance. Please see www.zvtolvar.example regarding issues with using
        .. WEP with your firmware version.") wordWrap=true
    QLabel label
    spacer 20x40 Minimum/Expanding
)"},
    {make<TestNetworkWizardPage>, {592, 471}, R"(
slot void onTestNetworkFound()
slot void onTestPassphraseInvalid()
slot void onTestSsidNotFound()
slot void onTestSystemError()
slot void onSaveNetworkConfig()
QWizardPage TestNetworkWizardPage windowTitle=tr("Joining Network") title=tr("Testing Network Settings")
QVBoxLayout verticalLayout_2
  QVBoxLayout verticalLayout
    spacer 20x40 Minimum/Expanding
    QProgressBar progressBar accessibleName=tr("Testing Network Settings") maximum=0
    spacer 20x30 Minimum/Expanding
    QLabel label text=tr("Please wait while ZV Tolvar tries to join the network") textFormat=PlainText
        .. alignment=AlignCenter wordWrap=true
    spacer 20x40 Minimum/Expanding
    QPushButton pushButton enabled=false text=tr("Save Network Configuration") autoDefault=true
    spacer 20x29 Minimum/Expanding
)"},
    {makeAdvancedDialog, {362, 269}, R"(
slot void OnAccepted()
QDialog AdvancedDialog windowTitle=tr("Advanced Settings") sizeGripEnabled=true modal=true accepted()
QVBoxLayout verticalLayout
  QFormLayout formLayout
    0 LabelRole QLabel label text=tr("Join Network:") buddy=lineEdit_network
    0 FieldRole QLineEdit lineEdit_network
    1 LabelRole QLabel label_2 text=tr("Passphrase:") buddy=lineEdit_passphrase
    1 FieldRole QLineEdit lineEdit_passphrase
    2 SpanningRole QCheckBox checkBox_useStaticIP text=tr("Use static IP address:")
    3 FieldRole QLineEdit lineEdit_ipAddress accessibleName=tr("Use static IP address:")
        .. placeholderText=tr("static IP address")
    4 SpanningRole QCheckBox checkBox_syslog enabled=false text=tr("Use syslog server:")
    5 FieldRole QLineEdit lineEdit_syslogServer enabled=false accessibleName=tr("Use syslog server:")
        .. placeholderText=tr("syslog server IP address")
    6 SpanningRole QCheckBox checkBox_ExternalAntenna text=tr("Use External Antenna")
  QDialogButtonBox buttonBox standardButtons=Ok|Cancel accepted() rejected()
)"},
    {makeDetailsDialog, {400, 398}, R"(
QDialog ViewDetailsDialog windowTitle=tr("Network Details")
QVBoxLayout verticalLayout
  QFormLayout formLayout
    0 LabelRole QLabel label text=tr("Network:")
    0 FieldRole QLabel label_network textFormat=PlainText
    1 LabelRole QLabel label_2 text=tr("Channel:")
    1 FieldRole QLabel label_channel textFormat=PlainText
    2 LabelRole QLabel label_3 text=tr("Adhoc:")
    2 FieldRole QLabel label_adhoc textFormat=PlainText
    3 LabelRole QLabel label_4 text=tr("Security Protocol:")
    3 FieldRole QLabel label_security textFormat=PlainText
    4 LabelRole QLabel label_5 text=tr("Cypher Suites:")
    4 FieldRole QLabel label_suites textFormat=PlainText
    5 LabelRole QLabel label_6 text=tr("WPS: ")
    5 FieldRole QLabel label_wps textFormat=PlainText
    6 LabelRole QLabel label_7 text=tr("Signal Strength (RSSI dB):")
    6 FieldRole QLabel label_rssi textFormat=PlainText
  QLabel label_11 font=bold/14pt text=tr("Notes:")
  QLabel label_8 text=tr("1) A signal strength  between 0db and  -69db is needed for reliable operation. Small
      .. variations of placement of the device can dramatically affect signal strength.") wordWrap=true
  QLabel label_9 text=tr("2) Security Protocol of WPA2 (PSK) with cypher suites of "U-AES and M-AES" is highly
      .. recommended for reliability, performance and security of your network.") wordWrap=true
  spacer 20x40 Minimum/Expanding
  QDialogButtonBox buttonBox standardButtons=Ok|Cancel accepted() rejected()
)"},
};
// clang-format on
} // namespace

/// Tests that each page and dialog is constructed as its outline says, and that everything else has its
/// default.
class TestForms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachFormMatchesItsOutline_data() { eachForm(); }
    void eachFormMatchesItsOutline();
    void eachFormHasItsSize_data() { eachForm(); }
    void eachFormHasItsSize();
    void tabGoesFromTopToBottom_data() { eachForm(); }
    void tabGoesFromTopToBottom();

private:
    static void eachForm();
    /// Makes the form of the current row in a dialog, where push buttons are auto-default by default.
    std::unique_ptr<QWidget> makeForm();

    QDialog _window;
};

void TestForms::eachForm()
{
    QTest::addColumn<const Form *>("form");
    QDialog window;
    for (const Form &form : forms)
        QTest::newRow(form.make(&window)->metaObject()->className()) << &form;
}

std::unique_ptr<QWidget> TestForms::makeForm()
{
    QFETCH(const Form *, form);
    return form->make(&_window);
}

void TestForms::eachFormMatchesItsOutline()
{
    QFETCH(const Form *, form);
    static const QRegularExpression continuation("\n *[.][.]");
    const QString expected = QString(form->outline).remove(continuation).trimmed();
    const PseudoTranslator translator;
    QCOMPARE(FormOutline(*makeForm()).lines, expected.split('\n'));
}

void TestForms::eachFormHasItsSize()
{
    QFETCH(const Form *, form);
    QCOMPARE(makeForm()->size(), form->size);
}

void TestForms::tabGoesFromTopToBottom()
{
    const std::unique_ptr<QWidget> form = makeForm();
    QStringList visited;
    for (auto *next = form->nextInFocusChain(); next != form.get(); next = next->nextInFocusChain()) {
        if (next->parent() == form.get() && !next->objectName().isEmpty())
            visited += next->objectName();
    }
    QCOMPARE(visited, FormOutline(*form).widgets);
}

QTEST_MAIN(TestForms)
#include "tst_forms.moc"
