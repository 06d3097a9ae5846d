#include "tests/e2e/wizarduser.h"

#include "tests/support/programdriver.h"

using namespace onscreen;

bool WizardUser::seesTheDevice()
{
    return _driver.waitFor(label("***** A Tolvar has been found *****")) &&
           _driver.waitFor(button("Continue").enabled());
}

bool WizardUser::seesTheSearch()
{
    return _driver.waitFor(label("Looking for ZV Tolvar")) && _driver.waitFor(progressBar()) &&
           _driver.waitFor(button("Continue").disabled());
}

bool WizardUser::goesOn()
{
    return _driver.click(button("Continue").enabled());
}

bool WizardUser::goesBack()
{
    return _driver.click(button("Go Back").enabled());
}

bool WizardUser::goesToTheNetworks()
{
    return goesOn() && _driver.waitFor(label("Found Device")) && goesOn() &&
           _driver.waitFor(label("Found Networks:"));
}

bool WizardUser::seesTheNetworks()
{
    return _driver.waitFor(button("Look for Networks...").enabled());
}

bool WizardUser::picks(const QString &network)
{
    return _driver.click(row(network)) && _driver.waitFor(field().beside("Network").withText(network));
}

bool WizardUser::typesNetwork(const QString &network)
{
    return _driver.fill(field().beside("Network"), network);
}

bool WizardUser::typesPassphrase(const QString &passphrase)
{
    return _driver.fill(field().beside("Passphrase"), passphrase);
}

bool WizardUser::sees(const QString &text)
{
    return _driver.waitFor(label(text));
}

bool WizardUser::saves(const QString &saveButton)
{
    return _driver.click(button(saveButton).enabled()) && sees("Configuration saved\n") &&
           _driver.waitFor(button("Done").enabled());
}

bool WizardUser::finishes()
{
    return _driver.click(button("Done").enabled()) && _driver.waitForEnd();
}
