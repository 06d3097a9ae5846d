#include "pages/screenfit.h"

#include <algorithm>

#include <QBoxLayout>
#include <QDialog>
#include <QDialogButtonBox>
#include <QScreen>
#include <QScrollArea>

namespace
{
/// The height that \a layout needs at \a width.
int heightFor(const QLayout &layout, int width)
{
    // A layout without wrapped content has no height for a width.
    return std::max(layout.totalMinimumSize().height(), layout.totalMinimumHeightForWidth(width));
}

/// Moves everything above \a buttons in \a dialog into a scroll area.
void scrollContents(QDialog &dialog, QDialogButtonBox &buttons)
{
    auto *layout = static_cast<QBoxLayout *>(dialog.layout());
    auto *area = new QScrollArea(&dialog);
    auto *contents = new QWidget(area);
    auto *column = new QVBoxLayout(contents);
    column->setContentsMargins(QMargins());
    while (layout->itemAt(0)->widget() != &buttons) {
        QLayoutItem *item = layout->takeAt(0);
        if (QWidget *widget = item->widget()) {
            column->addWidget(widget);
            delete item; // the column has created its own
        } else if (QLayout *rows = item->layout()) {
            column->addLayout(rows);
        } else {
            column->addItem(item);
        }
    }
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidget(contents);
    layout->insertWidget(0, area);
}
} // namespace

QSize largestSize(const QWidget &window)
{
    return window.screen()->availableSize() - (window.frameSize() - window.size());
}

QSize fittingSize(const QLayout &layout, QSize size, QSize largest)
{
    constexpr int step = 10; // in pixels
    QSize fitting = size.expandedTo(layout.totalMinimumSize()).boundedTo(largest);
    while (heightFor(layout, fitting.width()) > largest.height() && fitting.width() < largest.width())
        fitting.setWidth(std::min(fitting.width() + step, largest.width()));
    return fitting.expandedTo({0, heightFor(layout, fitting.width())}).boundedTo(largest);
}

void fitToScreen(QDialog &dialog, QDialogButtonBox &buttons)
{
    const QLayout &layout = *dialog.layout();
    // The dialog appears on its parent's screen, with a frame like its parent's.
    const QWidget *parent = dialog.parentWidget();
    const QSize largest = largestSize(parent ? *parent->window() : dialog);
    const QSize fitting = fittingSize(layout, dialog.size(), largest);
    if (layout.totalMinimumSize().width() > fitting.width() ||
        heightFor(layout, fitting.width()) > fitting.height())
        scrollContents(dialog, buttons);
    dialog.resize(fitting);
}
