// A library to load into a shell on a mocked USB bus. Shells check permissions with faccessat(), which
// umockdev does not redirect to the mocked /dev. It does redirect access().

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the system's names are reserved
extern "C" int faccessat(int folder, const char *path, int mode, int /*flags*/) noexcept
{
    if (folder == AT_FDCWD || path[0] == '/')
        return access(path, mode);
    errno = ENOSYS;
    return -1;
}
