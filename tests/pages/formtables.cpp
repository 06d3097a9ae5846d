#include "tests/pages/formtables.h"

#include <QDialogButtonBox>
#include <QFont>
#include <QLineEdit>
#include <QListView>
#include <QSizePolicy>

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

ZVScanResult someNetwork()
{
    return {"Home ", "11", "n", "WPA2 (PSK)", "U-AES M-AES", "Yes", "-75"};
}

namespace
{
template <typename Widget>
std::unique_ptr<QWidget> make()
{
    return std::make_unique<Widget>();
}

std::unique_ptr<QWidget> makeAdvanced()
{
    static ZVTolvar freshController;
    return std::make_unique<AdvancedDialog>(&freshController, nullptr);
}

std::unique_ptr<QWidget> makeDetails()
{
    ZVScanResult network = someNetwork();
    return std::make_unique<ViewDetailsDialog>(&network, nullptr);
}

QFont bold()
{
    QFont font;
    font.setBold(true);
    return font;
}

QFont heading()
{
    QFont font = bold();
    font.setPointSize(14);
    return font;
}

/// The property of a label that shows text from the device or a network.
QVariant plainText()
{
    return QVariant::fromValue(Qt::PlainText);
}

QVariant centred()
{
    return QVariant::fromValue(Qt::Alignment(Qt::AlignCenter));
}

QVariant noEdit()
{
    return QVariant::fromValue(QAbstractItemView::EditTriggers(QAbstractItemView::NoEditTriggers));
}

QVariant okCancel()
{
    return QVariant::fromValue(
        QDialogButtonBox::StandardButtons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel));
}

// clang-format off
Form console()
{
    return {
        "console_dialog", "QDialog", make<console_dialog>, {613, 278},
        {},
        R"(
QVBoxLayout verticalLayout
  QTextBrowser textBrowser_log_console
)",
        {{itself, "windowTitle", "Console Log"},
         {"textBrowser_log_console", "accessibleName", "Console Log"}},
        {{itself, "sizeGripEnabled", true}}};
}

Form connectPage()
{
    return {
        "ConnectTlovarWizardPage", "QWizardPage", make<ConnectTlovarWizardPage>, {606, 502},
        {"onSystemIDChanged(QString sysID)",
         "onCandidateDeviceFound()"},
        R"(
QVBoxLayout verticalLayout_2
  QVBoxLayout verticalLayout
    spacer 20x40 Minimum Expanding
    QLabel label_Step2
    spacer 20x40 Minimum Expanding
    QLabel label_OnlyOne_2
    spacer 20x40 Minimum Expanding
    QLabel label_progress
    QProgressBar connectionProgressBar
    spacer 20x40 Minimum Expanding
)",
        {{itself, "windowTitle", "Connecting to Tolvar"},
         {itself, "title", "Identifying ZV Tolvar"},
         {"label_Step2", "text",
          "Please plug an Orvane Device into the computer before starting this utility. "},
         {"label_OnlyOne_2", "text",
          "If you have more than one device, run this setup wizard with each unit individually."},
         {"label_progress", "text", "TextLabel"},
         {"connectionProgressBar", "accessibleName", "Identifying ZV Tolvar"}},
        {{"label_Step2", "font", bold()},
         {"label_Step2", "alignment", centred()},
         {"label_Step2", "wordWrap", true},
         {"label_OnlyOne_2", "alignment", centred()},
         {"label_OnlyOne_2", "wordWrap", true},
         {"label_progress", "alignment", centred()},
         {"label_progress", "wordWrap", false},
         {"connectionProgressBar", "maximum", 0},
         {"connectionProgressBar", "value", -1}}};
}

