// looks take FOLDER THEME LANGUAGE POINTS
//     Saves an image of each view of the wizard in FOLDER, and reports each text that does not fit. The exit
//     status is 1 when there is one.
// looks sheet PICTURE FOLDER...
//     Puts the images of several folders side by side.

#include <cstdio>

#include <QApplication>
#include <QDir>
#include <QWidget>

#include "simulator/fakeusbbus.h"
#include "tests/layout/appearance.h"
#include "tests/layout/contactsheet.h"
#include "tests/layout/fitting.h"
#include "tests/layout/tour.h"

namespace
{
void ignore(QtMsgType, const QMessageLogContext &, const QString &) {}

int take(const QDir &folder, const Appearance &look)
{
    if (!folder.mkpath(QStringLiteral("."))) {
        std::fprintf(stderr, "looks: can't make the folder %s\n", qPrintable(folder.path()));
        return 2;
    }
    if (!look.canBeDrawn()) {
        std::fprintf(stderr, "looks: no font here can draw the language %s\n", qPrintable(look.language));
        return 2;
    }
    apply(look);
    const FakeUsbBus nothingPluggedIn;
    int count = 0;
    int misfits = 0;
    int unsaved = 0;
    tour([&](const QString &view, QWidget *window) {
        const QImage picture = window->grab().toImage();
        const QString name = QStringLiteral("%1-%2.png").arg(++count, 2, 10, QLatin1Char('0')).arg(view);
        if (!picture.save(folder.filePath(name), "png", 0))
            ++unsaved;
        const auto found = misfitsIn(window, picture);
        for (const LayoutIssue &misfit : found)
            std::fprintf(stderr, "%s: %s: %s %s: \"%s\"\n", qPrintable(look.inWords()), qPrintable(view),
                         qPrintable(misfit.widget), qPrintable(misfit.what), qPrintable(misfit.text));
        misfits += static_cast<int>(found.size());
    });
    return misfits + unsaved > 0 ? 1 : 0;
}
} // namespace

int main(int argc, char *argv[])
{
    const QApplication app(argc, argv);
    qInstallMessageHandler(ignore);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() == 6 && arguments.at(1) == QLatin1String("take"))
        return take(QDir(QDir(arguments.at(2)).absolutePath()),
                    {arguments.at(3), arguments.at(4), arguments.at(5).toInt()});
    if (arguments.size() > 3 && arguments.at(1) == QLatin1String("sheet"))
        return contactSheet(arguments.mid(3)).save(arguments.at(2), "png", 0) ? 0 : 1;
    std::fprintf(stderr,
                 "usage: looks take FOLDER THEME LANGUAGE POINTS\n       looks sheet PICTURE FOLDER...\n");
    return 2;
}
