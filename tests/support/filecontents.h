#pragma once

#include <QByteArray>
#include <QFile>

/// The contents of the file; if it cannot be read, a text that says so.
inline QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "cannot be read: " + file.errorString().toUtf8();
}
