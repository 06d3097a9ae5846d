#pragma once

#include <QString>

/// A reply document with its control bytes as Qt's XML reader handles them: each control byte in an attribute
/// is replaced by a mark, zero bytes are dropped, and a document of fewer than four bytes is empty. Qt's
/// reader itself finds the attributes: each control byte gets a unique mark, and the marks that the reader
/// then reports in an attribute are in one.
class ControlMarks
{
public:
    explicit ControlMarks(const QString &document);

    const QString &text() const { return _text; }
    /// Returns the value of an attribute, with control bytes in place of their marks.
    QString restored(QStringView value) const;

private:
    char32_t _first = 0; ///< the mark of control byte 0
    QString _text;
};
