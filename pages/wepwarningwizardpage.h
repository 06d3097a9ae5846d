#pragma once

#include <memory>

#include <QWizardPage>

class Ui_WEPWarningWizardPage;

/// Warns against WEP before the test; the user may continue anyway.
class WEPWarningWizardPage : public QWizardPage
{
    Q_OBJECT

public:
    explicit WEPWarningWizardPage(QWidget *parent = nullptr);
    ~WEPWarningWizardPage() override;

    /// Always the test-network page.
    int nextId() const override;

private:
    std::unique_ptr<Ui_WEPWarningWizardPage> _ui;
};
