#include <QTest>

#include "tests/faults/faultfixture.h"
#include "tests/faults/samplecases.h"

/// Tests unplugging the device in the middle of the typical run.
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
        FaultFixture undisturbed;
        QCOMPARE(undisturbed.walkAgain(), QString());
        bytesInAll = undisturbed.tolvar.passed();
    }
    QVERIFY(bytesInAll > 0);

    bool isSameName = false;
    const QList<qsizetype> numbers = sampleCases(bytesInAll, 4);
    for (const qsizetype number : numbers) {
        const qsizetype place = number + 1;
        const QString where = QStringLiteral("unplugged after %1 of %2 bytes: ").arg(place).arg(bytesInAll);
        isSameName = !isSameName;
        bool isOut = false;
        FaultFixture fixture;
        QObject::connect(&fixture.tolvar, &PluggedPort::pulledOut, &fixture.wizard, [&] { isOut = true; });
        LineFaults faults;
        faults.pulledOutAfter = place;
        fixture.tolvar.setFaults(faults);
        QVERIFY(fixture.tolvar.plug());
        const QByteArray ttyName = fixture.tolvar.ttyName();
        fixture.walk.start();
        QVERIFY2(
            fixture.waitFor([&] { return isOut || fixture.walk.isDone(); }),
            qPrintable(where + "the run was expected to come this far\n" + FaultFixture::lastMessages()));
        if (fixture.walk.isDone())
            continue; // the last commands were already on their way
        QVERIFY2(fixture.waitFor([&] { return fixture.isForgotten(); }),
                 qPrintable(where + "the controllers were expected to forget the port"));
        QVERIFY2(fixture.wrongAfterUnplug().isEmpty(), qPrintable(where + fixture.wrongAfterUnplug()));
        const QString problem = fixture.walkAgain(isSameName ? ttyName : QByteArray());
        QVERIFY2(problem.isEmpty(), qPrintable(where + problem + '\n' + FaultFixture::lastMessages()));
    }
}

QTEST_MAIN(TestUnplugging)
#include "tst_unplugging.moc"
