#include <memory>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include "device/qcorexmlstreamreader.h"
#include "tests/support/signalrecorder.h"
#include "tests/support/zvtolvartestpeer.h"

namespace
{
constexpr int Levels = 100000;

/// Skips the reader's current element by descending into each element in it.
void skipByDescending(QCoreXmlStreamReader &reader)
{
    reader.readNext();
    while (!reader.atEnd()) {
        if (reader.isEndElement()) {
            reader.readNext();
            return;
        }
        if (reader.isStartElement())
            skipByDescending(reader);
        else
            reader.readNext();
    }
}

/// Returns the position of a reader.
QStringList place(const QCoreXmlStreamReader &reader)
{
    return {reader.tokenString(), reader.name().toString(), QString::number(reader.characterOffset()),
            QString::number(reader.error())};
}
} // namespace

/// Tests reply documents that no working device sends: endless nesting, expanding entities, references to
/// files.
class TestExtremes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void deepNestingIsSkippedAsDescendingWould_data();
    void deepNestingIsSkippedAsDescendingWould();
    void hugeTextsAreRead();
    void anEntityBombEndsTheReading_data();
    void anEntityBombEndsTheReading();
    void aFileNamedInADocumentIsNotRead();

private:
    std::unique_ptr<ZVTolvar> _tolvar;
    std::unique_ptr<SignalRecorder> _diary;
};

void TestExtremes::init()
{
    _tolvar = std::make_unique<ZVTolvar>();
    _diary = std::make_unique<SignalRecorder>(_tolvar.get());
}

void TestExtremes::cleanup()
{
    _diary.reset();
    _tolvar.reset();
}

void TestExtremes::deepNestingIsSkippedAsDescendingWould_data()
{
    QTest::addColumn<QString>("unknown");
    QTest::addColumn<bool>("endsThere");
    const auto times = [](const char *text, int count) { return QString(text).repeated(count); };
    QTest::newRow("closed") << times("<a>", Levels) + times("</a>", Levels) << false;
    QTest::newRow("with something on each level")
        << times("<a><name>no</name>x", Levels) + times("<b/></a><!-- -->", Levels - 1) + "</a>" << false;
    QTest::newRow("cut off on the way down") << times("<a>", Levels) << true;
    QTest::newRow("cut off on the way up") << times("<a>", Levels) + times("</a>", Levels / 2) << true;
    QTest::newRow("one end missing") << times("<a>", Levels) + times("</a>", Levels - 1) << true;
    QTest::newRow("an end of another name") << times("<a>", Levels) + times("</a>", 9) + "</b>" << true;
}

void TestExtremes::deepNestingIsSkippedAsDescendingWould()
{
    QFETCH(QString, unknown);
    QFETCH(bool, endsThere);
    const QString document = "<puckdata><dns>4</dns>" + unknown + "<name>T1</name></puckdata>";
    const auto readerAtUnknown = [&document] {
        auto reader = std::make_unique<QCoreXmlStreamReader>(document);
        while (!reader->atEnd() && reader->name() != QLatin1String("a"))
            reader->readNext();
        return reader;
    };

    const auto expected = readerAtUnknown();
    const std::unique_ptr<QThread> descent(QThread::create([&expected] { skipByDescending(*expected); }));
    descent->setStackSize(512U << 20U); // enough to descend into all of them
    descent->start();
    QVERIFY(descent->wait());

    const auto reader = readerAtUnknown();
    ZVTolvarTestPeer{*_tolvar}.skipUnknown(*reader);
    QCOMPARE(place(*reader), place(*expected));

    _tolvar->onResponseReceived(document);
    QStringList told = {"dnsChanged:4"};
    if (!endsThere)
        told += "systemIDChanged:T1";
    QCOMPARE(_diary->take(), told);
}

void TestExtremes::hugeTextsAreRead()
{
    const QString huge(1000000, 'x');
    _tolvar->onResponseReceived("<puckdata><name>" + huge + "</name><mode>S</mode></puckdata>");
    QCOMPARE(_tolvar->systemID(), huge);
    QCOMPARE(_tolvar->status(), QStringLiteral("S"));
    _tolvar->onResponseReceived("<scan_results><scan SSID=\"" + huge + "\" RSSI=\"-1\"/></scan_results>");
    QCOMPARE(_tolvar->getScanResult(huge).rssi, QStringLiteral("-1"));
}

void TestExtremes::anEntityBombEndsTheReading_data()
{
    QTest::addColumn<QString>("document");
    QTest::addColumn<QStringList>("told");
    // Each entity is ten times the one before: the last would be ten thousand million characters long.
    QString entities = "<!ENTITY a0 \"0123456789\">";
    for (int i = 1; i < 10; ++i)
        entities += QString("<!ENTITY a%1 \"%2\">").arg(i).arg(QString("&a%1;").arg(i - 1).repeated(10));
    const QString circle = R"(<!ENTITY a9 "&b;"><!ENTITY b "&a9;">)";
    const auto row = [](const char *name, const QString &types, const char *content,
                        const QStringList &told) {
        QTest::newRow(name) << "<!DOCTYPE x [" + types + "]>" + content << told;
    };
    const char *value = "<puckdata><name>T1</name><mode>&a9;</mode><dns>4</dns></puckdata>";
    const char *skipped = "<puckdata><name>T1</name><radio>&a9;</radio><dns>4</dns></puckdata>";
    const char *attribute =
        "<scan_results><scan SSID='A'/><scan SSID='&a9;'/><scan SSID='B'/></scan_results>";
    const QStringList name = {"systemIDChanged:T1"};
    const QStringList network = {"scannedNetworkListChanged:0", "scannedNetworkListChanged:1"};
    row("in a value", entities, value, name);
    row("in what is skipped", entities, skipped, name);
    row("in an attribute", entities, attribute, network);
    row("in a log", entities, "<log_file>&a9;</log_file>", {"finishedWriteLog"});
    row("that holds itself, in a value", circle, value, name);
    row("that holds itself, in an attribute", circle, attribute, network);
}

void TestExtremes::anEntityBombEndsTheReading()
{
    QFETCH(QString, document);
    QFETCH(QStringList, told);
    _tolvar->onResponseReceived(document);
    QCOMPARE(_diary->take(), told);
    QCOMPARE(_tolvar->status(), QString());
    _tolvar->onResponseReceived("<puckdata><mode>next</mode></puckdata>");
    QCOMPARE(_tolvar->status(), QStringLiteral("next"));
}

void TestExtremes::aFileNamedInADocumentIsNotRead()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("secret"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write("secret"), 6);
    file.close();
    _tolvar->onResponseReceived("<!DOCTYPE puckdata [<!ENTITY a SYSTEM \"file://" + file.fileName() +
                                "\">]><puckdata><name>T1&a;</name><mode>S</mode></puckdata>");
    QCOMPARE(_diary->take(), QStringList({"systemIDChanged:T1", "statusChanged:S"}));
}

QTEST_GUILESS_MAIN(TestExtremes)
#include "tst_zvtolvar_replies_extremes.moc"
