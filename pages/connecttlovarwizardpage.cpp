#include "pages/connecttlovarwizardpage.h"

#include "app/diagnostics.h"
#include "device/zvtolvar.h"
#include "pages/pageid.h"
#include "pages/wizardcontroller.h"
#include "ui_connecttlovarwizardpage.h"

ConnectTlovarWizardPage::ConnectTlovarWizardPage(QWidget *parent)
    : QWizardPage(parent)
    , _ui(std::make_unique<Ui_ConnectTlovarWizardPage>())
{
    _ui->setupUi(this);
    // A new widget counts as hidden until it is first shown. This one is hidden when a device is found.
    _ui->connectionProgressBar->show();
}

ConnectTlovarWizardPage::~ConnectTlovarWizardPage() = default;

void ConnectTlovarWizardPage::initializePage()
{
    ZVTolvar *tolvar = wizardController(this);

    _ui->label_progress->setText(tr("Looking for ZV Tolvar", "Progress bar label"));
    connect(tolvar, &ZVTolvar::systemIDChanged, this, &ConnectTlovarWizardPage::onSystemIDChanged);
    connect(tolvar, &ZVTolvar::candidateDeviceFound, this, &ConnectTlovarWizardPage::onCandidateDeviceFound);

    // A device that is there already is announced before this returns, so the connections come first.
    tolvar->findTolvar();
}

void ConnectTlovarWizardPage::onCandidateDeviceFound()
{
    _ui->label_progress->setText(tr("Getting status", "Progress bar label"));
    Q_EMIT completeChanged();
}

void ConnectTlovarWizardPage::onSystemIDChanged(QString)
{
    Q_EMIT completeChanged();
}

bool ConnectTlovarWizardPage::isComplete() const
{
    const QString systemID = wizardController(this)->systemID();
    zvDebug() << "Sysid:" << systemID;

    // kept: a query that changes widgets. The wizard asks at every turn, and so the page follows the search.
    if (!systemID.isEmpty()) {
        _ui->label_progress->setText(tr("***** A Tolvar has been found *****", "Progress bar label"));
        _ui->connectionProgressBar->hide();
        return true;
    }
    // Not isVisible(): the wizard hides its pages while it asks, and the bar would count as hidden each time.
    if (_ui->connectionProgressBar->isHidden()) {
        _ui->label_progress->setText(tr("Looking for ZV Tolvar", "Progress bar label"));
        _ui->connectionProgressBar->show();
    }
    return false;
}

int ConnectTlovarWizardPage::nextId() const
{
    return TolvarFoundPageId;
}
