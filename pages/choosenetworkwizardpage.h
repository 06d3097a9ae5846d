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

/// Lists the networks that the device finds, and takes the name and the passphrase of the network to join.
class ChooseNetworkWizardPage : public QWizardPage
{
    Q_OBJECT

public:
    explicit ChooseNetworkWizardPage(QWidget *parent = nullptr);
    /// Also detaches the console view: nothing more is copied to it.
    ~ChooseNetworkWizardPage() override;

    /// Shows the controller's values and starts a scan.
    void initializePage() override;
    /// Whether there is a name and no scan is in progress.
    bool isComplete() const override;
    /// The WEP warning page for a network that was found with WEP, otherwise the test-network page. Passes
    /// the name and the passphrase to the controller on each call.
    int nextId() const override;

    // The order of the slots and the names of their parameters are fixed: they are part of the meta-object.
public Q_SLOTS:
    void OnNetworkListDoubleClicked(QModelIndex ind);
    void OnNetworkListClicked(QModelIndex ind);
    /// kept: connected to nothing. The button is connected to ZVTolvar::startScan() instead.
    void OnRefreshButtonClicked();
    /// Opens the advanced settings; firmware A059 and later only. kept: connected to nothing.
    void OnAdvancedButtonClicked();
    /// Opens the details of the network in the name field.
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
