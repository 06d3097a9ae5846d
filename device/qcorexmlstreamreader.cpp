#include "device/qcorexmlstreamreader.h"

#include <algorithm>
#include <bitset>

#include <QRegularExpression>

// Qt 6's reader stops at a control character. Control characters in attribute values are therefore replaced
// before the document is read, by characters that no other value contains. attributes() restores them.

namespace
{
// Control character n is replaced by character n of a block in Unicode's private use area.
constexpr char16_t FirstPrivate = 0xE000;
constexpr char16_t BlockSize = 0x20;
constexpr std::size_t Blocks = (0xF900 - FirstPrivate) / BlockSize;

bool isControl(QChar c)
{
    return c < QLatin1Char(' ') && c != QLatin1Char('\t') && c != QLatin1Char('\n') && c != QLatin1Char('\r');
}

/// The position after the next \a mark, or the end of \a document.
qsizetype positionAfter(const QString &document, QLatin1String mark, qsizetype from)
{
    const qsizetype found = document.indexOf(mark, from);
    return found < 0 ? document.size() : found + mark.size();
}

/// Returns \a document with the control characters in attribute values replaced by those of \a block. Text
/// that is not well-formed need not be replaced: the reader stops there.
QString replacedInAttributes(QString document, char16_t block)
{
    qsizetype at = 0;
    while ((at = document.indexOf(QLatin1Char('<'), at)) >= 0) {
        const QStringView rest = QStringView(document).mid(at);
        if (rest.startsWith(QLatin1String("<!--"))) {
            at = positionAfter(document, QLatin1String("-->"), at + 4);
        } else if (rest.startsWith(QLatin1String("<![CDATA["))) {
            at = positionAfter(document, QLatin1String("]]>"), at + 9);
        } else if (rest.startsWith(QLatin1String("<?"))) {
            at = positionAfter(document, QLatin1String("?>"), at + 2);
        } else {
            // A tag or a declaration. The declarations inside a document type follow its '['.
            const bool isTag = !rest.startsWith(QLatin1String("<!"));
            QChar quote; // the quote that ends the value
            for (; at < document.size(); ++at) {
                const QChar c = document.at(at);
                if (!quote.isNull()) {
                    if (c == quote)
                        quote = QChar();
                    else if (isTag && isControl(c))
                        document[at] = QChar(block + c.unicode());
                } else if (c == QLatin1Char('"') || c == QLatin1Char('\'')) {
                    quote = c;
                } else if (c == QLatin1Char('>') || c == QLatin1Char('[')) {
                    break;
                }
            }
        }
    }
    return document;
}

/// The first character of a block of which \a document contains no character and no reference to one; 0 if
/// there is none.
char16_t unusedBlock(const QString &document)
{
    std::bitset<Blocks> isUsed;
    const auto use = [&isUsed](uint code) {
        if (code >= FirstPrivate && code < FirstPrivate + Blocks * BlockSize)
            isUsed.set((code - FirstPrivate) / BlockSize);
    };
    for (const QChar c : document)
        use(c.unicode());
    static const QRegularExpression reference(QStringLiteral("#(?:x([0-9a-fA-F]+)|([0-9]+));"));
    for (auto match = reference.globalMatch(document); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        use(found.captured(1).toUInt(nullptr, 16));
        use(found.captured(2).toUInt());
    }
    for (std::size_t block = 0; block < Blocks; ++block) {
        if (!isUsed.test(block))
            return static_cast<char16_t>(FirstPrivate + block * BlockSize);
    }
    return 0;
}
} // namespace

QCoreXmlStreamReader::QCoreXmlStreamReader(const QString &document)
{
    if (document.size() < 4)
        return; // the shortest document, "<a/>", has four; Qt 6 would read "<a>" as the start of one
    if (std::none_of(document.cbegin(), document.cend(), isControl)) {
        addData(document);
        return;
    }
    QString text = document;
    text.remove(QChar(0));
    _block = unusedBlock(text);
    if (_block)
        text = replacedInAttributes(text, _block);
    addData(text);
}

QXmlStreamAttributes QCoreXmlStreamReader::attributes() const
{
    QXmlStreamAttributes attributes = QXmlStreamReader::attributes();
    if (!_block)
        return attributes;
    for (QXmlStreamAttribute &attribute : attributes) {
        QString value = attribute.value().toString();
        for (QChar &c : value) {
            if (c.unicode() >= _block && c.unicode() < _block + BlockSize)
                c = QChar(c.unicode() - _block);
        }
        attribute = {attribute.qualifiedName().toString(), value};
    }
    return attributes;
}
