#pragma once

#include <cstdio>

#include <QByteArray>
#include <QList>
#include <QString>

/// What the session log is held against: lines written to a file and to standard output with the C library,
/// and each flushed at both places.
class PlainLines
{
public:
    explicit PlainLines(const QString &path);
    ~PlainLines();

    /// \a lines as the session log has them: a level of two characters in front, which standard output
    /// doesn't get.
    void write(const QList<QByteArray> &lines);

private:
    Q_DISABLE_COPY_MOVE(PlainLines)

    std::FILE *_file;
};

/// The session log as it stands in the home folder, a line an item, without their ends.
QList<QByteArray> sessionLogLines();
