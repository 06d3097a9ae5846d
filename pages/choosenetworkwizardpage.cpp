#include "pages/choosenetworkwizardpage.h"

#include <QItemSelectionModel>
#include <QMessageBox>
#include <QWizard>

#include "device/zvtolvar.h"
#include "messages/diagnostics.h"
#include "messages/sessionlog.h"
#include "pages/advanceddialog.h"
#include "pages/pageid.h"
#include "pages/viewdetailsdialog.h"
#include "pages/waitcursor.h"
#include "pages/wizardcontroller.h"
#include "ui_choosenetworkwizardpage.h"

namespace
{
constexpr int lastFirmwareWithoutAntenna = 58; // and without any other advanced setting
}

ChooseNetworkWizardPage::ChooseNetworkWizardPage(QWidget *parent)
    : QWizardPage(parent)
    , _ui(std::make_unique<Ui_ChooseNetworkWizardPage>())
{
    _ui->setupUi(this);
    _ui->progressBar->hide();
}

ChooseNetworkWizardPage::~ChooseNetworkWizardPage()
{
    theConsoleWindow = nullptr;
}

void ChooseNetworkWizardPage::initializePage()
{
    ZVTolvar *tolvar = wizardController(this);
    connectEverything(tolvar);

    _ui->input_NetworkName->setText(tolvar->network());
    _ui->input_Password->setText(tolvar->password());
    // kept: the box stays disabled for every firmware. It only shows the setting.
    if (tolvar->firmwareVersionAsInt() > lastFirmwareWithoutAntenna)
        _ui->checkBox_useExternalAntenna->setChecked(tolvar->antenna().toInt() != 0);
    else
        _ui->checkBox_useExternalAntenna->setEnabled(false);

    _networks.setStringList({QStringLiteral("Scanning for Networks"), QStringLiteral("Please Wait....")});
    _ui->networkListView->setModel(&_networks);
    // A view that is given the same model again keeps its selection model: one connection is enough.
    connect(_ui->networkListView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ChooseNetworkWizardPage::onSelectionChanged, Qt::UniqueConnection);
    // released() is emitted before clicked(), which starts the next scans.
    connect(_ui->refreshButton, &QPushButton::released, this, showWaitCursor);
    showWaitCursor();
    tolvar->startScan();
}

// kept: each time the page is entered, all connections are made again.
void ChooseNetworkWizardPage::connectEverything(ZVTolvar *tolvar)
{
    using Page = ChooseNetworkWizardPage;
    connect(tolvar, &ZVTolvar::networkChanged, this, &Page::OnNetworkNameChanged);
    connect(tolvar, &ZVTolvar::passwordChanged, _ui->input_Password, &QLineEdit::setText);
    connect(tolvar, &ZVTolvar::scanStarted, this, &Page::onStartScan);
    connect(tolvar, &ZVTolvar::scanFinished, this, &Page::onFinishScan);
    connect(_ui->networkListView, &QListView::doubleClicked, this, &Page::OnNetworkListDoubleClicked);
    connect(_ui->networkListView, &QListView::clicked, this, &Page::OnNetworkListClicked);
    connect(_ui->refreshButton, &QPushButton::clicked, tolvar, &ZVTolvar::startScan);
    connect(_ui->input_NetworkName, &QLineEdit::editingFinished, this, &Page::OnNetworkEditingFinished);
    connect(_ui->input_Password, &QLineEdit::editingFinished, this, &Page::OnPasswordEditingFinished);
    connect(_ui->viewDetailsButton, &QPushButton::clicked, this, &Page::OnViewDetailsButtonClicked);
    connect(_ui->checkBox_useExternalAntenna, &QCheckBox::clicked, this, &Page::OnExternalAntennaClicked);
    connect(tolvar, &ZVTolvar::scannedNetworkListChanged, this, &Page::OnScannedNetworkListChanged);
}

bool ChooseNetworkWizardPage::isComplete() const
{
    if (wizardController(this)->scanning())
        return false;
    const QString name = _ui->input_NetworkName->text();
    zvDebug() << name;
    return !name.isEmpty();
}

int ChooseNetworkWizardPage::nextId() const
{
    ZVTolvar *tolvar = wizardController(this);
    const QString name = _ui->input_NetworkName->text();
    const QString passphrase = _ui->input_Password->text();

    // kept: logs the passphrase in plain text, and changes values although it is a query. The wizard calls it
    // before it shows the next page, which needs these values.
    zvDebug() << "nextId" << passphrase;
    tolvar->setNetwork(name);
    tolvar->setPassword(passphrase);
    return tolvar->getScanResult(name).security.contains(QLatin1String("WEP")) ? WEPWarningPageId
                                                                               : TestNetworkPageId;
}

