#include "serial/hangupwatch.h"

#include <sys/epoll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QSocketNotifier>

namespace
{
/// How often a port that has hung up may report unread bytes before the report is ignored.
constexpr int maxDrainChecks = 100;
} // namespace

HangUpWatch::HangUpWatch() = default;

HangUpWatch::~HangUpWatch()
{
    stop();
}

void HangUpWatch::start(int descriptor)
{
    stop();
    _drainChecks = 0;
    _port = descriptor;
    _watch = ::epoll_create1(EPOLL_CLOEXEC);
    epoll_event nothing = {}; // epoll always reports a hang-up
    if (_watch < 0 || ::epoll_ctl(_watch, EPOLL_CTL_ADD, _port, &nothing) != 0)
        return;
    _notifier = std::make_unique<QSocketNotifier>(_watch, QSocketNotifier::Read);
    connect(_notifier.get(), &QSocketNotifier::activated, this, &HangUpWatch::checkForHangUp);
}

void HangUpWatch::stop()
{
    if (_notifier) {
        _notifier->setEnabled(false);
        if (QCoreApplication *application = QCoreApplication::instance()) {
            // Deleted later, because stop() may run in a slot of the notifier. If no event loop runs any
            // more, the application deletes its child.
            _notifier->setParent(application);
            _notifier.release()->deleteLater();
        } else {
            _notifier.reset(); // the application closes its last lines in its destructor
        }
    }
    if (_watch >= 0)
        ::close(_watch);
    _watch = -1;
}

void HangUpWatch::checkForHangUp()
{
    int unread = 0;
    if (::ioctl(_port, FIONREAD, &unread) == 0 && unread > 0 && ++_drainChecks < maxDrainChecks)
        return; // unread data remains; the notifier emits again
    Q_EMIT hungUp();
}
