#include <QApplication>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include "app/zvtolvarsetupwizard.h"
#include "messages/sessionlog.h"

int main(int argc, char *argv[])
{
    Q_INIT_RESOURCE(Resources);
    QApplication app(argc, argv);

    openSessionLog();
    installMessageHandler();

    // kept: the image is at the root of the resources, so the icon stays empty.
    QApplication::setWindowIcon(QPixmap(QStringLiteral(":/images/zv_setup.png")));

    const QString locale = QLocale::system().name();
    auto *qtTranslator = new QTranslator(&app);
    if (qtTranslator->load(QStringLiteral("qt_") + locale,
                           QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(qtTranslator);

    QTranslator translator;
    // kept: installed even if the current folder has no translation file.
    static_cast<void>(translator.load(QStringLiteral("zvinstall_") + locale));
    QApplication::installTranslator(&translator);

    ZVTolvarSetupWizard wizard;
    wizard.show();
    return QApplication::exec();
}
