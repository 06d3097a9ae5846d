#pragma once

#include <QHash>
#include <QStringList>

#include "device/qcorexmlstreamreader.h"

/// Reads a reply document according to its description: element by element, descending into unknown elements.
/// The result is compared with the controller's.
/// Only the XML reader is the controller's own, with its rules for control bytes.
class ReferenceReader
{
public:
    explicit ReferenceReader(const QString &document);

    /// Returns whether the controller returns from the document; the other results are valid only if it does.
    /// For this result alone, use Fuzzing::controllerReturns().
    bool controllerReturns() const { return _controllerReturns; }
    /// Returns whether the document is nested too deeply to descend into it; the other results are then
    /// invalid.
    bool isTooDeep() const { return _tooDeep; }
    /// Returns the changes to report, in order, in SignalRecorder's notation. All values are empty at first.
    QStringList reported() const { return _reported; }
    /// Returns the networks: for each SSID, the other six values.
    QHash<QString, QStringList> networks() const { return _networks; }
    /// Returns the text of each log document.
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

    QCoreXmlStreamReader _reader;
    bool _controllerReturns = true;
    bool _tooDeep = false;
    QStringList _reported;
    QHash<QString, QString> _values;
    QHash<QString, QStringList> _networks;
    QStringList _logs;
};
