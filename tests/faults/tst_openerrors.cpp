#include <memory>

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
    void aPortThatCanBeOpenedLater_data();
    void aPortThatCanBeOpenedLater();
    void aPortThatIsUnpluggedBeforeItCanBeOpened();
};

namespace
{
/// Another program that has the device's port open. It opens the port in the second before the wizard does.
std::unique_ptr<QSerialPort> otherProgram(FaultFixture &fixture)
{
    fixture.tolvar.plug();
    const auto *const progress = fixture.robot.widget<QLabel>("label_progress");
    fixture.waitFor([&] { return progress->text() == QLatin1String("Getting status"); });
    auto port = std::make_unique<QSerialPort>(QString::fromLatin1(fixture.tolvar.ttyName()));
    port->open(QIODevice::ReadWrite);
    return port;
}

bool reportsError(FaultFixture &fixture, const QString &error)
{
    return fixture.waitFor([&] { return fixture.messages.messages("C:").join('\n').contains(error); });
}
} // namespace

void TestOpenErrors::aPortThatCanBeOpenedLater_data()
{
    QTest::addColumn<QString>("error");
    QTest::newRow("permission denied at first") << "Permission denied";
    QTest::newRow("port in use by another program at first") << "Device or resource busy";
}

void TestOpenErrors::aPortThatCanBeOpenedLater()
{
    QFETCH(QString, error);
    FaultFixture fixture;
    auto other = otherProgram(fixture);
    if (error == "Permission denied") {
        other.reset();
        LibcInterposer::failOpening("/dev/ttyUSB");
    }
    QVERIFY(reportsError(fixture, error));
    QCOMPARE(fixture.tolvar.state().bytes.size(), 0);
    LibcInterposer::failOpening({});
    other.reset();
    QCOMPARE(fixture.walk(), QString());
    QCOMPARE(fixture.messages.messages("C:").size(), 1); // reported once, however often the wizard tries
}

void TestOpenErrors::aPortThatIsUnpluggedBeforeItCanBeOpened()
{
    FaultFixture fixture;
    auto other = otherProgram(fixture);
    QVERIFY(reportsError(fixture, QStringLiteral("Device or resource busy")));
    QCOMPARE(fixture.unplug(), QString());
    other.reset();
    QCOMPARE(fixture.walkAgain(), QString());
}

QTEST_MAIN(TestOpenErrors)
#include "tst_openerrors.moc"
