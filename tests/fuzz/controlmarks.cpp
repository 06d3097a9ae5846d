#include "tests/fuzz/controlmarks.h"

#include <algorithm>
#include <vector>

#include <QRegularExpression>
#include <QXmlStreamReader>

namespace
{
constexpr char32_t FirstMark = 0xF0000; // two planes for private use
constexpr char32_t LastMark = 0x10FFFD;

bool isControlByte(QChar c)
{
    const char16_t code = c.unicode();
    return code < 0x20 && code != '\t' && code != '\n' && code != '\r';
}

/// Calls \a see with the position of each mark in \a text, counted from \a first.
template <typename See>
void forEachMark(QStringView text, char32_t first, char32_t end, See see)
{
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        if (!text[i].isHighSurrogate())
            continue;
        const char32_t code = QChar::surrogateToUcs4(text[i], text[i + 1]);
        if (code >= first && code < end)
            see(code - first);
    }
}

/// Returns the first of \a count marks that no character reference in the document produces.
char32_t firstOf(char32_t count, const QString &document)
{
    static const QRegularExpression reference(QStringLiteral("&#(x?)0*([0-9a-fA-F]+);"));
    std::vector<char32_t> taken;
    for (auto match = reference.globalMatch(document); match.hasNext();) {
        const auto found = match.next();
        const uint code = found.captured(2).toUInt(nullptr, found.captured(1).isEmpty() ? 10 : 16);
        if (code >= FirstMark && code <= LastMark)
            taken.push_back(code);
    }
    std::sort(taken.begin(), taken.end());
    char32_t first = FirstMark;
    for (const char32_t code : taken) {
        if (code >= first + count)
            break;
        first = code + 1;
    }
    return first;
}
} // namespace

ControlMarks::ControlMarks(const QString &document)
{
    if (document.size() < 4)
        return;
    // Only what follows a quotation mark can be in an attribute.
    const auto *const quote = std::find_if(document.cbegin(), document.cend(), [](QChar c) {
        return c == QLatin1Char('"') || c == QLatin1Char('\'');
    });
    if (std::none_of(quote, document.cend(), isControlByte)) {
        _text = document;
        _text.remove(QChar(0));
        return;
    }

    QString marked;
    QString bytes; // the bytes that have a mark, in their order
    _first = firstOf(static_cast<char32_t>(std::max<qsizetype>(document.size(), 0x20)), document);
    for (const QChar c : document) {
        if (c.isNull())
            continue;
        if (!isControlByte(c)) {
            marked += c;
            continue;
        }
        const char32_t mark = _first + static_cast<char32_t>(bytes.size());
        marked += QStringView(QChar::fromUcs4(mark));
        bytes += c;
    }

    const char32_t end = _first + static_cast<char32_t>(bytes.size());
    std::vector<bool> isInAttribute(static_cast<std::size_t>(bytes.size()));
    std::vector<bool> isDeclared(
        isInAttribute.size()); // values of entities and default values appear in attributes, too
    // A prefix with a control byte has a different mark at each place, so there are no namespaces. To declare
    // one twice, which is not an error with control bytes, must not become an error with marks.
    for (qsizetype at = 0, count = 0; (at = marked.indexOf(QLatin1String("xmlns"), at)) >= 0; ++count)
        marked.replace(at, 5, QChar(0x100) + QString::number(count));
    QXmlStreamReader reader(marked);
    reader.setNamespaceProcessing(false);
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isDTD())
            forEachMark(reader.text(), _first, end, [&](std::size_t place) { isDeclared[place] = true; });
        if (!reader.isStartElement())
            continue;
        const auto note = [&](std::size_t place) { isInAttribute[place] = !isDeclared[place]; };
        const auto attributes = reader.attributes();
        for (const auto &attribute : attributes)
            forEachMark(attribute.value(), _first, end, note);
    }

    std::size_t place = 0;
    for (const QChar c : document) {
        if (c.isNull())
            continue;
        if (isControlByte(c) && isInAttribute[place++])
            _text += QStringView(QChar::fromUcs4(_first + c.unicode()));
        else
            _text += c;
    }
}

QString ControlMarks::restored(QStringView value) const
{
    if (_first == 0)
        return value.toString();
    QString text;
    for (const char32_t code : value.toUcs4()) {
        if (code >= _first && code < _first + 0x20)
            text += QChar(static_cast<char16_t>(code - _first));
        else
            text += QString::fromUcs4(&code, 1);
    }
    return text;
}
