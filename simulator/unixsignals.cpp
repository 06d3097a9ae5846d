#include "simulator/unixsignals.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>

namespace
{
int writeEnd = -1;

// A signal handler may call only a few functions. It sends the signal number through a pipe to the event
// loop.
void passOn(int number)
{
    const int errorBefore = errno;
    const auto byte = static_cast<unsigned char>(number);
    [[maybe_unused]] const ssize_t written =
        write(writeEnd, &byte, 1); // a full pipe already holds enough of them
    errno = errorBefore;
}
} // namespace

UnixSignals::UnixSignals(std::initializer_list<int> numbers)
    : _numbers(numbers)
{
    if (pipe2(_pipe, O_CLOEXEC | O_NONBLOCK) != 0)
        qFatal("cannot create the pipe for signals");
    writeEnd = _pipe[1];
    _readable = std::make_unique<QSocketNotifier>(_pipe[0], QSocketNotifier::Read);
    connect(_readable.get(), &QSocketNotifier::activated, this, [this] {
        unsigned char number = 0;
        while (read(_pipe[0], &number, 1) == 1)
            Q_EMIT arrived(number);
    });
    for (const int number : _numbers)
        std::signal(number, passOn);
}

UnixSignals::~UnixSignals()
{
    for (const int number : _numbers)
        std::signal(number, SIG_DFL);
    _readable.reset();
    close(_pipe[0]);
    close(_pipe[1]);
}
