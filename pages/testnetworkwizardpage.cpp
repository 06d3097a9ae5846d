#include "pages/testnetworkwizardpage.h"

#include <chrono>

#include <QAbstractButton>
#include <QWizard>

#include "device/zvtolvar.h"
#include "pages/announcement.h"
#include "pages/plaintextlabels.h"
#include "pages/waitcursor.h"
#include "pages/wizardcontroller.h"
#include "ui_testnetworkwizardpage.h"

namespace
{
using namespace std::chrono_literals;

// A key that was pressed during the save arrives after it. It is still meant for the save button: on Done, it
// would end the wizard unnoticed.
constexpr auto InputDelay = 100ms;
} // namespace

TestNetworkWizardPage::TestNetworkWizardPage(QWidget *parent)
    : QWizardPage(parent)
    , _ui(std::make_unique<Ui_TestNetworkWizardPage>())
    , _afterSave(this)
{
    _ui->setupUi(this);
    setPlainText({_ui->label}); // it contains the network's name
    _afterSave.setSingleShot(true);
    _afterSave.setInterval(InputDelay);
    connect(&_afterSave, &QTimer::timeout, this, &TestNetworkWizardPage::announceSave);
}

TestNetworkWizardPage::~TestNetworkWizardPage() = default;

int TestNetworkWizardPage::nextId() const
{
    return -1;
}

bool TestNetworkWizardPage::isComplete() const
{
    return !testInProgress;
}

void TestNetworkWizardPage::initializePage()
{
    ZVTolvar *tolvar = wizardController(this);
    const QString waiting =
        tr("Please wait while ZV Tolvar tests the connection to network: %1\n").arg(tolvar->network());

    connect(tolvar, &ZVTolvar::networkTestFound, this, &TestNetworkWizardPage::onTestNetworkFound);
    connect(tolvar, &ZVTolvar::networkTestPassphraseInvalid, this,
            &TestNetworkWizardPage::onTestPassphraseInvalid);
    connect(tolvar, &ZVTolvar::networkTestSsidNotFound, this, &TestNetworkWizardPage::onTestSsidNotFound);
    connect(tolvar, &ZVTolvar::networkTestSystemError, this, &TestNetworkWizardPage::onTestSystemError);
    connect(_ui->pushButton, &QPushButton::released, this, &TestNetworkWizardPage::onSaveNetworkConfig);

    _ui->pushButton->setEnabled(false);
    _ui->progressBar->show();
    _ui->label->setText(waiting);
    testInProgress = true;
    _afterSave.stop(); // started by a save just before the user went back
    showWaitCursor();
    tolvar->startNetworkTest();
}

void TestNetworkWizardPage::onTestNetworkFound()
{
    const Announcement announcement(_ui->label);
    _ui->label->setText(tr("Successfully tested connection to network\n", "Progress Text"));
    _ui->pushButton->setEnabled(true);
    _ui->pushButton->setText(tr("Save network configuration", "push button text"));
    _ui->progressBar->hide();
    moveFocus(_ui->pushButton);
}

void TestNetworkWizardPage::onTestPassphraseInvalid()
{
    offerSaveAnyway(tr("The network was found, but the passphrase was invalid\n", "Progress Text"));
}

void TestNetworkWizardPage::onTestSsidNotFound()
{
    offerSaveAnyway(tr("The network was not found\n", "Progress Text"));
}

void TestNetworkWizardPage::offerSaveAnyway(const QString &verdict)
{
    const Announcement announcement(_ui->label);
    _ui->label->setText(verdict);
    _ui->pushButton->setText(tr("Save network configuration anyway?", "push button text"));
    _ui->pushButton->setEnabled(true);
    _ui->progressBar->hide();
    moveFocus(wizard()->button(QWizard::BackButton));
}

void TestNetworkWizardPage::onTestSystemError()
{
    const Announcement announcement(_ui->label);
    _ui->label->setText(tr("There was an unexpected system error. Please power off and then power on the "
                           "Tolvar and restart this utility\n",
                           "Progress Text"));
    _ui->progressBar->hide();
}

void TestNetworkWizardPage::onSaveNetworkConfig()
{
    showWaitCursor();
    wizardController(this)->saveNetworkConfig();
    _ui->label->setText(tr("Configuration saved\n", "Progress Text"));
    testInProgress = false;
    Q_EMIT completeChanged();
    _focusAtSave = wizard()->focusWidget();
    _afterSave.start();
}

// Moves the focus to Done and announces the save. Does nothing if the device was unplugged in the meantime,
// perhaps during the save.
void TestNetworkWizardPage::announceSave()
{
    if (wizardController(this)->isGone())
        return;
    if (wizard()->focusWidget() == _focusAtSave) // the user has not moved it in the meantime
        moveFocus(wizard()->button(QWizard::FinishButton));
    announce(_ui->label);
}

// A verdict may arrive after the user has gone back, while the user is typing.
void TestNetworkWizardPage::moveFocus(QWidget *next)
{
    if (isVisible())
        next->setFocus();
}
