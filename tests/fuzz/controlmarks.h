#pragma once

#include <QString>

/// A reply document with its control bytes as Qt's XML reader takes them: each one in an attribute is
/// replaced by a mark, zero bytes are left out, and fewer than four bytes are nothing. Finds them by asking
/// Qt's reader: each control byte gets a mark of its own, and those that then come up in an attribute are in
/// one.
class ControlMarks
{
public:
    explicit ControlMarks(const QString &document);

    const QString &text() const { return _text; }
    /// The value of an attribute, with control bytes in place of their marks.
    QString restored(QStringView value) const;

private:
    char32_t _first = 0; ///< the mark of control byte 0
    QString _text;
};
