#include "pages/tolvarnotfoundwizardpage.h"

#include "ui_tolvarnotfoundwizardpage.h"

TolvarNotFoundWizardPage::TolvarNotFoundWizardPage(QWidget *parent)
    : QWizardPage(parent)
    , _ui(std::make_unique<Ui_TolvarNotFoundWizardPage>())
{
    _ui->setupUi(this);
}

TolvarNotFoundWizardPage::~TolvarNotFoundWizardPage() = default;