Form foundPage()
{
    return {
        "TolvarFoundWizardPage", "QWizardPage", make<TolvarFoundWizardPage>, {606, 502},
        {"OnAntennaChanged(QString)",
         "onIpAddressChanged(QString)",
         "onViewLogClicked()",
         "onStartLogWrite()",
         "onFinishLogWrite()"},
        R"(
QVBoxLayout verticalLayout_2
  QVBoxLayout verticalLayout
    QLabel label
    QGridLayout gridLayout
      0,0 1x1 QLabel label_DeviceTypeTitle
      0,1 1x1 QLabel label_DeviceType
      1,0 1x1 QLabel label_SystemIdTitle
      1,1 1x1 QLabel label_SystemId
      2,0 1x1 QLabel label_StatusTitle
      2,1 1x1 QLabel label_Status
      3,0 1x1 QLabel label_VersionTitle
      3,1 1x1 QLabel label_Version
      4,0 1x1 QLabel label_NetworkTitle
      4,1 1x1 QLabel label_Network
      5,0 1x1 QLabel label_MacAddressTitle
      5,1 1x1 QLabel label_MacAddress
      6,0 1x1 QLabel label_IPAddressTitle
      6,1 1x1 QLabel label_IPAddress
      7,0 1x1 QLabel label_ExternalAntennaTitle
      7,1 1x1 QLabel label_ExternalAntenna
    QLabel label_LogWrite_progress
    QHBoxLayout horizontalLayout
      spacer 40x20 Expanding Minimum
      QPushButton pushButton_viewLog
)",
        {{itself, "windowTitle", "Found ZV Tolvar"},
         {itself, "title", "Identifying ZV Tolvar"},
         {"label", "text", "Found Device"},
         {"label_DeviceTypeTitle", "text", "Device Type:"},
         {"label_DeviceType", "text", "Unknown"},
         {"label_SystemIdTitle", "text", "System ID:"},
         {"label_SystemId", "text", "Unknown"},
         {"label_StatusTitle", "text", "Status:"},
         {"label_Status", "text", "Unknown"},
         {"label_VersionTitle", "text", "Firmware Version:"},
         {"label_Version", "text", "Unknown"},
         {"label_NetworkTitle", "text", "Network:"},
         {"label_Network", "text", "Unknown"},
         {"label_MacAddressTitle", "text", "MAC Address:"},
         {"label_MacAddress", "text", "Unknown"},
         {"label_IPAddressTitle", "text", "IP Address:"},
         {"label_IPAddress", "text", "Unknown"},
         {"label_ExternalAntennaTitle", "text", "Antenna:"},
         {"label_ExternalAntenna", "text", "Unknown"},
         {"pushButton_viewLog", "text", "Get Tolvar Log File"}},
        {{itself, "subTitle", ""},
         {"label", "font", bold()},
         {"label_SystemId", "textFormat", plainText()},
         {"label_Status", "textFormat", plainText()},
         {"label_Version", "textFormat", plainText()},
         {"label_Network", "textFormat", plainText()},
         {"label_MacAddress", "textFormat", plainText()},
         {"label_IPAddress", "textFormat", plainText()},
         {"label_LogWrite_progress", "text", ""},
         {"label_LogWrite_progress", "textFormat", plainText()},
         {"label_LogWrite_progress", "wordWrap", true}},
        {"pushButton_viewLog.clicked(bool)"}};
}

Form notFoundPage()
{
    return {
        "TolvarNotFoundWizardPage", "QWizardPage", make<TolvarNotFoundWizardPage>, {606, 502},
        {},
        R"(
QVBoxLayout verticalLayout_2
  QVBoxLayout verticalLayout
    spacer 20x25 Minimum Expanding
    QLabel label_NoTolvars
    spacer 20x25 Minimum Expanding
    QLabel label
    spacer 20x25 Minimum Expanding
)",
        {{itself, "windowTitle", "Tolvar not Found"},
         {itself, "title", "Identifying ZV Tolvars"},
         {"label_NoTolvars", "text", "No ZV Devices were detected.  "},
         {"label", "text",
          "Please go back to previous screen and make sure the unit is plugged into one of the usb ports on this "
          "computer and try again"}},
        {{"label_NoTolvars", "font", bold()},
         {"label_NoTolvars", "alignment", centred()},
         {"label_NoTolvars", "wordWrap", true},
         {"label", "alignment", centred()},
         {"label", "wordWrap", true}}};
}

