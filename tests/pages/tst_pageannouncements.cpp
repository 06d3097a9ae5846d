#include <QAccessible>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "pages/pageid.h"
#include "tests/support/wizardfixture.h"

namespace
{
/// The events recorded so far. They are global because an update handler is a plain function.
QStringList &spoken()
{
    static QStringList texts;
    return texts;
}

/// Records what the program announces, and which button gets the focus.
void note(QAccessibleEvent *event)
{
    const auto *button = qobject_cast<QPushButton *>(event->object());
    if (event->type() == QAccessible::Focus && button)
        spoken() << "focus: " + button->text();
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    if (event->type() == QAccessible::Announcement)
        spoken() << static_cast<QAccessibleAnnouncementEvent *>(event)->message();
#else
    if (event->type() == QAccessible::Alert)
        spoken() << qobject_cast<QLabel *>(event->object())->text();
#endif
}

constexpr QLatin1String found("***** A Tolvar has been found *****");
constexpr QLatin1String success("Successfully tested connection to network\n");
constexpr QLatin1String saved("Configuration saved\n");
} // namespace

/// Tests what the pages announce to a screen reader, and when.
class TestPageAnnouncements : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aFoundDevice();
    void aDeviceThatIsGoneIsNotAnnounced();
    void aDeviceFoundOnAnotherPageIsNotAnnounced();
    void aVerdictComesAfterTheFocus_data();
    void aVerdictComesAfterTheFocus();
    void aVerdictOnAnotherPageIsNotAnnounced();
    void afterASecondEntryEverythingIsAnnouncedOnce();
    void aSaveOfADeviceThatIsGoneIsNotAnnounced();
    void anUnplugIsNotAnnounced_data();
    void anUnplugIsNotAnnounced();
    void aWrittenLog();

private:
    void finds() const { _f->status("<name>TOLVAR-1</name><firmware_version>A060</firmware_version>"); }
    QStringList heard() const { return std::exchange(spoken(), {}); }

    std::unique_ptr<WizardFixture> _f;
    QAccessible::UpdateHandler _previous = nullptr;
};

void TestPageAnnouncements::init()
{
    _f = std::make_unique<WizardFixture>();
    spoken().clear();
    QTRY_VERIFY(QAccessible::isActive());
    _previous = QAccessible::installUpdateHandler(note);
}

void TestPageAnnouncements::cleanup()
{
    QAccessible::installUpdateHandler(_previous);
    _f.reset();
}

void TestPageAnnouncements::aFoundDevice()
{
    finds();
    QCOMPARE(heard(), QStringList({"focus: Continue", found}));
    finds();
    QCOMPARE(heard(), QStringList());
}

void TestPageAnnouncements::aDeviceThatIsGoneIsNotAnnounced()
{
    finds();
    heard();
    _f->tolvar.onDeviceRemoved({});
    Q_EMIT _f->tolvar.candidateDeviceFound();
    _f->tolvar.onDeviceRemoved({});
    QVERIFY(!heard().contains(found));
    finds();
    QCOMPARE(heard(), QStringList({"focus: Continue", found}));
}

void TestPageAnnouncements::aDeviceFoundOnAnotherPageIsNotAnnounced()
{
    _f->goTo(TolvarFoundPageId);
    _f->tolvar.onDeviceRemoved({});
    heard();
    finds();
    QCOMPARE(heard(), QStringList());
}

void TestPageAnnouncements::aVerdictComesAfterTheFocus_data()
{
    QTest::addColumn<QString>("result");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("success") << "0" << QStringList({"focus: Save network configuration", success});
    QTest::newRow("a wrong passphrase")
        << "1" << QStringList({"focus: Go Back", "The network was found, but the passphrase was invalid\n"});
    QTest::newRow("an unknown network")
        << "2" << QStringList({"focus: Go Back", "The network was not found\n"});
    QTest::newRow("a system error")
        << "3"
        << QStringList{"There was an unexpected system error. Please power off and then power on the Tolvar "
                       "and restart this utility\n"};
}

void TestPageAnnouncements::aVerdictComesAfterTheFocus()
{
    QFETCH(QString, result);
    QFETCH(QStringList, expected);
    _f->goTo(TestNetworkPageId);
    heard();
    _f->finishTest(result);
    QCOMPARE(heard(), expected);
}

void TestPageAnnouncements::aVerdictOnAnotherPageIsNotAnnounced()
{
    _f->goTo(TestNetworkPageId);
    _f->wizard.back();
    heard();
    _f->finishTest("0");
    QCOMPARE(heard(), QStringList());
}

void TestPageAnnouncements::afterASecondEntryEverythingIsAnnouncedOnce()
{
    _f->goTo(TestNetworkPageId);
    for (int test = 0; test < 2; ++test) {
        _f->goBackAndEnterAgain();
        heard();
        _f->finishTest("0");
        QCOMPARE(heard().count(success), 1);
    }
    _f->widget<QPushButton>("pushButton")->click();
    QTRY_VERIFY(spoken().contains(saved));
    QCOMPARE(heard(), QStringList({"focus: Done", saved}));
}

void TestPageAnnouncements::aSaveOfADeviceThatIsGoneIsNotAnnounced()
{
    _f->goTo(TestNetworkPageId);
    _f->finishTest("0");
    heard();
    const auto *afterSave =
        _f->wizard.currentPage()->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    _f->widget<QPushButton>("pushButton")->click();
    QVERIFY(afterSave->isActive());
    _f->tolvar.onDeviceRemoved({});
    QTRY_VERIFY(!afterSave->isActive());
    QCOMPARE(heard(), QStringList());
}

void TestPageAnnouncements::anUnplugIsNotAnnounced_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("verdict");
    QTest::newRow("on the page of the found device") << int(TolvarFoundPageId) << QString();
    QTest::newRow("during a scan") << int(ChooseNetworkPageId) << QString();
    QTest::newRow("during a test") << int(TestNetworkPageId) << QString();
    QTest::newRow("after success") << int(TestNetworkPageId) << "0";
    QTest::newRow("after a failure") << int(TestNetworkPageId) << "1";
    QTest::newRow("after a system error") << int(TestNetworkPageId) << "3";
}

void TestPageAnnouncements::anUnplugIsNotAnnounced()
{
    QFETCH(int, page);
    QFETCH(QString, verdict);
    _f->goTo(page);
    if (!verdict.isNull())
        _f->finishTest(verdict);
    heard();
    _f->tolvar.onDeviceRemoved({});
    QCOMPARE(heard(), QStringList());
}

void TestPageAnnouncements::aWrittenLog()
{
    _f->goTo(TolvarFoundPageId);
    _f->goBackAndEnterAgain();
    heard();
    Q_EMIT _f->tolvar.startingToWriteLog();
    QCOMPARE(heard(), QStringList());
    Q_EMIT _f->tolvar.finishedWriteLog();
    QCOMPARE(heard(), QStringList{"Log file written to: "});
}

QTEST_MAIN(TestPageAnnouncements)
#include "tst_pageannouncements.moc"
