#include "pages/wepwarningwizardpage.h"

#include "pages/pageid.h"
#include "ui_wepwarningwizardpage.h"

WEPWarningWizardPage::WEPWarningWizardPage(QWidget *parent)
    : QWizardPage(parent)
    , _ui(std::make_unique<Ui_WEPWarningWizardPage>())
{
    // kept: the link opens nothing; it only shows the address.
    _ui->setupUi(this);
}

WEPWarningWizardPage::~WEPWarningWizardPage() = default;

int WEPWarningWizardPage::nextId() const
{
    return TestNetworkPageId;
}
