// The reference that the program is compared with: Qt's wizard with the program's style, options, button,
// images and size, and one page of Qt's own widgets: the strings and the busy bar of the program's first
// page. With --empty the page has no content.

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>
#include <QWizard>

static QWizardPage *emptyPage()
{
    return new QWizardPage;
}

static QLabel *text(const QString &words, bool bold = false)
{
    auto *label = new QLabel(words);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    QFont font = label->font();
    font.setBold(bold);
    label->setFont(font);
    return label;
}

static QWizardPage *fullPage()
{
    auto *page = new QWizardPage;
    page->setTitle(QStringLiteral("Identifying ZV Tolvar"));
    auto *bar = new QProgressBar;
    bar->setMaximum(0);
    bar->setValue(-1);
    auto *layout = new QVBoxLayout(page);
    layout->addStretch();
    layout->addWidget(
        text(QStringLiteral("Please plug an Orvane Device into the computer before starting this utility. "),
             true));
    layout->addStretch();
    layout->addWidget(text(QStringLiteral(
        "If you have more than one device, run this setup wizard with each unit individually.")));
    layout->addStretch();
    layout->addWidget(text(QStringLiteral("Looking for ZV Tolvar")));
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
    wizard.setPage(0,
                   QApplication::arguments().contains(QStringLiteral("--empty")) ? emptyPage() : fullPage());
    for (const auto role : {QWizard::BannerPixmap, QWizard::BackgroundPixmap, QWizard::WatermarkPixmap})
        wizard.setPixmap(role, QPixmap(QStringLiteral(":/images/plus_small.png")));
    wizard.setWindowTitle(QStringLiteral("Bare wizard"));
    wizard.setMinimumSize(750, 580);
    wizard.adjustSize();
    wizard.show();
    return QApplication::exec();
}
