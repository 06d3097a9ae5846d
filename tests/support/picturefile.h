#pragma once

#include <QImage>
#include <QPixmap>
#include <QTemporaryDir>
#include <QWidget>

/// An image file in a unique colour, which a text can reference.
class PictureFile
{
public:
    PictureFile()
    {
        QImage image(60, 40, QImage::Format_RGB32);
        image.fill(colour);
        if (!image.save(path()))
            qFatal("cannot save the image");
    }
    /// A text that would show the image if it were treated as markup.
    QString markup() const { return QStringLiteral("<img src=\"%1\">").arg(path()); }
    /// Returns true if the widget shows the image.
    bool isSeenIn(QWidget &widget) const
    {
        const QImage seen = widget.grab().toImage();
        for (int y = 0; y < seen.height(); ++y) {
            for (int x = 0; x < seen.width(); ++x) {
                if (seen.pixel(x, y) == colour)
                    return true;
            }
        }
        return false;
    }

private:
    QString path() const { return _folder.filePath(QStringLiteral("picture.png")); }

    static constexpr QRgb colour = 0xFFFE01FE;
    QTemporaryDir _folder;
};
