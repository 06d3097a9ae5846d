#include <dlfcn.h>

// Linked into sanitized programs, so that no library is unloaded. LeakSanitizer searches the variables of the
// loaded libraries for pointers to allocated memory. It would report memory to which only a variable of an
// unloaded library points, such as a font or graphics library that one of Qt's plugins uses, with a stack of
// addresses that no suppression can name.
extern "C" int dlclose(void * /*library*/) noexcept
{
    return 0;
}
