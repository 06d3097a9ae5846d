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

/// Returns the error in a translation; empty if there is none.
QString errorIn(const TsText &text)
{
    const QString &source = text.source;
    const QString &translation = text.translation;
    if (!text.state.isEmpty())
        return text.state;
    if (translation.trimmed().isEmpty())
        return QStringLiteral("empty");
    if (source == QLatin1String("TextLabel") && translation != source)
        return QStringLiteral("must not be translated: it is never shown");
    // A translation has each of these as often as its source: placeholders, line breaks, tags, addresses,
    // leading and trailing spaces.
    for (const char *pattern : {"%(?:\\d+|n)", "\n", "<[^>]*>", "https?://[^\\s\"<]+", "^\\s+", "\\s+$"}) {
        if (found(pattern, translation) != found(pattern, source))
            return QStringLiteral("differs from the source in ") + QString::fromLatin1(pattern);
    }
    for (const char *name : names) {
        if (source.contains(QLatin1String(name)) && !translation.contains(QLatin1String(name)))
            return QStringLiteral("lacks the name ") + QString::fromLatin1(name);
    }
    // A translation has a mnemonic (a key to press with Alt) where the source has one, and nowhere else.
    const auto mnemonics = source.count(QLatin1Char('&'));
    if (translation.count(QLatin1Char('&')) != mnemonics || found("&\\p{L}", translation).size() != mnemonics)
        return QStringLiteral("differs from the source in its mnemonic");
    return {};
}

/// Returns the errors in a translation file for \a language, one line each. \a wanted are the texts that it
/// must translate.
QStringList errorsIn(const TsFile &ts, const QString &language, const QList<TsText> &wanted)
{
    QStringList all;
    if (ts.language != language || ts.sourceLanguage != QLatin1String("en"))
        all += QStringLiteral("declares the languages %1 and %2").arg(ts.sourceLanguage, ts.language);
    QStringList missing;
    for (const TsText &text : wanted)
        missing += text.key();
    for (const TsText &text : ts.texts) {
        if (!missing.removeOne(text.key()))
            all += text.key() + QStringLiteral(": unknown or duplicate");
        const QString wrong = errorIn(text);
        if (!wrong.isEmpty())
            all += text.key() + QStringLiteral(": ") + wrong;
    }
    for (const QString &key : std::as_const(missing))
        all += key + QStringLiteral(": missing");
    return all;
}

/// Returns a translation file without errors, in an artificial language: a ~ before each text except the
/// parts that are not translated.
TsFile withoutErrors(const QList<TsText> &texts)
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

using Change = std::function<void(TsFile &)>;
Q_DECLARE_METATYPE(Change)

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
    QCOMPARE(errorsIn(withoutErrors(_texts), "xx", _texts).join('\n'), QString());
}

void TestTranslations::aMistakeIsFound_data()
{
    // Each row introduces one error into a translation file without errors.
    const auto translate = [](const char *source, const QString &translation) -> Change {
        return [=](TsFile &ts) {
            for (TsText &text : ts.texts) {
                if (text.source == QLatin1String(source)) {
                    text.translation = translation;
                    return;
                }
            }
            QFAIL("no string has this source text");
        };
    };
    QTest::addColumn<Change>("change");
    QTest::newRow("another target language") << Change([](TsFile &ts) { ts.language = "yy"; });
    QTest::newRow("no source language") << Change([](TsFile &ts) { ts.sourceLanguage.clear(); });
    QTest::newRow("unfinished") << Change([](TsFile &ts) { ts.texts[3].state = "unfinished"; });
    QTest::newRow("missing") << Change([](TsFile &ts) { ts.texts.removeLast(); });
    QTest::newRow("duplicate") << Change([](TsFile &ts) { ts.texts += ts.texts.first(); });
    QTest::newRow("another comment") << Change([](TsFile &ts) { ts.texts[3].comment += "x"; });
    QTest::newRow("empty") << translate("Found Device", " ");
    QTest::newRow("an additional space at the end") << translate("Found Device", "~ ");
    QTest::newRow("a space at the beginning") << translate("Found Device", " ~");
    QTest::newRow("a missing line break") << translate("The network was not found\n", "~");
    QTest::newRow("a placeholder twice") << translate("Couldn't open file: %1: %2", "~ %2 %2");
    QTest::newRow("a translated name") << translate("Looking for ZV Tolvar", "~ ZV-~");
    QTest::newRow("a link with another text")
        << translate("See <a href=\"https://www.wi-fi.org/knowledge-center/faq/is-wep-secure\">"
                     "https://www.wi-fi.org/knowledge-center/faq/is-wep-secure</a> for more details.",
                     "~ <a href=\"https://www.wi-fi.org/knowledge-center/faq/is-wep-secure\">~</a>");
    QTest::newRow("an additional tag") << translate("Found Device", "<b>~</b>");
    QTest::newRow("a translated placeholder that is never shown") << translate("TextLabel", "~");
    QTest::newRow("no mnemonic") << translate("&Console", "~Console");
    QTest::newRow("a mnemonic before a space") << translate("&Console", "~& Console");
}

void TestTranslations::aMistakeIsFound()
{
    QFETCH(Change, change);
    TsFile ts = withoutErrors(_texts);
    change(ts);
    QVERIFY(!errorsIn(ts, "xx", _texts).isEmpty());
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
    const QStringList wrong = errorsIn(ts, language, _texts);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join('\n')));
}

QTEST_GUILESS_MAIN(TestTranslations)
#include "tst_translations.moc"
