#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "pages/pageid.h"
#include "tests/support/wizardfixture.h"

namespace
{
/// The events recorded so far. They are global because an update handler is a plain function.
QStringList &recorded()
{
    static QStringList texts;
    return texts;
}

/// Records what the program announces, and which button gets the focus.
void note(QAccessibleEvent *event)
{
    const auto *button = qobject_cast<QPushButton *>(event->object());
    if (event->type() == QAccessible::Focus && button)
        recorded() << "focus: " + button->text();
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    if (event->type() == QAccessible::Announcement)
        recorded() << static_cast<QAccessibleAnnouncementEvent *>(event)->message();
#else
    if (event->type() == QAccessible::Alert)
        recorded() << qobject_cast<QLabel *>(event->object())->text();
#endif
}

constexpr QLatin1String found("***** A Tolvar has been found *****");
constexpr QLatin1String success("Successfully tested connection to network\n");
constexpr QLatin1String saved("Configuration saved\n");
} // namespace

/// Tests which widget has the keyboard focus, and what the pages announce to a screen reader, page by page
/// and state by state.
class TestPageFocus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void thePageHasTheFocusUntilADeviceIsFound();
    void continueHasTheFocusWhenADeviceIsFound();
    void thePageTakesTheFocusBackWhenTheDeviceIsGone();
    void aButtonThatTheUserWentToKeepsTheFocusWhenTheDeviceIsGone();
    void aDeviceFoundOnAnotherPageIsIgnored();
    void thePageHasTheFocusAfterGoingBackWithoutADevice();
    void theLogButtonGetsTheFocusBack();
    void aFinishedLogTakesNoFocusFromAnotherButton();
    void theListHasTheFocusWhileTheFirstScanRuns();
    void anotherScanMovesTheFocusToTheList_data();
    void anotherScanMovesTheFocusToTheList();
    void anUnplugMovesTheFocusFromContinueToThePage();
    void aScanTakesNoFocusFromTheFields();
    void aVerdictIsAnnouncedAfterTheFocus_data();
    void aVerdictIsAnnouncedAfterTheFocus();
    void aVerdictOnAnotherPageIsIgnored();
    void afterASecondEntryEverythingIsAnnouncedOnce();
    void aSaveTakesNoFocusThatTheUserHasMoved();
    void aSaveOfADeviceThatIsGoneIsIgnored();
    void aTestRightAfterASaveKeepsTheFocusOnThePage();

private:
    /// Returns what has the focus: "the page", a button's text or another widget's object name.
    QString focus() const
    {
        const QWidget *widget = _f->wizard.focusWidget();
        if (!widget || !widget->isVisible() || !widget->isEnabled())
            return QStringLiteral("nothing that can have it");
        if (widget == _f->wizard.currentPage())
            return QStringLiteral("the page");
        const auto *button = qobject_cast<const QAbstractButton *>(widget);
        return button ? button->text() : widget->objectName();
    }
    void moveFocusTo(QWizard::WizardButton button) const { _f->wizard.button(button)->setFocus(); }
    void reportDevice() const
    {
        _f->status("<name>TOLVAR-1</name><firmware_version>A060</firmware_version>");
    }
    void call(const char *slot) const { QVERIFY(QMetaObject::invokeMethod(_f->wizard.currentPage(), slot)); }
    /// The timer during which the test page waits for keys that were pressed during a save.
    const QTimer *saveTimer() const
    {
        return _f->wizard.page(TestNetworkPageId)->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    }
    bool isSaving() const { return saveTimer()->isActive(); }
    /// Tests successfully and saves.
    void testAndSave() const
    {
        _f->goTo(TestNetworkPageId);
        _f->finishTest("0");
        _f->widget<QPushButton>("pushButton")->click();
        QCOMPARE(focus(), QStringLiteral("Save network configuration"));
        QVERIFY(isSaving());
        QCOMPARE(saveTimer()->interval(), 100);
        takeRecorded();
    }
    static QStringList takeRecorded() { return std::exchange(recorded(), {}); }

    std::unique_ptr<WizardFixture> _f;
    QAccessible::UpdateHandler _previous = nullptr;
};

void TestPageFocus::init()
{
    _f = std::make_unique<WizardFixture>();
    recorded().clear();
    QTRY_VERIFY(QAccessible::isActive());
    _previous = QAccessible::installUpdateHandler(note);
}

void TestPageFocus::cleanup()
{
    QAccessible::installUpdateHandler(_previous);
    _f.reset();
}

