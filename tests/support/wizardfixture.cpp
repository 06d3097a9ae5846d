#include "tests/support/wizardfixture.h"

#include <QTest>

WizardFixture::WizardFixture()
    : tolvar(*new ZVTolvar(&wizard))
    , inside{tolvar}
{
    wizard._tolvar = &tolvar;
    wizard.show();
    wizard.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&wizard)); // only fields of the active window receive keys
}

void WizardFixture::finish(const QString &document) const
{
    const QByteArray bytes = '\x02' + document.toLatin1() + '\x03';
    for (const char byte : bytes)
        tolvar.handleReceived(byte);
    // At the prompt, the link would take each line out of the queue and send it to a port that does not
    // exist.
    inside.state() = NOT_CONNECTED;
}

void WizardFixture::goTo(int id)
{
    if (tolvar.systemID().isEmpty())
        status("<name>TOLVAR-1</name><firmware_version>A060</firmware_version><network_name>Home</"
               "network_name>");
    QVERIFY(robot.goTo(id, [this] {
        if (tolvar.scanning())
            finishScan();
    }));
}

void WizardFixture::goBackAndEnterAgain()
{
    const int id = wizard.currentId();
    wizard.back();
    QVERIFY(wizard.currentId() != id);
    wizard.next();
    QCOMPARE(wizard.currentId(), id);
}
