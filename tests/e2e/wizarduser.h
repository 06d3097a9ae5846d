#pragma once

#include <QString>

class ProgramDriver;

/// Someone who walks through the wizard: the steps of a run, in the words of its pages. Each step waits for
/// what it needs; one that fails returns false, and the driver's failure() says why.
class WizardUser
{
public:
    explicit WizardUser(ProgramDriver &driver)
        : _driver(driver)
    {
    }

    /// Waits on the connect page until the device is found.
    bool seesTheDevice();
    /// Waits on the connect page until the device is looked for, as when none is there.
    bool seesTheSearch();
    /// Presses "Continue" once it can be pressed.
    bool goesOn();
    /// Presses "Go Back".
    bool goesBack();
    /// From the connect page to the choose-network page, past what the device reported.
    bool goesToTheNetworks();
    /// Waits on the choose-network page until a scan has ended.
    bool seesTheNetworks();
    /// Clicks a row of the list; the name field follows.
    bool picks(const QString &network);
    /// Types a name in place of the one in the field.
    bool typesNetwork(const QString &network);
    bool typesPassphrase(const QString &passphrase);
    /// Waits on the test page for a text.
    bool sees(const QString &text);
    /// Presses the save button, as it is labelled now, and waits for its success.
    bool saves(const QString &button = QStringLiteral("Save network configuration"));
    /// Presses "Done" and waits until the program has ended.
    bool finishes();

private:
    ProgramDriver &_driver;
};
