#include "tests/support/descriptors.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QDir>

namespace
{
/// Returns true if \a descriptor is the test bed's end of a connection to an opened device. A thread of the
/// test bed closes it some time after the program has closed the device. A device that stays open is detected
/// by the program's own descriptor.
bool isTestbedsEnd(int descriptor)
{
    const QByteArray bed = qgetenv("UMOCKDEV_DIR");
    sockaddr_un address{};
    socklen_t length = sizeof address;
    if (bed.isEmpty() || getsockname(descriptor, reinterpret_cast<sockaddr *>(&address), &length) != 0 ||
        address.sun_family != AF_UNIX || !QByteArray(address.sun_path).startsWith(bed + "/ioctl/"))
        return false;
    int listens = 0;
    socklen_t size = sizeof listens;
    return getsockopt(descriptor, SOL_SOCKET, SO_ACCEPTCONN, &listens, &size) == 0 && listens == 0;
}
} // namespace

QStringList openDescriptors()
{
    QStringList targets;
    const QFileInfoList links = QDir(QStringLiteral("/proc/self/fd"))
                                    .entryInfoList(QDir::Files | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo &link : links) {
        char target[256];
        const ssize_t length =
            ::readlink(link.absoluteFilePath().toLocal8Bit().constData(), target, sizeof target);
        // The path of a deleted node ends in " (deleted)".
        if (length > 0 && !isTestbedsEnd(link.fileName().toInt()))
            targets += QString::fromLocal8Bit(target, length).remove(QLatin1String(" (deleted)"));
    }
    targets.sort();
    return targets;
}
