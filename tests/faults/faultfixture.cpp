#include "tests/faults/faultfixture.h"

#include <utility>

#include <QAbstractItemModel>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "device/zvtolvar.h"
#include "messages/diagnostics.h"
#include "pages/pageid.h"
#include "tests/support/descriptors.h"
#include "tests/support/zvtolvartestpeer.h"

namespace
{
constexpr int patience = 120000; // milliseconds
constexpr int lookPause = 5;     // milliseconds
constexpr int keptMessages = 25;

QStringList &messages()
{
    static QStringList kept;
    return kept;
}

std::function<void(QtMsgType, const QString &)> &listener()
{
    static std::function<void(QtMsgType, const QString &)> theListener;
    return theListener;
}

void keep(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (listener())
        listener()(type, message);
    messages() += message;
    if (messages().size() > keptMessages)
        messages().removeFirst();
}

/// Returns whether a tty is still open in this process, at the device's end or at the wizard's.
bool hasOpenTtys()
{
    return !openDescriptors().filter(QStringLiteral("/dev/pts/")).isEmpty();
}
} // namespace

DeviceConfig tersestTolvar()
{
    DeviceConfig setup;
    setup.systemId = "T";
    setup.configuration = {"A", "a"};
    setup.air = {TolvarNetwork{"B", "b", "WPA2"}};
    setup.missingFromStatus = {"firmware_date",  "mask", "gateway", "dns",   "test_result",
                               "upgrade_result", "ant",  "trc",     "sl_on", "sl_ip"};
    return setup;
}

FaultFixture::FaultFixture(const DeviceConfig &setup, const WalkWishes &ourWishes)
    : wishes(ourWishes)
    , tolvar(bed, setup)
    , walk(wizard, wishes)
{
    messages().clear();
    enableAllMessages();
    qInstallMessageHandler(keep);
    const ZVTolvar *const controller = wizard._tolvar;
    QObject::connect(controller, &ZVTolvar::systemIDChanged, &wizard,
                     [this](const QString &id) { _wasIdentified = _wasIdentified || !id.isEmpty(); });
    QObject::connect(controller, &ZVTolvar::scanStarted, &wizard, [this] { _isScanning = true; });
    QObject::connect(controller, &ZVTolvar::scanFinished, &wizard, [this] { _isScanning = false; });
    QObject::connect(controller, &ZVTolvar::networkTestStarted, &wizard, [this] {
        _verdict = QStringLiteral("Please wait while ZV Tolvar tests the connection to network: %1\n")
                       .arg(wishes.ssid);
    });
    QObject::connect(controller, &ZVTolvar::networkTestFound, &wizard,
                     [this] { _verdict = QStringLiteral("Successfully tested connection to network\n"); });
    // Anything that the user does after that would change the state that the unplugging leaves.
    QObject::connect(&tolvar, &PluggedPort::pulledOut, &walk, &WizardWalk::stop);
    walk.waitWhile([this] { return isTalking(); });
    wizard.show();
    wizard.activateWindow();
}

FaultFixture::~FaultFixture()
{
    walk.stop();
    tolvar.unplug();
    if (!waitFor([this] { return isForgotten() && !hasOpenTtys(); }))
        QTest::qFail("the port was expected to be closed after the unplugging", __FILE__, __LINE__);
    qInstallMessageHandler(nullptr);
    listener() = nullptr;
    wizard.hide();
}

bool FaultFixture::waitFor(const std::function<bool()> &holds) const
{
    // Does not use QTest::qWaitFor(), which sleeps between its checks: a long reply arrives in a thousand
    // reads.
    QEventLoop loop;
    QTimer looks;
    QObject::connect(&looks, &QTimer::timeout, &loop, [&] {
        if (holds())
            loop.exit(1);
    });
    looks.start(lookPause);
    QTimer::singleShot(patience, &loop, &QEventLoop::quit);
    return holds() || loop.exec() == 1;
}

void FaultFixture::waitUntilQuiet() const
{
    // Longer than the wizard itself ever waits. It need not be exact: any moment is suitable for unplugging.
    constexpr int silence = 1500; // milliseconds
    QElapsedTimer sinceLastByte;
    qsizetype passed = -1;
    waitFor([&] {
        if (passed != tolvar.passed())
            sinceLastByte.start();
        passed = tolvar.passed();
        return walk.isDone() || sinceLastByte.hasExpired(silence);
    });
}

bool FaultFixture::isTalking(const ZVTolvarSetupWizard &wizard)
{
    const auto controllers = wizard.findChildren<ZVTolvar *>();
    return std::any_of(controllers.cbegin(), controllers.cend(), [](ZVTolvar *controller) {
        const ZVTolvarTestPeer inside{*controller};
        return !inside.queue().isEmpty() || (inside.state() != NOT_CONNECTED && inside.state() != IN_PROMPT);
    });
}

