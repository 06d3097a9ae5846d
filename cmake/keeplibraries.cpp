#include <dlfcn.h>

// Linked into sanitized programs: no library is unloaded. LeakSanitizer searches the variables of the loaded
// libraries for pointers to what is allocated. It would report what only a variable of an unloaded library
// points to, such as a font or graphics library under one of Qt's plugins, with a stack of addresses that no
// suppression can name.
extern "C" int dlclose(void * /*library*/) noexcept
{
    return 0;
}
