// bench_scanpage: the time that the choose-network page needs for the reply to a scan. The page rebuilds its
// list for each network of the reply, and each time logs each name in the list.

#include <QApplication>
#include <QListView>
#include <QTest>

#include "app/zvtolvarsetupwizard.h"
#include "bench/measure.h"
#include "device/zvtolvar.h"
#include "messages/diagnostics.h"
#include "messages/sessionlog.h"
#include "pages/pageid.h"
#include "tests/support/wizardrobot.h"

namespace
{
constexpr int turns = 5;

void ignore(QtMsgType, const QMessageLogContext &, const QString &) {}

QString scanReply(int networks)
{
    QString document = QStringLiteral("<scan_results>");
    for (int i = 0; i < networks; ++i)
        document +=
            QStringLiteral("<scan SSID=\"Network number %1\" channel=\"6\" adhoc=\"N\" sec=\"WPA2 (PSK)\" "
                           "suites=\"CCMP\" WPS=\"N\" RSSI=\"-60\"/>")
                .arg(i);
    return document + QStringLiteral("</scan_results>");
}

/// The wizard on its choose-network page, which can receive scan replies repeatedly.
class ScanPage
{
public:
    ScanPage()
    {
        _wizard.show();
        if (!QTest::qWaitForWindowExposed(&_wizard))
            qFatal("no window");
        _wizard._tolvar->onResponseReceived("<puckdata><name>TOLVAR-1</name></puckdata>");
        _robot.goTo(ChooseNetworkPageId);
    }

    /// Processes a reply until the list is on the screen.
    void receive(const QString &reply)
    {
        _wizard._tolvar->onResponseReceived(reply);
        QApplication::processEvents();
    }
    int rows() const { return _robot.widget<QListView>("networkListView")->model()->rowCount(); }

private:
    ZVTolvarSetupWizard _wizard;
    WizardRobot _robot{_wizard};
};

void timeRebuilds(ScanPage &page, int networks, double limit)
{
    const QString reply = scanReply(networks);
    Measure measure{QString("%1 networks: list rebuilds").arg(networks)};
    if (limit > 0) {
        measure.name += QString(", against %1 s").arg(limit / 1000);
        measure.limit = 1;
    }
    page.receive(reply);
    for (int turn = 0; turn < turns; ++turn) {
        measure.ours += processorMilliseconds([&] { page.receive(reply); });
        if (limit > 0)
            measure.against += limit;
    }
    if (page.rows() != networks)
        qFatal("the list has %d rows", page.rows());
    measure.report();
}

/// Measures the same, including the lines in the session log.
void timeLines(ScanPage &page, int networks)
{
    const QString reply = scanReply(networks);
    const qsizetype linesBefore = sessionLogLines().size();
    page.receive(reply);
    const QList<QByteArray> lines = sessionLogLines().mid(linesBefore);
    if (lines.size() < networks * (networks + 1) / 2)
        qFatal("the session log has only %d lines", int(lines.size()));

    Measure measure{QString("%1 networks: rebuilds with their %2 log lines").arg(networks).arg(lines.size()),
                    "ms", 1.5};
    measure.timeByTurns(
        turns, [&] { page.receive(reply); }, [&] { writePlainLines(lines); });
    measure.report();
}
} // namespace

int main(int argc, char *argv[])
{
    const QApplication app(argc, argv);
    enableAllMessages();
    qInstallMessageHandler(ignore);
    ScanPage page;
    timeRebuilds(page, 10, 0);
    timeRebuilds(page, 100, 0);
    timeRebuilds(page, 500, 500);

    openSessionLog();
    installMessageHandler();
    timeLines(page, 500);
    return 0;
}
