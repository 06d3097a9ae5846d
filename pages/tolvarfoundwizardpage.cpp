#include "pages/tolvarfoundwizardpage.h"

#include <QDate>
#include <QFile>
#include <QFileDialog>
#include <QLocale>
#include <QMessageBox>
#include <QWizard>

#include "device/zvtolvar.h"
#include "messages/diagnostics.h"
#include "pages/announcement.h"
#include "pages/pageid.h"
#include "pages/plaintextlabels.h"
#include "pages/waitcursor.h"
#include "pages/wizardcontroller.h"
#include "ui_tolvarfoundwizardpage.h"

namespace
{
constexpr int lastFirmwareWithoutLog = 59;

/// Today's name for a log file, with the abbreviated month of the user's locale.
QString defaultLogFileName()
{
    const QDate today = QDate::currentDate();
    // The locale's own format would also use its own digits.
    const QString month = QLocale::system().monthName(today.month(), QLocale::ShortFormat);
    return QLatin1String("zvtolvar_log_") + today.toString(QStringLiteral("dd")) + month +
           today.toString(QStringLiteral("yy")) + QLatin1String(".txt");
}

void showMessage(const QString &text)
{
    QMessageBox box;
    box.setTextFormat(Qt::PlainText); // it may contain a file name
    box.setText(text);
    box.exec();
}
} // namespace

TolvarFoundWizardPage::TolvarFoundWizardPage(QWidget *parent)
    : QWizardPage(parent)
    , _ui(std::make_unique<Ui_TolvarFoundWizardPage>())
{
    _ui->setupUi(this);
    setPlainText({_ui->label_SystemId, _ui->label_Status, _ui->label_Version, _ui->label_Network,
                  _ui->label_MacAddress, _ui->label_IPAddress, _ui->label_LogWrite_progress});
    alignToLeadingEdge({_ui->label_DeviceType, _ui->label_SystemId, _ui->label_Status, _ui->label_Version,
                        _ui->label_Network, _ui->label_MacAddress, _ui->label_IPAddress,
                        _ui->label_ExternalAntenna});
    connect(_ui->pushButton_viewLog, &QPushButton::clicked, this, &TolvarFoundWizardPage::onViewLogClicked);
}

TolvarFoundWizardPage::~TolvarFoundWizardPage() = default;

int TolvarFoundWizardPage::nextId() const
{
    return ChooseNetworkPageId;
}

void TolvarFoundWizardPage::initializePage()
{
    const ZVTolvar *tolvar = wizardController(this);

    connect(tolvar, &ZVTolvar::networkChanged, _ui->label_Network, &QLabel::setText);
    connect(tolvar, &ZVTolvar::systemIDChanged, _ui->label_SystemId, &QLabel::setText);
    connect(tolvar, &ZVTolvar::statusChanged, _ui->label_Status, &QLabel::setText);
    connect(tolvar, &ZVTolvar::firmwareVersionChanged, _ui->label_Version, &QLabel::setText);
    connect(tolvar, &ZVTolvar::ipAddressChanged, this, &TolvarFoundWizardPage::onIpAddressChanged);
    connect(tolvar, &ZVTolvar::macAddressChanged, _ui->label_MacAddress, &QLabel::setText);
    connect(tolvar, &ZVTolvar::antennaChanged, this, &TolvarFoundWizardPage::OnAntennaChanged);
    connect(tolvar, &ZVTolvar::startingToWriteLog, this, &TolvarFoundWizardPage::onStartLogWrite);
    connect(tolvar, &ZVTolvar::finishedWriteLog, this, &TolvarFoundWizardPage::onFinishLogWrite);

    _ui->label_Network->setText(tolvar->network());
    _ui->label_SystemId->setText(tolvar->systemID());
    _ui->label_Status->setText(tolvar->status());
    _ui->label_Version->setText(tolvar->firmwareVersion());
    _ui->label_MacAddress->setText(tolvar->macAddress());
    onIpAddressChanged(QString());
    _ui->label_ExternalAntenna->setText(tolvar->antennaDescription());
    // kept: label_DeviceType shows "Unknown" for every device.
}

void TolvarFoundWizardPage::onIpAddressChanged(QString)
{
    const ZVTolvar *tolvar = wizardController(this);
    // kept: neither string is translated, no space follows the colon, and the flag "y" counts as DHCP.
    if (tolvar->useStaticIP() == QLatin1String("Y"))
        _ui->label_IPAddress->setText(QLatin1String("Static:") + tolvar->ipAddress());
    else
        _ui->label_IPAddress->setText(QStringLiteral("DHCP"));
}

void TolvarFoundWizardPage::OnAntennaChanged(QString)
{
    _ui->label_ExternalAntenna->setText(wizardController(this)->antennaDescription());
}

void TolvarFoundWizardPage::onStartLogWrite()
{
    disableLogButton();
    _ui->label_LogWrite_progress->setText(tr("Writing log file to: %1", "Progress String").arg(_logFileName));
}

void TolvarFoundWizardPage::onFinishLogWrite()
{
    const Announcement announcement(_ui->label_LogWrite_progress);
    _ui->pushButton_viewLog->setEnabled(true);
    _ui->label_LogWrite_progress->setText(tr("Log file written to: %1", "Progress String").arg(_logFileName));
    if (wizard()->focusWidget() == this)
        _ui->pushButton_viewLog->setFocus();
}

void TolvarFoundWizardPage::onViewLogClicked()
{
    if (wizardController(this)->firmwareVersionAsInt() <= lastFirmwareWithoutLog) {
        showMessage(tr("Tolvar Log file only available on Firmware A060 or later", "Save Log Message Box"));
        return;
    }

    if (_logFileName.isEmpty())
        _logFileName = defaultLogFileName();
    _logFileName = QFileDialog::getSaveFileName(wizard(), tr("Save Log to File", "save log file Message Box"),
                                                _logFileName);
    if (!_logFileName.isEmpty())
        saveLog();
}

// Until the button is enabled again, the page has the focus. Qt would move it to the Console button.
void TolvarFoundWizardPage::disableLogButton()
{
    if (wizard()->focusWidget() == _ui->pushButton_viewLog)
        setFocus();
    _ui->pushButton_viewLog->setEnabled(false);
}

void TolvarFoundWizardPage::saveLog()
{
    disableLogButton();
    _ui->label_LogWrite_progress->setText(tr("Opening file: %1").arg(_logFileName));

    // kept: the page never deletes the file. The controller deletes an open file when the log is written. A
    // file that cannot be opened, or whose log never arrives, is leaked.
    auto *file = new QFile(_logFileName);
    zvDebug() << "Opening file:" << _logFileName;
    if (!file->open(QIODevice::WriteOnly | QIODevice::Text)) {
        // kept: the button stays disabled. Only a finished download enables it again.
        showMessage(
            tr("Couldn't open file: %1: %2", "Message Box. File name and error string from QT translations")
                .arg(_logFileName, file->errorString()));
        return;
    }
    showWaitCursor();
    wizardController(this)->getLogFileTo(file);
}
