#include "pages/viewdetailsdialog.h"

#include "device/zvscanresult.h"
#include "pages/plaintextlabels.h"
#include "pages/screenfit.h"
#include "ui_viewdetailsdialog.h"

ViewDetailsDialog::ViewDetailsDialog(ZVScanResult *network, QWidget *parent)
    : QDialog(parent)
    , _ui(std::make_unique<Ui_ViewDetailsDialog>())
{
    _ui->setupUi(this);
    const auto values = {_ui->label_network, _ui->label_channel, _ui->label_adhoc, _ui->label_security,
                         _ui->label_suites,  _ui->label_wps,     _ui->label_rssi};
    setPlainText(values);
    alignToLeadingEdge(values);
    _ui->label_network->setText(network->ssid);
    _ui->label_channel->setText(network->channel);
    _ui->label_adhoc->setText(network->adhoc);
    _ui->label_security->setText(network->security);
    _ui->label_suites->setText(network->suites);
    _ui->label_wps->setText(network->wps);
    _ui->label_rssi->setText(network->rssi);
    fitToScreen(*this, *_ui->buttonBox);
}

ViewDetailsDialog::~ViewDetailsDialog() = default;
