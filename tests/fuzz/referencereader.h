#pragma once

#include <QHash>
#include <QStringList>
#include <QXmlStreamReader>

#include "tests/fuzz/controlmarks.h"

/// Reads a reply document as its description has it: element by element, and what is unknown by going into
/// it. To be compared with what the controller makes of it.
class ReferenceReader
{
public:
    explicit ReferenceReader(const QString &document);

    /// Whether the controller returns from the document; the rest is of no use otherwise.
    /// Fuzzing::comesBack() is the same for those that want nothing else.
    bool comesBack() const { return _comesBack; }
    /// Whether the document nests too deeply for going into it; the rest is of no use then.
    bool isTooDeep() const { return _tooDeep; }
    /// What is to be told of, in its order, as SignalDiary notes it. All values are empty at first.
    QStringList told() const { return _told; }
    /// The networks: by SSID, the other six values.
    QHash<QString, QStringList> networks() const { return _networks; }
    /// Of each log document, its text.
    QStringList logs() const { return _logs; }

private:
    using Child = bool (ReferenceReader::*)();

    void children(Child child);
    bool statusChild();
    bool scanChild();
    bool testChild();
    void log();
    QString text();
    void skip(int depth);

    const ControlMarks _document;
    QXmlStreamReader _reader;
    bool _comesBack = true;
    bool _tooDeep = false;
    QStringList _told;
    QHash<QString, QString> _values;
    QHash<QString, QStringList> _networks;
    QStringList _logs;
};
