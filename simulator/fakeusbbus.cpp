#include <umockdev.h>

#include "simulator/fakeusbbus.h"

#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <set>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <QtGlobal>

namespace
{
/// The path at which umockdev finds the device node of the tty.
QByteArray nodeOf(const QByteArray &ttyName)
{
    return qgetenv("UMOCKDEV_DIR") + "/dev/" + ttyName;
}

/// Creates a raw tty with that name and returns its far end. umockdev's own function cannot be used: it
/// remembers each name and aborts when a name is used again.
int makeTty(const QByteArray &ttyName)
{
    const int farEnd =
        posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC); // a copy in a child process would keep the line up
    char tty[64] = "";
    termios settings{};
    if (farEnd < 0 || grantpt(farEnd) != 0 || unlockpt(farEnd) != 0 ||
        ptsname_r(farEnd, tty, sizeof tty) != 0 || tcgetattr(farEnd, &settings) != 0)
        qFatal("cannot create a pseudo-terminal");
    cfmakeraw(&settings);
    tcsetattr(farEnd, TCSANOW, &settings);
    mkdir((qgetenv("UMOCKDEV_DIR") + "/dev").constData(), 0777);
    if (symlink(tty, nodeOf(ttyName).constData()) != 0)
        qFatal("cannot create the tty %s", ttyName.constData());
    return farEnd;
}
} // namespace

FakeUsbBus::FakeUsbBus(int firstTty)
    : _testbed(umockdev_testbed_new())
    , _nextTty(firstTty)
{
    if (!umockdev_in_mock_environment())
        qFatal("this program must run under umockdev-wrapper");
    // Every computer has a console. Without any tty, Qt assumes that udev is broken and lists the ports of
    // the real computer.
    const QByteArray console = "/devices/virtual/tty/tty1";
    add("tty1", {"P: " + console + "\nE: SUBSYSTEM=tty\nE: DEVNAME=/dev/tty1\n\n", {"/sys" + console}});
}

int FakeUsbBus::takeTtyNumber()
{
    constexpr int ttysOfOneProcess = 500; // with these, the largest possible process id still fits
    static int next = getpid() * ttysOfOneProcess;
    return next++;
}

FakeUsbBus::~FakeUsbBus()
{
    while (!_plugged.empty())
        unplug(QByteArray(_plugged.begin()->first));
    g_object_unref(_testbed);
}

bool FakeUsbBus::isPossible()
{
    // umockdev_in_mock_environment() returns false while there is no test bed. One that is created
    // only for this check starts threads, and a process that is about to restart itself under the wrapper
    // must not have any. The code therefore checks which library provides open().
    Dl_info owner{};
    void *const function = dlsym(RTLD_DEFAULT, "open");
    return function && dladdr(function, &owner) != 0 && strstr(owner.dli_fname, "libumockdev-preload");
}

int FakeUsbBus::freeSocket() const
{
    std::set<int> taken;
    for (const auto &[name, plugged] : _plugged)
        taken.insert(plugged.socket);
    int socket = 1;
    while (taken.count(socket) > 0)
        ++socket;
    return socket;
}

QByteArray FakeUsbBus::plug(const UsbBridge &bridge, const QByteArray &ttyName)
{
    constexpr int ttyMinors = 1 << 20;
    QByteArray name = ttyName;
    if (name.isEmpty())
        name = "ttyUSB" + QByteArray::number(_nextTty < 0 ? takeTtyNumber() : _nextTty++);
    const int number = name.mid(static_cast<int>(strlen("ttyUSB"))).toInt();
    const int socket = freeSocket();
    // Before add(), which announces the tty: programs may open it at once.
    const int descriptor = makeTty(name);
    add(name, recordOf(bridge, {socket, _nextAddress++, name, number % ttyMinors}));
    _plugged[name].socket = socket;
    _plugged[name].descriptor = descriptor;
    return name;
}

void FakeUsbBus::add(const QByteArray &ttyName, const UsbRecord &record)
{
    GError *error = nullptr;
    if (!umockdev_testbed_add_from_string(_testbed, record.devices.constData(), &error))
        qFatal("umockdev rejects %s: %s", ttyName.constData(), error->message);
    _plugged[ttyName].record = record;
}

QByteArray FakeUsbBus::sysfsPath(const QByteArray &ttyName) const
{
    return _plugged.at(ttyName).record.sysfsPaths.constFirst();
}

int FakeUsbBus::descriptor(const QByteArray &ttyName) const
{
    const auto found = _plugged.find(ttyName);
    return found == _plugged.end() ? -1 : found->second.descriptor;
}

void FakeUsbBus::unplug(const QByteArray &ttyName)
{
    const auto found = _plugged.find(ttyName);
    if (found == _plugged.end())
        return;
    const Plugged plugged = found->second;
    _plugged.erase(found);

    if (plugged.descriptor >= 0) {
        close(plugged.descriptor);
        unlink(nodeOf(ttyName).constData());
    }
    for (const QByteArray &path : plugged.record.sysfsPaths) {
        umockdev_testbed_uevent(_testbed, path.constData(), "remove");
        umockdev_testbed_remove_device(_testbed, path.constData());
    }
}

void FakeUsbBus::hangUp(int descriptor)
{
    // Replaces the open file. The descriptor's number stays in use until unplug() closes it.
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    dup3(nothing, descriptor, O_CLOEXEC);
    close(nothing);
}
