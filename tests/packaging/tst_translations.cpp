#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

#include "tests/packaging/tsfile.h"

namespace
{
/// Names that are not translated in any language.
constexpr const char *names[] = {"ZV Tolvar", "Tolvar", "Orvane", "WEP",
                                 "WPA2",      "TKIP",   "U-AES",  "M-AES",
                                 "A059",      "A060",   "2011",   "www.zvtolvar.example",
                                 "RSSI",      "WPS",    "MAC",    ("v" ZV_VERSION)};

/// Returns all matches of the pattern in alphabetical order, because a language may change the order in a
/// sentence.
QStringList found(const char *pattern, const QString &text)
{
    QStringList all;
    auto matches = QRegularExpression(QString::fromLatin1(pattern)).globalMatch(text);
    while (matches.hasNext())
        all += matches.next().captured();
    all.sort();
    return all;
}

/// Returns what is wrong with a translation; empty if nothing is.
QString complaint(const TsText &text)
{
    const QString &source = text.source;
    const QString &translation = text.translation;
    if (!text.state.isEmpty())
        return text.state;
    if (translation.trimmed().isEmpty())
        return QStringLiteral("empty");
    if (source == QLatin1String("TextLabel") && translation != source)
        return QStringLiteral("is never shown, so it stays");
    // A translation has each of these as often as its source: placeholders, line breaks, tags, addresses,
    // leading and trailing spaces.
    for (const char *pattern : {"%(?:\\d+|n)", "\n", "<[^>]*>", "https?://[^\\s\"<]+", "^\\s+", "\\s+$"}) {
        if (found(pattern, translation) != found(pattern, source))
            return QStringLiteral("not what the source has of ") + QString::fromLatin1(pattern);
    }
    for (const char *name : names) {
        if (source.contains(QLatin1String(name)) && !translation.contains(QLatin1String(name)))
            return QStringLiteral("without ") + QString::fromLatin1(name);
    }
    // A translation has a mnemonic (a letter to press with Alt) where the source has one, and nowhere else.
    const auto letters = source.count(QLatin1Char('&'));
    if (translation.count(QLatin1Char('&')) != letters || found("&\\p{L}", translation).size() != letters)
        return QStringLiteral("not a letter to press as in the source");
    return {};
}

/// Returns everything that is wrong with a translation file for \a language, one line each, when the program
/// has the texts \a wanted.
QStringList complaints(const TsFile &ts, const QString &language, const QList<TsText> &wanted)
{
    QStringList all;
    if (ts.language != language || ts.sourceLanguage != QLatin1String("en"))
        all += QStringLiteral("said to be from %1 to %2").arg(ts.sourceLanguage, ts.language);
    QStringList missing;
    for (const TsText &text : wanted)
        missing += text.key();
    for (const TsText &text : ts.texts) {
        if (!missing.removeOne(text.key()))
            all += text.key() + QStringLiteral(": no text of the program's, or there twice");
        const QString wrong = complaint(text);
        if (!wrong.isEmpty())
            all += text.key() + QStringLiteral(": ") + wrong;
    }
    for (const QString &key : std::as_const(missing))
        all += key + QStringLiteral(": missing");
    return all;
}

/// Returns a translation file without errors, in an artificial language: a ~ before each text except the
/// parts that are not translated.
TsFile flawless(const QList<TsText> &texts)
{
    TsFile ts{QStringLiteral("xx"), QStringLiteral("en"), texts};
    for (TsText &text : ts.texts) {
        text.state.clear();
        text.translation =
            text.source == QLatin1String("TextLabel") ? text.source : QLatin1Char('~') + text.source;
    }
    return ts;
}
} // namespace

/// Compares the translation source files with the program's own texts.
class TestTranslations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theProgramHasStrings();
    void aCorrectTranslationFileHasNoErrors();
    void aMistakeIsFound_data();
    void aMistakeIsFound();
    void eachTranslationFileIsCorrect_data();
    void eachTranslationFileIsCorrect();

private:
    QList<TsText> _texts; ///< all translatable texts in the program's sources
};

using Spoil = std::function<void(TsFile &)>;
Q_DECLARE_METATYPE(Spoil)

void TestTranslations::initTestCase()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("now.ts");
    QProcess lupdate;
    lupdate.setWorkingDirectory(ZV_SOURCES);
    lupdate.start(ZV_LUPDATE, {"-silent", "app", "device", "pages", "serial", "-ts", path});
    QVERIFY(lupdate.waitForFinished(120000));
    QVERIFY2(lupdate.exitCode() == 0, lupdate.readAllStandardError());
    for (const TsText &text : readTsFile(path).texts) {
        // Qt's own classes have their texts in Qt's own translation files.
        if (!text.context.startsWith(QLatin1Char('Q')))
            _texts += text;
    }
}

