#pragma once

#include <memory>

#include <QWizardPage>

class Ui_TolvarNotFoundWizardPage;

/// Reports that no device was detected. kept: no page leads here; the connect page waits instead.
class TolvarNotFoundWizardPage : public QWizardPage
{
    Q_OBJECT

public:
    explicit TolvarNotFoundWizardPage(QWidget *parent = nullptr);
    ~TolvarNotFoundWizardPage() override;

private:
    std::unique_ptr<Ui_TolvarNotFoundWizardPage> _ui;
};
