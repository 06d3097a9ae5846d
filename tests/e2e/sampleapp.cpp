// A wizard with one of each widget of the real wizard, to test the program driver with.
//
//   sampleapp [--busy]      --busy: block the event loop for 400 ms again and again, as a serial line does
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QStringListModel>
#include <QTextBrowser>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>
#include <QWizard>
#include <QWizardPage>

#include <cstdio>

namespace
{

/// Reports to the test, on standard output, what really happened.
void say(const QString &text)
{
    std::printf("%s\n", text.toUtf8().constData());
    std::fflush(stdout);
}

class SampleWizard : public QWizard
{
public:
    SampleWizard();

private:
    QWizardPage *listPage();
    QWizardPage *fieldsPage();
    void addButtons(QBoxLayout *layout);
    void addFields(QBoxLayout *layout);
    void openDetails();

    QDialog *_console;
    QTextBrowser *_log;
};

SampleWizard::SampleWizard()
    : _console(new QDialog(this))
    , _log(new QTextBrowser(_console))
{
    setWindowTitle("Sample Wizard");
    setWizardStyle(MacStyle);
    setOptions(IgnoreSubTitles | NoDefaultButton | NoBackButtonOnStartPage | CancelButtonOnLeft |
               HaveCustomButton1);
    setButtonText(CustomButton1, "&Console");
    setMinimumSize(750, 580);
    addPage(listPage());
    addPage(fieldsPage());

    _console->setWindowTitle("Sample Console");
    _console->resize(613, 278);
    (new QVBoxLayout(_console))->addWidget(_log);
    _log->append("first line\n\nlast <line>");
    connect(this, &QWizard::customButtonClicked, _console, &QWidget::show);
}

QWizardPage *SampleWizard::listPage()
{
    auto *page = new QWizardPage;
    page->setTitle("Networks");
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(new QLabel("Found Networks:"));
    layout->addWidget(new QLabel("A label with a trailing blank. "));
    layout->addWidget(new QLabel("First line & second\nline with \"quotes\" and  two blanks"));
    auto *patch = new QLabel("patch");
    patch->setStyleSheet("background: rgb(1, 200, 99); color: rgb(1, 200, 99);");
    layout->addWidget(patch);
    auto *list = new QListView;
    list->setObjectName("networkListView");
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setWrapping(true);
    list->setWordWrap(true);
    QStringList names = {"alpha", "beta", "two  blanks", "Caf\u00e9 & Bar"};
    for (int i = 1; i <= 120; ++i)
        names << QString("network number %1").arg(i);
    list->setModel(new QStringListModel(names, list));
    connect(list, &QListView::clicked, [](const QModelIndex &i) { say("clicked " + i.data().toString()); });
    connect(list, &QListView::doubleClicked,
            [](const QModelIndex &i) { say("double-clicked " + i.data().toString()); });
    layout->addWidget(list);
    addButtons(layout);
    auto *progress = new QProgressBar;
    progress->setMaximum(0);
    progress->setValue(-1);
    layout->addWidget(progress);
    return page;
}

void SampleWizard::addButtons(QBoxLayout *layout)
{
    auto *row = new QHBoxLayout;
    auto *status = new QLabel("idle");
    status->setObjectName("label_status");
    auto *refresh = new QPushButton("Look for Networks...");
    connect(refresh, &QPushButton::clicked, this, [this, status] {
        // The search lasts until the second click, however long that takes, and a little longer.
        if (status->text() == QLatin1String("looking"))
            QTimer::singleShot(300, this, [status] { status->setText("found & done"); });
        status->setText("looking");
    });
    auto *details = new QPushButton("View Details...");
    connect(details, &QPushButton::clicked, this, &SampleWizard::openDetails);
    auto *save = new QPushButton("Save Log");
    connect(save, &QPushButton::clicked, this, [this, status] {
        status->setText("saved " + QFileDialog::getSaveFileName(this, "Save the Log", "start.txt"));
    });
    auto *ask = new QPushButton("Ask");
    connect(ask, &QPushButton::clicked, this, [this, status] {
        const auto answer = QMessageBox::question(this, "Question", "Is \"this\" it?\nReally?");
        status->setText(answer == QMessageBox::Yes ? "answered yes" : "answered no");
    });
    auto *never = new QPushButton("Never");
    never->setEnabled(false);
    for (QWidget *widget : std::initializer_list<QWidget *>{status, refresh, details, save, ask, never})
        row->addWidget(widget);
    layout->addLayout(row);
}

QWizardPage *SampleWizard::fieldsPage()
{
    auto *page = new QWizardPage;
    page->setTitle("Fields");
    auto *layout = new QVBoxLayout(page);
    addFields(layout);
    auto *antenna = new QCheckBox("Use External Antenna");
    antenna->setChecked(true);
    antenna->setEnabled(false);
    layout->addWidget(antenna);
    auto *other = new QCheckBox("Use static IP address:");
    connect(other, &QCheckBox::toggled, [](bool on) { say(on ? "checked" : "unchecked"); });
    layout->addWidget(other);
    auto *hidden = new QProgressBar;
    hidden->hide();
    layout->addWidget(hidden);
    layout->addStretch();
    return page;
}

void SampleWizard::addFields(QBoxLayout *layout)
{
    auto *network = new QLineEdit;
    network->setObjectName("input_NetworkName");
    auto *passphrase = new QLineEdit;
    passphrase->setObjectName("input_Password");
    connect(network, &QLineEdit::editingFinished, [=] { say("network <" + network->text() + ">"); });
    connect(passphrase, &QLineEdit::editingFinished, [=] { say("passphrase <" + passphrase->text() + ">"); });
    layout->addWidget(new QLabel("Network"));
    layout->addWidget(network);
    layout->addWidget(new QLabel("Passphrase"));
    layout->addWidget(passphrase);
}

void SampleWizard::openDetails()
{
    QDialog details(this);
    details.setWindowTitle("Details");
    auto *layout = new QVBoxLayout(&details);
    auto *form = new QFormLayout;
    form->setWidget(0, QFormLayout::LabelRole, new QLabel("Join Network:"));
    auto *network = new QLineEdit("alpha");
    form->setWidget(0, QFormLayout::FieldRole, network);
    form->setWidget(1, QFormLayout::LabelRole, new QLabel("Channel:"));
    form->setWidget(1, QFormLayout::FieldRole, new QLabel("11"));
    form->setWidget(2, QFormLayout::LabelRole, new QLabel("WPS: "));
    form->setWidget(2, QFormLayout::FieldRole, new QLabel);
    layout->addLayout(form);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, &details, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, &details, &QDialog::reject);
    layout->addWidget(buttons);
    say(details.exec() == QDialog::Accepted ? "details accepted " + network->text() : "details rejected");
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    SampleWizard wizard;
    QTimer busy;
    busy.setSingleShot(true);
    QObject::connect(&busy, &QTimer::timeout, [&busy] {
        QThread::msleep(400);
        busy.start(100);
    });
    if (QApplication::arguments().contains("--busy"))
        busy.start(100);
    std::fprintf(stderr, "home %s\nfolder %s\nword %s\ndevice %s\n", qPrintable(QDir::homePath()),
                 qPrintable(QDir::currentPath()), qgetenv("SAMPLEAPP_WORD").constData(),
                 QDir("/sys/devices/sample").exists() ? "yes" : "no");
    wizard.show();
    const int result = QApplication::exec();
    say(QString("ended with %1").arg(wizard.result()));
    return result == 0 && wizard.result() == QDialog::Accepted ? 0 : 3;
}
