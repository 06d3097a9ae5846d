#include <QLabel>
#include <QSerialPort>
#include <QTest>

#include "tests/faults/faultbench.h"
#include "tests/support/ttycalls.h"

/// A port that the system does not give, at first.
class TestRefusedPort : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPermissionThatComesLater();
    void aProgramThatLetsGoLater();
    void unpluggedWhileRefused();

private:
    static bool plugIntoView(FaultBench &bench);
    static bool isRefused(FaultBench &bench);
};

/// Plugs the device in; true once the wizard has seen it, a second before it opens the port.
bool TestRefusedPort::plugIntoView(FaultBench &bench)
{
    const auto *const progress =
        bench.wizard.currentPage()->findChild<QLabel *>(QStringLiteral("label_progress"));
    return bench.tolvar.plug() &&
           bench.waitFor([&] { return progress->text() == QLatin1String("Getting status"); });
}

/// Waits until the wizard has told that it can't open the port.
bool TestRefusedPort::isRefused(FaultBench &bench)
{
    bool isTold = false;
    FaultBench::listen(
        [&isTold](QtMsgType type, const QString &) { isTold = isTold || type == QtCriticalMsg; });
    const bool inTime = bench.waitFor([&] { return isTold; });
    FaultBench::listen(nullptr);
    return inTime;
}

void TestRefusedPort::aPermissionThatComesLater()
{
    FaultBench bench;
    QVERIFY(plugIntoView(bench));
    int refusals = 0;
    FaultBench::listen([&refusals](QtMsgType type, const QString &message) {
        if (type == QtCriticalMsg && message.contains(QLatin1String("Permission denied")))
            ++refusals;
    });
    TtyCalls::refuseOpening(true);
    QVERIFY2(bench.waitFor([&] { return refusals > 0; }), "a refusal was expected to be told");
    QCOMPARE(bench.tolvar.state().bytes.size(), 0);
    TtyCalls::refuseOpening(false);
    bench.walk.start();
    QVERIFY2(bench.waitFor([&] { return bench.walk.isDone(); }), qPrintable(FaultBench::lastMessages()));
    QCOMPARE(refusals, 1); // told once, however often it was tried
}

void TestRefusedPort::aProgramThatLetsGoLater()
{
    FaultBench bench;
    QVERIFY(plugIntoView(bench));
    {
        QSerialPort other(QString::fromLatin1(bench.tolvar.ttyName()));
        QVERIFY(other.open(QIODevice::ReadWrite));
        QVERIFY2(isRefused(bench), "a refusal was expected to be told");
    }
    bench.walk.start();
    QVERIFY2(bench.waitFor([&] { return bench.walk.isDone(); }), qPrintable(FaultBench::lastMessages()));
}

void TestRefusedPort::unpluggedWhileRefused()
{
    FaultBench bench;
    QVERIFY(plugIntoView(bench));
    {
        QSerialPort other(QString::fromLatin1(bench.tolvar.ttyName()));
        QVERIFY(other.open(QIODevice::ReadWrite));
        QVERIFY2(isRefused(bench), "a refusal was expected to be told");
        bench.tolvar.unplug();
    }
    QVERIFY(bench.waitFor([&] { return bench.isForgotten(); }));
    QCOMPARE(bench.wrongAfterUnplug(), QString());
    QCOMPARE(bench.walkAgain(), QString());
}

QTEST_MAIN(TestRefusedPort)
#include "tst_refusedport.moc"