Form choosePage()
{
    return {
        "ChooseNetworkWizardPage", "QWizardPage", make<ChooseNetworkWizardPage>, {606, 353},
        {"OnNetworkListDoubleClicked(QModelIndex ind)",
         "OnNetworkListClicked(QModelIndex ind)",
         "OnRefreshButtonClicked()",
         "OnAdvancedButtonClicked()",
         "OnViewDetailsButtonClicked()",
         "onStartScan()",
         "onFinishScan()",
         "OnPasswordEditingFinished()",
         "OnNetworkEditingFinished()",
         "OnExternalAntennaClicked(bool)",
         "OnNetworkNameChanged(QString name)",
         "OnAntennaChanged(QString val)",
         "OnScannedNetworkListChanged(QHash<QString,ZVScanResult>*)"},
        R"(
QVBoxLayout verticalLayout_3
  QLabel label_NetworkSettings
  QHBoxLayout horizontalLayout
    QListView networkListView
    QVBoxLayout verticalLayout
      QPushButton refreshButton
      QPushButton viewDetailsButton
      spacer 20x40 Minimum Expanding
      QCheckBox checkBox_useExternalAntenna
      QLabel label_NetworkNameTitle
      QLineEdit input_NetworkName
      QLabel label_PasswordTitle
      QLineEdit input_Password
  spacer 577x9 Minimum Expanding
  QProgressBar progressBar
)",
        {{itself, "windowTitle", "Choose Network"},
         {itself, "title", "ZV Tolvar Configuration"},
         {"label_NetworkSettings", "text", "Found Networks:"},
         {"networkListView", "accessibleName", "Found Networks:"},
         {"refreshButton", "text", "Look for Networks..."},
         {"viewDetailsButton", "text", "View Network Details..."},
         {"checkBox_useExternalAntenna", "text", "Use External Antenna"},
         {"label_NetworkNameTitle", "text", "Network"},
         {"label_PasswordTitle", "text", "Passphrase"},
         {"progressBar", "accessibleName", "Look for Networks..."}},
        {{"label_NetworkSettings", "font", bold()},
         {"label_NetworkSettings", "wordWrap", true},
         {"networkListView", "editTriggers", noEdit()},
         {"networkListView", "isWrapping", true},
         {"networkListView", "wordWrap", true},
         {"refreshButton", "default", false},
         {"refreshButton", "flat", false},
         {"checkBox_useExternalAntenna", "enabled", false},
         {"checkBox_useExternalAntenna", "checked", true},
         {"input_NetworkName", "sizePolicy", QSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed)},
         {"input_NetworkName", "minimumSize", QSize(200, 25)},
         {"input_Password", "sizePolicy", QSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed)},
         {"input_Password", "minimumSize", QSize(200, 25)},
         {"input_Password", "echoMode", QVariant::fromValue(QLineEdit::Normal)},
         {"progressBar", "maximum", 0},
         {"progressBar", "value", -1},
         {"progressBar", "visible", false}},
        {},
        {{"label_NetworkNameTitle", "input_NetworkName"}, {"label_PasswordTitle", "input_Password"}}};
}

