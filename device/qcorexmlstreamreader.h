#pragma once

#include <QString>
#include <QXmlStreamReader>

/// Qt's pull reader with three rules of Qt 4's: the value of an attribute may hold control characters, which
/// end the reading elsewhere; zero characters are skipped; fewer than four characters are not read.
class QCoreXmlStreamReader : public QXmlStreamReader
{
public:
    explicit QCoreXmlStreamReader(const QString &document);

    /// The attributes of a start element by their qualified names, control characters included.
    QXmlStreamAttributes attributes() const;

private:
    char16_t _block = 0; ///< the first of the characters that control characters are replaced by; 0: none are
};
