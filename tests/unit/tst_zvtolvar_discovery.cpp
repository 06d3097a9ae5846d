#include <QElapsedTimer>
#include <QSignalSpy>
#include <QtTest>

#include "serial/qextserialport.h"
#include "simulator/usbtestbed.h"
#include "tests/support/messagerecorder.h"
#include "tests/support/pty.h"
#include "tests/support/zvtolvarinspector.h"

namespace
{
constexpr int Ftdi = 0x0403;
constexpr int Ft232 = 0x6001;

QextPortInfo bridge(const QString &portName, int vendorID = Ftdi, int productID = Ft232)
{
    QextPortInfo info;
    info.portName = portName;
    info.physName = "/dev/" + portName;
    info.friendName = "USB \"UART\"";
    info.enumName = "USB";
    info.vendorID = vendorID;
    info.productID = productID;
    return info;
}

QStringList description(const QString &portName, const QString &vendor = "403", const QString &product = "6001")
{
    return {"D:port name: \"" + portName + "\" ",
            "D:friendly name: \"USB \"UART\"\" ",
            "D:physical name: \"/dev/" + portName + "\" ",
            "D:enumerator name: \"USB\" ",
            "D:vendor ID: \"" + vendor + "\" ",
            "D:product ID: \"" + product + "\" ",
            "D:=================================== "};
}
} // namespace

/// Finding the device's port, following it, and opening it.
class TestDiscovery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void onlyTheTwoBridgesAreADevice_data();
    void onlyTheTwoBridgesAreADevice();
    void aFoundDeviceIsOpenedASecondLaterAndWokenHalfASecondAfter();
    void theLineIsSetUpForTheConsole();
    void anArrivalPastNotConnectedIsLoggedAndIgnored();
    void theLaterOfTwoArrivalsWins();
    void unpluggedBeforeTheOpening();
    void theOpeningIsRetriedEverySecond();
    void unpluggedWhileOpeningFails();

    void aRemovalResetsEverything();
    void theSignalsOfARemovalComeInTheirOrder();
    void theRemovalOfAnotherPortChangesNothing();
    void aRepluggedDeviceIsOpenedAnew();

    void noPortsAreListed();
    void theFirstRecognisedPortWins();
    void foreignPortsAreLeftAlone();
    void bothControllersOpenADevicePluggedInLater();

private:
    ZVTolvarInspector inside() const { return {*_tolvar}; }

    std::unique_ptr<ZVTolvar> _tolvar;
    std::unique_ptr<MessageRecorder> _log;
};
