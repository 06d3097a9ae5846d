#pragma once

#include <QJsonObject>
#include <QObject>

/// Inspects the real program from inside, where Qt loads it as a plugin, and reports what cannot be seen from
/// outside. It is created while the application object is constructed, inspects the program again as soon as
/// the event loop runs, and then ends the program.
///
/// Environment variables control it: ZV_PROBE_REPORT is the file that receives the results. ZV_PROBE_END is
/// how to end the program: "accept" or "reject" for the wizard, or an exit code for the event loop.
/// ZV_PROBE_LAST_MESSAGE is a message to log when all other code of the program has ended.
class InProcessProbe : public QObject
{
    Q_OBJECT

public:
    InProcessProbe();

private:
    void lookAround();
    void writeReport() const;
    static void endProgram(const QString &how);

    QJsonObject _seen;
};
