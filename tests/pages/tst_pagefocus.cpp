#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "pages/pageid.h"
#include "tests/support/wizardfixture.h"

/// Tests which widget has the keyboard focus, page by page and state by state.
class TestPageFocus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { _f = std::make_unique<WizardFixture>(); }
    void cleanup() { _f.reset(); }

    void thePageHasTheFocusUntilADeviceIsFound();
    void continueHasTheFocusWhenADeviceIsFound();
    void thePageTakesTheFocusBackWhenTheDeviceIsGone();
    void aButtonThatTheUserWentToKeepsTheFocusWhenTheDeviceIsGone();
    void aDeviceFoundOnAnotherPageMovesNoFocus();
    void thePageHasTheFocusAfterGoingBackWithoutADevice();
    void theLogButtonGetsTheFocusBack();
    void aFinishedLogTakesNoFocusFromAnotherButton();
    void theListHasTheFocusWhileTheFirstScanRuns();
    void anotherScanMovesTheFocusToTheList_data();
    void anotherScanMovesTheFocusToTheList();
    void anUnplugMovesTheFocusFromContinueToThePage();
    void aScanTakesNoFocusFromTheFields();
    void thePageHasTheFocusDuringATest();
    void aVerdictMovesTheFocus_data();
    void aVerdictMovesTheFocus();
    void aVerdictOnAnotherPageMovesNoFocus();
    void anUnplugLeavesTheFocusAfterAVerdict();
    void doneHasTheFocusAfterSaving();
    void aSaveTakesNoFocusThatTheUserHasMoved();
    void aSaveOfADeviceThatIsGoneMovesNoFocus();
    void aSaveMovesNoFocusOnThePageBefore();
    void aTestRightAfterASaveKeepsTheFocusOnThePage();

private:
    /// Returns what has the focus: "the page", or the widget's text or object name.
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
    void finds() const { _f->status("<name>TOLVAR-1</name><firmware_version>A060</firmware_version>"); }
    void save() const { _f->widget<QPushButton>("pushButton")->click(); }
    /// Returns whether the test page is still waiting for keys that were pressed during a save.
    bool isSaving() const
    {
        return _f->wizard.page(TestNetworkPageId)
            ->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly)
            ->isActive();
    }
    void call(const char *slot) const { QVERIFY(QMetaObject::invokeMethod(_f->wizard.currentPage(), slot)); }

    std::unique_ptr<WizardFixture> _f;
};

void TestPageFocus::thePageHasTheFocusUntilADeviceIsFound()
{
    QCOMPARE(focus(), QStringLiteral("the page"));
    call("onCandidateDeviceFound");
    QCOMPARE(focus(), QStringLiteral("the page"));
}

void TestPageFocus::continueHasTheFocusWhenADeviceIsFound()
{
    moveFocusTo(QWizard::CustomButton1);
    finds();
    QCOMPARE(focus(), QStringLiteral("Continue"));
}

void TestPageFocus::thePageTakesTheFocusBackWhenTheDeviceIsGone()
{
    finds();
    _f->tolvar.onDeviceRemoved({});
    QCOMPARE(focus(), QStringLiteral("the page"));
    finds();
    QCOMPARE(focus(), QStringLiteral("Continue"));
}

void TestPageFocus::aButtonThatTheUserWentToKeepsTheFocusWhenTheDeviceIsGone()
{
    finds();
    moveFocusTo(QWizard::CancelButton);
    _f->tolvar.onDeviceRemoved({});
    QCOMPARE(focus(), QStringLiteral("Cancel"));
}

