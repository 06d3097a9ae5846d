#pragma once

#include <QString>
#include <QXmlStreamReader>

/// QXmlStreamReader with three rules of Qt 4: attribute values may contain control characters, which
/// otherwise end the reading; zero characters are skipped; fewer than four characters are not read.
class QCoreXmlStreamReader : public QXmlStreamReader
{
public:
    explicit QCoreXmlStreamReader(const QString &document);

    /// The attributes of a start element by their qualified names, including control characters.
    QXmlStreamAttributes attributes() const;

private:
    char16_t _block = 0; ///< first of the characters that replace control characters; 0: none replaced
};
