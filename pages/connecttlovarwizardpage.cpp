#include "pages/connecttlovarwizardpage.h"

#include <QAbstractButton>
#include <QWizard>

#include "device/zvtolvar.h"
#include "messages/diagnostics.h"
#include "pages/announcement.h"
#include "pages/pageid.h"
#include "pages/wizardcontroller.h"
#include "ui_connecttlovarwizardpage.h"

ConnectTlovarWizardPage::ConnectTlovarWizardPage(QWidget *parent)
    : QWizardPage(parent)
    , _ui(std::make_unique<Ui_ConnectTlovarWizardPage>())
{
    _ui->setupUi(this);
}

ConnectTlovarWizardPage::~ConnectTlovarWizardPage() = default;

void ConnectTlovarWizardPage::initializePage()
{
    ZVTolvar *tolvar = wizardController(this);

    _ui->label_progress->setText(tr("Looking for ZV Tolvar", "Progress bar label"));
    connect(tolvar, &ZVTolvar::systemIDChanged, this, &ConnectTlovarWizardPage::onSystemIDChanged);
    connect(tolvar, &ZVTolvar::candidateDeviceFound, this, &ConnectTlovarWizardPage::onCandidateDeviceFound);

    // findTolvar() reports a device that is already present before it returns, so the connections come first.
    tolvar->findTolvar();
}

QString ConnectTlovarWizardPage::gettingStatus()
{
    return tr("Getting status", "Progress bar label");
}

void ConnectTlovarWizardPage::onCandidateDeviceFound()
{
    _ui->label_progress->setText(gettingStatus());
    Q_EMIT completeChanged();
}

void ConnectTlovarWizardPage::onSystemIDChanged(QString sysID)
{
    const Announcement found(sysID.isEmpty() ? nullptr : _ui->label_progress);
    Q_EMIT completeChanged();
    if (!sysID.isEmpty() && isVisible())
        wizard()->button(QWizard::NextButton)->setFocus();
}

bool ConnectTlovarWizardPage::isComplete() const
{
    const QString systemID = wizardController(this)->systemID();
    zvDebug() << "Sysid:" << systemID;

    // kept: a query that changes widgets. The wizard calls it often, which keeps the page up to date.
    if (!systemID.isEmpty()) {
        _ui->label_progress->setText(tr("***** A Tolvar has been found *****", "Progress bar label"));
        _ui->connectionProgressBar->hide();
        return true;
    }

    // Not isVisible(): the wizard hides its pages while it calls this, and the text for a device that has
    // just been found would never stay.
    const bool windowVisible = window()->isVisible();
    if (!windowVisible || _ui->connectionProgressBar->isHidden()) {
        // Before the window is shown, the bar counts as hidden; a device that is already present keeps its
        // text.
        if (windowVisible || _ui->label_progress->text() != gettingStatus())
            _ui->label_progress->setText(tr("Looking for ZV Tolvar", "Progress bar label"));
        _ui->connectionProgressBar->show();
    }
    return false;
}

int ConnectTlovarWizardPage::nextId() const
{
    return TolvarFoundPageId;
}
