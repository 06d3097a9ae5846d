#include "app/console_dialog.h"

#include "ui_console_dialog.h"

console_dialog::console_dialog(QWidget *parent)
    : QDialog(parent)
    , _ui(std::make_unique<Ui_console_dialog>())
{
    _ui->setupUi(this);
}

console_dialog::~console_dialog() = default;

QTextBrowser *console_dialog::console_textBrowser() const
{
    return _ui->textBrowser_log_console;
}
