#include <QAbstractButton>
#include <QLabel>
#include <QLayout>
#include <QMetaMethod>
#include <QPainter>
#include <QResource>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTextBrowser>

#include "app/console_dialog.h"
#include "app/zvtolvarsetupwizard.h"
#include "messages/sessionlog.h"
#include "pages/choosenetworkwizardpage.h"
#include "pages/connecttlovarwizardpage.h"
#include "pages/testnetworkwizardpage.h"
#include "pages/tolvarfoundwizardpage.h"
#include "pages/tolvarnotfoundwizardpage.h"
#include "pages/wepwarningwizardpage.h"
#include "pages/wizardcontroller.h"
#include "tests/support/messagespy.h"
#include "tests/support/pseudotranslator.h"
#include "tests/support/zvtolvartestpeer.h"

/// Tests the wizard window: its pages, its two controllers and its console view.
class TestZVTolvarSetupWizard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Q_INIT_RESOURCE(Resources); }
    void init() { _wizard = std::make_unique<ZVTolvarSetupWizard>(); }
    void cleanup() { _wizard.reset(); }

    void thePagesHaveTheirIdsAndOrder();
    void theConnectPageStaysFirstWhenAPageIsAdded();
    void exactlyTheseOptionsAreSet();
    void theImageIsSetForThreeRoles();
    void theIconIsLookedForAmongTheImages();
    void theWindowHasItsNameAndSize();
    void theWindowGrowsWithTheTextOfItsPage_data();
    void theWindowGrowsWithTheTextOfItsPage();
    void theWindowGrowsWithALineThatIsNotWrapped();
    void theWindowGetsWiderOnceItIsAsHighAsTheScreen();
    void aWindowLargerThanTheScreenKeepsItsSize();
    void theWindowIsAsHighAsItsTextNeedsAtItsWidth();
    void theImageIsAtTheLeadingEdge_data();
    void theImageIsAtTheLeadingEdge();
    void aNameGivenByAParentIsKept();
    void theTextsAreTranslatedInTheWizardsContext();
    void thePagesUseTheSecondOfTwoControllers();
    void theConsoleButtonOpensOneConsole();
    void theHiddenConsoleCollectsMessages();
    void finishingQueuesExitOnTheSecondController_data();
    void finishingQueuesExitOnTheSecondController();
    void onFinishedLeavesSetupModeAndReleasesTheConsole();
    void theSlotsKeepTheirOrder();
    void theConsoleIsReleasedWithTheWizard();

private:
    /// The size of a window that fills the screen.
    QSize screenful() const;
    /// Adds a label to the current page: a line that is wider than the page, or a text that is wrapped.
    QLabel *addLine() const;
    QLabel *addText(int lines) const;
    /// Updates the layouts after a change, before anything is painted.
    static void layOut();
    QList<ZVTolvar *> controllers() const
    {
        return _wizard->findChildren<ZVTolvar *>(QString(), Qt::FindDirectChildrenOnly);
    }
    static QStringList queue(ZVTolvar *tolvar) { return ZVTolvarTestPeer{*tolvar}.queue(); }

    std::unique_ptr<ZVTolvarSetupWizard> _wizard;
};

QSize TestZVTolvarSetupWizard::screenful() const
{
    return _wizard->screen()->availableSize() - (_wizard->frameSize() - _wizard->size());
}

QLabel *TestZVTolvarSetupWizard::addLine() const
{
    auto *line = new QLabel;
    line->setFixedWidth(_wizard->currentPage()->width() + 20);
    _wizard->currentPage()->layout()->addWidget(line);
    line->show();
    return line;
}

QLabel *TestZVTolvarSetupWizard::addText(int lines) const
{
    auto *text =
        new QLabel(QString("word ").repeated(qsizetype{14} * lines)); // about 520 of the page's 530 pixels
    text->setWordWrap(true);
    _wizard->currentPage()->layout()->addWidget(text);
    text->show();
    return text;
}

void TestZVTolvarSetupWizard::layOut()
{
    for (int frames = 0; frames < 10; ++frames) // the page is in nested layouts, and each notifies the next
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
}

