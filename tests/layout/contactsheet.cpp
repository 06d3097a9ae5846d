#include "tests/layout/contactsheet.h"

#include <QDir>
#include <QFileInfo>
#include <QPainter>
#include <QSet>

namespace
{
constexpr QSize room{460, 380}; // of an image
constexpr int caption = 22;
constexpr int gap = 10;

QStringList viewsIn(const QStringList &folders)
{
    QStringList views;
    for (const QString &folder : folders)
        views += QDir(folder).entryList({QStringLiteral("*.png")});
    views.removeDuplicates();
    views.sort();
    return views;
}
} // namespace

QImage contactSheet(const QStringList &folders)
{
    const QStringList views = viewsIn(folders);
    const QSize tile(room.width() + gap, room.height() + caption + gap);
    QImage sheet(static_cast<int>(folders.size()) * tile.width() + gap,
                 static_cast<int>(views.size()) * tile.height() + gap, QImage::Format_RGB32);
    sheet.fill(0x808890);
    QPainter painter(&sheet);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setPen(Qt::black);
    for (int column = 0; column < folders.size(); ++column)
        for (int row = 0; row < views.size(); ++row) {
            const QPoint corner(gap + column * tile.width(), gap + row * tile.height());
            painter.drawText(QRect(corner, QSize(room.width(), caption)), Qt::AlignVCenter,
                             QFileInfo(views.at(row)).completeBaseName() + QLatin1String("   ") +
                                 QDir(folders.at(column)).dirName());
            QImage picture(folders.at(column) + QLatin1Char('/') + views.at(row));
            if (picture.isNull())
                continue;
            picture.setDevicePixelRatio(1);
            if (picture.width() > room.width() || picture.height() > room.height())
                picture = picture.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation);
            painter.drawImage(corner + QPoint(0, caption), picture);
        }
    return sheet;
}
