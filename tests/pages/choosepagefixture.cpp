#include "tests/pages/choosepagefixture.h"

#include <QListView>
#include <QTest>

const char threeNetworks[] = "<scan SSID=\"Home\" channel=\"6\" sec=\"WPA2 (PSK)\"/>"
                             "<scan SSID=\"Old\" sec=\"WEP\"/>"
                             "<scan SSID=\"Open\"/>";

QStringList ChoosePageFixture::rows() const
{
    const QAbstractItemModel *model = widget<QListView>("networkListView")->model();
    QStringList texts;
    for (int i = 0; i < model->rowCount(); ++i)
        texts += model->index(i, 0).data(Qt::DisplayRole).toString();
    return texts;
}

void ChoosePageFixture::click(const QString &row) const
{
    auto *list = widget<QListView>("networkListView");
    const QModelIndex index = list->model()->index(int(rows().indexOf(row)), 0);
    QVERIFY2(index.isValid(), qPrintable(row + " was expected in the list"));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(index).center());
}

void ChoosePageFixture::doubleClick(const QString &row) const
{
    click(row);
    auto *list = widget<QListView>("networkListView");
    const QModelIndex index = list->model()->index(int(rows().indexOf(row)), 0);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(index).center());
}

void ChoosePageFixture::call(const char *slot) const
{
    QVERIFY(QMetaObject::invokeMethod(page(), slot));
}