void TestZVTolvarSetupWizard::thePagesHaveTheirIdsAndOrder()
{
    QCOMPARE(_wizard->pageIds(), QList<int>({0, 1, 2, 3, 4, 6}));
    QVERIFY(qobject_cast<ConnectTlovarWizardPage *>(_wizard->page(0)));
    QVERIFY(qobject_cast<TolvarFoundWizardPage *>(_wizard->page(1)));
    QVERIFY(qobject_cast<TolvarNotFoundWizardPage *>(_wizard->page(2)));
    QVERIFY(qobject_cast<ChooseNetworkWizardPage *>(_wizard->page(3)));
    QVERIFY(qobject_cast<TestNetworkWizardPage *>(_wizard->page(4)));
    QVERIFY(qobject_cast<WEPWarningWizardPage *>(_wizard->page(6)));
    QList<QWizardPage *> inOrder;
    for (const int id : _wizard->pageIds())
        inOrder += _wizard->page(id);
    QCOMPARE(_wizard->findChildren<QWizardPage *>(), inOrder); // the order in which they were registered
}

void TestZVTolvarSetupWizard::theConnectPageStaysFirstWhenAPageIsAdded()
{
    _wizard->setPage(-2, new QWizardPage);
    QCOMPARE(_wizard->startId(), 0);
}

void TestZVTolvarSetupWizard::exactlyTheseOptionsAreSet()
{
    QCOMPARE(_wizard->options(), QWizard::IgnoreSubTitles | QWizard::ExtendedWatermarkPixmap |
                                     QWizard::NoDefaultButton | QWizard::NoBackButtonOnStartPage |
                                     QWizard::CancelButtonOnLeft | QWizard::HaveCustomButton1);
    QCOMPARE(_wizard->wizardStyle(), QWizard::MacStyle);
    QCOMPARE(_wizard->buttonText(QWizard::CustomButton1), QStringLiteral("&Console"));
}

void TestZVTolvarSetupWizard::theImageIsSetForThreeRoles()
{
    const QPixmap image(":/images/plus_small.png");
    QCOMPARE(image.size(), QSize(400, 382));
    for (const auto role : {QWizard::BannerPixmap, QWizard::BackgroundPixmap, QWizard::WatermarkPixmap})
        QCOMPARE(_wizard->pixmap(role).toImage(), image.toImage());
    QVERIFY(_wizard->pixmap(QWizard::LogoPixmap).isNull());
    QVERIFY2(_wizard->windowIcon().isNull(), "the window icon is not empty");
}

void TestZVTolvarSetupWizard::theIconIsLookedForAmongTheImages()
{
    QVERIFY(QResource::registerResource(ZV_ICON)); // contains ":/images/zv_setup.png"
    const ZVTolvarSetupWizard wizard;
    QVERIFY(QResource::unregisterResource(ZV_ICON));
    QVERIFY(!wizard.windowIcon().isNull());
}

void TestZVTolvarSetupWizard::theWindowHasItsNameAndSize()
{
    QCOMPARE(_wizard->objectName(), QStringLiteral("ZVTolvarMainWindow"));
    QCOMPARE(_wizard->minimumSize(), QSize(750, 580));
    QVERIFY2(_wizard->testAttribute(Qt::WA_Resized), "the window has no explicit size before it is shown");
    const QSize before = _wizard->size();
    _wizard->adjustSize();
    QCOMPARE(before, _wizard->size());
}

void TestZVTolvarSetupWizard::theWindowGrowsWithTheTextOfItsPage_data()
{
    QTest::addColumn<int>("lines");
    QTest::addColumn<bool>("isHigher");
    QTest::addColumn<bool>("isAll");
    QTest::newRow("text fits") << 3 << false << true;
    QTest::newRow("text larger than the page") << 20 << true << true;
    QTest::newRow("text larger than the screen") << 100 << true << false;
}

void TestZVTolvarSetupWizard::theWindowGrowsWithTheTextOfItsPage()
{
    QFETCH(int, lines);
    QFETCH(bool, isHigher);
    QFETCH(bool, isAll);
    _wizard->show();
    QCOMPARE(_wizard->size(), QSize(750, 580));
    const QLabel *label = addText(lines);
    if (isAll) {
        QTRY_VERIFY2(label->height() >= label->heightForWidth(label->width()),
                     "the text is not completely visible");
        QVERIFY2(_wizard->height() < screenful().height(), "the window is as high as the screen");
        QCOMPARE(_wizard->width(), 750);
    } else {
        QTRY_COMPARE(_wizard->size(), screenful());
    }
    QCOMPARE(_wizard->height() > 580, isHigher);
}

void TestZVTolvarSetupWizard::theWindowGrowsWithALineThatIsNotWrapped()
{
    _wizard->show();
    const QLabel *line = addLine();
    layOut();
    QVERIFY2(_wizard->width() > 750, "the window is not wider before the first paint event");
    QTRY_VERIFY2(_wizard->currentPage()->rect().contains(line->geometry()),
                 "the line is not completely visible");
    QCOMPARE(_wizard->height(), 580);
}

