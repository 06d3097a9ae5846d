#pragma once

#include <memory>

#include <QString>
#include <QWizardPage>

class Ui_TolvarFoundWizardPage;

/// Shows what the device has reported about itself, and saves its log to a file.
class TolvarFoundWizardPage : public QWizardPage
{
    Q_OBJECT

public:
    explicit TolvarFoundWizardPage(QWidget *parent = nullptr);
    ~TolvarFoundWizardPage() override;

    /// Shows the device's values and, from now on, their changes.
    void initializePage() override;
    /// Always the choose-network page.
    int nextId() const override;

public Q_SLOTS:
    void OnAntennaChanged(QString);
    void onIpAddressChanged(QString);
    /// Asks for a file and requests the device's log into it; firmware A060 and later only.
    void onViewLogClicked();
    void onStartLogWrite();
    void onFinishLogWrite();

private:
    void saveLog();
    void disableLogButton();

    std::unique_ptr<Ui_TolvarFoundWizardPage> _ui;
    QString _logFileName; // where the next save dialog starts; empty for the dated default
};
