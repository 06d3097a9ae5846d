#include <QTest>

#include "tests/e2e/scenario.h"
#include "tests/support/accessibleevents.h"

using namespace onscreen;

namespace
{
constexpr QLatin1String found("***** A Tolvar has been found *****");
constexpr QLatin1String success("Successfully tested connection to network\n");
constexpr QLatin1String wrongPassphrase("The network was found, but the passphrase was invalid\n");
constexpr QLatin1String notFound("The network was not found\n");
constexpr QLatin1String systemError("There was an unexpected system error. Please power off and then "
                                    "power on the Tolvar and restart this utility\n");
constexpr QLatin1String saved("Configuration saved\n");

/// A run of the program with a screen reader.
struct HeardScenario {
    AccessibleEvents events; // created before the program, which checks whether a screen reader runs
    Scenario s;

    explicit HeardScenario(const DeviceConfig &setup = DeviceConfig())
        : s(setup)
    {
    }

    /// Returns whether the screen reader got \a expected, in this order. From Qt 6.8 on, the program
    /// announces exactly that. Before 6.8, Qt does not send alerts on this bus, and a screen reader is
    /// notified that labels have new texts.
    bool hears(const QStringList &expected) const
    {
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
        return events.announcements() == expected;
#else
        qsizetype from = 0;
        for (const QString &text : expected) {
            const qsizetype at = events.changedNames().indexOf(text, from);
            if (at < 0)
                return false;
            from = at + 1;
        }
        return true;
#endif
    }

    bool startsTest(const QString &passphrase)
    {
        return s.user.typesPassphrase(passphrase) && s.user.goesOn();
    }
    bool findsTheNetworks()
    {
        return s.tolvar.plug() && s.start() && s.user.seesTheDevice() && s.user.goesToTheNetworks() &&
               s.user.seesTheNetworks();
    }
};
} // namespace

/// Tests what a screen reader gets from the real program on the accessibility bus.
class TestAnnouncements : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTypicalRunIsHeard();
    void aFailureIsHeard_data();
    void aFailureIsHeard();
    void eachTestIsHeardOnce();
    void aWrittenLogIsHeard();
    void aDeviceThatIsGoneIsNotAnnounced();
};

void TestAnnouncements::theTypicalRunIsHeard()
{
    HeardScenario run;
    QVERIFY(run.events.isListening());
    ZV_STEP(run.s, run.findsTheNetworks());
    QTRY_VERIFY(run.hears({found}));
    ZV_STEP(run.s, run.startsTest("correct horse battery"));
    ZV_STEP(run.s, run.s.user.sees(success));
    QTRY_VERIFY(run.hears({found, success}));
    ZV_STEP(run.s, run.s.user.saves());
    QTRY_VERIFY(run.hears({found, success, saved}));
    ZV_STEP(run.s, run.s.user.finishes());
    QVERIFY(run.hears({found, success, saved}));
}

void TestAnnouncements::aFailureIsHeard_data()
{
    QTest::addColumn<QString>("network");
    QTest::addColumn<bool>("isSystemError");
    QTest::addColumn<QString>("verdict");
    QTest::newRow("a wrong passphrase") << "Workshop" << false << QString(wrongPassphrase);
    QTest::newRow("an unknown network") << "Far away" << false << QString(notFound);
    QTest::newRow("a system error") << "Workshop" << true << QString(systemError);
}

void TestAnnouncements::aFailureIsHeard()
{
    QFETCH(QString, network);
    QFETCH(bool, isSystemError);
    QFETCH(QString, verdict);
    DeviceConfig setup;
    setup.faults.systemErrorOnTest = isSystemError;
    HeardScenario run(setup);
    ZV_STEP(run.s, run.findsTheNetworks());
    ZV_STEP(run.s, run.s.user.typesNetwork(network));
    ZV_STEP(run.s, run.startsTest("wrong"));
    ZV_STEP(run.s, run.s.user.sees(verdict));
    QTRY_VERIFY(run.hears({found, verdict}));
}

void TestAnnouncements::eachTestIsHeardOnce()
{
    HeardScenario run;
    ZV_STEP(run.s, run.findsTheNetworks());
    for (const char *passphrase : {"wrong", "wrong again"}) {
        ZV_STEP(run.s, run.startsTest(passphrase));
        ZV_STEP(run.s, run.s.user.sees(wrongPassphrase));
        ZV_STEP(run.s, run.s.user.goesBack());
        ZV_STEP(run.s, run.s.screen.waitFor(button("Look for Networks...").enabled()));
    }
    ZV_STEP(run.s, run.startsTest("correct horse battery"));
    ZV_STEP(run.s, run.s.user.sees(success));
    ZV_STEP(run.s, run.s.user.saves());
    QTRY_VERIFY(run.hears({found, wrongPassphrase, wrongPassphrase, success, saved}));
}

void TestAnnouncements::aWrittenLogIsHeard()
{
    HeardScenario run;
    QVERIFY(run.s.tolvar.plug());
    ZV_STEP(run.s, run.s.start());
    ZV_STEP(run.s, run.s.user.seesTheDevice());
    ZV_STEP(run.s, run.s.user.goesOn());
    ZV_STEP(run.s, run.s.screen.click(button("Get Tolvar Log File")));
    const QString path = run.s.inHome("my log.txt");
    ZV_STEP(run.s, run.s.screen.saveAs(path));
    ZV_STEP(run.s, run.s.user.sees("Log file written to: " + path));
    QTRY_VERIFY(run.hears({found, "Log file written to: " + path}));
}

void TestAnnouncements::aDeviceThatIsGoneIsNotAnnounced()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 8, 0)
    QSKIP("this version of Qt sends no announcements that could be counted");
#endif
    HeardScenario run;
    ZV_STEP(run.s, run.s.start());
    QVERIFY(run.s.tolvar.plug());
    ZV_STEP(run.s, run.s.screen.waitFor(label("Getting status")));
    run.s.tolvar.unplug();
    ZV_STEP(run.s, run.s.screen.waitUntil([&] { return run.s.sessionLog().contains("Device REMOVED"); },
                                          "the removal in the session log"));
    QVERIFY(run.s.tolvar.plug());
    ZV_STEP(run.s, run.s.user.seesTheDevice());
    run.s.tolvar.unplug();
    ZV_STEP(run.s, run.s.user.seesTheSearch());
    QVERIFY(run.s.tolvar.plug());
    ZV_STEP(run.s, run.s.user.seesTheDevice());
    QTRY_VERIFY(run.hears({found, found}));
    ZV_STEP(run.s, run.s.user.goesOn());
    ZV_STEP(run.s, run.s.screen.waitFor(label("Found Device")));
    run.s.tolvar.unplug();
    ZV_STEP(run.s, run.s.screen.waitUntilGone(label("TOLVAR-4711")));
    QVERIFY(run.s.tolvar.plug());
    ZV_STEP(run.s, run.s.screen.waitFor(label("TOLVAR-4711")));
    ZV_STEP(run.s, run.s.user.goesBack());
    ZV_STEP(run.s, run.s.user.seesTheDevice());
    // A device that is found while another page is shown is not announced: no text on that page reported it.
    QVERIFY(run.hears({found, found}));
}

QTEST_GUILESS_MAIN(TestAnnouncements)
#include "tst_announcements.moc"