void TestZVTolvarSetupWizard::theWindowGetsWiderOnceItIsAsHighAsTheScreen()
{
    _wizard->show();
    QLabel *text = addText(1);
    _wizard->currentPage()->findChild<QLayout *>("verticalLayout")->addWidget(text); // among the spacers
    const int lineHeight = text->fontMetrics().height();
    int inPlaceOfSpacers = 0; // height of the text that is added while the window is as high as the screen
    for (int lines = 0; lines < 100 && _wizard->width() == 750; ++lines) {
        if (_wizard->height() == screenful().height())
            inPlaceOfSpacers += lineHeight;
        text->setText(text->text() + QString("word ").repeated(14)); // most of a line
        layOut();
    }
    constexpr int spacers = 4 * 40; // as in the form
    QVERIFY2(inPlaceOfSpacers > spacers - 2 * lineHeight, "the window gets wider while spacers have space");
    QVERIFY2(_wizard->width() > 750, "the window is not wider");
    QVERIFY2(_wizard->height() > screenful().height() - 2 * lineHeight,
             "the window is not as high as the screen");
    QVERIFY2(_wizard->height() <= screenful().height(), "the window is higher than the screen");
    QTRY_VERIFY2(text->height() >= text->heightForWidth(text->width()), "the text is not completely visible");
}

void TestZVTolvarSetupWizard::aWindowLargerThanTheScreenKeepsItsSize()
{
    const QSize size = screenful() + QSize(50, 50);
    _wizard->resize(size);
    _wizard->show();
    addText(3);
    layOut();
    QCOMPARE(_wizard->size(), size);
}

void TestZVTolvarSetupWizard::theWindowIsAsHighAsItsTextNeedsAtItsWidth()
{
    _wizard->show();
    addLine();
    layOut();
    QVERIFY2(_wizard->width() > 750, "the line does not make the window wider");
    addText(30);
    layOut();
    const QSize oneAfterTheOther = _wizard->size();
    QVERIFY2(oneAfterTheOther.height() > 580, "the text does not make the window higher");

    _wizard = std::make_unique<ZVTolvarSetupWizard>();
    _wizard->show();
    addLine();
    addText(30);
    layOut();
    QCOMPARE(_wizard->size(), oneAfterTheOther);
}

void TestZVTolvarSetupWizard::theImageIsAtTheLeadingEdge_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("left to right") << Qt::LeftToRight;
    QTest::newRow("right to left") << Qt::RightToLeft;
}

