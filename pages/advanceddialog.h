#pragma once

#include <memory>

#include <QDialog>

class Ui_AdvancedDialog;
class ZVTolvar;

/// Edits the less common settings. OK passes them to the controller. The next save sends them to the device,
/// except the syslog settings, for which no command is known.
class AdvancedDialog : public QDialog
{
    Q_OBJECT

public:
    /// Shows the values of \a controller, which outlives the dialog.
    explicit AdvancedDialog(ZVTolvar *controller, QWidget *parent = nullptr);
    ~AdvancedDialog() override;

public Q_SLOTS:
    void OnAccepted();

private:
    void showValues();

    std::unique_ptr<Ui_AdvancedDialog> _ui;
    ZVTolvar *_controller;
};
