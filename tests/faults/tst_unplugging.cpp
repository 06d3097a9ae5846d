#include <QTest>

#include "tests/faults/faultbench.h"
#include "tests/faults/faultchoice.h"

/// The device is pulled out in the middle of the typical run.
class TestUnplugging : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void afterAnyByteOfTheRun();
};

void TestUnplugging::afterAnyByteOfTheRun()
{
    qsizetype bytesInAll = 0;
    {
        FaultBench undisturbed;
        QCOMPARE(undisturbed.walkAgain(), QString());
        bytesInAll = undisturbed.tolvar.passed();
    }
    QVERIFY(bytesInAll > 0);

    bool isSameName = false;
    const QList<qsizetype> numbers = faultChoice(bytesInAll, 4);
    for (const qsizetype number : numbers) {
        const qsizetype place = number + 1;
        const QString where = QStringLiteral("unplugged after %1 of %2 bytes: ").arg(place).arg(bytesInAll);
        isSameName = !isSameName;
        FaultBench bench;
        bool isOut = false;
        QObject::connect(&bench.tolvar, &PluggedPort::pulledOut, &bench.wizard, [&] { isOut = true; });
        LineFaults faults;
        faults.pulledOutAfter = place;
        bench.tolvar.setFaults(faults);
        QVERIFY(bench.tolvar.plug());
        const QByteArray ttyName = bench.tolvar.ttyName();
        bench.walk.start();
        QVERIFY2(bench.waitFor([&] { return isOut || bench.walk.isDone(); }),
                 qPrintable(where + "the run was expected to come this far\n" + FaultBench::lastMessages()));
        if (bench.walk.isDone())
            continue; // the last words were under way already
        QVERIFY2(bench.waitFor([&] { return bench.isForgotten(); }),
                 qPrintable(where + "the controllers were expected to forget the port"));
        QVERIFY2(bench.wrongAfterUnplug().isEmpty(), qPrintable(where + bench.wrongAfterUnplug()));
        const QString problem = bench.walkAgain(isSameName ? ttyName : QByteArray());
        QVERIFY2(problem.isEmpty(), qPrintable(where + problem + '\n' + FaultBench::lastMessages()));
    }
}

QTEST_MAIN(TestUnplugging)
#include "tst_unplugging.moc"
