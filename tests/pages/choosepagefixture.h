#pragma once

#include <QLineEdit>
#include <QModelIndex>
#include <QStringList>

#include "tests/support/messagerecorder.h"
#include "tests/support/wizardfixture.h"

class QListView;

/// The wizard on its choose-network page, just entered, and what was logged since.
class ChoosePageFixture
{
public:
    ChoosePageFixture() { wizard.goTo(3); }

    MessageRecorder log; ///< made before the wizard and gone after it
    WizardFixture wizard;

    QWizardPage *page() const { return wizard.wizard.page(3); }
    ZVTolvar &tolvar() const { return wizard.tolvar; }
    QStringList &queue() const { return wizard.inside.queue(); }

    template <typename Widget>
    Widget *widget(const char *name) const
    {
        return wizard.widget<Widget>(name);
    }
    QLineEdit *name() const { return widget<QLineEdit>("input_NetworkName"); }
    QLineEdit *passphrase() const { return widget<QLineEdit>("input_Password"); }

    /// The list's rows from top to bottom.
    QStringList rows() const;
    void click(const QString &row) const;
    void doubleClick(const QString &row) const;
    /// Calls a slot of the page by its name, as its meta-object has it.
    void call(const char *slot) const;
};

/// What a scan reports: "Home" with WPA2, "Old" with WEP, and "Open" without any security.
extern const char threeNetworks[];
