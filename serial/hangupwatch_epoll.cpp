#include "serial/hangupwatch.h"

#include <sys/epoll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <QSocketNotifier>

namespace
{
/// How often a line that has hung up may still be said to hold bytes before that is not believed any more.
constexpr int mostLooks = 100;
} // namespace

HangUpWatch::HangUpWatch() = default;

HangUpWatch::~HangUpWatch()
{
    stop();
}

void HangUpWatch::start(int descriptor)
{
    stop();
    _looks = 0;
    _port = descriptor;
    _watch = ::epoll_create1(EPOLL_CLOEXEC);
    epoll_event nothing = {}; // a hang-up comes without being asked for
    if (_watch < 0 || ::epoll_ctl(_watch, EPOLL_CTL_ADD, _port, &nothing) != 0)
        return;
    _notifier = std::make_unique<QSocketNotifier>(_watch, QSocketNotifier::Read);
    connect(_notifier.get(), &QSocketNotifier::activated, this, &HangUpWatch::look);
}

void HangUpWatch::stop()
{
    if (_notifier) {
        _notifier->setEnabled(false);
        _notifier.release()->deleteLater(); // it may be what calls
    }
    if (_watch >= 0)
        ::close(_watch);
    _watch = -1;
}

void HangUpWatch::look()
{
    int unread = 0;
    if (::ioctl(_port, FIONREAD, &unread) == 0 && unread > 0 && ++_looks < mostLooks)
        return; // the last words are still to be read; the notifier comes again
    Q_EMIT hungUp();
}
