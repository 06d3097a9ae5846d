#pragma once

#include <QLineEdit>
#include <QListView>
#include <QTest>

#include "tests/support/messagespy.h"
#include "tests/support/wizardfixture.h"

/// The reply to a scan with "Home" with WPA2, "Old" with WEP, and "Open" without security.
constexpr char threeNetworks[] = "<scan SSID=\"Home\" channel=\"6\" sec=\"WPA2 (PSK)\"/>"
                                 "<scan SSID=\"Old\" sec=\"WEP\"/>"
                                 "<scan SSID=\"Open\"/>";

/// The wizard on its choose-network page, which was just entered, and the messages logged since.
class ChoosePageFixture : public WizardFixture
{
public:
    ChoosePageFixture() { goTo(3); }

    MessageSpy log;

    QWizardPage *page() const { return wizard.page(3); }
    QLineEdit *name() const { return widget<QLineEdit>("input_NetworkName"); }
    QLineEdit *passphrase() const { return widget<QLineEdit>("input_Password"); }
    QListView *list() const { return widget<QListView>("networkListView"); }

    /// Returns the rows of the list from top to bottom.
    QStringList rows() const
    {
        QStringList texts;
        for (int i = 0; i < list()->model()->rowCount(); ++i)
            texts += list()->model()->index(i, 0).data(Qt::DisplayRole).toString();
        return texts;
    }
    /// Returns the index of \a row, which is invalid if there is no such row.
    QModelIndex index(const QString &row) const
    {
        return list()->model()->index(int(rows().indexOf(row)), 0);
    }
    void click(const QString &row) const
    {
        QVERIFY2(index(row).isValid(), qPrintable(row + " is not in the list"));
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, list()->visualRect(index(row)).center());
    }
    /// Calls a slot of the page by its name in the meta-object.
    template <typename... Arguments>
    void call(const char *slot, const Arguments &...arguments) const
    {
        QVERIFY(QMetaObject::invokeMethod(page(), slot, arguments...));
    }
};
