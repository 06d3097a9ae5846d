#pragma once

#include <memory>

#include <QDialog>

class QTextBrowser;
class Ui_console_dialog;

/// The console view: a window with the program's warnings and errors. The device's raw output is logged as
/// warnings.
class console_dialog : public QDialog
{
    Q_OBJECT

public:
    explicit console_dialog(QWidget *parent = nullptr);
    ~console_dialog() override;

    /// The read-only text widget for the output.
    QTextBrowser *console_textBrowser() const;

private:
    std::unique_ptr<Ui_console_dialog> _ui;
};
