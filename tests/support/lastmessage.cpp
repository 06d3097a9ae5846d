// A library to preload into a program. It logs a message after the program's own static objects have been
// destroyed.

#include <QtGlobal>

namespace
{
struct LastMessage {
    ~LastMessage() { qWarning("the last message"); }
};
// A preloaded library is initialized before the program and therefore destroyed after it.
const LastMessage theLastMessage; // clazy:exclude=non-pod-global-static
} // namespace
