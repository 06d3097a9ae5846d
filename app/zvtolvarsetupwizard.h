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

protected:
    /// Grows the window when the page has more text than room (large letters, a long path), up to the
    /// screen's size.
    bool event(QEvent *event) override;
    /// Where one reads from the right, the picture stands mirrored at the right; the toolkit would leave it
    /// at the left, under the page.
    void paintEvent(QPaintEvent *event) override;

private:
    void giveTextItsRoom();
    void keepFocusOnPage();
    void tabAsTheEyeReads();

    console_dialog *_console;
};