Form wepPage()
{
    return {
        "WEPWarningWizardPage", "QWizardPage", make<WEPWarningWizardPage>, {486, 314},
        {},
        R"(
QVBoxLayout verticalLayout_2
  QVBoxLayout verticalLayout
    spacer 20x40 Minimum Expanding
    QLabel label_2
    spacer 20x40 Minimum Expanding
    QLabel label_4
    spacer 20x40 Minimum Expanding
    QLabel label_3
    QLabel label
    spacer 20x40 Minimum Expanding
)",
        {{itself, "windowTitle", "WEP warning"},
         {itself, "title",
          "Warning - Selected Network is configured for WEP security"},
         {"label_2", "text",
          "The WiFi Alliance, the body that provides 'certified WiFi' marks, do not recommend the use of WEP for "
          "security on networks. WEP provides no protection against unauthorized access. The WiFi alliance will be "
          "'disallowing' WEP and TKIP security in thier certification process starting 2011. We strongly recommend "
          "changing your security to WPA2."},
         {"label_4", "text",
          "See <a href=\"https://www.wi-fi.org/knowledge-center/faq/is-wep-secure\">"
          "https://www.wi-fi.org/knowledge-center/faq/is-wep-secure</a> for more details."},
         {"label_3", "text",
          "In addition, although ZV Tolvar can connect to some WEP networks, we have had some reports of "
          "instability and poor performance. Please see www.zvtolvar.example regarding issues with using "
          "WEP with your firmware version."}},
        {{"label_2", "wordWrap", true},
         {"label_4", "wordWrap", true},
         {"label_4", "openExternalLinks", false},
         {"label_3", "wordWrap", true},
         {"label", "text", ""},
         {"label", "wordWrap", false}}};
}

Form testPage()
{
    return {
        "TestNetworkWizardPage", "QWizardPage", make<TestNetworkWizardPage>, {592, 471},
        {"onTestNetworkFound()",
         "onTestPassphraseInvalid()",
         "onTestSsidNotFound()",
         "onTestSystemError()",
         "onSaveNetworkConfig()"},
        R"(
QVBoxLayout verticalLayout_2
  QVBoxLayout verticalLayout
    spacer 20x40 Minimum Expanding
    QProgressBar progressBar
    spacer 20x30 Minimum Expanding
    QLabel label
    spacer 20x40 Minimum Expanding
    QPushButton pushButton
    spacer 20x29 Minimum Expanding
)",
        {{itself, "windowTitle", "Joining Network"},
         {itself, "title", "Testing Network Settings"},
         {"progressBar", "accessibleName", "Testing Network Settings"},
         {"label", "text", "Please wait while ZV Tolvar tries to join the network"},
         {"pushButton", "text", "Save Network Configuration"}},
        {{itself, "subTitle", ""},
         {"progressBar", "maximum", 0},
         {"progressBar", "value", -1},
         {"label", "alignment", centred()},
         {"label", "textFormat", plainText()},
         {"label", "wordWrap", true},
         {"pushButton", "enabled", false}}};
}

Form advanced()
{
    return {
        "AdvancedDialog", "QDialog", makeAdvanced, {362, 269},
        {"OnAccepted()"},
        R"(
QVBoxLayout verticalLayout
  QFormLayout formLayout
    0 LabelRole QLabel label
    0 FieldRole QLineEdit lineEdit_network
    1 LabelRole QLabel label_2
    1 FieldRole QLineEdit lineEdit_passphrase
    2 SpanningRole QCheckBox checkBox_useStaticIP
    3 FieldRole QLineEdit lineEdit_ipAddress
    4 SpanningRole QCheckBox checkBox_syslog
    5 FieldRole QLineEdit lineEdit_syslogServer
    6 SpanningRole QCheckBox checkBox_ExternalAntenna
  QDialogButtonBox buttonBox
)",
        {{itself, "windowTitle", "Advanced Settings"},
         {"label", "text", "Join Network:"},
         {"label_2", "text", "Passphrase:"},
         {"checkBox_useStaticIP", "text", "Use static IP address:"},
         {"lineEdit_ipAddress", "placeholderText", "static IP address"},
         {"lineEdit_ipAddress", "accessibleName", "Use static IP address:"},
         {"checkBox_syslog", "text", "Use syslog server:"},
         {"lineEdit_syslogServer", "placeholderText", "syslog server IP address"},
         {"lineEdit_syslogServer", "accessibleName", "Use syslog server:"},
         {"checkBox_ExternalAntenna", "text", "Use External Antenna"}},
        {{itself, "sizeGripEnabled", true},
         {itself, "modal", true},
         {"lineEdit_passphrase", "echoMode", QVariant::fromValue(QLineEdit::Normal)},
         {"checkBox_syslog", "enabled", false},
         {"lineEdit_syslogServer", "enabled", false},
         {"buttonBox", "orientation", QVariant::fromValue(Qt::Horizontal)},
         {"buttonBox", "standardButtons", okCancel()}},
        {"AdvancedDialog.accepted()", "buttonBox.accepted()", "buttonBox.rejected()"},
        {{"label", "lineEdit_network"}, {"label_2", "lineEdit_passphrase"}}};
}

