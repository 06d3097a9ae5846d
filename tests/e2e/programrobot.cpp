#include "tests/e2e/programrobot.h"

#include "tests/support/programdriver.h"

using namespace onscreen;

bool ProgramRobot::waitForDevice()
{
    return waitForText("***** A Tolvar has been found *****") &&
           _driver.waitFor(button("Continue").enabled());
}

bool ProgramRobot::waitForSearch()
{
    return waitForText("Looking for ZV Tolvar") && _driver.waitFor(progressBar("Identifying ZV Tolvar")) &&
           _driver.waitFor(button("Continue").disabled());
}

bool ProgramRobot::continueToNext()
{
    return _driver.click(button("Continue"));
}

bool ProgramRobot::goBack()
{
    return _driver.click(button("Go Back"));
}

bool ProgramRobot::continueToNetworks()
{
    return continueToNext() && waitForText("Found Device") && continueToNext() &&
           waitForText("Found Networks:");
}

bool ProgramRobot::waitForNetworks()
{
    return _driver.waitFor(button("Look for Networks...").enabled());
}

bool ProgramRobot::chooseNetwork(const QString &network)
{
    return _driver.click(row(network)) && _driver.waitFor(field().beside("Network").withText(network));
}

bool ProgramRobot::typeNetwork(const QString &network)
{
    return _driver.fill(field().beside("Network"), network);
}

bool ProgramRobot::typePassphrase(const QString &passphrase)
{
    return _driver.fill(field().beside("Passphrase"), passphrase);
}

bool ProgramRobot::waitForText(const QString &text)
{
    return _driver.waitFor(label(text));
}

bool ProgramRobot::waitForSuccess()
{
    return waitForText("Successfully tested connection to network\n");
}

bool ProgramRobot::save(const QString &saveButton)
{
    return _driver.click(button(saveButton)) && waitForText("Configuration saved\n") &&
           _driver.waitFor(button("Done").enabled());
}

bool ProgramRobot::finish()
{
    return _driver.click(button("Done")) && _driver.waitForEnd();
}

bool ProgramRobot::complete(const QString &network, const QString &passphrase)
{
    return waitForDevice() && continueToNetworks() && waitForNetworks() && chooseNetwork(network) &&
           typePassphrase(passphrase) && continueToNext() && waitForSuccess() && save() && finish();
}

bool ProgramRobot::tabTo(const WidgetQuery &widget)
{
    constexpr int maxStops = 12; // more than any page has
    for (int presses = 0; presses < maxStops && !_driver.find(widget.focused()); ++presses) {
        if (!_driver.pressKey("Tab"))
            return false;
    }
    return _driver.waitFor(widget.focused());
}

bool ProgramRobot::pressFocused(const QString &name, const QString &key)
{
    return _driver.waitFor(button(name).enabled().focused()) && _driver.pressKey(key);
}
