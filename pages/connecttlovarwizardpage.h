#pragma once

#include <memory>

#include <QWizardPage>

class Ui_ConnectTlovarWizardPage;

/// The first page: asks the user to plug in a device and waits until the device has reported its system ID.
class ConnectTlovarWizardPage : public QWizardPage
{
    Q_OBJECT

public:
    explicit ConnectTlovarWizardPage(QWidget *parent = nullptr);
    ~ConnectTlovarWizardPage() override;

    /// Starts the search for the device.
    void initializePage() override;
    /// Whether the device has reported its system ID. Also updates the page's label and progress bar.
    bool isComplete() const override;
    /// kept: always the device-found page, never the device-not-found page.
    int nextId() const override;

public Q_SLOTS:
    void onSystemIDChanged(QString sysID);
    void onCandidateDeviceFound();

private:
    static QString gettingStatus();

    std::unique_ptr<Ui_ConnectTlovarWizardPage> _ui;
};
