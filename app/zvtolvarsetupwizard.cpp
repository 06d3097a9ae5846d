#include "app/zvtolvarsetupwizard.h"

#include <QAbstractButton>
#include <QEvent>
#include <QLayout>
#include <QPainter>
#include <QTextBrowser>

#include "app/console_dialog.h"
#include "device/zvtolvar.h"
#include "messages/diagnostics.h"
#include "messages/sessionlog.h"
#include "pages/choosenetworkwizardpage.h"
#include "pages/connecttlovarwizardpage.h"
#include "pages/pageid.h"
#include "pages/screenfit.h"
#include "pages/testnetworkwizardpage.h"
#include "pages/tolvarfoundwizardpage.h"
#include "pages/tolvarnotfoundwizardpage.h"
#include "pages/wepwarningwizardpage.h"
#include "pages/wizardcontroller.h"

ZVTolvar *wizardController(const QWizardPage *page)
{
    // QWizardPage::wizard() is protected. It is called here for all pages, so that they do not depend on the
    // wizard window.
    struct Page : QWizardPage {
        using QWizardPage::wizard;
    };
    return static_cast<ZVTolvarSetupWizard *>((page->*(&Page::wizard))())->_tolvar;
}

ZVTolvarSetupWizard::ZVTolvarSetupWizard(QWidget *parent)
    : QWizard(parent)
{
    // kept: this first controller is replaced below and never used. It remains alive, and opens a device that
    // is plugged in later, as the second one does.
    _tolvar = new ZVTolvar(this);

    setWizardStyle(MacStyle);
    setWindowIcon(QPixmap(QStringLiteral(":/images/zv_setup.png"))); // kept: stays empty, as in main()
    if (objectName().isEmpty())
        setObjectName(QStringLiteral("ZVTolvarMainWindow"));
    setOptions(IgnoreSubTitles | ExtendedWatermarkPixmap | NoDefaultButton | NoBackButtonOnStartPage |
               CancelButtonOnLeft);
    setButtonText(CustomButton1, tr("&Console"));
    setOption(HaveCustomButton1);
    connect(this, &QWizard::customButtonClicked, this, &ZVTolvarSetupWizard::consoleButtonClicked);

    setPage(ConnectPageId, new ConnectTlovarWizardPage(this));
    setPage(TolvarFoundPageId, new TolvarFoundWizardPage(this));
    setPage(TolvarNotFoundPageId, new TolvarNotFoundWizardPage(this));
    setPage(ChooseNetworkPageId, new ChooseNetworkWizardPage(this));
    setPage(TestNetworkPageId, new TestNetworkWizardPage(this));
    setPage(WEPWarningPageId, new WEPWarningWizardPage(this));

    for (const WizardPixmap role : {BannerPixmap, BackgroundPixmap, WatermarkPixmap})
        setPixmap(role, QPixmap(QStringLiteral(":/images/plus_small.png")));

    setWindowTitle(tr("ZV Tolvar Setup v2.3"));
    setMinimumSize(750, 580);
    adjustSize();
    setStartId(ConnectPageId);

    _tolvar = new ZVTolvar(this);
    connect(this, &QWizard::finished, _tolvar, &ZVTolvar::exitSetupMode);

    _console = new console_dialog(this);
    theConsoleWindow = _console->console_textBrowser();
    setVisualTabOrder();
    connect(this, &QWizard::currentIdChanged, this, &ZVTolvarSetupWizard::keepFocusOnPage);
    for (const int id : pageIds()) // after the wizard's own connections, which disable Continue
        connect(page(id), &QWizardPage::completeChanged, this, &ZVTolvarSetupWizard::keepFocusOnPage);
}

// Tab visits the buttons from left to right, as Mac style arranges them. Qt would begin in the middle.
void ZVTolvarSetupWizard::setVisualTabOrder()
{
    QWidget *previous = button(CustomButton1);
    for (const WizardButton next : {CancelButton, BackButton, NextButton, FinishButton}) {
        setTabOrder(previous, button(next));
        previous = button(next);
    }
}

// When Qt disables or hides a focused button, it finds no other widget for the focus, because the wizard
// hides its contents during the update. When the window is activated later, Qt would focus the Console
// button, and Enter would open the console view.
void ZVTolvarSetupWizard::keepFocusOnPage()
{
    const QWidget *focused = focusWidget();
    if (currentPage() && (!focused || !focused->isEnabled() || !focused->isVisibleTo(this)))
        currentPage()->setFocus();
}

bool ZVTolvarSetupWizard::event(QEvent *event)
{
    const bool isHandled = QWizard::event(event);
    if (event->type() == QEvent::LayoutRequest)
        growToFitPage();
    return isHandled;
}

// QWizard does not take the height of wrapped text into account.
void ZVTolvarSetupWizard::growToFitPage()
{
    const QWidget *contents = currentPage();
    if (!contents)
        return;
    while (contents->parentWidget() != this)
        contents = contents->parentWidget();
    const QSize largest = largestSize(*this);
    // The heights that layouts return include the preferred size of all spacers of the page.
    const QLayout *page = currentPage()->layout();
    const int spare = page->totalHeightForWidth(width()) - page->totalMinimumHeightForWidth(width());
    const QSize fitting = fittingSize(*contents->layout(), size(), largest + QSize(0, spare));
    resize(size().expandedTo(fitting.boundedTo(largest)));
}

void ZVTolvarSetupWizard::paintEvent(QPaintEvent *event)
{
    if (!isRightToLeft())
        return QWizard::paintEvent(event);
    const QPixmap background = pixmap(BackgroundPixmap).transformed(QTransform::fromScale(-1, 1));
    const QSize unused = size() - background.deviceIndependentSize().toSize();
    QPainter(this).drawPixmap(unused.width(), unused.height() / 2, background);
}

void ZVTolvarSetupWizard::consoleButtonClicked()
{
    _console->show();
}

void ZVTolvarSetupWizard::OnFinished(int)
{
    zvDebug() << "Exiting setup mode";
    _tolvar->exitSetupMode();
    theConsoleWindow = nullptr;
}
