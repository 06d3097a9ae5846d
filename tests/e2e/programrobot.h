#pragma once

#include <QString>

class ProgramDriver;
class WidgetQuery;

/// The page object of the real program: one function for each step of a run. Each step waits until it is
/// possible. A step that fails returns false, and the driver's failure() returns the reason.
class ProgramRobot
{
public:
    explicit ProgramRobot(ProgramDriver &driver)
        : _driver(driver)
    {
    }

    /// Waits on the connect page until the device is found.
    bool waitForDevice();
    /// Waits on the connect page until it shows the search, as when no device is present.
    bool waitForSearch();
    /// Presses "Continue" once it is enabled.
    bool continueToNext();
    /// Presses "Go Back".
    bool goBack();
    /// Goes from the connect page to the choose-network page, past the page with the device's report.
    bool continueToNetworks();
    /// Waits on the choose-network page until a scan has ended.
    bool waitForNetworks();
    /// Clicks a row of the list; the name field changes accordingly.
    bool chooseNetwork(const QString &network);
    /// Replaces the name in the field.
    bool typeNetwork(const QString &network);
    bool typePassphrase(const QString &passphrase);
    /// Waits for a label.
    bool waitForText(const QString &text);
    /// Waits until the device has joined the network that it tests.
    bool waitForSuccess();
    /// Presses the save button, identified by its current label, and waits until saving has succeeded.
    bool save(const QString &button = QStringLiteral("Save network configuration"));
    /// Presses "Done" and waits until the program has ended.
    bool finish();
    /// The typical run, from the search for the device to the end of the program.
    bool complete(const QString &network, const QString &passphrase);

    /// Presses Tab until \a widget has the focus.
    bool tabTo(const WidgetQuery &widget);
    /// Presses \a key once the button \a name has the focus.
    bool pressFocused(const QString &name, const QString &key = QStringLiteral("Return"));

private:
    ProgramDriver &_driver;
};