void TestPageFocus::aDeviceFoundOnAnotherPageMovesNoFocus()
{
    _f->goTo(TolvarFoundPageId);
    moveFocusTo(QWizard::BackButton);
    _f->tolvar.onDeviceRemoved({});
    QCOMPARE(focus(), QStringLiteral("Go Back"));
    finds();
    QCOMPARE(focus(), QStringLiteral("Go Back"));
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
    _f->widget<QPushButton>("pushButton_viewLog")->setFocus();
    call("onStartLogWrite");
    QCOMPARE(focus(), QStringLiteral("the page"));
    call("onFinishLogWrite");
    QCOMPARE(focus(), QStringLiteral("Get Tolvar Log File"));
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
    QTest::newRow("from the button that starts it") << QByteArray("refreshButton");
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

void TestPageFocus::thePageHasTheFocusDuringATest()
{
    _f->goTo(TestNetworkPageId);
    QCOMPARE(focus(), QStringLiteral("the page"));
}

void TestPageFocus::aVerdictMovesTheFocus_data()
{
    QTest::addColumn<QString>("verdict");
    QTest::addColumn<QString>("focused");
    QTest::newRow("to the save button after success") << "0"
                                                      << "Save network configuration";
    QTest::newRow("to Go Back after a wrong passphrase") << "1"
                                                         << "Go Back";
    QTest::newRow("to Go Back after an unknown network") << "2"
                                                         << "Go Back";
    QTest::newRow("nowhere after a system error") << "3"
                                                  << "the page";
}

void TestPageFocus::aVerdictMovesTheFocus()
{
    QFETCH(QString, verdict);
    QFETCH(QString, focused);
    _f->goTo(TestNetworkPageId);
    _f->finishTest(verdict);
    QCOMPARE(focus(), focused);
}

void TestPageFocus::aVerdictOnAnotherPageMovesNoFocus()
{
    _f->goTo(TestNetworkPageId);
    _f->wizard.back();
    QCOMPARE(_f->wizard.currentId(), int(ChooseNetworkPageId));
    auto *passphrase = _f->widget<QLineEdit>("input_Password");
    passphrase->setFocus();
    for (const char *verdict : {"0", "1", "2", "3"}) {
        _f->finishTest(verdict);
        QCOMPARE(focus(), QStringLiteral("input_Password"));
    }
}

void TestPageFocus::anUnplugLeavesTheFocusAfterAVerdict()
{
    _f->goTo(TestNetworkPageId);
    _f->finishTest("0");
    _f->tolvar.onDeviceRemoved({});
    QCOMPARE(focus(), QStringLiteral("Save network configuration"));
}

void TestPageFocus::doneHasTheFocusAfterSaving()
{
    _f->goTo(TestNetworkPageId);
    _f->finishTest("0");
    save();
    QCOMPARE(focus(), QStringLiteral("Save network configuration"));
    QTRY_COMPARE(focus(), QStringLiteral("Done"));
}

void TestPageFocus::aSaveTakesNoFocusThatTheUserHasMoved()
{
    _f->goTo(TestNetworkPageId);
    _f->finishTest("0");
    save();
    QVERIFY(isSaving());
    moveFocusTo(QWizard::CancelButton);
    QTRY_VERIFY(!isSaving());
    QCOMPARE(focus(), QStringLiteral("Cancel"));
}

void TestPageFocus::aSaveOfADeviceThatIsGoneMovesNoFocus()
{
    _f->goTo(TestNetworkPageId);
    _f->finishTest("0");
    save();
    _f->tolvar.onDeviceRemoved({});
    QVERIFY(isSaving());
    QTRY_VERIFY(!isSaving());
    QCOMPARE(focus(), QStringLiteral("Save network configuration"));
}

void TestPageFocus::aSaveMovesNoFocusOnThePageBefore()
{
    _f->goTo(TestNetworkPageId);
    _f->finishTest("0");
    save();
    _f->wizard.back();
    QCOMPARE(_f->wizard.currentId(), int(ChooseNetworkPageId));
    auto *passphrase = _f->widget<QLineEdit>("input_Password");
    passphrase->setFocus();
    QVERIFY(isSaving());
    QTRY_VERIFY(!isSaving());
    QCOMPARE(focus(), QStringLiteral("input_Password"));
}

void TestPageFocus::aTestRightAfterASaveKeepsTheFocusOnThePage()
{
    _f->goTo(TestNetworkPageId);
    _f->finishTest("0");
    save();
    QVERIFY(isSaving());
    _f->goBackAndEnterAgain();
    QVERIFY2(!isSaving(), "the next test has nothing to do with the save");
    QCOMPARE(focus(), QStringLiteral("the page"));
}

QTEST_MAIN(TestPageFocus)
#include "tst_pagefocus.moc"
