#include "tests/e2e/scenario.h"

#include <QDir>
#include <QFile>
#include <QTest>

Scenario::Scenario(const DeviceConfig &config, const UsbBridge &bridge)
    : tolvar(bus, config, bridge)
    , robot(screen)
{
    QObject::connect(&tolvar, &PluggedTolvar::conversation, &tolvar,
                     [this](SimulatedTolvar::Speech what, const QByteArray &text) {
                         const auto kind = QVariant::fromValue(what).toString();
                         _conversation += kind + ": " + QString::fromLatin1(text.simplified());
                     });
    screen.setHome(_home.path());
}

Scenario::~Scenario()
{
    if (QTest::currentTestFailed()) {
        const QString folder = QStringLiteral("e2e-failures/%1-%2")
                                   .arg(QLatin1String(QTest::currentTestFunction()),
                                        QLatin1String(QTest::currentDataTag()).toString().replace('/', '_'));
        QDir().mkpath(folder);
        screen.saveDiagnostics(folder);
        const auto leave = [&folder](const QString &name, const QByteArray &contents) {
            QFile file(folder + "/" + name);
            if (file.open(QIODevice::WriteOnly))
                file.write(contents);
        };
        leave("zvinstall.log", sessionLog());
        leave("device.txt", _conversation.join('\n').toUtf8());
        qWarning("the screen, the output and the logs are in %s", qPrintable(QDir(folder).absolutePath()));
    }
    screen.terminate();
    // A terminated program leaves its lock file. Another test may get the same port name, and another process
    // the same id.
    QFile::remove(QStringLiteral("/var/lock/LCK..") + QString::fromLatin1(tolvar.ttyName()));
}

bool Scenario::start()
{
    return screen.start(qEnvironmentVariable("ZV_PROGRAM"));
}

bool Scenario::findDevice()
{
    return tolvar.plug() && start() && robot.waitForDevice();
}

bool Scenario::findNetworks()
{
    return findDevice() && robot.continueToNetworks() && robot.waitForNetworks();
}

bool Scenario::unplug()
{
    tolvar.unplug();
    return screen.waitUntil([this] { return sessionLog().contains("D:****Device REMOVED: \n"); },
                            "the removal in the session log");
}

QByteArray Scenario::sessionLog() const
{
    QFile file(inHome("zvinstall.log"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TolvarState Scenario::deviceState()
{
    if (tolvar.isPlugged())
        tolvar.receivePending();
    return tolvar.state();
}

QList<QByteArray> Scenario::received()
{
    return deviceState().lineTexts();
}

QList<QByteArray> Scenario::receivedSinceStatus()
{
    const QList<QByteArray> lines = received();
    return lines.mid(lines.lastIndexOf("get") + 1);
}

bool Scenario::deviceGets(const QByteArray &word)
{
    return tolvar.waitFor(
        [&word](const TolvarState &state) {
            const QList<QByteArray> lines = state.lineTexts();
            return std::any_of(lines.cbegin(), lines.cend(),
                               [&word](const QByteArray &line) { return line.startsWith(word); });
        },
        20000);
}

QList<QByteArray> typicalLines(const QByteArray &ssid, const QByteArray &passphrase)
{
    return {"setuarttrace y",        "save", "scan",         "setuarttrace n",  "setssid " + ssid,
            "setpass " + passphrase, "test", "ant_select 0", "setssid " + ssid, "setpass " + passphrase,
            "setstaticip N",         "save", "exit"};
}

DeviceConfig openNetwork()
{
    DeviceConfig config;
    config.configuration.network = "Library";
    return config;
}

QList<LogMessage> messagesOf(const QByteArray &log)
{
    QList<LogMessage> messages;
    const QList<QByteArray> lines = (log.endsWith('\n') ? log.chopped(1) : log).split('\n');
    for (const QByteArray &line : lines) {
        static const QByteArray levels("DWCF");
        if (line.size() > 1 && line.at(1) == ':' && levels.contains(line.at(0)))
            messages.append({line.at(0), line.mid(2)});
        else if (!messages.isEmpty())
            messages.last().text += '\n' + line;
    }
    return messages;
}
