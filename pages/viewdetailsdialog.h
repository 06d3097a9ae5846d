#pragma once

#include <memory>

#include <QDialog>

class Ui_ViewDetailsDialog;
struct ZVScanResult;

/// Shows what the device reported about one network.
class ViewDetailsDialog : public QDialog
{
    Q_OBJECT

public:
    /// Copies \a network's texts unchanged; the record is not needed afterwards.
    explicit ViewDetailsDialog(ZVScanResult *network, QWidget *parent = nullptr);
    ~ViewDetailsDialog() override;

private:
    std::unique_ptr<Ui_ViewDetailsDialog> _ui;
};
