#include "tests/support/pseudoterminal.h"

#include <cstdlib>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

PseudoTerminal::PseudoTerminal()
{
    _device = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    char name[64] = "";
    if (_device < 0 || ::grantpt(_device) != 0 || ::unlockpt(_device) != 0 ||
        ::ptsname_r(_device, name, sizeof name) != 0)
        qFatal("no pseudo-terminal to be had");
    _path = QString::fromLocal8Bit(name);
    if (!QFile::link(_path, portName()))
        qFatal("no link to the pseudo-terminal");
    // A device does not echo, and its bytes are not a user's typing.
    termios settings;
    ::tcgetattr(_device, &settings);
    ::cfmakeraw(&settings);
    ::tcsetattr(_device, TCSANOW, &settings);
}

PseudoTerminal::~PseudoTerminal()
{
    hangUp();
}

void PseudoTerminal::send(const QByteArray &bytes)
{
    if (::write(_device, bytes.constData(), static_cast<size_t>(bytes.size())) != bytes.size())
        qFatal("the pseudo-terminal takes no bytes");
}

QByteArray PseudoTerminal::received()
{
    QByteArray all;
    char some[4096];
    for (ssize_t count; (count = ::read(_device, some, sizeof some)) > 0;)
        all.append(some, count);
    return all;
}

void PseudoTerminal::hangUp()
{
    if (_device >= 0)
        ::close(_device);
    _device = -1;
}

int PseudoTerminal::openDescriptors() const
{
    int count = 0;
    const QFileInfoList descriptors = QDir(QStringLiteral("/proc/self/fd"))
                                          .entryInfoList(QDir::Files | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo &descriptor : descriptors) {
        char target[256];
        const QByteArray link = descriptor.absoluteFilePath().toLocal8Bit();
        const ssize_t length = ::readlink(link.constData(), target, sizeof target);
        // A node that is gone is shown with " (deleted)" behind its name.
        if (length > 0 && QByteArray(target, length).replace(" (deleted)", "") == _path.toLocal8Bit())
            ++count;
    }
    return count;
}