void TestPageFocus::thePageHasTheFocusUntilADeviceIsFound()
{
    QCOMPARE(focus(), QStringLiteral("the page"));
    call("onCandidateDeviceFound");
    QCOMPARE(focus(), QStringLiteral("the page"));
}

void TestPageFocus::continueHasTheFocusWhenADeviceIsFound()
{
    moveFocusTo(QWizard::CustomButton1);
    takeRecorded();
    reportDevice();
    QCOMPARE(focus(), QStringLiteral("Continue"));
    QCOMPARE(takeRecorded(), QStringList({"focus: Continue", found}));
    reportDevice();
    QCOMPARE(takeRecorded(), QStringList());
}

void TestPageFocus::thePageTakesTheFocusBackWhenTheDeviceIsGone()
{
    reportDevice();
    takeRecorded();
    _f->tolvar.onDeviceRemoved({});
    Q_EMIT _f->tolvar.candidateDeviceFound();
    _f->tolvar.onDeviceRemoved({});
    QCOMPARE(focus(), QStringLiteral("the page"));
    QCOMPARE(takeRecorded().filter("Tolvar"), QStringList()); // neither the search nor a device
    reportDevice();
    QCOMPARE(takeRecorded(), QStringList({"focus: Continue", found}));
}

void TestPageFocus::aButtonThatTheUserWentToKeepsTheFocusWhenTheDeviceIsGone()
{
    reportDevice();
    moveFocusTo(QWizard::CancelButton);
    _f->tolvar.onDeviceRemoved({});
    QCOMPARE(focus(), QStringLiteral("Cancel"));
}

void TestPageFocus::aDeviceFoundOnAnotherPageIsIgnored()
{
    _f->goTo(TolvarFoundPageId);
    moveFocusTo(QWizard::BackButton);
    takeRecorded();
    _f->tolvar.onDeviceRemoved({});
    reportDevice();
    QCOMPARE(focus(), QStringLiteral("Go Back"));
    QCOMPARE(takeRecorded(), QStringList());
}

void TestPageFocus::thePageHasTheFocusAfterGoingBackWithoutADevice()
{
    _f->goTo(TolvarFoundPageId);
    _f->tolvar.onDeviceRemoved({});
    moveFocusTo(QWizard::BackButton);
    _f->wizard.back();
    QCOMPARE(focus(), QStringLiteral("the page"));
}

void TestPageFocus::theLogButtonGetsTheFocusBack()
{
    _f->goTo(TolvarFoundPageId);
    _f->goBackAndEnterAgain();
    _f->widget<QPushButton>("pushButton_viewLog")->setFocus();
    takeRecorded();
    Q_EMIT _f->tolvar.startingToWriteLog();
    QCOMPARE(focus(), QStringLiteral("the page"));
    QCOMPARE(takeRecorded(), QStringList());
    Q_EMIT _f->tolvar.finishedWriteLog();
    QCOMPARE(takeRecorded(), QStringList({"focus: Get Tolvar Log File", "Log file written to: "}));
}

void TestPageFocus::aFinishedLogTakesNoFocusFromAnotherButton()
{
    _f->goTo(TolvarFoundPageId);
    _f->widget<QPushButton>("pushButton_viewLog")->setFocus();
    call("onStartLogWrite");
    moveFocusTo(QWizard::NextButton);
    call("onFinishLogWrite");
    QCOMPARE(focus(), QStringLiteral("Continue"));
}

void TestPageFocus::theListHasTheFocusWhileTheFirstScanRuns()
{
    _f->goTo(ChooseNetworkPageId);
    QCOMPARE(focus(), QStringLiteral("networkListView"));
    _f->finishScan();
    QCOMPARE(focus(), QStringLiteral("networkListView"));
}

void TestPageFocus::anotherScanMovesTheFocusToTheList_data()
{
    QTest::addColumn<QByteArray>("focused");
    QTest::newRow("from the scan button") << QByteArray("refreshButton");
    // A screen reader presses a button without moving the focus to it.
    QTest::newRow("from the details button") << QByteArray("viewDetailsButton");
}

void TestPageFocus::anotherScanMovesTheFocusToTheList()
{
    QFETCH(QByteArray, focused);
    _f->goTo(ChooseNetworkPageId);
    _f->finishScan();
    _f->widget<QPushButton>(focused.constData())->setFocus();
    _f->widget<QPushButton>("refreshButton")->click();
    QCOMPARE(focus(), QStringLiteral("networkListView"));
    QVERIFY(!_f->widget<QLineEdit>("input_NetworkName")->hasSelectedText());
    _f->finishScan();
    QCOMPARE(focus(), QStringLiteral("networkListView"));
}