void TestZVTolvarSetupWizard::theImageIsAtTheLeadingEdge()
{
    QFETCH(Qt::LayoutDirection, direction);
    _wizard->setLayoutDirection(direction);
    _wizard->resize(900, 701); // larger than necessary
    QPixmap plain(4, 4); // black on the left, white on the right, so that a mirrored image is recognisable
    plain.fill(Qt::white);
    QPainter(&plain).fillRect(0, 0, 2, 4, Qt::black);
    _wizard->setPixmap(QWizard::BackgroundPixmap, plain);
    _wizard->show();
    for (QWidget *child : _wizard->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        child->hide();

    const QImage window = _wizard->grab().toImage();
    QRect black;
    QRect white;
    for (int y = 0; y < window.height(); ++y)
        for (int x = 0; x < window.width(); ++x)
            if (window.pixelColor(x, y) == Qt::black)
                black |= QRect(x, y, 1, 1);
            else if (window.pixelColor(x, y) == Qt::white)
                white |= QRect(x, y, 1, 1);
    const bool fromLeft = direction == Qt::LeftToRight;
    QCOMPARE(black, QRect(fromLeft ? 0 : 898, 348, 2, 4)); // half of the 697 pixels that are free above
    QCOMPARE(white, QRect(fromLeft ? 2 : 896, 348, 2, 4));
}

void TestZVTolvarSetupWizard::aNameGivenByAParentIsKept()
{
    class NamingParent : public QWidget
    {
    protected:
        void childEvent(QChildEvent *event) override
        {
            if (event->added())
                event->child()->setObjectName(QStringLiteral("named by its parent"));
        }
    };
    NamingParent parent;
    const ZVTolvarSetupWizard wizard(&parent);
    QCOMPARE(wizard.objectName(), QStringLiteral("named by its parent"));
    QCOMPARE(wizard.parentWidget(), &parent);
}

void TestZVTolvarSetupWizard::theTextsAreTranslatedInTheWizardsContext()
{
    const PseudoTranslator translator;
    const ZVTolvarSetupWizard wizard;
    QCOMPARE(wizard.windowTitle(), QStringLiteral("ZVTolvarSetupWizard||ZV Tolvar Setup v2.3"));
    QCOMPARE(wizard.buttonText(QWizard::CustomButton1), QStringLiteral("ZVTolvarSetupWizard||&Console"));
    QCOMPARE(wizard.findChild<console_dialog *>()->windowTitle(),
             QStringLiteral("console_dialog||Console Log"));
}

void TestZVTolvarSetupWizard::thePagesUseTheSecondOfTwoControllers()
{
    QCOMPARE(controllers().size(), 2);
    QCOMPARE(_wizard->_tolvar, controllers().at(1));
    for (const int id : _wizard->pageIds())
        QCOMPARE(wizardController(_wizard->page(id)), controllers().at(1));
}

void TestZVTolvarSetupWizard::theConsoleButtonOpensOneConsole()
{
    auto *console = _wizard->findChild<console_dialog *>();
    _wizard->show();
    QVERIFY(!console->isVisible());
    _wizard->button(QWizard::CustomButton1)->click();
    QVERIFY(console->isVisible());
    QVERIFY2(!console->isModal() && _wizard->isEnabled(), "the console blocks the wizard");
    _wizard->button(QWizard::CustomButton1)->click();
    QCOMPARE(_wizard->findChildren<console_dialog *>().size(), 1);
    QVERIFY(console->isVisible());
    console->close();
    Q_EMIT _wizard->customButtonClicked(QWizard::CustomButton3);
    QVERIFY2(console->isVisible(), "the custom button does not reopen the console");
}

void TestZVTolvarSetupWizard::theHiddenConsoleCollectsMessages()
{
    auto *console = _wizard->findChild<console_dialog *>();
    QCOMPARE(theConsoleWindow, console->console_textBrowser());
    zvMessageOutput(QtWarningMsg, "abc");
    zvMessageOutput(QtDebugMsg, "def");
    QCOMPARE(console->console_textBrowser()->toPlainText(), QStringLiteral("abc"));
}

void TestZVTolvarSetupWizard::finishingQueuesExitOnTheSecondController_data()
{
    QTest::addColumn<bool>("cancel");
    QTest::newRow("Finish") << false;
    QTest::newRow("Cancel") << true;
}

void TestZVTolvarSetupWizard::finishingQueuesExitOnTheSecondController()
{
    QFETCH(bool, cancel);
    MessageSpy log;
    _wizard->show();
    QSignalSpy finished(_wizard.get(), &QWizard::finished);
    log.take();
    if (cancel)
        _wizard->button(QWizard::CancelButton)->click();
    else
        _wizard->accept();
    QCOMPARE(finished.count(), 1);
    QCOMPARE(queue(controllers().at(0)), QStringList());
    QCOMPARE(queue(controllers().at(1)), QStringList{"exit\r\n"});
    QVERIFY2(!log.messages().contains("D:Exiting setup mode "), "the exit was logged by an unconnected slot");
    QVERIFY2(theConsoleWindow, "the console was released");
}

void TestZVTolvarSetupWizard::onFinishedLeavesSetupModeAndReleasesTheConsole()
{
    MessageSpy log;
    QVERIFY(QMetaObject::invokeMethod(_wizard.get(), "OnFinished", Q_ARG(int, 1)));
    QCOMPARE(log.messages(), QStringList({"D:Exiting setup mode ", "D:_commState =  \"NOT_CONNECTED\" "}));
    QCOMPARE(queue(_wizard->_tolvar), QStringList{"exit\r\n"});
    QCOMPARE(theConsoleWindow, nullptr);
}

void TestZVTolvarSetupWizard::theSlotsKeepTheirOrder()
{
    const QMetaObject &meta = ZVTolvarSetupWizard::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 2);
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    const QMetaMethod onFinished = meta.method(meta.methodOffset());
    QCOMPARE(onFinished.methodSignature(), QByteArray("OnFinished(int)"));
    QCOMPARE(meta.method(meta.methodOffset() + 1).methodSignature(), QByteArray("consoleButtonClicked()"));
}

void TestZVTolvarSetupWizard::theConsoleIsReleasedWithTheWizard()
{
    _wizard.reset();
    QCOMPARE(theConsoleWindow, nullptr);
}

QTEST_MAIN(TestZVTolvarSetupWizard)
#include "tst_zvtolvarsetupwizard.moc"
