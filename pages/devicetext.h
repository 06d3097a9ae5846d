#pragma once

#include <initializer_list>

#include <QLabel>
#include <QLocale>

/// Has the labels take the texts of the device, the names of networks and the paths of files for text.
/// Anybody can name a network "<img src=/dev/zero>": taken for markup, the file would be read. Such a label
/// must have no buddy either, because with one an '&' is a mnemonic in plain text too.
inline void takeForText(std::initializer_list<QLabel *> labels)
{
    for (QLabel *label : labels)
        label->setTextFormat(Qt::PlainText);
}

/// Aligns the labels to the edge at which their layout begins, in languages that are read from the right to
/// the left. By itself, Qt aligns a label by the direction of its text: Latin and Arabic values of one column
/// would be at opposite ends of it. Layouts run from the right only where Qt has its own strings in the
/// language.
inline void alignToLeadingEdge(std::initializer_list<QLabel *> labels)
{
    for (QLabel *label : labels) {
        const Qt::Alignment leading = label->isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft;
        if (label->isRightToLeft() || QLocale().textDirection() == Qt::RightToLeft)
            label->setAlignment(leading | Qt::AlignAbsolute | Qt::AlignVCenter);
    }
}
