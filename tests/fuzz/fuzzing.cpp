#include "tests/fuzz/fuzzing.h"

#include <cstdio>
#include <cstdlib>

#include <QCoreApplication>

#include "device/qcorexmlstreamreader.h"
#include "device/zvtolvar.h"

void Fuzzing::require(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "requirement not met: %s\n", what);
    std::abort();
}

bool Fuzzing::isKnownRoot(QStringView name)
{
    return name == QLatin1String("puckdata") || name == QLatin1String("scan_results") ||
           name == QLatin1String("networktest_results") || name == QLatin1String("log_file");
}

bool Fuzzing::controllerReturns(const QString &document)
{
    // Most replies have no root at all, or a root as the device sends it; creating a reader takes long.
    if (!document.contains(QLatin1Char('<')) || document.startsWith(QLatin1String("<puckdata>")) ||
        document.startsWith(QLatin1String("<scan_results>")))
        return true;
    QCoreXmlStreamReader reader(document);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement)
            return isKnownRoot(reader.name());
    }
    return true;
}

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);
// The signature is libFuzzer's. NOLINTNEXTLINE(readability-non-const-parameter)
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication application(*argc, *argv);
    static const ZVTolvar keepsTheListOfPorts; // otherwise each input would create it again
    qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &) {}); // there are too many messages
    return 0;
}
