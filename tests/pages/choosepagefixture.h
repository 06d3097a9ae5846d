#pragma once

#include <QLineEdit>
#include <QModelIndex>
#include <QStringList>

#include "tests/support/messagespy.h"
#include "tests/support/wizardfixture.h"

class QListView;

/// The wizard on its choose-network page, which was just entered, and the messages logged since.
class ChoosePageFixture
{
public:
    ChoosePageFixture() { wizard.goTo(3); }

    MessageSpy log; ///< must outlive the wizard
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

    /// Returns the rows of the list from top to bottom.
    QStringList rows() const;
    void click(const QString &row) const;
    void doubleClick(const QString &row) const;
    /// Calls a slot of the page by its name in the meta-object.
    void call(const char *slot) const;
};

/// The reply to a scan with "Home" with WPA2, "Old" with WEP, and "Open" without security.
extern const char threeNetworks[];
