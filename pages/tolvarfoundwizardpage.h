#pragma once

#include <memory>

#include <QString>
#include <QWizardPage>

class Ui_TolvarFoundWizardPage;

/// Shows what the device has told about itself, and saves its log to a file.
class TolvarFoundWizardPage : public QWizardPage
{
    Q_OBJECT

public:
    explicit TolvarFoundWizardPage(QWidget *parent = nullptr);
    ~TolvarFoundWizardPage() override;

    /// Shows the device's values and follows their changes from here on.
    void initializePage() override;
    /// Always the choose-network page.
    int nextId() const override;

public Q_SLOTS:
    void OnAntennaChanged(QString);
    void onIpAddressChanged(QString);
    /// Asks for a file and has the device's log written to it; firmware A060 and later only.
    void onViewLogClicked();
    void onStartLogWrite();
    void onFinishLogWrite();

private:
    void saveLog();
    void disableLogButton();

    std::unique_ptr<Ui_TolvarFoundWizardPage> _ui;
    QString _logFileName; // what the next save dialog starts from; empty for the dated default
};