bool FaultFixture::isTalking()
{
    const qsizetype passed = tolvar.isAtRest() ? tolvar.passed() : -1;
    // At rest twice in a row: data that was just read reaches the controllers through the event loop.
    const bool isQuiet = std::exchange(_passedAtRest, passed) == passed && passed >= 0;
    return !isQuiet || isTalking(wizard);
}

bool FaultFixture::isForgotten() const
{
    const auto controllers = wizard.findChildren<ZVTolvar *>();
    return std::all_of(controllers.cbegin(), controllers.cend(), [](ZVTolvar *controller) {
        const ZVTolvarTestPeer inside{*controller};
        return inside.portName().isEmpty() && inside.state() == NOT_CONNECTED;
    });
}

QString FaultFixture::shown(const char *label) const
{
    const auto *const found = wizard.currentPage()->findChild<QLabel *>(QLatin1String(label));
    return found ? found->text() : QStringLiteral("no such label");
}

QString FaultFixture::wrongAfterUnplug() const
{
    QStringList wrong;
    const auto expect = [&wrong](const QString &what, const QVariant &seen, const QVariant &expected) {
        if (seen != expected)
            wrong += what + " was expected to be \"" + expected.toString() + "\" and is \"" +
                     seen.toString() + '"';
    };
    const auto expectEnabled = [&](const char *button, bool expected) {
        expect(QLatin1String(button),
               wizard.currentPage()->findChild<QPushButton *>(QLatin1String(button))->isEnabled(), expected);
    };
    const auto expectBusy = [&](bool expected) {
        expect(QStringLiteral("the busy bar"),
               wizard.currentPage()->findChild<QProgressBar *>()->isVisibleTo(wizard.currentPage()),
               expected);
    };
    const ZVTolvarTestPeer inside{*wizard._tolvar};
    expect(QStringLiteral("the queue"), inside.queue(), QStringList());
    expect(QStringLiteral("the system ID"), wizard._tolvar->systemID(), QString());
    expect(QStringLiteral("the list of networks"), wizard._tolvar->scannedNetworks()->size(), 0);

    const bool isSaved = _verdict.isEmpty() ? false : wizard.button(QWizard::FinishButton)->isEnabled();
    switch (wizard.currentId()) {
    case ConnectPageId:
        expect(QStringLiteral("the progress text"), shown("label_progress"),
               _wasIdentified ? "Looking for ZV Tolvar" : "Getting status");
        expectBusy(true);
        expect(QStringLiteral("Continue"), wizard.button(QWizard::NextButton)->isEnabled(), false);
        break;
    case TolvarFoundPageId:
        for (const char *label : {"label_Network", "label_SystemId", "label_Status", "label_Version"})
            expect(QLatin1String(label), shown(label), QString());
        break;
    case ChooseNetworkPageId:
        for (const auto *field : wizard.currentPage()->findChildren<QLineEdit *>())
            expect(field->objectName(), field->text(), QString());
        expect(QStringLiteral("the list"),
               wizard.currentPage()->findChild<QListView *>()->model()->rowCount(), 0);
        expectBusy(_isScanning);
        expectEnabled("refreshButton", !_isScanning);
        expect(QStringLiteral("Continue"), wizard.button(QWizard::NextButton)->isEnabled(), false);
        break;
    case TestNetworkPageId:
        expect(QStringLiteral("the verdict"), shown("label"),
               isSaved ? QStringLiteral("Configuration saved\n") : _verdict);
        expectBusy(_verdict.startsWith(QLatin1String("Please wait")));
        break;
    default:
        expect(QStringLiteral("the page"), wizard.currentId(), QStringLiteral("one of the typical run's"));
    }
    return wrong.join(QLatin1String("; "));
}

QString FaultFixture::walkAgain(const QByteArray &ttyName)
{
    tolvar.setFaults({});
    const qsizetype linesBefore = tolvar.state().lines.size();
    if (!tolvar.plug(ttyName))
        return QStringLiteral("the bed does not take the device again");
    while (wizard.currentId() != ConnectPageId)
        wizard.back();
    walk.start();
    if (!waitFor([this] { return walk.isDone(); }))
        return QStringLiteral("the walk was expected to go through after the replug, and stays on ") +
               wizard.currentPage()->objectName();
    // The device may still have to receive a line or two.
    if (!waitFor([this] { return tolvar.state().exited; }))
        return QStringLiteral("the device was expected to leave its setup mode in the end");
    const TolvarState state = tolvar.state();
    if (state.saved.network != wishes.ssid.toLatin1() ||
        state.saved.passphrase != wishes.passphrase.toLatin1())
        return QStringLiteral("the device was expected to keep what was wished for");
    if (state.lineTexts().mid(linesBefore).value(0) != "C")
        return QStringLiteral("the device was expected to be woken first");
    return {};
}

void FaultFixture::listen(std::function<void(QtMsgType, const QString &)> heard)
{
    listener() = std::move(heard);
}

QString FaultFixture::lastMessages()
{
    return messages().join('\n');
}
