#pragma once

#include <QByteArray>
#include <QFile>

/// What the file holds; when it can't be read, a text that says so.
inline QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "cannot be read: " + file.errorString().toUtf8();
}
