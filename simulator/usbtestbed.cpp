#include <umockdev.h>

#include "simulator/usbtestbed.h"

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
/// The folder in which programs under the mock find the node of the tty.
QByteArray nodeOf(const QByteArray &ttyName)
{
    return qgetenv("UMOCKDEV_DIR") + "/dev/" + ttyName;
}

/// Makes a raw tty with that name and returns its far end. umockdev's own function cannot be used: it
/// remembers each name and aborts when a name is used again.
int makeTty(const QByteArray &ttyName)
{
    const int farEnd =
        posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC); // a copy in a child process would keep the line up
    char tty[64] = "";
    termios settings{};
    if (farEnd < 0 || grantpt(farEnd) != 0 || unlockpt(farEnd) != 0 ||
        ptsname_r(farEnd, tty, sizeof tty) != 0 || tcgetattr(farEnd, &settings) != 0)
        qFatal("the system has no pseudo-terminal left");
    cfmakeraw(&settings);
    tcsetattr(farEnd, TCSANOW, &settings);
    mkdir((qgetenv("UMOCKDEV_DIR") + "/dev").constData(), 0777);
    if (symlink(tty, nodeOf(ttyName).constData()) != 0)
        qFatal("cannot create the tty %s", ttyName.constData());
    return farEnd;
}
} // namespace

UsbTestbed::UsbTestbed(int firstTty)
    : _bed(umockdev_testbed_new())
    , _nextTty(firstTty)
{
}

int UsbTestbed::takeTtyNumber()
{
    constexpr int ttysOfOneProcess = 500; // with these, the largest possible process id still fits
    static int next = getpid() * ttysOfOneProcess;
    return next++;
}

UsbTestbed::~UsbTestbed()
{
    while (!_plugged.empty())
        unplug(QByteArray(_plugged.begin()->first));
    g_object_unref(_bed);
}

bool UsbTestbed::isPossible()
{
    // umockdev_in_mock_environment() returns false while there is no test bed. A test bed that is created
    // only for this check starts threads, and a process that is about to restart itself under the wrapper
    // must not have any. The code therefore checks which library provides open().
    Dl_info owner{};
    void *const function = dlsym(RTLD_DEFAULT, "open");
    return function && dladdr(function, &owner) != 0 && strstr(owner.dli_fname, "libumockdev-preload");
}

int UsbTestbed::freeSocket() const
{
    std::set<int> taken;
    for (const auto &[name, plugged] : _plugged)
        taken.insert(plugged.socket);
    int socket = 1;
    while (taken.count(socket) > 0)
        ++socket;
    return socket;
}

QByteArray UsbTestbed::nextName()
{
    return "ttyUSB" + QByteArray::number(_nextTty < 0 ? takeTtyNumber() : _nextTty++);
}

QByteArray UsbTestbed::plug(const UsbBridge &bridge, const QByteArray &ttyName)
{
    constexpr int ttyMinors = 1 << 20;
    QByteArray name = ttyName.isEmpty() ? nextName() : ttyName;
    const int number = name.mid(static_cast<int>(strlen("ttyUSB"))).toInt();
    const int socket = freeSocket();
    const UsbRecord record = recordOf(bridge, {socket, _nextAddress, name, number % ttyMinors});
    ++_nextAddress;

    const int descriptor = makeTty(name);
    GError *error = nullptr;
    if (!umockdev_testbed_add_from_string(_bed, record.devices.constData(), &error)) {
        qCritical("The USB test bed does not take %s: %s", name.constData(), error->message);
        g_error_free(error);
        close(descriptor);
        return {};
    }
    _plugged.insert_or_assign(name, Plugged{record, socket, descriptor});
    return name;
}

int UsbTestbed::descriptor(const QByteArray &ttyName) const
{
    const auto found = _plugged.find(ttyName);
    return found == _plugged.end() ? -1 : found->second.descriptor;
}

void UsbTestbed::unplug(const QByteArray &ttyName)
{
    const auto found = _plugged.find(ttyName);
    if (found == _plugged.end())
        return;
    const Plugged plugged = found->second;
    _plugged.erase(found);

    close(plugged.descriptor);
    unlink(nodeOf(ttyName).constData());
    for (const QByteArray &path : plugged.record.sysfsPaths) {
        umockdev_testbed_uevent(_bed, path.constData(), "remove");
        umockdev_testbed_remove_device(_bed, path.constData());
    }
}

void UsbTestbed::hangUp(int descriptor)
{
    // The number stays reserved until unplug() releases it.
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    dup3(nothing, descriptor, O_CLOEXEC);
    close(nothing);
}
