#include "tests/support/libcinterposer.h"

#include <cerrno>
#include <cstdarg>
#include <utility>

#include <dlfcn.h>
#include <fcntl.h>
#include <linux/serial.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

LibcInterposer::Record &LibcInterposer::record()
{
    static auto *const theRecord = new Record; // never destroyed: calls may come until the process ends
    return *theRecord;
}

namespace
{
LibcInterposer::Record &record()
{
    return LibcInterposer::record();
}

/// The C library's own function.
template <typename Function>
Function *original(const char *name)
{
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}

// The settings that differ between \a one and \a other.
QStringList differences(const termios &one, const termios &other)
{
    const auto flags = [&one, &other](tcflag_t control, tcflag_t input) {
        return ((one.c_cflag ^ other.c_cflag) & control) != 0 || ((one.c_iflag ^ other.c_iflag) & input) != 0;
    };
    QStringList names;
    if (cfgetospeed(&one) != cfgetospeed(&other))
        names += QStringLiteral("baud rate");
    if (flags(CRTSCTS, IXON | IXOFF))
        names += QStringLiteral("flow control");
    if (flags(PARENB | PARODD | CMSPAR, 0))
        names += QStringLiteral("parity");
    if (flags(CSIZE, 0))
        names += QStringLiteral("data bits");
    if (flags(CSTOPB, 0))
        names += QStringLiteral("stop bits");
    return names;
}

/// Returns true if the descriptor is open on the tty whose reads fail.
bool isUnreadable(int descriptor)
{
    if (record().unreadableNode.isEmpty())
        return false;
    char target[256];
    const QByteArray link = "/proc/self/fd/" + QByteArray::number(descriptor);
    const ssize_t length = ::readlink(link.constData(), target, sizeof target);
    return length > 0 && QByteArray(target, length) == record().unreadableNode;
}

int openWith(const char *function, const char *path, int flags, mode_t mode)
{
    const QByteArray forbidden = record().forbiddenPath;
    if (!forbidden.isEmpty() && QByteArray(path).startsWith(forbidden)) {
        errno = EACCES;
        return -1;
    }
    if (QByteArray(path).startsWith("/dev/"))
        record().opened += path;
    return original<int(const char *, int, ...)>(function)(path, flags, mode);
}
} // namespace

// These functions replace those of the C library in the whole program. The parameter names in its headers are
// reserved. NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" int tcsetattr(int descriptor, int when, const termios *settings)
{
    static auto *const real = original<decltype(tcsetattr)>("tcsetattr");
    ++record().timesSet;
    if (record().settingsUntilCall > 0 && --record().settingsUntilCall == 0)
        record().call();
    termios present = {};
    ::tcgetattr(descriptor, &present);
    record().order += differences(present, *settings);
    record().lastSettings = *settings;
    return real(descriptor, when, settings);
}

extern "C" int tcgetattr(int descriptor, termios *settings)
{
    static auto *const real = original<decltype(tcgetattr)>("tcgetattr");
    const int result = real(descriptor, settings);
    constexpr tcflag_t frame = CSIZE | PARENB | PARODD | CMSPAR | CSTOPB;
    if (record().keepsFrame)
        settings->c_cflag = (settings->c_cflag & ~frame) | (record().lastSettings.c_cflag & frame);
    return result;
}

extern "C" int ioctl(int descriptor, unsigned long request, ...)
{
    va_list arguments;
    va_start(arguments, request);
    void *argument = va_arg(arguments, void *);
    va_end(arguments);
    if (request == TIOCMBIS || request == TIOCMBIC) {
        const int line = *static_cast<int *>(argument);
        record().modemLines.append(request == TIOCMBIS ? line : -line);
        record().order += line == TIOCM_DTR ? QStringLiteral("DTR") : QStringLiteral("RTS");
    }
    if (request == FIONREAD && ++record().unreadQueryCount <= record().simulatedUnread) {
        *static_cast<int *>(argument) = 1;
        return 0;
    }
    if (request == TIOCGSERIAL && record().controller) {
        static_cast<serial_struct *>(argument)->type = *record().controller;
        return 0;
    }
    return static_cast<int>(::syscall(SYS_ioctl, descriptor, request, argument));
}

extern "C" int flock(int descriptor, int operation)
{
    static auto *const real = original<decltype(flock)>("flock");
    if (const auto call = std::exchange(record().lockingCall, {}))
        call();
    return real(descriptor, operation);
}

extern "C" ssize_t read(int descriptor, void *buffer, size_t size)
{
    static auto *const real = original<decltype(read)>("read");
    if (!isUnreadable(descriptor))
        return real(descriptor, buffer, size);
    ++record().failedReads;
    errno = record().readError;
    return record().readError == 0 ? 0 : -1;
}

extern "C" int poll(pollfd *files, nfds_t count, int timeout)
{
    static auto *const real = original<decltype(poll)>("poll");
    if (record().failsHangUpChecks && count == 1 && files->events == 0) {
        errno = EINTR;
        return -1;
    }
    return real(files, count, timeout);
}

extern "C" int open(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const auto mode =
        static_cast<mode_t>(va_arg(arguments, unsigned)); // an unused value if there is no such argument
    va_end(arguments);
    return openWith("open", path, flags, mode);
}

extern "C" int open64(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const auto mode = static_cast<mode_t>(va_arg(arguments, unsigned));
    va_end(arguments);
    return openWith("open64", path, flags, mode);
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
