// What the program is held against: the toolkit's wizard with the program's style, options, button, pictures
// and size, and a single page. With --busy that page has a text over a busy bar, as the program's first page
// has while it looks for a device.

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>
#include <QWizard>

static QWizardPage *page(bool busy)
{
    auto *page = new QWizardPage;
    if (!busy)
        return page;
    page->setTitle(QStringLiteral("Identifying"));
    auto *layout = new QVBoxLayout(page);
    auto *label = new QLabel(QStringLiteral("Looking"), page);
    label->setAlignment(Qt::AlignCenter);
    auto *bar = new QProgressBar(page);
    bar->setMaximum(0);
    bar->setValue(-1);
    layout->addStretch();
    layout->addWidget(label);
    layout->addWidget(bar);
    layout->addStretch();
    return page;
}

int main(int argc, char *argv[])
{
    const QApplication app(argc, argv);
    QWizard wizard;
    wizard.setWizardStyle(QWizard::MacStyle);
    wizard.setOptions(QWizard::IgnoreSubTitles | QWizard::ExtendedWatermarkPixmap | QWizard::NoDefaultButton |
                      QWizard::NoBackButtonOnStartPage | QWizard::CancelButtonOnLeft);
    wizard.setButtonText(QWizard::CustomButton1, QStringLiteral("&Console"));
    wizard.setOption(QWizard::HaveCustomButton1);
    wizard.setPage(0, page(QApplication::arguments().contains(QStringLiteral("--busy"))));
    for (const auto role : {QWizard::BannerPixmap, QWizard::BackgroundPixmap, QWizard::WatermarkPixmap})
        wizard.setPixmap(role, QPixmap(QStringLiteral(":/images/plus_small.png")));
    wizard.setWindowTitle(QStringLiteral("Bare wizard"));
    wizard.setMinimumSize(750, 580);
    wizard.adjustSize();
    wizard.show();
    return QApplication::exec();
}
