#pragma once

#include <memory>

#include <QTimer>
#include <QWizardPage>

class Ui_TestNetworkWizardPage;

/// The last page: makes the device test the network, shows the verdict, and saves the configuration.
class TestNetworkWizardPage : public QWizardPage
{
    Q_OBJECT

public:
    explicit TestNetworkWizardPage(QWidget *parent = nullptr);
    ~TestNetworkWizardPage() override;

    /// Starts the test.
    void initializePage() override;
    /// Whether the configuration was saved since the test began. A verdict alone is not enough.
    bool isComplete() const override;
    /// Always -1, for the last page.
    int nextId() const override;

public Q_SLOTS:
    void onTestNetworkFound();
    void onTestPassphraseInvalid();
    void onTestSsidNotFound();
    void onTestSystemError();
    void onSaveNetworkConfig();

private:
    void offerSaveAnyway(const QString &verdict);
    void announceSave();
    void moveFocus(QWidget *next);

    std::unique_ptr<Ui_TestNetworkWizardPage> _ui;
    bool testInProgress = false;           // until a save; the verdicts do not change it
    QTimer _afterSave;                     // calls announceSave()
    const QWidget *_focusAtSave = nullptr; // never dereferenced
};