// Continue is disabled, because the network's name is cleared when the device is removed.
void TestPageFocus::anUnplugMovesTheFocusFromContinueToThePage()
{
    _f->goTo(ChooseNetworkPageId);
    _f->finishScan();
    moveFocusTo(QWizard::NextButton);
    QCOMPARE(focus(), QStringLiteral("Continue"));
    _f->tolvar.onDeviceRemoved({});
    QCOMPARE(focus(), QStringLiteral("the page"));
}

void TestPageFocus::aScanTakesNoFocusFromTheFields()
{
    _f->goTo(ChooseNetworkPageId);
    auto *passphrase = _f->widget<QLineEdit>("input_Password");
    passphrase->setFocus();
    QTest::keyClicks(passphrase, "abc");
    _f->finishScan();
    QCOMPARE(focus(), QStringLiteral("input_Password"));
    _f->tolvar.startScan();
    QTest::keyClicks(passphrase, "def");
    QCOMPARE(focus(), QStringLiteral("input_Password"));
    QCOMPARE(passphrase->text(), QStringLiteral("abcdef"));
}

void TestPageFocus::aVerdictIsAnnouncedAfterTheFocus_data()
{
    QTest::addColumn<QString>("result");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("success") << "0" << QStringList({"focus: Save network configuration", success});
    QTest::newRow("wrong passphrase")
        << "1" << QStringList({"focus: Go Back", "The network was found, but the passphrase was invalid\n"});
    QTest::newRow("unknown network") << "2" << QStringList({"focus: Go Back", "The network was not found\n"});
    QTest::newRow("system error")
        << "3"
        << QStringList{"There was an unexpected system error. Please power off and then power on the Tolvar "
                       "and restart this utility\n"};
}

void TestPageFocus::aVerdictIsAnnouncedAfterTheFocus()
{
    QFETCH(QString, result);
    QFETCH(QStringList, expected);
    _f->goTo(TestNetworkPageId);
    QCOMPARE(focus(), QStringLiteral("the page"));
    takeRecorded();
    _f->finishTest(result);
    QCOMPARE(takeRecorded(), expected);
}

void TestPageFocus::aVerdictOnAnotherPageIsIgnored()
{
    _f->goTo(TestNetworkPageId);
    _f->wizard.back();
    _f->widget<QLineEdit>("input_Password")->setFocus();
    takeRecorded();
    for (const char *verdict : {"0", "1", "2", "3"}) {
        _f->finishTest(verdict);
        QCOMPARE(focus(), QStringLiteral("input_Password"));
        QCOMPARE(takeRecorded(), QStringList());
    }
}

void TestPageFocus::afterASecondEntryEverythingIsAnnouncedOnce()
{
    _f->goTo(TestNetworkPageId);
    _f->goBackAndEnterAgain();
    takeRecorded();
    _f->finishTest("0");
    QCOMPARE(takeRecorded().count(success), 1);
    _f->widget<QPushButton>("pushButton")->click();
    QTRY_VERIFY(recorded().contains(saved));
    QCOMPARE(takeRecorded(), QStringList({"focus: Done", saved}));
}

void TestPageFocus::aSaveTakesNoFocusThatTheUserHasMoved()
{
    testAndSave();
    moveFocusTo(QWizard::CancelButton);
    QTRY_VERIFY(!isSaving());
    QCOMPARE(focus(), QStringLiteral("Cancel"));
}

void TestPageFocus::aSaveOfADeviceThatIsGoneIsIgnored()
{
    testAndSave();
    _f->tolvar.onDeviceRemoved({});
    QVERIFY(isSaving());
    QTRY_VERIFY(!isSaving());
    QCOMPARE(focus(), QStringLiteral("Save network configuration"));
    QCOMPARE(takeRecorded(), QStringList());
}

void TestPageFocus::aTestRightAfterASaveKeepsTheFocusOnThePage()
{
    testAndSave();
    _f->goBackAndEnterAgain();
    QVERIFY2(!isSaving(), "the page still waits for the save");
    QCOMPARE(focus(), QStringLiteral("the page"));
}

QTEST_MAIN(TestPageFocus)
#include "tst_pagefocus.moc"
