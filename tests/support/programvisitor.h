#pragma once

#include <QJsonObject>
#include <QObject>

/// Sits inside the real program, which the toolkit loads it into as a plugin, and looks at what can't be seen
/// from outside. It comes while the application object is made, looks again as soon as the event loop runs,
/// and then ends the program.
///
/// The environment tells it what to do: in ZV_VISITOR_REPORT the file that gets what was seen, in
/// ZV_VISITOR_END how the program is to end ("accept" or "reject" for the wizard, or an exit code for the
/// event loop).
class ProgramVisitor : public QObject
{
    Q_OBJECT

public:
    ProgramVisitor();

private:
    void lookAround();
    void writeReport() const;
    static void endProgram(const QString &how);

    QJsonObject _seen;
};
