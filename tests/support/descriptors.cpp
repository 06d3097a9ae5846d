#include "tests/support/descriptors.h"

#include <unistd.h>

#include <QDir>

QStringList openDescriptors()
{
    QStringList targets;
    const QFileInfoList links = QDir(QStringLiteral("/proc/self/fd"))
                                    .entryInfoList(QDir::Files | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo &link : links) {
        char target[256];
        const ssize_t length =
            ::readlink(link.absoluteFilePath().toLocal8Bit().constData(), target, sizeof target);
        // A node that is gone is shown with " (deleted)" behind its name.
        if (length > 0)
            targets += QString::fromLocal8Bit(target, length).remove(QLatin1String(" (deleted)"));
    }
    return targets;
}
