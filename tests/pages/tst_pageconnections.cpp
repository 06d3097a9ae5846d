#include <QMetaMethod>
#include <QTest>

#include "pages/pageid.h"
#include "tests/support/wizardfixture.h"

namespace
{
/// Returns the connected signals of \a object, each as often as it is connected.
QStringList connections(const QObject &object)
{
    struct Peek : QObject {
        using QObject::receivers;
    };
    QStringList found;
    for (int i = 0; i < object.metaObject()->methodCount(); ++i) {
        const QMetaMethod method = object.metaObject()->method(i);
        const bool isSignal =
            method.methodType() == QMetaMethod::Signal && !(method.attributes() & QMetaMethod::Cloned);
        const QByteArray signature = method.methodSignature();
        for (int left = isSignal ? (object.*(&Peek::receivers))('2' + signature) : 0; left > 0; --left)
            found += object.objectName() + '.' + signature;
    }
    return found;
}

/// Returns the connected signals of the controller and of the widgets on the current page.
QStringList connections(const WizardFixture &f)
{
    QStringList found = connections(f.tolvar);
    for (const QWidget *widget : f.wizard.currentPage()->findChildren<QWidget *>())
        found += connections(*widget);
    return found;
}
} // namespace

/// Tests that each entry of a page makes its connections once more, and no others.
class TestPageConnections : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyEntryConnectsAgain_data();
    void everyEntryConnectsAgain();
};

void TestPageConnections::everyEntryConnectsAgain_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("connect") << int(ConnectPageId)
                             << QStringList{"tolvar.systemIDChanged(QString)",
                                            "tolvar.candidateDeviceFound()"};
    QTest::newRow("device found") << int(TolvarFoundPageId)
                                  << QStringList{"tolvar.systemIDChanged(QString)",
                                                 "tolvar.statusChanged(QString)",
                                                 "tolvar.firmwareVersionChanged(QString)",
                                                 "tolvar.networkChanged(QString)",
                                                 "tolvar.ipAddressChanged(QString)",
                                                 "tolvar.macAddressChanged(QString)",
                                                 "tolvar.antennaChanged(QString)",
                                                 "tolvar.startingToWriteLog()",
                                                 "tolvar.finishedWriteLog()"};
    QTest::newRow("choose network") << int(ChooseNetworkPageId)
                                    << QStringList{
                                           "tolvar.networkChanged(QString)",
                                           "tolvar.passwordChanged(QString)",
                                           "tolvar.scannedNetworkListChanged(QHash<QString,ZVScanResult>*)",
                                           "tolvar.scanStarted()",
                                           "tolvar.scanFinished()",
                                           "networkListView.clicked(QModelIndex)",
                                           "networkListView.doubleClicked(QModelIndex)",
                                           "refreshButton.released()", // for the wait cursor
                                           "refreshButton.clicked(bool)",
                                           "viewDetailsButton.clicked(bool)",
                                           "checkBox_useExternalAntenna.clicked(bool)",
                                           "input_NetworkName.editingFinished()",
                                           "input_Password.editingFinished()"};
    QTest::newRow("WEP warning") << int(WEPWarningPageId) << QStringList();
    QTest::newRow("test network") << int(TestNetworkPageId)
                                  << QStringList{"tolvar.networkTestSsidNotFound()",
                                                 "tolvar.networkTestPassphraseInvalid()",
                                                 "tolvar.networkTestFound()",
                                                 "tolvar.networkTestSystemError()", "pushButton.released()"};
}

void TestPageConnections::everyEntryConnectsAgain()
{
    QFETCH(int, page);
    QFETCH(QStringList, expected);
    WizardFixture f;
    f.tolvar.setObjectName("tolvar");
    if (page == WEPWarningPageId) {
        f.goTo(ChooseNetworkPageId);
        f.finishScan("<scan SSID=\"Home\" sec=\"WEP\"/>");
    }
    f.goTo(page);
    const QStringList before = connections(f);
    page == ConnectPageId ? f.wizard.restart() : f.goBackAndEnterAgain();
    QStringList added = connections(f);
    for (const QString &signal : before)
        added.removeOne(signal);
    QCOMPARE(added, expected);
}

QTEST_MAIN(TestPageConnections)
#include "tst_pageconnections.moc"