void ChooseNetworkWizardPage::onStartScan()
{
    // Qt would move the focus from a disabled button to the Network field and select the name there.
    const QWidget *focused = wizard()->focusWidget();
    if (focused == _ui->refreshButton || focused == _ui->viewDetailsButton)
        _ui->networkListView->setFocus();
    _ui->refreshButton->setEnabled(false);
    _ui->viewDetailsButton->setEnabled(false);
    _ui->progressBar->show();
    Q_EMIT completeChanged();
}

void ChooseNetworkWizardPage::onFinishScan()
{
    _ui->refreshButton->setEnabled(true);
    _ui->viewDetailsButton->setEnabled(true);
    _ui->progressBar->hide();
    clearOtherSelection(wizardController(this)->network());
    Q_EMIT completeChanged();
}

void ChooseNetworkWizardPage::OnNetworkNameChanged(QString name)
{
    _ui->input_NetworkName->setText(name);
    clearOtherSelection(name);
    Q_EMIT completeChanged();
}

void ChooseNetworkWizardPage::OnNetworkListClicked(QModelIndex ind)
{
    // The controller's signal updates the name field.
    wizardController(this)->setNetwork(ind.data(Qt::DisplayRole).toString());
}

// Not currentChanged(): the list has a current row as soon as Tab moves the focus to it. If a scan ends
// without a list, the placeholder rows remain; they are not networks.
void ChooseNetworkWizardPage::onSelectionChanged(const QItemSelection &selected)
{
    ZVTolvar *tolvar = wizardController(this);
    if (selected.isEmpty() || tolvar->scanning())
        return;
    const QModelIndex row = selected.indexes().constFirst();
    if (tolvar->scannedNetworks()->contains(row.data(Qt::DisplayRole).toString()))
        OnNetworkListClicked(row);
}

// Only the network that is tested may be highlighted. A different one is highlighted if the user typed a
// name, or highlighted a row during a scan.
void ChooseNetworkWizardPage::clearOtherSelection(const QString &network)
{
    const QItemSelectionModel *selection = _ui->networkListView->selectionModel();
    if (selection && selection->hasSelection() &&
        selection->selectedIndexes().constFirst().data(Qt::DisplayRole).toString() != network)
        _ui->networkListView->clearSelection();
}

void ChooseNetworkWizardPage::OnNetworkListDoubleClicked(QModelIndex ind)
{
    OnNetworkListClicked(ind);
    OnViewDetailsButtonClicked();
}

void ChooseNetworkWizardPage::OnNetworkEditingFinished()
{
    wizardController(this)->setNetwork(_ui->input_NetworkName->text());
    Q_EMIT completeChanged();
}

void ChooseNetworkWizardPage::OnPasswordEditingFinished()
{
    zvDebug() << "Password Edit:" << _ui->input_Password->text();
    wizardController(this)->setPassword(_ui->input_Password->text());
}

QString ChooseNetworkWizardPage::shownAntenna() const
{
    return _ui->checkBox_useExternalAntenna->isChecked() ? QStringLiteral("1") : QStringLiteral("0");
}

void ChooseNetworkWizardPage::OnExternalAntennaClicked(bool)
{
    ZVTolvar *tolvar = wizardController(this);
    tolvar->setAntenna(shownAntenna());
    tolvar->commitAntennaSetting();
}

void ChooseNetworkWizardPage::OnAntennaChanged(QString)
{
    const QString antenna = wizardController(this)->antenna();
    if (antenna != shownAntenna())
        _ui->checkBox_useExternalAntenna->setChecked(antenna == QLatin1String("1"));
}

void ChooseNetworkWizardPage::OnRefreshButtonClicked()
{
    wizardController(this)->startScan();
}

void ChooseNetworkWizardPage::OnScannedNetworkListChanged(QHash<QString, ZVScanResult> *networks)
{
    QStringList names; // in the order of the hash table, which differs in each run
    for (auto network = networks->cbegin(); network != networks->cend(); ++network) {
        zvDebug() << network.key();
        names.append(network.key());
    }
    _networks.setStringList(names);
}

void ChooseNetworkWizardPage::OnViewDetailsButtonClicked()
{
    zvDebug() << "View Details Button Clicked";
    ZVScanResult network = wizardController(this)->getScanResult(_ui->input_NetworkName->text());
    ViewDetailsDialog dialog(&network, wizard());
    if (dialog.exec() == QDialog::Accepted)
        zvDebug() << " OK";
}

void ChooseNetworkWizardPage::OnAdvancedButtonClicked()
{
    zvDebug() << "Advanced Button Clicked";
    ZVTolvar *tolvar = wizardController(this);
    const int firmware = tolvar->firmwareVersionAsInt();
    zvDebug() << "Firmware:" << firmware;

    if (firmware > lastFirmwareWithoutAntenna) {
        AdvancedDialog dialog(tolvar, wizard());
        if (dialog.exec() == QDialog::Accepted)
            zvDebug() << " Advanced settings accepted";
        return;
    }
    QMessageBox box;
    box.setText(
        tr("Advanced settings are only available with Firmware version A059 or higher",
           "Warning dialog when advanced settings selected, and an incompatible firmware is loaded."));
    box.exec();
}
