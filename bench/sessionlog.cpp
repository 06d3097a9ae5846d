// bench_sessionlog: the time to compose lines of the session log and write them to the file and to standard
// output, compared with the time to write and flush the same lines to both.

#include <QCoreApplication>

#include "bench/measure.h"
#include "messages/diagnostics.h"
#include "messages/sessionlog.h"

namespace
{
constexpr int turns = 31;
constexpr int lineCount = 5000;

void logLine(int number)
{
    switch (number % 4) {
    case 0:
        zvDebug() << "->IN_RESPONSE_RECEIVE";
        break;
    case 1:
        zvDebug() << "_commState = " << QStringLiteral("WAITING_FOR_CONSOLE_PROMPT");
        break;
    case 2:
        zvDebug() << "-->" << QByteArray("setssid The name with thirty-two letters");
        break;
    default:
        zvWarning() << "<scan SSID=\"Workshop\" channel=\"6\" sec=\"WPA2 (PSK)\" RSSI=\"-60\"/>";
    }
}
} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    openSessionLog();
    installMessageHandler();

    for (int line = 0; line < lineCount; ++line)
        logLine(line);
    const QList<QByteArray> lines = sessionLogLines();
    if (lines.size() != lineCount)
        qFatal("the session log has %d lines", int(lines.size()));

    Measure measure{"5,000 lines of the session log", "ms", 1.5};
    measure.timeByTurns(
        turns,
        [] {
            for (int line = 0; line < lineCount; ++line)
                logLine(line);
        },
        [&] { writePlainLines(lines); });
    measure.report();
    return 0;
}
