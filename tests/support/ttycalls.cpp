#include "tests/support/ttycalls.h"

#include <cstdarg>

#include <dlfcn.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

static termios lastAsked;

// Control lines that were switched, in order; negative for off.
static QList<int> &switched()
{
    static QList<int> lines;
    return lines;
}

// These two stand before the C library's for the whole program. Its headers' own parameter names are reserved
// ones. NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" int tcsetattr(int descriptor, int when, const termios *settings)
{
    using Function = int (*)(int, int, const termios *);
    static const auto original = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "tcsetattr"));
    lastAsked = *settings;
    return original(descriptor, when, settings);
}

extern "C" int ioctl(int descriptor, unsigned long request, ...)
{
    va_list arguments;
    va_start(arguments, request);
    void *argument = va_arg(arguments, void *);
    va_end(arguments);
    if (request == TIOCMBIS)
        switched().append(*static_cast<int *>(argument));
    else if (request == TIOCMBIC)
        switched().append(-*static_cast<int *>(argument));
    return static_cast<int>(::syscall(SYS_ioctl, descriptor, request, argument));
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

void TtyCalls::clear()
{
    lastAsked = {};
    switched().clear();
}

termios TtyCalls::lastSettings()
{
    return lastAsked;
}

QList<int> TtyCalls::modemLines()
{
    return switched();
}
