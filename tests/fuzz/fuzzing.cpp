#include "tests/fuzz/fuzzing.h"

#include <cstdio>
#include <cstdlib>

#include <QCoreApplication>
#include <QXmlStreamReader>

#include "device/zvtolvar.h"

void Fuzzing::require(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

bool Fuzzing::comesBack(const QString &document)
{
    QXmlStreamReader reader(document);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        const auto root = reader.name();
        return root == QLatin1String("puckdata") || root == QLatin1String("scan_results") ||
               root == QLatin1String("networktest_results") || root == QLatin1String("log_file");
    }
    return true; // nothing to be held by
}

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);
// The signature is libFuzzer's. NOLINTNEXTLINE(readability-non-const-parameter)
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication application(*argc, *argv);
    static const ZVTolvar keepsTheListOfPorts; // which would be made anew for each input
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {}); // too many
    return 0;
}
