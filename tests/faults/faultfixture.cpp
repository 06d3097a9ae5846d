#include "tests/faults/faultfixture.h"

#include <QAbstractItemModel>
#include <QEventLoop>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QTest>
#include <QTimer>

#include "device/zvtolvar.h"
#include "pages/pageid.h"
#include "tests/support/descriptors.h"
#include "tests/support/zvtolvartestpeer.h"

namespace
{
constexpr int timeoutMs = 120000;
constexpr int pollInterval = 5; // milliseconds
constexpr int shownMessages = 25;

/// Returns whether a tty is still open in this process, at the device's end or at the wizard's.
bool hasOpenTtys()
{
    return !openDescriptors().filter(QStringLiteral("/dev/pts/")).isEmpty();
}
} // namespace

DeviceConfig tersestTolvar()
{
    DeviceConfig config;
    config.systemId = "T";
    config.configuration = {"A", "a"};
    config.air = {TolvarNetwork{"B", "b", "WPA2"}};
    config.missingFromStatus = {"firmware_date",  "mask", "gateway", "dns",   "test_result",
                                "upgrade_result", "ant",  "trc",     "sl_on", "sl_ip"};
    return config;
}

FaultFixture::FaultFixture(const DeviceConfig &config, const UserInput &input)
    : userInput(input)
    , tolvar(bus, config)
    , robot(wizard)
{
    // A later step of the user would change the state that the unplugging leaves.
    QObject::connect(&tolvar, &PluggedPort::pulledOut, &robot, &WizardRobot::stop);
    robot.waitWhile([this] { return isBusy(); });
    wizard.show();
    wizard.activateWindow();
}

FaultFixture::~FaultFixture()
{
    robot.stop();
    tolvar.unplug();
    if (!waitFor([this] { return isPortReleased() && !hasOpenTtys(); }))
        QTest::qFail("the port is expected to be closed after unplugging", __FILE__, __LINE__);
    wizard.hide();
}

bool FaultFixture::waitFor(const std::function<bool()> &holds) const
{
    // Does not use QTest::qWaitFor(), which sleeps between its checks: a long reply arrives in a thousand
    // reads.
    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (holds())
            loop.exit(1);
    });
    poll.start(pollInterval);
    QTimer::singleShot(timeoutMs, &loop, &QEventLoop::quit);
    return holds() || loop.exec() == 1;
}

bool FaultFixture::isBusy(const ZVTolvarSetupWizard &wizard)
{
    const auto controllers = wizard.findChildren<ZVTolvar *>();
    return std::any_of(controllers.cbegin(), controllers.cend(), [](ZVTolvar *controller) {
        const ZVTolvarTestPeer inside{*controller};
        return !inside.queue().isEmpty() || (inside.state() != NOT_CONNECTED && inside.state() != IN_PROMPT);
    });
}

bool FaultFixture::isBusy()
{
    const qsizetype passed = tolvar.isAtRest() ? tolvar.passed() : -1;
    // At rest twice in a row: data that was just read reaches the controllers through the event loop.
    const bool isQuiet = std::exchange(_passedAtRest, passed) == passed && passed >= 0;
    return !isQuiet || isBusy(wizard);
}

bool FaultFixture::isPortReleased() const
{
    const auto controllers = wizard.findChildren<ZVTolvar *>();
    return std::all_of(controllers.cbegin(), controllers.cend(), [](ZVTolvar *controller) {
        const ZVTolvarTestPeer inside{*controller};
        return inside.portName().isEmpty() && inside.state() == NOT_CONNECTED;
    });
}

QString FaultFixture::walk()
{
    robot.start(userInput);
    if (!waitFor([this] { return robot.isDone(); }))
        return problem("the user is expected to reach the end, but is on " +
                       wizard.currentPage()->objectName());
    // The last lines may still be on their way to the device.
    if (!waitFor([this] { return tolvar.state().exited; }))
        return problem(QStringLiteral("the device is expected to leave setup mode"));
    const TolvarState state = tolvar.state();
    if (state.saved.network != userInput.ssid.toLatin1() ||
        state.saved.passphrase != userInput.passphrase.toLatin1())
        return problem(QStringLiteral("the device is expected to have the user's settings"));
    return {};
}

QString FaultFixture::unplug()
{
    robot.stop();
    tolvar.unplug();
    if (!waitFor([this] { return isPortReleased(); }))
        return problem(QStringLiteral("the controllers are expected to release the port"));
    QStringList left = ZVTolvarTestPeer{*wizard._tolvar}.queue() + wizard._tolvar->scannedNetworks()->keys();
    left += wizard._tolvar->systemID();
    const QWizardPage *const page = wizard.currentPage();
    for (const char *label : {"label_Network", "label_SystemId", "label_Status", "label_Version"}) {
        if (const auto *found = page->findChild<QLabel *>(QLatin1String(label)))
            left += found->text();
    }
    for (const auto *field : page->findChildren<QLineEdit *>())
        left += field->text();
    for (const auto *list : page->findChildren<QListView *>())
        left += QString(list->model()->rowCount(), QLatin1Char('*'));
    left.removeAll(QString());
    if (!left.isEmpty())
        return problem("expected no data of the device, but found: " + left.join(", "));
    const bool needsDevice = wizard.currentId() == ConnectPageId || wizard.currentId() == ChooseNetworkPageId;
    if (needsDevice && robot.canContinue())
        return problem(QStringLiteral("Continue is expected to be disabled"));
    return {};
}

QString FaultFixture::walkAgain(const QByteArray &ttyName)
{
    tolvar.setFaults({});
    const qsizetype linesBefore = tolvar.state().lines.size();
    tolvar.plug(ttyName);
    while (wizard.currentId() != ConnectPageId)
        wizard.back();
    QString wrong = walk();
    if (wrong.isEmpty() && tolvar.state().lineTexts().mid(linesBefore).value(0) != "C")
        return problem(QStringLiteral("the device is expected to be woken first"));
    return wrong;
}

QString FaultFixture::problem(const QString &what) const
{
    return what + '\n' + messages.messages().mid(messages.messages().size() - shownMessages).join('\n');
}
