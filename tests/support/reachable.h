#pragma once

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

/// Returns true if no part of \a widget, which is on a visible dialog, is hidden.
inline bool isFullyVisible(const QWidget *widget)
{
    return widget->visibleRegion() == QRegion(widget->rect());
}

/// Returns true if \a area can be scrolled to all of its contents and \a widget is part of them.
inline bool canBeScrolledTo(const QWidget *widget, const QScrollArea *area)
{
    const QWidget *contents = area->widget();
    const QRect place(widget->mapTo(contents, QPoint()), widget->size());
    const QSize hidden = contents->size() - area->viewport()->size();
    return contents->rect().contains(place) && area->horizontalScrollBar()->maximum() >= hidden.width() &&
           area->verticalScrollBar()->maximum() >= hidden.height();
}

/// The visible widgets of \a dialog that the user cannot see completely, even by scrolling. Buttons must be
/// visible without scrolling. Empty if there are none; a dialog that exceeds its screen is listed as well.
inline QStringList unreachableWidgets(const QDialog &dialog)
{
    QStringList found;
    if (!dialog.screen()->availableGeometry().contains(dialog.frameGeometry()))
        found += QStringLiteral("the dialog, %1 x %2").arg(dialog.width()).arg(dialog.height());
    const auto *area = dialog.findChild<QScrollArea *>();
    for (const QWidget *child : dialog.findChildren<QWidget *>()) {
        if (!qobject_cast<const QLabel *>(child) && !qobject_cast<const QAbstractButton *>(child) &&
            !qobject_cast<const QLineEdit *>(child))
            continue;
        const int needed =
            child->hasHeightForWidth() ? child->heightForWidth(child->width()) : child->sizeHint().height();
        const bool isScrolled = area && area->widget()->isAncestorOf(child);
        const bool isReachable = isScrolled ? canBeScrolledTo(child, area) : isFullyVisible(child);
        if (!isReachable || child->height() < needed ||
            (qobject_cast<const QLabel *>(child) && child->width() < child->minimumSizeHint().width()))
            found += child->objectName().isEmpty() ? QLatin1String(child->metaObject()->className())
                                                   : child->objectName();
    }
    return found;
}
