#pragma once

#include <QWizard>

class console_dialog;
class ZVTolvar;

/// The program's window: the wizard with its pages, the device controller, and the console view.
///
/// A comment that begins with "kept:" marks behaviour that must not change; docs/compatibility.md lists it.
class ZVTolvarSetupWizard : public QWizard
{
    Q_OBJECT

public:
    explicit ZVTolvarSetupWizard(QWidget *parent = nullptr);

    /// The controller that every page uses.
    ZVTolvar *_tolvar;

public Q_SLOTS:
    /// kept: connected to nothing. finished() is connected to ZVTolvar::exitSetupMode() instead.
    void OnFinished(int result);
    /// Shows the console view; the wizard stays usable.
    void consoleButtonClicked();

protected:
    /// Grows the window if the page needs more space for its text (large fonts, a long path), up to the
    /// screen's size.
    bool event(QEvent *event) override;
    /// In right-to-left layouts, shows the image mirrored on the right; Qt would leave it on the left, under
    /// the page.
    void paintEvent(QPaintEvent *event) override;

private:
    void growToFitPage();
    void keepFocusOnPage();
    void setVisualTabOrder();

    console_dialog *_console;
};