Form details()
{
    return {
        "ViewDetailsDialog", "QDialog", makeDetails, {400, 398},
        {},
        R"(
QVBoxLayout verticalLayout
  QFormLayout formLayout
    0 LabelRole QLabel label
    0 FieldRole QLabel label_network
    1 LabelRole QLabel label_2
    1 FieldRole QLabel label_channel
    2 LabelRole QLabel label_3
    2 FieldRole QLabel label_adhoc
    3 LabelRole QLabel label_4
    3 FieldRole QLabel label_security
    4 LabelRole QLabel label_5
    4 FieldRole QLabel label_suites
    5 LabelRole QLabel label_6
    5 FieldRole QLabel label_wps
    6 LabelRole QLabel label_7
    6 FieldRole QLabel label_rssi
  QLabel label_11
  QLabel label_8
  QLabel label_9
  spacer 20x40 Minimum Expanding
  QDialogButtonBox buttonBox
)",
        {{itself, "windowTitle", "Network Details"},
         {"label", "text", "Network:"},
         {"label_network", "text", "TextLabel"},
         {"label_2", "text", "Channel:"},
         {"label_channel", "text", "TextLabel"},
         {"label_3", "text", "Adhoc:"},
         {"label_adhoc", "text", "TextLabel"},
         {"label_4", "text", "Security Protocol:"},
         {"label_security", "text", "TextLabel"},
         {"label_5", "text", "Cypher Suites:"},
         {"label_suites", "text", "TextLabel"},
         {"label_6", "text", "WPS: "},
         {"label_wps", "text", "TextLabel"},
         {"label_7", "text", "Signal Strength (RSSI dB):"},
         {"label_rssi", "text", "TextLabel"},
         {"label_11", "text", "Notes:"},
         {"label_8", "text",
          "1) A signal strength  between 0db and  -69db is needed for reliable operation. Small variations of "
          "placement of the device can dramatically affect signal strength."},
         {"label_9", "text",
          "2) Security Protocol of WPA2 (PSK) with cypher suites of \"U-AES and M-AES\" is highly recommended for "
          "reliability, performance and security of your network."}},
        {{"label_network", "text", someNetwork().ssid},
         {"label_channel", "text", someNetwork().channel},
         {"label_adhoc", "text", someNetwork().adhoc},
         {"label_security", "text", someNetwork().security},
         {"label_suites", "text", someNetwork().suites},
         {"label_wps", "text", someNetwork().wps},
         {"label_rssi", "text", someNetwork().rssi},
         {"label_network", "textFormat", plainText()},
         {"label_channel", "textFormat", plainText()},
         {"label_adhoc", "textFormat", plainText()},
         {"label_security", "textFormat", plainText()},
         {"label_suites", "textFormat", plainText()},
         {"label_wps", "textFormat", plainText()},
         {"label_rssi", "textFormat", plainText()},
         {"label_11", "font", heading()},
         {"label_8", "wordWrap", true},
         {"label_9", "wordWrap", true},
         {"buttonBox", "orientation", QVariant::fromValue(Qt::Horizontal)},
         {"buttonBox", "standardButtons", okCancel()}},
        {"buttonBox.accepted()", "buttonBox.rejected()"}};
}
// clang-format on
} // namespace

const QList<Form> &forms()
{
    static const QList<Form> all = {console(), connectPage(), foundPage(), notFoundPage(), choosePage(),
                                    wepPage(), testPage(),    advanced(),  details()};
    return all;
}
