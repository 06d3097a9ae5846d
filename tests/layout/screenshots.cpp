// layout_screenshots take FOLDER THEME LANGUAGE POINTS
//     Saves an image of each view of the wizard in FOLDER, and reports each text that does not fit. The exit
//     status is 1 when there is one.
// layout_screenshots sheet IMAGE FOLDER...
//     Puts the images of several folders side by side.

#include <cstdio>

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QWidget>

#include "simulator/fakeusbbus.h"
#include "tests/layout/allviews.h"
#include "tests/layout/appearance.h"
#include "tests/layout/fitting.h"
#include "tests/support/messagespy.h"

namespace
{
int take(const QDir &folder, const Appearance &appearance)
{
    if (!folder.mkpath(QStringLiteral("."))) {
        std::fprintf(stderr, "layout_screenshots: cannot create the folder %s\n", qPrintable(folder.path()));
        return 2;
    }
    if (!appearance.canBeDrawn()) {
        std::fprintf(stderr, "layout_screenshots: no installed font supports the language %s\n",
                     qPrintable(appearance.language));
        return 2;
    }
    apply(appearance);
    const MessageSpy unprinted;
    const FakeUsbBus nothingPluggedIn;
    int count = 0;
    bool succeeded = true;
    showAllViews([&](const QString &view, QWidget *window) {
        const QImage image = window->grab().toImage();
        const QString name = QStringLiteral("%1-%2.png").arg(++count, 2, 10, QLatin1Char('0')).arg(view);
        const QStringList issues = layoutIssues(window, image);
        for (const QString &issue : issues)
            std::fprintf(stderr, "%s: %s: %s\n", qPrintable(appearance.description()), qPrintable(view),
                         qPrintable(issue));
        succeeded = image.save(folder.filePath(name), "png", 0) && issues.isEmpty() && succeeded;
    });
    return succeeded ? 0 : 1;
}

/// Returns images side by side, a row for each view and a column for each appearance, each with its caption.
/// \a folders contain the images, under the same names; the names of the folders are the captions of the
/// columns.
QImage contactSheet(const QStringList &folders)
{
    constexpr QSize imageSize{460, 380};
    constexpr int captionHeight = 22;
    constexpr int gap = 10;
    QStringList views;
    for (const QString &folder : folders)
        views += QDir(folder).entryList({QStringLiteral("*.png")});
    views.removeDuplicates();
    views.sort();

    const QSize tile(imageSize.width() + gap, imageSize.height() + captionHeight + gap);
    QImage sheet(static_cast<int>(folders.size()) * tile.width() + gap,
                 static_cast<int>(views.size()) * tile.height() + gap, QImage::Format_RGB32);
    sheet.fill(0x808890);
    QPainter painter(&sheet);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setPen(Qt::black);
    for (int column = 0; column < folders.size(); ++column)
        for (int row = 0; row < views.size(); ++row) {
            const QPoint corner(gap + column * tile.width(), gap + row * tile.height());
            painter.drawText(QRect(corner, QSize(imageSize.width(), captionHeight)), Qt::AlignVCenter,
                             QFileInfo(views.at(row)).completeBaseName() + QLatin1String("   ") +
                                 QDir(folders.at(column)).dirName());
            QImage image(folders.at(column) + QLatin1Char('/') + views.at(row));
            if (image.isNull())
                continue;
            image.setDevicePixelRatio(1);
            if (image.width() > imageSize.width() || image.height() > imageSize.height())
                image = image.scaled(imageSize, Qt::KeepAspectRatio, Qt::SmoothTransformation);
            painter.drawImage(corner + QPoint(0, captionHeight), image);
        }
    return sheet;
}
} // namespace

int main(int argc, char *argv[])
{
    const QApplication app(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() == 6 && arguments.at(1) == QLatin1String("take"))
        return take(QDir(QDir(arguments.at(2)).absolutePath()),
                    {arguments.at(3), arguments.at(4), arguments.at(5).toInt()});
    if (arguments.size() > 3 && arguments.at(1) == QLatin1String("sheet"))
        return contactSheet(arguments.mid(3)).save(arguments.at(2), "png", 0) ? 0 : 1;
    std::fprintf(stderr, "usage: layout_screenshots take FOLDER THEME LANGUAGE POINTS\n       "
                         "layout_screenshots sheet IMAGE FOLDER...\n");
    return 2;
}