void TestTranslations::theProgramHasStrings()
{
    // One text of every kind: from a form, from the sources, with a comment, with a mnemonic.
    QStringList keys;
    for (const TsText &text : std::as_const(_texts))
        keys += text.key();
    for (const char *key : {"ViewDetailsDialog|WPS: |", "TolvarFoundWizardPage|Opening file: %1|",
                            "ZVTolvar|Internal|Antenna selection label", "ZVTolvarSetupWizard|&Console|"})
        QVERIFY2(keys.contains(QLatin1String(key)), key);
}

void TestTranslations::aCorrectTranslationFileHasNoErrors()
{
    QCOMPARE(complaints(flawless(_texts), "xx", _texts).join('\n'), QString());
}

void TestTranslations::aMistakeIsFound_data()
{
    // Each row spoils one text of a translation file without errors.
    const auto translate = [](const char *source, const QString &translation) -> Spoil {
        return [=](TsFile &ts) {
            for (TsText &text : ts.texts) {
                if (text.source == QLatin1String(source)) {
                    text.translation = translation;
                    return;
                }
            }
            QFAIL("there is no such text");
        };
    };
    QTest::addColumn<Spoil>("spoil");
    QTest::newRow("another language's") << Spoil([](TsFile &ts) { ts.language = "yy"; });
    QTest::newRow("from another language") << Spoil([](TsFile &ts) { ts.sourceLanguage.clear(); });
    QTest::newRow("unfinished") << Spoil([](TsFile &ts) { ts.texts[3].state = "unfinished"; });
    QTest::newRow("missing") << Spoil([](TsFile &ts) { ts.texts.removeLast(); });
    QTest::newRow("there twice") << Spoil([](TsFile &ts) { ts.texts += ts.texts.first(); });
    QTest::newRow("with another comment") << Spoil([](TsFile &ts) { ts.texts[3].comment += "x"; });
    QTest::newRow("empty") << translate("Found Device", " ");
    QTest::newRow("a space too many at the end") << translate("Found Device", "~ ");
    QTest::newRow("a space at the beginning") << translate("Found Device", " ~");
    QTest::newRow("a line break too few") << translate("The network was not found\n", "~");
    QTest::newRow("a placeholder twice") << translate("Couldn't open file: %1: %2", "~ %2 %2");
    QTest::newRow("a name in other words") << translate("Looking for ZV Tolvar", "~ ZV-~");
    QTest::newRow("a link that shows something else")
        << translate("See <a href=\"https://www.wi-fi.org/knowledge-center/faq/is-wep-secure\">"
                     "https://www.wi-fi.org/knowledge-center/faq/is-wep-secure</a> for more details.",
                     "~ <a href=\"https://www.wi-fi.org/knowledge-center/faq/is-wep-secure\">~</a>");
    QTest::newRow("a tag of the translator's") << translate("Found Device", "<b>~</b>");
    QTest::newRow("a text that is never shown") << translate("TextLabel", "~");
    QTest::newRow("no mnemonic") << translate("&Console", "~Console");
    QTest::newRow("a mnemonic without a letter") << translate("&Console", "~& Console");
}

void TestTranslations::aMistakeIsFound()
{
    QFETCH(Spoil, spoil);
    TsFile ts = flawless(_texts);
    spoil(ts);
    QVERIFY(!complaints(ts, "xx", _texts).isEmpty());
}

void TestTranslations::eachTranslationFileIsCorrect_data()
{
    QTest::addColumn<QString>("language");
    const QStringList files = QDir(ZV_TRANSLATIONS).entryList({"zvinstall_*.ts"});
    QVERIFY(!files.isEmpty());
    for (const QString &file : files)
        QTest::addRow("%s", qPrintable(file)) << file.section('_', 1).chopped(3);
}

void TestTranslations::eachTranslationFileIsCorrect()
{
    QFETCH(QString, language);
    const TsFile ts =
        readTsFile(QStringLiteral(ZV_TRANSLATIONS "/zvinstall_") + language + QStringLiteral(".ts"));
    QVERIFY2(!ts.texts.isEmpty(), "cannot read the translation file");
    const QStringList wrong = complaints(ts, language, _texts);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join('\n')));
}

QTEST_GUILESS_MAIN(TestTranslations)
#include "tst_translations.moc"
