#include "tests/support/wizardfixture.h"

#include <QAbstractButton>
#include <QTest>

#include "pages/pageid.h"

WizardFixture::WizardFixture()
    : tolvar(*new ConnectionSpy(&wizard))
    , inside{tolvar}
{
    wizard._tolvar = &tolvar;
    wizard.show();
    wizard.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&wizard)); // only fields of the active window receive keys
}

void WizardFixture::status(const QString &children) const
{
    reply("<puckdata>" + children + "</puckdata>");
}

void WizardFixture::finishScan(const QString &children) const
{
    feed("\x02<scan_results>" + children + "</scan_results>\x03");
}

void WizardFixture::finishTest(const QString &result) const
{
    feed("\x02<networktest_results><status result=\"" + result + "\"/></networktest_results>\x03");
}

void WizardFixture::feed(const QString &bytes) const
{
    const QByteArray latin1 = bytes.toLatin1();
    for (const char byte : latin1)
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
    while (wizard.currentId() != id) {
        const int before = wizard.currentId();
        if (before == ChooseNetworkPageId && tolvar.scanning())
            finishScan();
        wizard.next();
        if (wizard.currentId() == before)
            break;
    }
    QCOMPARE(wizard.currentId(), id);
}

void WizardFixture::goBackAndEnterAgain()
{
    const int id = wizard.currentId();
    wizard.back();
    QVERIFY(wizard.currentId() != id);
    wizard.next();
    QCOMPARE(wizard.currentId(), id);
}

int WizardFixture::listeners(const QByteArray &sender, const QByteArray &signal) const
{
    struct Peek : QObject {
        using QObject::receivers;
    };
    const QObject *object =
        sender == "the controller" ? &tolvar : wizard.findChild<QObject *>(QLatin1String(sender));
    if (!object || object->metaObject()->indexOfSignal(signal) < 0)
        return -1;
    return (object->*(&Peek::receivers))('2' + signal); // the prefix that SIGNAL() adds
}

bool WizardFixture::canGoOn() const
{
    return wizard.button(QWizard::NextButton)->isEnabled();
}

bool WizardFixture::canFinish() const
{
    return wizard.button(QWizard::FinishButton)->isEnabled();
}
