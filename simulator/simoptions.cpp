#include "simulator/simoptions.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>

namespace
{
/// Reads the options of a parsed command line one by one and records the first error.
class OptionReader
{
public:
    OptionReader(const QCommandLineParser &parser, QString &problem)
        : _parser(parser)
        , _problem(problem)
    {
    }

    bool isSet(const char *name) const { return _parser.isSet(QLatin1String(name)); }
    QString text(const char *name) const { return _parser.value(QLatin1String(name)); }
    QByteArray bytes(const char *name) const { return text(name).toLocal8Bit(); }

    void readMilliseconds(const char *name, int &value)
    {
        bool isNumber = true;
        const int number = isSet(name) ? text(name).toInt(&isNumber) : value;
        if (!isNumber || number < 0)
            complain(
                QStringLiteral("--%1 takes milliseconds, not \"%2\".").arg(QLatin1String(name), text(name)));
        else
            value = number;
    }

    void readUsbId(const char *name, quint16 &value)
    {
        bool isNumber = true;
        const quint16 number = isSet(name) ? text(name).toUShort(&isNumber, 16) : value;
        if (!isNumber)
            complain(QStringLiteral("--%1 takes a hexadecimal USB id such as 0403, not \"%2\".")
                         .arg(QLatin1String(name), text(name)));
        else
            value = number;
    }

