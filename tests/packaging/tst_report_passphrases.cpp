#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include "tests/e2e/scenario.h"

// This test shares no code with the script that removes the passphrases. It joins the log lines in each way
// that a person could try, and searches the results for the passphrase.

namespace
{
QByteArray withoutReferences(QByteArray text)
{
    return text.replace("&lt;", "<")
        .replace("&gt;", ">")
        .replace("&quot;", "\"")
        .replace("&apos;", "'")
        .replace("&amp;", "&");
}

QByteArray withoutWhiteSpace(QByteArray text)
{
    for (const char space : {' ', '\t', '\r', '\n'})
        text.replace(space, "");
    return text;
}

/// Returns the texts that result from joining the messages of a log.
QByteArrayList readings(const QByteArray &log)
{
    QByteArray received;
    QByteArray receivedOnce; // with two readers, the log contains each message twice
    QByteArray everything;
    QByteArray previous;
    for (const LogMessage &message : messagesOf(log)) {
        const QByteArray text = message.text.endsWith(' ') ? message.text.chopped(1) : message.text;
        everything += text;
        if (message.level != 'W')
            continue;
        received += text;
        if (text == previous) {
            previous.clear();
            continue;
        }
        receivedOnce += text;
        previous = text;
    }
    QByteArrayList readings = {log, received, receivedOnce, everything};
    for (const QByteArray &reading : QByteArrayList(readings))
        readings += withoutReferences(reading);
    for (const QByteArray &reading : QByteArrayList(readings))
        readings += withoutWhiteSpace(reading);
    return readings;
}

/// Returns the forms in which a log may contain a passphrase.
QByteArrayList encodings(const QString &passphrase)
{
    QByteArrayList encodings = {passphrase.toUtf8(), passphrase.toLatin1(), passphrase.trimmed().toUtf8()};
    encodings += QString::fromLatin1(passphrase.toUtf8()).toUtf8(); // UTF-8 read as Latin-1
    for (const QByteArray &encoding : QByteArrayList(encodings))
        encodings += withoutWhiteSpace(encoding);
    return encodings;
}

/// Returns the pieces of a passphrase that are five characters long.
QByteArrayList piecesOf(const QString &passphrase)
{
    constexpr int length = 5;
    QByteArrayList pieces;
    for (int start = 0; start + length <= passphrase.size(); ++start)
        pieces += passphrase.mid(start, length).toUtf8();
    return pieces;
}

/// Returns where one of \a texts is found, in upper or lower case; empty if none is.
QByteArray findAny(const QByteArrayList &texts, const QByteArrayList &readings)
{
    for (const QByteArray &reading : readings) {
        const QByteArray lower = reading.toLower();
        for (const QByteArray &text : texts) {
            const qsizetype at = lower.indexOf(text.toLower());
            if (at >= 0)
                return text + " in ..." + reading.mid(at - 60, text.size() + 120) + "...";
        }
    }
    return {};
}

struct Run {
    TolvarNetwork network;
    QStringList passphrases; ///< in the order in which they are tried; the last one is right
    LineFaults::Reads reads = LineFaults::AsTheyCome;
    bool isPluggedLater = false; ///< then both controllers read
    bool isReplyLost = false;    ///< two readers, byte by byte: later replies look like echo
};
} // namespace
Q_DECLARE_METATYPE(Run)

/// Sends passphrases through the real program, and tests that the report for support does not contain them.
class TestReportPassphrases : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noPassphraseIsInTheReport_data();
    void noPassphraseIsInTheReport();

private:
    static bool walks(Scenario &s, const Run &run);
    static QByteArray report(const Scenario &s);
};

