#include "pages/advanceddialog.h"

#include <algorithm>

#include <QLayout>

#include "device/zvtolvar.h"
#include "pages/screenfit.h"
#include "ui_advanceddialog.h"

namespace
{
/// Whether \a flag means "on" for the device.
bool isOn(const QString &flag)
{
    return flag.toUpper() == QLatin1String("Y");
}

/// Checks \a box and shows \a address if \a flag is on; otherwise the field stays empty and shows its
/// placeholder.
void showOptionalAddress(const QString &flag, const QString &address, QCheckBox *box, QLineEdit *field)
{
    box->setChecked(isOn(flag));
    if (isOn(flag))
        field->setText(address);
}

/// How many pixels \a field is too narrow for its placeholder text; 0 if it is wide enough.
int missingWidth(const QLineEdit *field)
{
    const QFontMetrics font = field->fontMetrics();
    const int margins = font.height(); // the margins of the frame and the field are smaller
    return std::max(0, font.horizontalAdvance(field->placeholderText()) + margins - field->width());
}
} // namespace

AdvancedDialog::AdvancedDialog(ZVTolvar *controller, QWidget *parent)
    : QDialog(parent)
    , _ui(std::make_unique<Ui_AdvancedDialog>())
    , _controller(controller)
{
    _ui->setupUi(this);
    showValues();
    resize(size().expandedTo(layout()->totalMinimumSize())); // the size at which it would be shown
    layout()->setGeometry(rect()); // gives the fields their width, which is too small with larger fonts
    resize(width() +
               std::max(missingWidth(_ui->lineEdit_ipAddress), missingWidth(_ui->lineEdit_syslogServer)),
           height());
    fitToScreen(*this, *_ui->buttonBox);
    connect(this, &QDialog::accepted, this, &AdvancedDialog::OnAccepted);
}

AdvancedDialog::~AdvancedDialog() = default;

void AdvancedDialog::showValues()
{
    _ui->checkBox_ExternalAntenna->setChecked(_controller->antenna().toInt() != 0);
    showOptionalAddress(_controller->useStaticIP(), _controller->ipAddress(), _ui->checkBox_useStaticIP,
                        _ui->lineEdit_ipAddress);
    showOptionalAddress(_controller->sysLogOn(), _controller->sysLogServer(), _ui->checkBox_syslog,
                        _ui->lineEdit_syslogServer);
    _ui->lineEdit_network->setText(_controller->network());
    _ui->lineEdit_passphrase->setText(_controller->password());
}

void AdvancedDialog::OnAccepted()
{
    _controller->setAntenna(_ui->checkBox_ExternalAntenna->isChecked() ? QStringLiteral("1")
                                                                       : QStringLiteral("0"));
    // kept: an unchecked box switches nothing off. The device keeps its address.
    if (_ui->checkBox_useStaticIP->isChecked()) {
        _controller->setUseStaticIP(QStringLiteral("Y"));
        _controller->setIPAddress(_ui->lineEdit_ipAddress->text());
    }
    if (_ui->checkBox_syslog->isChecked()) {
        _controller->setSysLogOn(QStringLiteral("Y"));
        _controller->setSysLogServer(_ui->lineEdit_syslogServer->text());
    }
    _controller->setNetwork(_ui->lineEdit_network->text());
    _controller->setPassword(_ui->lineEdit_passphrase->text());
}
