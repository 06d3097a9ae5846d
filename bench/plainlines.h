#pragma once

#include <cstdio>

#include <QByteArray>
#include <QList>
#include <QString>

/// The reference that the session log is compared with: lines written to a file and to standard output with
/// the C library, each flushed to both.
class PlainLines
{
public:
    explicit PlainLines(const QString &path);
    ~PlainLines();

    /// Writes \a lines as the session log contains them: with a level prefix of two characters, which
    /// standard output does not get.
    void write(const QList<QByteArray> &lines);

private:
    Q_DISABLE_COPY_MOVE(PlainLines)

    std::FILE *_file;
};

/// Returns the lines of the session log in the home folder, without their line ends.
QList<QByteArray> sessionLogLines();
