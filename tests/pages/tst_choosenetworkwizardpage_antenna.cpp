#include <QCheckBox>
#include <QTest>

#include "tests/pages/choosepagefixture.h"

/// Tests the choose-network page's antenna box, which only shows the setting.
class TestAntennaBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { _f = std::make_unique<ChoosePageFixture>(); }
    void cleanup() { _f.reset(); }

    void theAntennaBox_data();
    void theAntennaBox();
    void firmwareA058DisablesTheAntennaBox();
    void aClickOnTheAntennaBoxCommitsIt();
    void theAntennaSlotFollowsTheController_data();
    void theAntennaSlotFollowsTheController();
    void nothingIsConnectedToTheAntennasChange();

private:
    std::unique_ptr<ChoosePageFixture> _f;
};

void TestAntennaBox::theAntennaBox_data()
{
    QTest::addColumn<QString>("firmware");
    QTest::addColumn<QString>("antenna");
    QTest::addColumn<bool>("checked");
    QTest::newRow("A058 keeps it checked") << "A058"
                                           << "0" << true;
    QTest::newRow("A059 shows the internal antenna") << "A059"
                                                     << "0" << false;
    QTest::newRow("A059 shows the external antenna") << "A059"
                                                     << "1" << true;
    QTest::newRow("any other number is external") << "A060"
                                                  << "7" << true;
    QTest::newRow("no number is internal") << "A060"
                                           << "Y" << false;
    QTest::newRow("nothing is internal") << "A060"
                                         << "" << false;
}

void TestAntennaBox::theAntennaBox()
{
    QFETCH(QString, firmware);
    QFETCH(QString, antenna);
    QFETCH(bool, checked);
    WizardFixture f;
    f.status("<name>T</name><firmware_version>" + firmware + "</firmware_version><ant>" + antenna + "</ant>");
    f.goTo(3);
    const auto *box = f.widget<QCheckBox>("checkBox_useExternalAntenna");
    QCOMPARE(box->isChecked(), checked);
    QVERIFY2(!box->isEnabled(), "it only shows the setting");
    f.status("<ant>" + QString(checked ? "0" : "1") + "</ant>");
    QCOMPARE(box->isChecked(), checked); // and does not follow it
}

void TestAntennaBox::firmwareA058DisablesTheAntennaBox()
{
    _f->tolvar().setFirmwareVersion("A058");
    auto *box = _f->widget<QCheckBox>("checkBox_useExternalAntenna");
    box->setEnabled(true); // nothing in the program does this
    _f->wizard.goBackAndEnterAgain();
    QVERIFY(!box->isEnabled());
}

void TestAntennaBox::aClickOnTheAntennaBoxCommitsIt()
{
    _f->queue().clear();
    auto *box = _f->widget<QCheckBox>("checkBox_useExternalAntenna");
    box->setEnabled(true);
    box->setChecked(false);
    box->click();
    QCOMPARE(_f->tolvar().antenna(), QStringLiteral("1"));
    QCOMPARE(_f->queue(), QStringList{"ant_select 1\r\n"});
    box->click();
    QCOMPARE(_f->tolvar().antenna(), QStringLiteral("0"));
    QCOMPARE(_f->queue(), QStringList({"ant_select 1\r\n", "ant_select 0\r\n"}));
    // The box's own state counts, not the argument.
    QVERIFY(QMetaObject::invokeMethod(_f->page(), "OnExternalAntennaClicked", Q_ARG(bool, true)));
    QCOMPARE(_f->tolvar().antenna(), QStringLiteral("0"));
}

void TestAntennaBox::theAntennaSlotFollowsTheController_data()
{
    QTest::addColumn<QString>("antenna");
    QTest::addColumn<bool>("before");
    QTest::addColumn<bool>("after");
    QTest::newRow("1 checks it") << "1" << false << true;
    QTest::newRow("1 leaves it checked") << "1" << true << true;
    QTest::newRow("0 unchecks it") << "0" << true << false;
    QTest::newRow("0 leaves it unchecked") << "0" << false << false;
    QTest::newRow("any other text unchecks it") << "2" << true << false;
}

void TestAntennaBox::theAntennaSlotFollowsTheController()
{
    QFETCH(QString, antenna);
    QFETCH(bool, before);
    QFETCH(bool, after);
    auto *box = _f->widget<QCheckBox>("checkBox_useExternalAntenna");
    box->setChecked(before);
    _f->tolvar().setAntenna(antenna);
    QCOMPARE(box->isChecked(), before); // nothing is connected to the slot
    QVERIFY(QMetaObject::invokeMethod(_f->page(), "OnAntennaChanged", Q_ARG(QString, "ignored")));
    QCOMPARE(box->isChecked(), after);
}

void TestAntennaBox::nothingIsConnectedToTheAntennasChange()
{
    WizardFixture f;
    f.goTo(1);
    const int before = f.listeners("the controller", "antennaChanged(QString)");
    f.goTo(3);
    QCOMPARE(f.listeners("the controller", "antennaChanged(QString)"), before);
}

QTEST_MAIN(TestAntennaBox)
#include "tst_choosenetworkwizardpage_antenna.moc"
