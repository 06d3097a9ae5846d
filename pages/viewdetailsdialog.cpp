#include "pages/viewdetailsdialog.h"

#include <QLayout>

#include "device/zvscanresult.h"
#include "pages/devicetext.h"
#include "ui_viewdetailsdialog.h"

ViewDetailsDialog::ViewDetailsDialog(ZVScanResult *network, QWidget *parent)
    : QDialog(parent)
    , _ui(std::make_unique<Ui_ViewDetailsDialog>())
{
    _ui->setupUi(this);
    takeForText({_ui->label_network, _ui->label_channel, _ui->label_adhoc, _ui->label_security,
                 _ui->label_suites, _ui->label_wps, _ui->label_rssi});
    _ui->label_network->setText(network->ssid);
    _ui->label_channel->setText(network->channel);
    _ui->label_adhoc->setText(network->adhoc);
    _ui->label_security->setText(network->security);
    _ui->label_suites->setText(network->suites);
    _ui->label_wps->setText(network->wps);
    _ui->label_rssi->setText(network->rssi);

    // With larger letters the notes would take the values' room.
    resize(size().expandedTo({0, layout()->totalHeightForWidth(width())}));
}

ViewDetailsDialog::~ViewDetailsDialog() = default;
