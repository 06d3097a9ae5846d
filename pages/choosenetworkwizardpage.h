#pragma once

#include <memory>

#include <QHash>
#include <QModelIndex>
#include <QStringListModel>
#include <QWizardPage>

#include "device/zvscanresult.h"

class QItemSelection;
class Ui_ChooseNetworkWizardPage;
class ZVTolvar;

/// Lists the networks that the device finds, and takes the name and the passphrase of the one to join.
class ChooseNetworkWizardPage : public QWizardPage
{
    Q_OBJECT

public:
    explicit ChooseNetworkWizardPage(QWidget *parent = nullptr);
    /// Detaches the console view as well: nothing more is copied into it.
    ~ChooseNetworkWizardPage() override;

    /// Shows the controller's values and starts a scan.
    void initializePage() override;
    /// Whether there is a name and no scan is going on.
    bool isComplete() const override;
    /// The WEP warning page for a network that was found with WEP, else the test-network page. Hands the name
    /// and the passphrase to the controller each time it is asked.
    int nextId() const override;

    // The order of the slots and the names of their parameters are fixed: they are the meta-object's table.
public Q_SLOTS:
    void OnNetworkListDoubleClicked(QModelIndex ind);
    void OnNetworkListClicked(QModelIndex ind);
    /// kept: connected to nothing. The button asks the controller itself.
    void OnRefreshButtonClicked();
    /// Opens the advanced settings; firmware A059 and later only. kept: connected to nothing.
    void OnAdvancedButtonClicked();
    /// Opens the details of the network that is named in the name field.
    void OnViewDetailsButtonClicked();
    void onStartScan();
    void onFinishScan();
    void OnPasswordEditingFinished();
    void OnNetworkEditingFinished();
    void OnExternalAntennaClicked(bool);
    void OnNetworkNameChanged(QString name);
    /// kept: connected to nothing.
    void OnAntennaChanged(QString val);
    /// Rebuilds the list from the controller's table.
    void OnScannedNetworkListChanged(QHash<QString, ZVScanResult> *);

private:
    void connectEverything(ZVTolvar *tolvar);
    void onSelectionChanged(const QItemSelection &selected);
    void clearOtherSelection(const QString &network);
    QString shownAntenna() const;

    std::unique_ptr<Ui_ChooseNetworkWizardPage> _ui;
    QStringListModel _networks;
};
