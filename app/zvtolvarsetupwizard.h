#pragma once

#include <QWizard>

class console_dialog;
class ZVTolvar;

/// The program's window: the wizard with its pages, the device controller behind them, and the console view.
class ZVTolvarSetupWizard : public QWizard
{
    Q_OBJECT

public:
    explicit ZVTolvarSetupWizard(QWidget *parent = nullptr);

    /// The controller that every page uses.
    ZVTolvar *_tolvar;

public Q_SLOTS:
    /// kept: connected to nothing. The wizard's end goes to the controller directly.
    void OnFinished(int result);
    /// Shows the console view; the wizard stays usable.
    void consoleButtonClicked();

private:
    void tabAsTheEyeReads();

    console_dialog *_console;
};
