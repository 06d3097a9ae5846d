#pragma once

#include <QString>

class ProgramDriver;

/// A simulated user of the wizard, with one function for each step of a run. Each step waits until it is
/// possible. A step that fails returns false, and the driver's failure() returns the reason.
class WizardUser
{
public:
    explicit WizardUser(ProgramDriver &driver)
        : _driver(driver)
    {
    }

    /// Waits on the connect page until the device is found.
    bool seesTheDevice();
    /// Waits on the connect page until it shows the search, as when no device is present.
    bool seesTheSearch();
    /// Presses "Continue" once it is enabled.
    bool goesOn();
    /// Presses "Go Back".
    bool goesBack();
    /// Goes from the connect page to the choose-network page, past the page with the device's report.
    bool goesToTheNetworks();
    /// Waits on the choose-network page until a scan has ended.
    bool seesTheNetworks();
    /// Clicks a row of the list; the name field changes accordingly.
    bool picks(const QString &network);
    /// Replaces the name in the field.
    bool typesNetwork(const QString &network);
    bool typesPassphrase(const QString &passphrase);
    /// Waits on the test page for a text.
    bool sees(const QString &text);
    /// Presses the save button, identified by its current label, and waits until saving has succeeded.
    bool saves(const QString &button = QStringLiteral("Save network configuration"));
    /// Presses "Done" and waits until the program has ended.
    bool finishes();

private:
    ProgramDriver &_driver;
};
