#pragma once

#include "device/zvtolvar.h"

/// Gives tests access to non-public members of a controller.
struct ZVTolvarTestPeer {
    ZVTolvar &tolvar;

    CommState &state() const { return tolvar._commState; }
    QStringList &queue() const { return tolvar._commandQueue; }
    QString &currentCommand() const { return tolvar._currentCommand; }
    QString &response() const { return tolvar._response; }
    QString &portName() const { return tolvar._portName; }
    QextSerialPort *&port() const { return tolvar._port; }
    QFile *&logFile() const { return tolvar._logFile; }
    bool &scanning() const { return tolvar._scanning; }
    bool &testing() const { return tolvar._testing; }
    bool &connected() const { return tolvar._connected; }
    bool &eotHandshake() const { return tolvar._eotHandshake; }

    /// The readers of the reply documents. Each is called with the XML reader on the root element.
    void parseStatus(QCoreXmlStreamReader &reader) const { tolvar.parseResponsePuckData(reader); }
    void parseLog(QCoreXmlStreamReader &reader) const { tolvar.parseLogFile(reader); }
    void skipUnknown(QCoreXmlStreamReader &reader) const { tolvar.skipUnknownElement(reader); }
};
