#include <umockdev.h>

#include "simulator/usbtestbed.h"

#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <set>
#include <unistd.h>

#include <QtGlobal>

UsbTestbed::UsbTestbed(int firstTty)
    : _bed(umockdev_testbed_new())
    , _nextTty(firstTty)
{
}

int UsbTestbed::takeTtyNumber()
{
    constexpr int ttysOfOneProcess = 500; // the largest process id there can be still fits
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
    // umockdev_in_mock_environment() says no as long as there is no bed, and a bed to ask it with starts
    // threads, which a process that goes on to start over under the wrapper must not have. So: whose open()
    // is this?
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

QByteArray UsbTestbed::plug(const UsbBridge &bridge)
{
    constexpr int ttyMinors = 1 << 20;
    const int number = _nextTty < 0 ? takeTtyNumber() : _nextTty++;
    QByteArray ttyName = "ttyUSB" + QByteArray::number(number);
    const int socket = freeSocket();
    const UsbRecord record = recordOf(bridge, {socket, _nextAddress, ttyName, number % ttyMinors});
    ++_nextAddress;

    GError *error = nullptr;
    if (!umockdev_testbed_add_from_string(_bed, record.devices.constData(), &error)) {
        qCritical("The USB test bed does not take %s: %s", ttyName.constData(), error->message);
        g_error_free(error);
        return {};
    }
    const int descriptor = umockdev_testbed_get_dev_fd(_bed, record.node.constData());
    // A child that inherited it would keep the line up after unplug().
    fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    _plugged.insert_or_assign(ttyName, Plugged{record, socket, descriptor});
    return ttyName;
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

    hangUp(plugged.descriptor);
    for (const QByteArray &path : plugged.record.sysfsPaths) {
        umockdev_testbed_uevent(_bed, path.constData(), "remove");
        umockdev_testbed_remove_device(_bed, path.constData());
    }
}

void UsbTestbed::hangUp(int descriptor)
{
    char slave[64] = "";
    if (ptsname_r(descriptor, slave, sizeof slave) == 0) {
        // umockdev forgets to forget which pty stood for the tty, and aborts when the kernel hands out that
        // pty again: its note is a link named after the pty's path.
        const QByteArray root = qgetenv("UMOCKDEV_DIR");
        unlink((root + "/dev/.ptymap/" + QByteArray(slave).replace('/', '_')).constData());
    }
    // umockdev closes the number itself at the end, so it must stay taken.
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    dup3(nothing, descriptor, O_CLOEXEC);
    close(nothing);
}