    void complain(const QString &sentence)
    {
        if (_problem.isEmpty())
            _problem = sentence;
    }

private:
    const QCommandLineParser &_parser;
    QString &_problem;
};

void declareOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(QStringLiteral(
        "Runs a program on a computer with a simulated ZV Tolvar. Prints their conversation and the "
        "final state of the device.\n"
        "SIGUSR1 unplugs the device; the next SIGUSR1 plugs it in again."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("PROGRAM"), QStringLiteral("The program to run."));
    parser.addPositionalArgument(QStringLiteral("ARGS"), QStringLiteral("Its arguments."),
                                 QStringLiteral("[ARGS...]"));
    // clang-format off
    const auto add = [&parser](const char *name, const char *help, const char *value = "") {
        parser.addOption({QLatin1String(name), QLatin1String(help), QLatin1String(value)});
    };
    add("plug-after",     "Plug the device in this long after the program's start, instead of before it.", "ms");
    add("bridge",         "Its USB bridge: ftdi (0403:6001, by default) or prolific (067b:2303).", "name");
    add("vid",            "Another USB vendor id.", "hex");
    add("pid",            "Another USB product id.", "hex");
    add("tty",            "The first tty, by default ttyUSB0. Each plug-in takes the next number.", "ttyUSBn");
    add("foreign",        "Plug in two ports of other devices before it.");
    add("firmware",       "Its firmware version, by default A060.", "version");
    add("network",        "A network in range, instead of the default six. Repeatable. An empty PASS makes "
                          "it open. SEC is OPEN, WEP, WPA or WPA2, the last by default.", "SSID=PASS[:SEC]");
    add("log-file",       "The text of the device's own log.", "file");
    add("scan-delay",     "How long a scan takes, by default 2500.", "ms");
    add("test-delay",     "How long a network test takes, by default 3000.", "ms");
    add("no-scan-delay",  "Scan and test at once.");
    add("system-error",   "Network tests end with a system error.");
    add("verbose",        "Show documents in full, prompts and traces too.");
    add("expect-ssid",    "End with status 1 unless the device has saved that network name.", "text");
    add("expect-pass",    "End with status 1 unless it has saved that passphrase.", "text");
    add("expect-exit",    "End with status 1 unless it has left setup mode.");
    // clang-format on
}

// SSID=PASS[:SEC]. The name ends at the first '='. A passphrase may contain any character, so the part after
// its last ':' is the security type only if it is the name of one.
TolvarNetwork networkFrom(const QString &text, OptionReader &options)
{
    static const QRegularExpression form(QStringLiteral("^([^=]+)=(.*?)(?::(OPEN|WEP|WPA|WPA2))?$"),
                                         QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        options.complain(QStringLiteral("--network takes SSID=PASS[:SEC], not \"%1\".").arg(text));

    TolvarNetwork network;
    network.ssid = match.captured(1).toLocal8Bit();
    network.passphrase = match.captured(2).toLocal8Bit();
    network.security = match.captured(3).toLocal8Bit();
    if (network.security.isEmpty())
        network.security = network.passphrase.isEmpty() ? "OPEN" : "WPA2";
    if (network.security == "WEP")
        network.suites = "WEP40";
    else if (network.security == "OPEN")
        network.suites = "NONE";
    return network;
}

void readDevice(OptionReader &options, const QStringList &networks, DeviceConfig &config)
{
    config.delays.scan = 2500;
    config.delays.test = 3000;
    if (options.isSet("no-scan-delay"))
        config.delays = TolvarDelays();
    options.readMilliseconds("scan-delay", config.delays.scan);
    options.readMilliseconds("test-delay", config.delays.test);
    config.faults.systemErrorOnTest = options.isSet("system-error");
    if (options.isSet("firmware"))
        config.firmwareVersion = options.bytes("firmware");
    if (!networks.isEmpty())
        config.air.clear();
    for (const QString &text : networks)
        config.air += networkFrom(text, options);
    if (options.isSet("log-file")) {
        QFile file(options.text("log-file"));
        if (!file.open(QIODevice::ReadOnly))
            options.complain(
                QStringLiteral("Cannot read the log file %1: %2.").arg(file.fileName(), file.errorString()));
        else
            config.logText = file.readAll();
    }
}

void readPort(OptionReader &options, SimOptions &result)
{
    const QString bridge = options.text("bridge");
    if (bridge == QLatin1String("prolific"))
        result.bridge = UsbBridge::prolific();
    else if (options.isSet("bridge") && bridge != QLatin1String("ftdi"))
        options.complain(QStringLiteral("--bridge is ftdi or prolific, not \"%1\".").arg(bridge));
    options.readUsbId("vid", result.bridge.vendor);
    options.readUsbId("pid", result.bridge.product);
    if (options.isSet("tty")) {
        static const QRegularExpression form(QStringLiteral("^ttyUSB(0|[1-9][0-9]{0,8})$"));
        const QRegularExpressionMatch match = form.match(options.text("tty"));
        if (!match.hasMatch())
            options.complain(
                QStringLiteral("--tty takes a name such as ttyUSB0, not \"%1\".").arg(options.text("tty")));
        result.firstTty = match.captured(1).toInt();
    }
}
} // namespace

std::optional<SimOptions> readOptions(const QStringList &arguments, QString &problem)
{
    QCommandLineParser parser;
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    declareOptions(parser);
    if (!parser.parse(arguments)) {
        problem = parser.errorText();
        return std::nullopt;
    }
    if (parser.isSet(QStringLiteral("version")))
        parser.showVersion();
    if (parser.isSet(QStringLiteral("help")) || parser.isSet(QStringLiteral("help-all")))
        parser.showHelp();

    SimOptions result;
    OptionReader options(parser, problem);
    readDevice(options, parser.values(QStringLiteral("network")), result.config);
    readPort(options, result);
    options.readMilliseconds("plug-after", result.plugAfter);
    result.hasForeign = options.isSet("foreign");
    result.isVerbose = options.isSet("verbose");
    if (options.isSet("expect-ssid"))
        result.expectedSsid = options.bytes("expect-ssid");
    if (options.isSet("expect-pass"))
        result.expectedPassphrase = options.bytes("expect-pass");
    result.mustExit = options.isSet("expect-exit");
    result.program = parser.positionalArguments();
    if (result.program.isEmpty())
        options.complain(QStringLiteral("No program given. Put it after \"--\"; see --help."));
    if (!problem.isEmpty())
        return std::nullopt;
    return result;
}
