#include <QTest>

#include "serial/qextportinfo.h"

/// Tests the description of one port.
class TestQextPortInfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsKnownAtFirst();
    void portsAreTheSameWhenEveryWordIs_data();
    void portsAreTheSameWhenEveryWordIs();
};

void TestQextPortInfo::nothingIsKnownAtFirst()
{
    const QextPortInfo info;
    QCOMPARE(info.portName, QString());
    QCOMPARE(info.physName, QString());
    QCOMPARE(info.friendName, QString());
    QCOMPARE(info.enumName, QString());
    QCOMPARE(info.vendorID, 0);
    QCOMPARE(info.productID, 0);
}

void TestQextPortInfo::portsAreTheSameWhenEveryWordIs_data()
{
    QTest::addColumn<QextPortInfo>("other");
    QTest::addColumn<bool>("same");
    const QextPortInfo port = {"ttyUSB0", "/dev/ttyUSB0", "FT232R", "USB", 0x0403, 0x6001};
    const auto row = [&port](const char *name, auto change) {
        QextPortInfo other = port;
        change(other);
        QTest::newRow(name) << other << (QLatin1String(name) == QLatin1String("nothing differs"));
    };
    row("nothing differs", [](QextPortInfo &) {});
    row("another name", [](QextPortInfo &info) { info.portName += 'x'; });
    row("another node", [](QextPortInfo &info) { info.physName += 'x'; });
    row("another friendly name", [](QextPortInfo &info) { info.friendName += 'x'; });
    row("another bus", [](QextPortInfo &info) { info.enumName += 'x'; });
    row("another vendor", [](QextPortInfo &info) { ++info.vendorID; });
    row("another product", [](QextPortInfo &info) { ++info.productID; });
}

void TestQextPortInfo::portsAreTheSameWhenEveryWordIs()
{
    QFETCH(QextPortInfo, other);
    QFETCH(bool, same);
    const QextPortInfo port = {"ttyUSB0", "/dev/ttyUSB0", "FT232R", "USB", 0x0403, 0x6001};
    QCOMPARE(port == other, same);
    QCOMPARE(port != other, !same);
}

QTEST_GUILESS_MAIN(TestQextPortInfo)
#include "tst_qextportinfo.moc"
