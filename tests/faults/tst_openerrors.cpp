#include <QLabel>
#include <QSerialPort>
#include <QTest>

#include "tests/faults/faultfixture.h"
#include "tests/support/libcinterposer.h"

/// Tests a port that the system refuses to open at first.
class TestOpenErrors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPermissionThatComesLater();
    void aProgramThatLetsGoLater();
    void unpluggedWhileRefused();

private:
    static bool plugIntoView(FaultFixture &fixture);
    static bool isRefused(FaultFixture &fixture);
};

/// Plugs the device in; returns true once the wizard has seen it, a second before it opens the port.
bool TestOpenErrors::plugIntoView(FaultFixture &fixture)
{
    const auto *const progress =
        fixture.wizard.currentPage()->findChild<QLabel *>(QStringLiteral("label_progress"));
    return fixture.tolvar.plug() &&
           fixture.waitFor([&] { return progress->text() == QLatin1String("Getting status"); });
}

/// Waits until the wizard has reported that it cannot open the port.
bool TestOpenErrors::isRefused(FaultFixture &fixture)
{
    bool isTold = false;
    FaultFixture::listen(
        [&isTold](QtMsgType type, const QString &) { isTold = isTold || type == QtCriticalMsg; });
    const bool inTime = fixture.waitFor([&] { return isTold; });
    FaultFixture::listen(nullptr);
    return inTime;
}

void TestOpenErrors::aPermissionThatComesLater()
{
    FaultFixture fixture;
    QVERIFY(plugIntoView(fixture));
    int refusals = 0;
    FaultFixture::listen([&refusals](QtMsgType type, const QString &message) {
        if (type == QtCriticalMsg && message.contains(QLatin1String("Permission denied")))
            ++refusals;
    });
    LibcInterposer::refuseOpening(true);
    QVERIFY2(fixture.waitFor([&] { return refusals > 0; }), "an open error was expected to be logged");
    QCOMPARE(fixture.tolvar.state().bytes.size(), 0);
    LibcInterposer::refuseOpening(false);
    fixture.walk.start();
    QVERIFY2(fixture.waitFor([&] { return fixture.walk.isDone(); }),
             qPrintable(FaultFixture::lastMessages()));
    QCOMPARE(refusals, 1); // reported once, however often the wizard tries
}

void TestOpenErrors::aProgramThatLetsGoLater()
{
    FaultFixture fixture;
    QVERIFY(plugIntoView(fixture));
    {
        QSerialPort other(QString::fromLatin1(fixture.tolvar.ttyName()));
        QVERIFY(other.open(QIODevice::ReadWrite));
        QVERIFY2(isRefused(fixture), "an open error was expected to be logged");
    }
    fixture.walk.start();
    QVERIFY2(fixture.waitFor([&] { return fixture.walk.isDone(); }),
             qPrintable(FaultFixture::lastMessages()));
}

void TestOpenErrors::unpluggedWhileRefused()
{
    FaultFixture fixture;
    QVERIFY(plugIntoView(fixture));
    {
        QSerialPort other(QString::fromLatin1(fixture.tolvar.ttyName()));
        QVERIFY(other.open(QIODevice::ReadWrite));
        QVERIFY2(isRefused(fixture), "an open error was expected to be logged");
        fixture.tolvar.unplug();
    }
    QVERIFY(fixture.waitFor([&] { return fixture.isForgotten(); }));
    QCOMPARE(fixture.wrongAfterUnplug(), QString());
    QCOMPARE(fixture.walkAgain(), QString());
}

QTEST_MAIN(TestOpenErrors)
#include "tst_openerrors.moc"