void TestReportPassphrases::noPassphraseIsInTheReport_data()
{
    const auto network = [](const QByteArray &name, const QString &passphrase,
                            const QByteArray &security = "WPA2") {
        TolvarNetwork result;
        result.ssid = name;
        result.passphrase = passphrase.toLatin1();
        result.security = security;
        return result;
    };
    QTest::addColumn<Run>("run");

    const QString markup = "<b>\"it's a & b\"</b>";
    QTest::newRow("markup and quotes, after a wrong passphrase")
        << Run{network("Barn", markup), {"mistyped first", markup}};
    const QString latin1 = QString::fromUtf8("Gr\xc3\xb6\xc3\x9f\x65nma\xc3\x9f §");
    QTest::newRow("Latin-1, read byte by byte") << Run{network("Barn", latin1), {latin1}, LineFaults::Single};
    const QString spaces = "  two  yellow  spaces  ";
    QTest::newRow("spaces, two readers, byte by byte")
        << Run{network("Barn", spaces), {spaces}, LineFaults::Single, true, true};
    QTest::newRow("the passphrase is also the network's name, two readers")
        << Run{network("Quixotic jam", "Quixotic jam"), {"Quixotic jam"}, LineFaults::AsTheyCome, true};
    QTest::newRow("a WEP key") << Run{network("Barn", "3f9a77c01e", "WEP"), {"3f9a77c01e"}};
}

bool TestReportPassphrases::walks(Scenario &s, const Run &run)
{
    if (!s.robot.waitForDevice())
        return false;
    // Both controllers request the status. A reply that arrives during the scan would end it.
    const int queries = run.isPluggedLater ? 2 : 1;
    if (!s.tolvar.waitUntil([&] { return s.received().count("get") == queries && s.tolvar.isAtRest(); },
                            20000))
        return false;
    if (!s.robot.continueToNetworks() || !s.robot.waitForNetworks() ||
        !s.robot.chooseNetwork(QString::fromLatin1(run.network.ssid)))
        return false;
    for (const QString &passphrase : run.passphrases) {
        if (!s.robot.typePassphrase(passphrase) || !s.robot.continueToNext())
            return false;
        if (run.network.security == "WEP" && !s.robot.continueToNext())
            return false;
        if (passphrase == run.passphrases.last())
            return s.robot.waitForSuccess() && s.robot.save() && s.robot.finish();
        if (!s.robot.waitForText("The network was found, but the passphrase was invalid\n") ||
            !s.robot.goBack())
            return false;
    }
    return false;
}

QByteArray TestReportPassphrases::report(const Scenario &s)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", s.inHome(""));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(s.inHome(""));
    process.start(ZV_REPORT, {"report.txt"});
    if (!process.waitForFinished(60000) || process.exitCode() != 0)
        qWarning("zvinstall-report failed: %s", process.readAllStandardError().constData());
    QFile file(s.inHome("report.txt"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TestReportPassphrases::noPassphraseIsInTheReport()
{
    QFETCH(Run, run);
    DeviceConfig config;
    config.air = {run.network};
    config.delays = TolvarDelays();
    Scenario s(config);
    LineFaults faults;
    faults.reads = run.reads;
    s.tolvar.setFaults(faults);
    if (!run.isPluggedLater)
        QVERIFY(s.tolvar.plug());
    ZV_STEP(s, s.start());
    if (run.isPluggedLater) {
        ZV_STEP(s, s.robot.waitForSearch());
        QVERIFY(s.tolvar.plug());
    }
    ZV_STEP(s, walks(s, run));

    const QByteArrayList logged = readings(s.sessionLog());
    const QByteArray report = TestReportPassphrases::report(s);
    const QByteArrayList shown = readings(report);
    for (const QString &passphrase : run.passphrases) {
        const QByteArrayList texts = encodings(passphrase);
        QVERIFY2(!findAny(texts, logged).isEmpty(), "the passphrase is expected in the session log");
        const QByteArray found = findAny(texts + piecesOf(passphrase), shown);
        QVERIFY2(found.isEmpty(), found.constData());
    }
    // The information that support needs is still there.
    QByteArrayList useful = {"D:****Device DISCOVERED: \n",    "<name>TOLVAR-4711</name>",
                             "D:->IN_PROMPT - end scaning \n", "D:--> \"setpass [removed]",
                             "D:->IN_PROMPT - end testing \n", "D:--> \"exit\r\n"};
    if (!run.isReplyLost)
        useful += "result=\"0\"";
    for (const QByteArray &text : useful) {
        QVERIFY2(std::any_of(shown.cbegin(), shown.cend(),
                             [&](const QByteArray &reading) { return reading.contains(text); }),
                 ("expected in the report: " + text).constData());
    }
    QVERIFY(report.contains("0403:6001 "));
}

QTEST_GUILESS_MAIN(TestReportPassphrases)
#include "tst_report_passphrases.moc"
